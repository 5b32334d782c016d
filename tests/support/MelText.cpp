#include "MelText.h"

#include "HostCommandResult.h"
#include "HostMel.h"

#include <maya/MStringArray.h>

MStatus MelText::Run(const QString& text)
{
    return HostMel::Execute(text, nullptr, false);
}

QString MelText::String(const QString& text)
{
    HostCommandResult result;
    MString value;
    if (!HostMel::Execute(text, &result, false) || !result.getResult(value))
        return QStringLiteral("<no string>");
    return QString::fromUtf8(value.asChar());
}

int MelText::Int(const QString& text)
{
    HostCommandResult result;
    int value = -12345;
    if (!HostMel::Execute(text, &result, false) || !result.getResult(value))
        return -12345;
    return value;
}

QStringList MelText::Array(const QString& text)
{
    HostCommandResult result;
    MStringArray values;
    if (!HostMel::Execute(text, &result, false) || !result.getResult(values))
        return QStringList{QStringLiteral("<no array>")};
    QStringList list;
    for (unsigned int i = 0; i < values.length(); ++i)
        list.append(QString::fromUtf8(values[i].asChar()));
    return list;
}
