#include "HostState.h"

#include <QtCore/QDir>

namespace
{
struct StateData
{
    bool batch = false;
    std::function<void()> quitHandler;
};

StateData& Data()
{
    static StateData data;
    return data;
}

// Read each time: tests point MAYA_APP_DIR somewhere new before anything reads it.
QString AppDir()
{
    QString dir = qEnvironmentVariable("MAYA_APP_DIR");
    if (dir.isEmpty())
        dir = QDir::homePath() + QStringLiteral("/maya");
    return QDir::cleanPath(dir);
}

QString EnsuredDir(const QString& path)
{
    QDir().mkpath(path);
    return path;
}
} // namespace

void HostState::SetBatch(bool batch)
{
    Data().batch = batch;
}

bool HostState::IsBatch()
{
    return Data().batch;
}

QString HostState::UserPrefDir()
{
    return EnsuredDir(QStringLiteral("%1/%2/prefs/").arg(AppDir(), MayaVersion()));
}

QString HostState::UserScriptDir()
{
    return EnsuredDir(QStringLiteral("%1/%2/scripts/").arg(AppDir(), MayaVersion()));
}

QString HostState::MayaAppDir()
{
    return EnsuredDir(AppDir() + QLatin1Char('/'));
}

QString HostState::MayaVersion()
{
    return QStringLiteral("2026");
}

void HostState::SetQuitHandler(std::function<void()> handler)
{
    Data().quitHandler = std::move(handler);
}

bool HostState::RequestQuit()
{
    // A copy: the handler may replace itself.
    const std::function<void()> handler = Data().quitHandler;
    if (!handler)
        return false;
    handler();
    return true;
}
