// The three INI files as the plug-in reads them at load: whatever bytes lie in the user's
// preferences folder. The first byte picks the file.
#include "FuzzInput.h"
#include "HostApplication.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

namespace
{
HostApplication* host = nullptr;

void Write(const QString& path, const uint8_t* data, size_t size)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    static QTemporaryDir appDir;
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz_IniReaders";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);
    host = new HostApplication(true);
    ColorSettings::Initialize();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    switch (data[0] % 3)
    {
    case 0:
        Write(Settings::GetUserConfigPath(), data + 1, size - 1);
        Settings::ResetToDefaults();
        Settings::ReadUserConfig();
        break;
    case 1:
        Write(ColorSettings::GetUserConfigPath(), data + 1, size - 1);
        ColorSettings::Initialize();
        ColorSettings::ReadUserConfig();
        break;
    default:
    {
        Write(KeyBindings::GetUserKeyBindingsPath(), data + 1, size - 1);
        KeyBindings bindings;
        bindings.ReadUserKeyBindings();
        break;
    }
    }
    return 0;
}
