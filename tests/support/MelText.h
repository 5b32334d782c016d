#pragma once

#include <maya/MStatus.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

// MEL text run straight through the host's interpreter, as the host's own tests drive it, with
// the result read back as the type asked for. A failed run or a result of another type gives
// the marker value named below.
namespace MelText
{
MStatus Run(const QString& text);
// "<no string>" where there is none.
QString String(const QString& text);
// -12345 where there is none.
int Int(const QString& text);
// {"<no array>"} where there is none.
QStringList Array(const QString& text);
} // namespace MelText
