#include <maya/MArgParser.h>

#include "HostMel.h"
#include "HostSyntaxTable.h"

#include <cctype>
#include <cstring>

namespace
{
// "-x" is a flag, "-5" and "-.5" are numbers, a lone "-" is a value.
bool LooksLikeFlag(const MString& arg)
{
    const char* text = arg.asChar();
    return text[0] == '-' && std::isalpha(static_cast<unsigned char>(text[1]));
}

QString TypeWords(MSyntax::MArgType type)
{
    switch (type)
    {
    case MSyntax::kBoolean:
        return QStringLiteral("a boolean");
    case MSyntax::kLong:
    case MSyntax::kUnsigned:
        return QStringLiteral("an integer");
    case MSyntax::kDouble:
    case MSyntax::kDistance:
    case MSyntax::kAngle:
    case MSyntax::kTime:
        return QStringLiteral("a float");
    default:
        return QStringLiteral("a string");
    }
}

bool ValueFits(const MString& value, MSyntax::MArgType type)
{
    switch (type)
    {
    case MSyntax::kBoolean:
    {
        const MString lower = value.toLowerCase();
        return value.isDouble() || lower == "true" || lower == "false" || lower == "on" || lower == "off" ||
               lower == "yes" || lower == "no";
    }
    case MSyntax::kLong:
    case MSyntax::kUnsigned:
        return value.isInt();
    case MSyntax::kDouble:
    case MSyntax::kDistance:
    case MSyntax::kAngle:
    case MSyntax::kTime:
        return value.isDouble();
    default:
        return true;
    }
}

QString DisplayName(const HostSyntaxTable::Flag& flag)
{
    return QString::fromStdString(flag.longName.empty() ? flag.shortName : flag.longName);
}
} // namespace

MArgParser::MArgParser() = default;

MArgParser::MArgParser(const MSyntax& syntax, const MArgList& argList, MStatus* returnStatus)
    : syntax_(syntax)
{
    MStatus status;
    const unsigned int count = argList.length();
    for (unsigned int i = 0; i < count && status; ++i)
    {
        const MString arg = argList.asString(i);
        if (!LooksLikeFlag(arg))
        {
            commandArgs_.push_back(arg);
            continue;
        }
        const HostSyntaxTable::Flag* flag = HostSyntaxTable::Find(syntax_, arg.asChar());
        if (!flag)
        {
            HostMel::ReportError(QStringLiteral("Invalid flag '%1'").arg(QString::fromUtf8(arg.asChar())));
            status = MStatus::kInvalidParameter;
            break;
        }
        std::vector<MString>& values = values_[flag->shortName];
        for (const MSyntax::MArgType type : flag->argTypes)
        {
            const bool present = i + 1 < count;
            const MString value = present ? argList.asString(i + 1) : MString();
            if (!present || !ValueFits(value, type))
            {
                HostMel::ReportError(QStringLiteral("Flag '%1' must be passed %2 argument")
                                         .arg(DisplayName(*flag), TypeWords(type)));
                status = MStatus::kInvalidParameter;
                break;
            }
            values.push_back(value);
            ++i;
        }
    }
    if (!status)
    {
        values_.clear();
        commandArgs_.clear();
    }
    if (returnStatus)
        *returnStatus = status;
}

MArgParser::~MArgParser() = default;

bool MArgParser::isFlagSet(const char* flag, MStatus* returnStatus) const
{
    const std::string name = shortNameOf(flag);
    if (returnStatus)
        *returnStatus = name.empty() ? MStatus::kInvalidParameter : MStatus::kSuccess;
    return !name.empty() && values_.count(name) > 0;
}

unsigned int MArgParser::numberOfFlagsUsed() const
{
    return static_cast<unsigned int>(values_.size());
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, MString& result) const
{
    const std::string name = shortNameOf(flag);
    if (name.empty())
        return MStatus::kInvalidParameter;
    const auto it = values_.find(name);
    if (it == values_.end() || index >= it->second.size())
        return MStatus::kFailure;
    result = it->second[index];
    return MStatus::kSuccess;
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, int& result) const
{
    MString text;
    const MStatus status = getFlagArgument(flag, index, text);
    if (!status)
        return status;
    if (!text.isInt())
        return MStatus::kInvalidParameter;
    result = text.asInt();
    return MStatus::kSuccess;
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, double& result) const
{
    MString text;
    const MStatus status = getFlagArgument(flag, index, text);
    if (!status)
        return status;
    if (!text.isDouble())
        return MStatus::kInvalidParameter;
    result = text.asDouble();
    return MStatus::kSuccess;
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, bool& result) const
{
    MString text;
    const MStatus status = getFlagArgument(flag, index, text);
    if (!status)
        return status;
    MArgList list;
    list.addArg(text);
    MStatus converted;
    result = list.asBool(0, &converted);
    return converted;
}

MStatus MArgParser::getCommandArgument(unsigned int index, MString& result) const
{
    if (index >= commandArgs_.size())
        return MStatus::kInvalidParameter;
    result = commandArgs_[index];
    return MStatus::kSuccess;
}

std::string MArgParser::shortNameOf(const char* flag) const
{
    const HostSyntaxTable::Flag* found = HostSyntaxTable::Find(syntax_, flag);
    return found ? found->shortName : std::string();
}
