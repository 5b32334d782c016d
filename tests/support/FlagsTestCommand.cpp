#include "FlagsTestCommand.h"

#include <maya/MArgDatabase.h>

QStringList FlagsTestCommand::flagsSeen;
QString FlagsTestCommand::openedFile;

MSyntax FlagsTestCommand::Syntax()
{
    MSyntax syntax;
    syntax.addFlag("-v", "-version");
    syntax.addFlag("-co", "-clearOutput");
    syntax.addFlag("-of", "-openFile", MSyntax::kString);
    syntax.addFlag("-tw", "-twice", MSyntax::kLong);
    syntax.addFlag("-h", "-half", MSyntax::kDouble);
    syntax.addFlag("-sz", "-size", MSyntax::kLong, MSyntax::kDouble);
    syntax.addFlag("-ls", "-list");
    syntax.addFlag("-f", "-fail");
    return syntax;
}

MStatus FlagsTestCommand::doIt(const MArgList& args)
{
    MStatus status;
    MArgDatabase database(syntax(), args, &status);
    if (!status)
        return status;
    flagsSeen.clear();
    for (const char* flag :
         {"-version", "-clearOutput", "-openFile", "-twice", "-half", "-size", "-list", "-fail"})
    {
        if (database.isFlagSet(flag))
            flagsSeen.append(QString::fromLatin1(flag));
    }
    MString text;
    int number = 0;
    double real = 0.0;
    if (database.isFlagSet("-v"))
        setResult("2.7.6");
    if (database.getFlagArgument("-of", 0, text))
        openedFile = QString::fromUtf8(text.asChar());
    if (database.getFlagArgument("-tw", 0, number))
        setResult(number * 2);
    if (database.getFlagArgument("-h", 0, real))
        setResult(real / 2);
    if (database.getFlagArgument("-sz", 0, number) && database.getFlagArgument("-sz", 1, real))
        setResult(MString(QStringLiteral("%1 %2").arg(number).arg(real).toUtf8().constData()));
    if (database.isFlagSet("-ls"))
    {
        appendToResult("a");
        appendToResult("b c");
    }
    if (database.isFlagSet("-f"))
    {
        displayError("asked to fail");
        return MStatus::kFailure;
    }
    MString joined;
    MString word;
    unsigned int count = 0;
    for (; database.getCommandArgument(count, word); ++count)
        joined += (count > 0 ? "|" : "") + word;
    if (database.numberOfFlagsUsed() == 0 && count > 0)
        setResult(joined);
    return status;
}
