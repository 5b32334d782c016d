#include "HostFixture.h"
#include "TestFiles.h"
#include "settings/Settings.h"

#include <QtTest/QtTest>

#include <functional>

namespace
{
struct IntSetting
{
    const char* key;
    int minimum;
    int maximum;
    std::function<int()> current;
};

// Every whole-number setting with its limits and the value it holds; "numRecentFiles" is set by
// the preferences, not read.
const IntSetting INT_SETTINGS[] = {
    {"main/codeEditorZoom", -100, 100, [] { return Settings::codeEditorZoom; }},
    {"main/outputZoom", -100, 100, [] { return Settings::outputZoom; }},
    {"tabs/activeTabViewIndex", 0, 2, [] { return Settings::activeTabViewIndex; }},
    {"preferences/tabsSizeDefault", 1, 32, [] { return Settings::tabsSizeDefault; }},
    {"preferences/tabsSizeMel", 1, 32, [] { return Settings::tabsSizeMel; }},
    {"preferences/tabsSizePython", 1, 32, [] { return Settings::tabsSizePython; }},
    {"preferences/outputBufferSize", 0, 100000000, [] { return Settings::outputBufferSize; }},
    {"preferences/codeEditorFontSize", 6, 24, [] { return Settings::codeEditorFont.pointSize(); }},
    {"preferences/outputFontSize", 6, 24, [] { return Settings::outputFont.pointSize(); }},
    {"numRecentFiles", 0, 10, [] { return Settings::numRecentFiles; }},
};

int Current(const QString& key)
{
    for (const IntSetting& setting : INT_SETTINGS)
    {
        if (key == QLatin1String(setting.key))
            return setting.current();
    }
    return -12345;
}
} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private:
    static QString ConfigPath() { return Settings::GetUserConfigPath(); }

    static void WriteRaw(const QByteArray& bytes) { QVERIFY(TestFiles::Write(ConfigPath(), bytes)); }

private slots:
    void init() { fixture = std::make_unique<HostFixture>(); }

    void cleanup() { fixture.reset(); }

    void directoriesLiveUnderTheHostPrefsFolder()
    {
        const QString expected =
            QDir(fixture->AppDir()).filePath(QStringLiteral("2026/prefs/brindletEditor2"));
        QCOMPARE(QDir(Settings::GetUserConfigDirectory()).absolutePath(), expected);
        QCOMPARE(ConfigPath(), expected + QStringLiteral("/brindletEditor2.ini"));
        for (const QString& name :
             {QStringLiteral("internalBuffers"), QStringLiteral("temp"), QStringLiteral("workspaces")})
            QVERIFY(!QDir(expected + QLatin1Char('/') + name).exists());
        QCOMPARE(Settings::GetInternalBufferDirectoryPath(), expected + QStringLiteral("/internalBuffers"));
        QCOMPARE(Settings::GetTempDirectoryPath(), expected + QStringLiteral("/temp"));
        QVERIFY(QDir(expected + QStringLiteral("/internalBuffers")).exists());
        QVERIFY(QDir(expected + QStringLiteral("/temp")).exists());
        QCOMPARE(Settings::GetWorkspacePath(),
                 expected + QStringLiteral("/workspaces/default.bq2-workspace"));
        QVERIFY(QDir(expected + QStringLiteral("/workspaces")).exists());
    }

    void valuesRoundTripThroughTheFile()
    {
        const QString workspace =
            Settings::GetWorkspacesDirectoryPath() + QStringLiteral("/mine.bq2-workspace");
        Settings::windowGeometry = QRect(10, 20, 640, 480);
        Settings::recentFiles = {QStringLiteral("/a, b.py"), QStringLiteral("/c.mel")};
        Settings::sideBarLeft = false;
        Settings::outputState = QByteArray("\x00\x01\xff", 3);
        Settings::codeEditorZoom = -3;
        Settings::tabDetails = {QStringLiteral("0|1|/x.py|x.py|0|0|0")};
        Settings::activeTabViewIndex = 2;
        Settings::workspacePath = workspace;
        Settings::workspaceExpandedFolderHashes = {QByteArray(16, 'a'), QByteArray(16, 'b')};
        Settings::outlineExpandedHash.insert(QStringLiteral("/x.py"), QStringLiteral("MyClass"));
        Settings::outlineExpandedHash.insert(QStringLiteral("/x.py"), QStringLiteral("other"));
        Settings::outlineHideImports = false;
        Settings::alwaysShowEditorAndOutputOnStartup = false;
        Settings::codeEditorFont.setFamily(QStringLiteral("DejaVu Sans Mono"));
        Settings::codeEditorFont.setPointSize(14);
        Settings::outputBufferSize = 12345;
        Settings::pythonForcedImports = QStringLiteral("import os;from sys import path");
        Settings::pylintAdditionalPythonPaths = QStringLiteral("/opt/lib:/srv");
        Settings::WriteUserConfig();

        // The file itself, as another program would read it.
        QSettings raw(ConfigPath(), QSettings::IniFormat);
        QCOMPARE(raw.value(QStringLiteral("main/version")).toInt(), 1);
        QCOMPARE(raw.value(QStringLiteral("workspace/workspacePath")).toString(),
                 QStringLiteral("mine.bq2-workspace"));
        QCOMPARE(raw.value(QStringLiteral("preferences/alwaysShowEditorAndOutputOnStartUp")).toBool(), false);
        QCOMPARE(raw.value(QStringLiteral("preferences/pylintAdditionalImportPaths")).toString(),
                 QStringLiteral("/opt/lib:/srv"));
        QCOMPARE(raw.value(QStringLiteral("preferences/codeEditorFontSize")).toInt(), 14);
        QCOMPARE(raw.value(QStringLiteral("workspace/workspaceState")).toByteArray().size(), 32);

        Settings::ResetToDefaults();
        Settings::ReadUserConfig();
        QCOMPARE(Settings::windowGeometry, QRect(10, 20, 640, 480));
        QCOMPARE(Settings::recentFiles, QStringList({QStringLiteral("/a, b.py"), QStringLiteral("/c.mel")}));
        QCOMPARE(Settings::sideBarLeft, false);
        QCOMPARE(Settings::outputState, QByteArray("\x00\x01\xff", 3));
        QCOMPARE(Settings::codeEditorZoom, -3);
        QCOMPARE(Settings::tabDetails.size(), 1);
        QCOMPARE(Settings::activeTabViewIndex, 2);
        QCOMPARE(Settings::workspacePath, workspace);
        QCOMPARE(Settings::workspaceExpandedFolderHashes.size(), 2);
        QCOMPARE(Settings::outlineExpandedHash.values(QStringLiteral("/x.py")).size(), 2);
        QCOMPARE(Settings::outlineHideImports, false);
        QCOMPARE(Settings::codeEditorFont.family(), QStringLiteral("DejaVu Sans Mono"));
        QCOMPARE(Settings::codeEditorFont.pointSize(), 14);
        QCOMPARE(Settings::outputBufferSize, 12345);
        QCOMPARE(Settings::pythonForcedImports, QStringLiteral("import os;from sys import path"));
        QCOMPARE(Settings::pylintAdditionalPythonPaths, QStringLiteral("/opt/lib:/srv"));
    }

    void workspacePathOutsideTheFolderStaysAbsolute()
    {
        Settings::workspacePath = QStringLiteral("/projects/game.bq2-workspace");
        Settings::WriteUserConfig();
        QSettings raw(ConfigPath(), QSettings::IniFormat);
        QCOMPARE(raw.value(QStringLiteral("workspace/workspacePath")).toString(),
                 QStringLiteral("/projects/game.bq2-workspace"));
    }

    void revertModuleStateStartsOffUnlessTheUserAllowsIt()
    {
        WriteRaw("[preferences]\npythonRevertModuleStateOnExecute=true\n");
        Settings::ReadUserConfig();
        QCOMPARE(Settings::pythonRevertModuleStateOnExecute, false);

        WriteRaw("[preferences]\npythonRevertModuleStateOnExecute=true\n"
                 "pythonDisableRevertModuleStateOnExecuteOnStartup=false\n");
        Settings::ReadUserConfig();
        QCOMPARE(Settings::pythonRevertModuleStateOnExecute, true);
    }

    void visibilityIsMadeSane_data()
    {
        QTest::addColumn<bool>("always");
        QTest::addColumn<bool>("editors");
        QTest::addColumn<bool>("output");
        QTest::addColumn<bool>("expectEditors");
        QTest::addColumn<bool>("expectOutput");
        QTest::addColumn<bool>("stateKept");
        QTest::newRow("never both hidden") << false << false << false << true << false << true;
        QTest::newRow("output hidden stays") << false << true << false << true << false << true;
        QTest::newRow("editors hidden stay") << false << false << true << false << true << true;
        QTest::newRow("always shows both") << true << true << false << true << true << false;
        QTest::newRow("always, both shown") << true << true << true << true << true << true;
    }

    void visibilityIsMadeSane()
    {
        QFETCH(bool, always);
        QFETCH(bool, editors);
        QFETCH(bool, output);
        Settings::alwaysShowEditorAndOutputOnStartup = always;
        Settings::codeEditorVisible = editors;
        Settings::outputVisible = output;
        Settings::outputState = QByteArray("state");
        Settings::WriteUserConfig();
        Settings::ResetToDefaults();
        Settings::ReadUserConfig();
        QTEST(Settings::codeEditorVisible, "expectEditors");
        QTEST(Settings::outputVisible, "expectOutput");
        QFETCH(bool, stateKept);
        QCOMPARE(Settings::outputState.isEmpty(), !stateKept);
    }

    void recentFilesKeepTheNewestFirst()
    {
        for (const char* path : {"/1", "/2", "/3", "/4"})
            Settings::AddRecentFile(QString::fromLatin1(path));
        QCOMPARE(Settings::recentFiles.value(0), QStringLiteral("/4"));
        Settings::AddRecentFile(QStringLiteral("/2"));
        QCOMPARE(Settings::recentFiles, QStringList({"/2", "/4", "/3", "/1"}));
        Settings::AddRecentFile(QString());
        QCOMPARE(Settings::recentFiles.size(), 4);
        // Each addition is written at once.
        QSettings raw(ConfigPath(), QSettings::IniFormat);
        QCOMPARE(raw.value(QStringLiteral("main/recentFiles")).toStringList().value(0), QStringLiteral("/2"));

        Settings::UpdateRecentFiles(2);
        QCOMPARE(Settings::recentFiles, QStringList({"/2", "/4"}));
        Settings::ClearRecentFiles();
        Settings::ReadUserConfig();
        QVERIFY(Settings::recentFiles.isEmpty());
    }

    void workspaceStateIsCutIntoHashes()
    {
        Settings::RestoreWorkspaceState(QByteArray(40, 'x'));
        QCOMPARE(Settings::workspaceExpandedFolderHashes.size(), 3);
        QCOMPARE(Settings::workspaceExpandedFolderHashes.last().size(), 8);
        QCOMPARE(Settings::GetWorkspaceState(), QByteArray(40, 'x'));
    }

    void damagedOutlineStateLeavesNoHalfHash()
    {
        Settings::outlineExpandedHash.insert(QStringLiteral("/a.py"), QStringLiteral("A"));
        QByteArray bytes = Settings::GetOutlineExpandedState();
        Settings::RestoreOutlineExpandedState(bytes.left(bytes.size() - 3));
        QVERIFY(Settings::outlineExpandedHash.isEmpty());
    }

    void integerSettingsAtTheirLimits_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("taken");
        for (const IntSetting& setting : INT_SETTINGS)
        {
            const auto row = [&](const char* what, int value, bool taken)
            {
                QTest::addRow("%s %s", setting.key, what)
                    << QString::fromLatin1(setting.key) << QString::number(value) << taken;
            };
            row("at its minimum", setting.minimum, true);
            row("at its maximum", setting.maximum, true);
            row("below its minimum", setting.minimum - 1, false);
            row("above its maximum", setting.maximum + 1, false);
        }
        QTest::newRow("not a number") << "main/codeEditorZoom"
                                      << "abc" << false;
        QTest::newRow("a word") << "preferences/outputBufferSize"
                                << "lots" << false;
        QTest::newRow("spaces around") << "preferences/tabsSizeMel"
                                       << " 12 " << true;
    }

    void integerSettingsAtTheirLimits()
    {
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(bool, taken);
        const int fallback = Current(key);
        const int number = value.trimmed().toInt();
        if (key == QLatin1String("numRecentFiles"))
        {
            Settings::UpdateRecentFiles(number);
            // The length of the list follows the number taken.
            for (int i = 0; i < 12; ++i)
                Settings::AddRecentFile(QStringLiteral("/f%1").arg(i));
            QCOMPARE(Settings::recentFiles.size(), taken ? number : fallback);
        }
        else
        {
            const QString group = key.section(QLatin1Char('/'), 0, 0);
            WriteRaw(QStringLiteral("[%1]\n%2=%3\n[main]\nsideBarLeft=0\n")
                         .arg(group, key.section(QLatin1Char('/'), 1), value)
                         .toUtf8());
            Settings::ReadUserConfig();
            // A bad value beside good ones leaves the good ones taken.
            QCOMPARE(Settings::sideBarLeft, false);
        }
        QCOMPARE(Current(key), taken ? number : fallback);
    }

    void booleanSpellings_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("expected");
        // -1: not a boolean, each key keeps its default (sideBarLeft true, renderWhitespace false).
        QTest::newRow("true") << QByteArray("true") << 1;
        QTest::newRow("false") << QByteArray("false") << 0;
        QTest::newRow("one") << QByteArray("1") << 1;
        QTest::newRow("zero") << QByteArray("0") << 0;
        QTest::newRow("upper case, spaces") << QByteArray("\" FALSE \"") << 0;
        QTest::newRow("perhaps") << QByteArray("perhaps") << -1;
        QTest::newRow("empty") << QByteArray("") << -1;
        QTest::newRow("a rectangle") << QByteArray("@Rect(1 2 3 4)") << -1;
    }

    void booleanSpellings()
    {
        QFETCH(QByteArray, value);
        QFETCH(int, expected);
        WriteRaw("[main]\nsideBarLeft=" + value + "\nrenderWhitespace=" + value +
                 "\nwindowGeometry=nonsense\n");
        Settings::ReadUserConfig();
        QCOMPARE(Settings::sideBarLeft, expected < 0 || expected == 1);
        QCOMPARE(Settings::renderWhitespace, expected == 1);
        QCOMPARE(Settings::windowGeometry, QRect());
    }

private:
    std::unique_ptr<HostFixture> fixture;
};

QTEST_MAIN(TestSettings)
#include "tst_Settings.moc"
