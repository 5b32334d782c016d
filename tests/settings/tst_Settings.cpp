#include "HostFixture.h"
#include "settings/Settings.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtTest/QtTest>

class TestSettings : public QObject
{
    Q_OBJECT

private:
    static QString ConfigPath() { return Settings::GetUserConfigPath(); }

    static void WriteRaw(const QByteArray& bytes)
    {
        QFile file(ConfigPath());
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }

    static void ExpectDefaults()
    {
        QCOMPARE(Settings::codeEditorVisible, true);
        QCOMPARE(Settings::sideBarLeft, true);
        QCOMPARE(Settings::outputOrientVertical, true);
        QCOMPARE(Settings::outputBufferSize, 3000);
        QCOMPARE(Settings::tabsSizePython, 4);
        QCOMPARE(Settings::codeEditorFont.family(), QStringLiteral("Liberation Mono"));
        QCOMPARE(Settings::codeEditorFont.pointSize(), 9);
        QCOMPARE(Settings::outputFont.pointSize(), 9);
        QCOMPARE(Settings::activeTabViewIndex, 0);
        QCOMPARE(Settings::windowGeometry, QRect());
        QCOMPARE(Settings::executeScriptOnIdle, false);
        QCOMPARE(Settings::pythonRevertModuleStateOnExecute, false);
        QVERIFY(Settings::recentFiles.isEmpty());
        QVERIFY(Settings::workspacePath.isEmpty());
    }

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

    void missingFileYieldsDefaults()
    {
        QVERIFY(!QFile::exists(ConfigPath()));
        Settings::ReadUserConfig();
        ExpectDefaults();
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
        QCOMPARE(Settings::recentFiles.first(), QStringLiteral("/4"));
        Settings::AddRecentFile(QStringLiteral("/2"));
        QCOMPARE(Settings::recentFiles, QStringList({"/2", "/4", "/3", "/1"}));
        Settings::AddRecentFile(QString());
        QCOMPARE(Settings::recentFiles.size(), 4);
        // Each addition is written at once.
        QSettings raw(ConfigPath(), QSettings::IniFormat);
        QCOMPARE(raw.value(QStringLiteral("main/recentFiles")).toStringList().first(), QStringLiteral("/2"));

        Settings::UpdateRecentFiles(11);
        QCOMPARE(Settings::numRecentFiles, 8);
        Settings::UpdateRecentFiles(-1);
        QCOMPARE(Settings::numRecentFiles, 8);
        Settings::UpdateRecentFiles(2);
        QCOMPARE(Settings::recentFiles, QStringList({"/2", "/4"}));
        Settings::UpdateRecentFiles(0);
        QVERIFY(Settings::recentFiles.isEmpty());

        Settings::UpdateRecentFiles(8);
        for (int i = 0; i < 12; ++i)
            Settings::AddRecentFile(QStringLiteral("/f%1").arg(i));
        QCOMPARE(Settings::recentFiles.size(), 8);
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

    void malformedValuesFallBackToDefaults()
    {
        WriteRaw("[main]\ncodeEditorVisible=perhaps\nwindowGeometry=nonsense\ncodeEditorZoom=abc\n"
                 "sideBarLeft=0\n[tabs]\nactiveTabViewIndex=7\n[preferences]\ncodeEditorFontSize=99\n"
                 "outputFontSize=-4\noutputBufferSize=lots\ntabsSizeMel=0\nsaveAllOnExit=false\n");
        Settings::ReadUserConfig();
        QCOMPARE(Settings::codeEditorVisible, true);
        QCOMPARE(Settings::windowGeometry, QRect());
        QCOMPARE(Settings::codeEditorZoom, 0);
        QCOMPARE(Settings::activeTabViewIndex, 0);
        QCOMPARE(Settings::codeEditorFont.pointSize(), 9);
        QCOMPARE(Settings::outputFont.pointSize(), 9);
        QCOMPARE(Settings::outputBufferSize, 3000);
        QCOMPARE(Settings::tabsSizeMel, 4);
        // Good values beside bad ones are still taken.
        QCOMPARE(Settings::sideBarLeft, false);
        QCOMPARE(Settings::saveAllOnExit, false);
    }

    void damagedFilesFallBackToDefaults_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QByteArray binary;
        for (int i = 0; i < 4096; ++i)
            binary.append(char((i * 7919) & 0xff));
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("binary") << binary;
        QTest::newRow("truncated") << QByteArray("[main]\ncodeEditorVisible=fal");
        QTest::newRow("not utf-8") << QByteArray("[main]\nrecentFiles=\xff\xfe\xc3\n[prefer");
        static const char withNuls[] = "[main]\0\0\0outputVisible=false";
        QTest::newRow("nul bytes") << QByteArray(withNuls, sizeof(withNuls) - 1);
    }

    void damagedFilesFallBackToDefaults()
    {
        QFETCH(QByteArray, bytes);
        WriteRaw(bytes);
        Settings::ReadUserConfig();
        QCOMPARE(Settings::codeEditorVisible, true);
        QCOMPARE(Settings::outputVisible, true);
        QCOMPARE(Settings::outputBufferSize, 3000);
        // And the next write leaves a file that reads back.
        Settings::outputBufferSize = 77;
        Settings::WriteUserConfig();
        Settings::ResetToDefaults();
        Settings::ReadUserConfig();
        QCOMPARE(Settings::outputBufferSize, 77);
    }

    void unreadableFileFallsBackToDefaults()
    {
        // A folder where the file should be cannot be read or replaced, even by root.
        QVERIFY(QDir().mkpath(ConfigPath()));
        Settings::ReadUserConfig();
        ExpectDefaults();
        Settings::WriteUserConfig();
        QVERIFY(QFileInfo(ConfigPath()).isDir());
    }

private:
    std::unique_ptr<HostFixture> fixture;
};

QTEST_MAIN(TestSettings)
#include "tst_Settings.moc"
