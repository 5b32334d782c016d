#include "plugin/Logger.h"

#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>

const MString Logger::PREFIX("[BrindletEditor2] ");

void Logger::Info(const MString& message)
{
    MGlobal::displayInfo(PREFIX + message);
}

void Logger::Info(const QString& message)
{
    Info(MQtUtil::toMString(message));
}

void Logger::Info(const char* message)
{
    Info(MString(message));
}

void Logger::Warning(const MString& message)
{
    MGlobal::displayWarning(PREFIX + message);
}

void Logger::Warning(const QString& message)
{
    Warning(MQtUtil::toMString(message));
}

void Logger::Warning(const char* message)
{
    Warning(MString(message));
}

void Logger::Error(const MString& message)
{
    MGlobal::displayError(PREFIX + message);
}

void Logger::Error(const QString& message)
{
    Error(MQtUtil::toMString(message));
}

void Logger::Error(const char* message)
{
    Error(MString(message));
}
