#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <QtCore/QLocale>
#include <QtCore/QString>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace
{
std::string FromQString(const QString& text)
{
    return text.toUtf8().toStdString();
}

QString ToQString(const std::string& text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Whole text (surrounding blanks allowed) must be consumed by the conversion.
bool ConsumedAll(const char* end)
{
    while (*end == ' ' || *end == '\t' || *end == '\n' || *end == '\r')
        ++end;
    return *end == '\0';
}
} // namespace

MString::MString() = default;

MString::MString(const char* text) : text_(text ? text : "") {}

MString::MString(const char* text, int length)
{
    if (text && length > 0)
        text_.assign(text, static_cast<size_t>(length));
}

MString::MString(const wchar_t* text)
{
    if (text)
        text_ = FromQString(QString::fromWCharArray(text));
}

MString& MString::operator=(const char* text)
{
    text_ = text ? text : "";
    return *this;
}

MString& MString::operator+=(const MString& other)
{
    text_ += other.text_;
    return *this;
}

MString& MString::operator+=(const char* text)
{
    if (text)
        text_ += text;
    return *this;
}

MString& MString::operator+=(char c)
{
    text_ += c;
    return *this;
}

MString& MString::operator+=(int value)
{
    text_ += std::to_string(value);
    return *this;
}

MString& MString::operator+=(unsigned int value)
{
    text_ += std::to_string(value);
    return *this;
}

MString& MString::operator+=(double value)
{
    text_ += FromQString(QString::number(value, 'g', QLocale::FloatingPointShortest));
    return *this;
}

MString MString::operator+(const MString& other) const
{
    MString result(*this);
    result += other;
    return result;
}

MString MString::operator+(const char* text) const
{
    MString result(*this);
    result += text;
    return result;
}

bool MString::operator==(const MString& other) const
{
    return text_ == other.text_;
}

bool MString::operator==(const char* text) const
{
    return text_ == (text ? text : "");
}

bool MString::operator!=(const MString& other) const
{
    return !(*this == other);
}

bool MString::operator!=(const char* text) const
{
    return !(*this == text);
}

const char* MString::asChar() const
{
    return text_.c_str();
}

const char* MString::asChar(int& length) const
{
    length = static_cast<int>(text_.size());
    return text_.c_str();
}

const char* MString::asUTF8() const
{
    return text_.c_str();
}

const char* MString::asUTF8(int& length) const
{
    return asChar(length);
}

unsigned int MString::length() const
{
    return static_cast<unsigned int>(text_.size());
}

unsigned int MString::numChars() const
{
    return static_cast<unsigned int>(ToQString(text_).toUcs4().size());
}

void MString::clear()
{
    text_.clear();
}

bool MString::isEmpty() const
{
    return text_.empty();
}

MString& MString::set(const char* text)
{
    return *this = text;
}

int MString::index(char c) const
{
    const size_t position = text_.find(c);
    return position == std::string::npos ? -1 : static_cast<int>(position);
}

int MString::rindex(char c) const
{
    const size_t position = text_.rfind(c);
    return position == std::string::npos ? -1 : static_cast<int>(position);
}

// Byte indices, both ends inclusive, as Maya's substring.
MString MString::substring(int start, int end) const
{
    const int size = static_cast<int>(text_.size());
    start = std::max(start, 0);
    end = std::min(end, size - 1);
    if (start > end)
        return MString();
    return MString(text_.c_str() + start, end - start + 1);
}

// Character indices, both ends inclusive.
MString MString::substringW(int start, int end) const
{
    const QList<uint> chars = ToQString(text_).toUcs4();
    const int size = static_cast<int>(chars.size());
    start = std::max(start, 0);
    end = std::min(end, size - 1);
    if (start > end)
        return MString();
    const QString part =
        QString::fromUcs4(reinterpret_cast<const char32_t*>(chars.constData() + start), end - start + 1);
    return MString(FromQString(part).c_str());
}

bool MString::isInt() const
{
    if (text_.empty())
        return false;
    char* end = nullptr;
    std::strtol(text_.c_str(), &end, 10);
    return end != text_.c_str() && ConsumedAll(end);
}

int MString::asInt() const
{
    return static_cast<int>(std::strtol(text_.c_str(), nullptr, 10));
}

bool MString::isDouble() const
{
    if (text_.empty())
        return false;
    char* end = nullptr;
    std::strtod(text_.c_str(), &end);
    return end != text_.c_str() && ConsumedAll(end);
}

double MString::asDouble() const
{
    return std::strtod(text_.c_str(), nullptr);
}

MString MString::toLowerCase() const
{
    return MString(FromQString(ToQString(text_).toLower()).c_str());
}

MString MString::toUpperCase() const
{
    return MString(FromQString(ToQString(text_).toUpper()).c_str());
}

// As Maya's: empty pieces between repeated delimiters are not kept.
void MString::split(char delimiter, MStringArray& output) const
{
    output.clear();
    std::string piece;
    for (const char c : text_)
    {
        if (c != delimiter)
        {
            piece += c;
            continue;
        }
        if (!piece.empty())
            output.append(MString(piece.c_str(), static_cast<int>(piece.size())));
        piece.clear();
    }
    if (!piece.empty())
        output.append(MString(piece.c_str(), static_cast<int>(piece.size())));
}

// Declared in the API's namespace, where argument-dependent lookup finds it.
OPENMAYA_MAJOR_NAMESPACE_OPEN
MString operator+(const char* left, const MString& right)
{
    MString result(left);
    result += right;
    return result;
}
OPENMAYA_MAJOR_NAMESPACE_CLOSE
