#include "HostMelValue.h"

#include <QtCore/QRegularExpression>

#include <cmath>
#include <limits>

namespace
{
// MEL ints are 32 bits and wrap; values outside the range are folded without undefined behaviour.
int ToInt32(double value)
{
    if (!std::isfinite(value))
        return 0;
    const double truncated = std::trunc(value);
    if (truncated >= -2147483648.0 && truncated <= 2147483647.0)
        return static_cast<int>(truncated);
    const double folded = std::fmod(truncated, 4294967296.0);
    const auto bits = static_cast<quint32>(static_cast<qint64>(folded));
    return static_cast<int>(bits);
}
} // namespace

HostMelValue HostMelValue::FromInt(int value)
{
    HostMelValue result;
    result.type_ = Type::Int;
    result.number_ = value;
    return result;
}

HostMelValue HostMelValue::FromFloat(double value)
{
    HostMelValue result;
    result.type_ = Type::Float;
    result.number_ = value;
    return result;
}

HostMelValue HostMelValue::FromString(const QString& value)
{
    HostMelValue result;
    result.type_ = Type::String;
    result.string_ = value;
    return result;
}

HostMelValue HostMelValue::FromStringList(const QStringList& values)
{
    HostMelValue result;
    result.type_ = Type::StringArray;
    result.strings_ = values;
    return result;
}

HostMelValue HostMelValue::FromNumbers(const QList<double>& values, bool integers)
{
    HostMelValue result;
    result.type_ = integers ? Type::IntArray : Type::FloatArray;
    for (const double value : values)
        result.numbers_.append(integers ? ToInt32(value) : value);
    return result;
}

HostMelValue HostMelValue::Default(Type type)
{
    HostMelValue result;
    result.type_ = type;
    return result;
}

HostMelValue HostMelValue::FromCommandResult(const MCommandResult& result)
{
    switch (result.resultType())
    {
    case MCommandResult::kInt:
    {
        int value = 0;
        result.getResult(value);
        return FromInt(value);
    }
    case MCommandResult::kDouble:
    {
        double value = 0.0;
        result.getResult(value);
        return FromFloat(value);
    }
    case MCommandResult::kString:
    {
        MString value;
        result.getResult(value);
        return FromString(QString::fromUtf8(value.asChar()));
    }
    case MCommandResult::kStringArray:
    {
        MStringArray values;
        result.getResult(values);
        QStringList list;
        for (unsigned int i = 0; i < values.length(); ++i)
            list.append(QString::fromUtf8(values[i].asChar()));
        return FromStringList(list);
    }
    default:
        return HostMelValue();
    }
}

bool HostMelValue::IsArray() const
{
    return IsArrayType(type_);
}

bool HostMelValue::IsArrayType(Type type)
{
    return type == Type::IntArray || type == Type::FloatArray || type == Type::StringArray;
}

HostMelValue::Type HostMelValue::ElementType(Type arrayType)
{
    switch (arrayType)
    {
    case Type::IntArray:
        return Type::Int;
    case Type::FloatArray:
        return Type::Float;
    case Type::StringArray:
        return Type::String;
    default:
        return arrayType;
    }
}

HostMelValue::Type HostMelValue::ArrayType(Type elementType)
{
    switch (elementType)
    {
    case Type::Int:
        return Type::IntArray;
    case Type::Float:
        return Type::FloatArray;
    case Type::String:
        return Type::StringArray;
    default:
        return elementType;
    }
}

int HostMelValue::ToInt() const
{
    return ToInt32(ToDouble());
}

double HostMelValue::ToDouble() const
{
    switch (type_)
    {
    case Type::Int:
    case Type::Float:
        return number_;
    case Type::String:
        return LeadingNumber(string_);
    default:
        return 0.0;
    }
}

QString HostMelValue::ToString() const
{
    switch (type_)
    {
    case Type::Int:
        return QString::number(ToInt32(number_));
    case Type::Float:
        return FormatFloat(number_);
    case Type::String:
        return string_;
    case Type::None:
        return QString();
    default:
        return DisplayText();
    }
}

QStringList HostMelValue::ToStringList() const
{
    switch (type_)
    {
    case Type::None:
        return QStringList();
    case Type::StringArray:
        return strings_;
    case Type::IntArray:
    case Type::FloatArray:
    {
        QStringList list;
        for (int i = 0; i < Size(); ++i)
            list.append(At(i).ToString());
        return list;
    }
    default:
        return QStringList{ToString()};
    }
}

bool HostMelValue::IsTrue() const
{
    if (IsArray())
        return Size() > 0;
    return ToDouble() != 0.0;
}

int HostMelValue::Size() const
{
    switch (type_)
    {
    case Type::StringArray:
        return static_cast<int>(strings_.size());
    case Type::IntArray:
    case Type::FloatArray:
        return static_cast<int>(numbers_.size());
    case Type::String:
        return static_cast<int>(string_.size());
    default:
        return 0;
    }
}

HostMelValue HostMelValue::At(int index) const
{
    const bool inRange = index >= 0 && index < Size();
    switch (type_)
    {
    case Type::StringArray:
        return FromString(inRange ? strings_.at(index) : QString());
    case Type::IntArray:
        return FromInt(inRange ? ToInt32(numbers_.at(index)) : 0);
    case Type::FloatArray:
        return FromFloat(inRange ? numbers_.at(index) : 0.0);
    default:
        return HostMelValue();
    }
}

void HostMelValue::SetAt(int index, const HostMelValue& element)
{
    if (index < 0 || !IsArray())
        return;
    if (type_ == Type::StringArray)
    {
        while (strings_.size() <= index)
            strings_.append(QString());
        strings_[index] = element.ToString();
        return;
    }
    while (numbers_.size() <= index)
        numbers_.append(0.0);
    numbers_[index] = type_ == Type::IntArray ? element.ToInt() : element.ToDouble();
}

void HostMelValue::Append(const HostMelValue& element)
{
    SetAt(Size(), element);
}

bool HostMelValue::ConvertTo(Type type, HostMelValue& result) const
{
    if (type == type_ || type == Type::None)
    {
        result = *this;
        return true;
    }
    if (IsArray() != IsArrayType(type) || type_ == Type::None)
    {
        if (type_ != Type::None)
            return false;
        result = Default(type);
        return true;
    }
    if (!IsArray())
    {
        if (type == Type::Int)
            result = FromInt(ToInt());
        else if (type == Type::Float)
            result = FromFloat(ToDouble());
        else
            result = FromString(ToString());
        return true;
    }
    result = Default(type);
    for (int i = 0; i < Size(); ++i)
        result.Append(At(i));
    return true;
}

void HostMelValue::ToCommandResult(HostCommandResult& result) const
{
    switch (type_)
    {
    case Type::Int:
        result.setInt(ToInt());
        break;
    case Type::Float:
        result.setDouble(number_);
        break;
    case Type::String:
        result.setString(MString(string_.toUtf8().constData()));
        break;
    case Type::IntArray:
    case Type::FloatArray:
    case Type::StringArray:
    {
        MStringArray items;
        for (const QString& item : ToStringList())
            items.append(MString(item.toUtf8().constData()));
        result.setStringArray(items);
        break;
    }
    case Type::None:
        result.reset();
        break;
    }
}

QString HostMelValue::DisplayText() const
{
    if (IsArray())
        return ToStringList().join(QLatin1Char(' '));
    return ToString();
}

QString HostMelValue::FormatFloat(double value)
{
    return QString::number(value, 'g', 10);
}

double HostMelValue::LeadingNumber(const QString& text)
{
    static const QRegularExpression number(
        QStringLiteral("^\\s*[-+]?(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][-+]?\\d+)?"));
    const QRegularExpressionMatch match = number.match(text);
    return match.hasMatch() ? match.captured(0).trimmed().toDouble() : 0.0;
}
