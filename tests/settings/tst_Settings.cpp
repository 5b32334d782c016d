// The three configuration stores, the settings, the colours and the key bindings: where their files
// live, what each reads back, and what they make of damaged, unreadable and odd files.
#include "HostFixture.h"
#include "TestFiles.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"

#include <QtGui/QAction>
#include <QtTest/QtTest>
#include <QtWidgets/QWidget>

#include <functional>
#include <memory>

using T = KeySequenceType;

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

const QByteArray UNREADABLE = QByteArrayLiteral("<a folder where the file should be>");
const QByteArray MISSING = QByteArrayLiteral("<no file at all>");

QByteArray Garbage(int size)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes.append(char((i * 7919 + i / 13) % 256));
    return bytes;
}
} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<KeyBindings> storeBindings; // the damaged stores' bindings
    QWidget window;

    static void WriteRaw(const QString& store, const QByteArray& bytes)
    {
        QVERIFY(TestFiles::Write(Path(store), bytes));
    }

    static QString CodeEditorString(const QString& key, bool useDefault = false)
    {
        return ColorSettings::GetFormatString(ColorSettings::GetCodeEditorFormat(key, useDefault));
    }

    static QStringList SelectionNames()
    {
        QStringList names;
        for (const ExtraSelectionProperties& selection :
             std::as_const(ColorSettings::outputUserDefinedSelections))
            names.append(selection.name);
        return names;
    }

    static QStringList FactorySelectionNames()
    {
        return {"Errors (Python)", "Errors (MEL)",     "Warnings (Python)",
                "Warnings (MEL)",  "Results (Python)", "Results (MEL)"};
    }

    static QKeySequence Keys(const char* text)
    {
        return QKeySequence(QString::fromLatin1(text), QKeySequence::PortableText);
    }

    // Every row gets an action, as the main widget does when it builds its menus.
    void AttachActions(KeyBindings& bindings)
    {
        for (const KeySequence* row : bindings.GetKeySequences())
        {
            auto* action = new QAction(row->label, &window);
            window.addAction(action);
            bindings.SetAction(row->type, action);
        }
    }

    static QList<KeySequence> Edited(const KeyBindings& bindings,
                                     const QList<QPair<T, QList<QKeySequence>>>& changes)
    {
        QList<KeySequence> rows;
        for (const KeySequence* row : bindings.GetKeySequences())
        {
            rows.append(*row);
            for (const auto& change : changes)
                rows.last().userSequences =
                    row->type == change.first ? change.second : rows.last().userSequences;
        }
        return rows;
    }

    // One store, by the name of its file: where it lives, how it is read and written, and one
    // value of it that the test changes and expects back.
    static QString Path(const QString& store)
    {
        if (store == QLatin1String("colors"))
            return ColorSettings::GetUserConfigPath();
        if (store == QLatin1String("bindings"))
            return KeyBindings::GetUserKeyBindingsPath();
        return Settings::GetUserConfigPath();
    }

    void Read(const QString& store)
    {
        if (store == QLatin1String("colors"))
            ColorSettings::ReadUserConfig();
        else if (store == QLatin1String("bindings"))
            storeBindings->ReadUserKeyBindings();
        else
            Settings::ReadUserConfig();
    }

    void Write(const QString& store)
    {
        if (store == QLatin1String("colors"))
            ColorSettings::WriteUserConfig();
        else if (store == QLatin1String("bindings"))
            storeBindings->WriteUserKeyBindings();
        else
            Settings::WriteUserConfig();
    }

    QString Value(const QString& store) const
    {
        if (store == QLatin1String("colors"))
            return CodeEditorString(ColorSettings::MEL_KEYWORDS);
        if (store == QLatin1String("bindings"))
            return storeBindings->GetShortcut(KeySequenceType::Find).toString(QKeySequence::PortableText) +
                   QLatin1Char('|') +
                   storeBindings->GetKeySequence(KeySequenceType::Execute)
                       ->action->shortcut()
                       .toString(QKeySequence::PortableText);
        return QStringLiteral("%1|%2|%3")
            .arg(Settings::outputBufferSize)
            .arg(Settings::codeEditorVisible)
            .arg(Settings::codeEditorFont.pointSize());
    }

    void Change(const QString& store)
    {
        if (store == QLatin1String("colors"))
            ColorSettings::LoadFormatString(
                *ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MEL_KEYWORDS),
                QStringLiteral("0,0,900,0,0"));
        else if (store == QLatin1String("bindings"))
            storeBindings->UpdateUserSequences(Edited(*storeBindings, {{T::Find, {Keys("F9")}}}));
        else
            Settings::outputBufferSize = 77;
    }

    void MakeBindings()
    {
        storeBindings = std::make_unique<KeyBindings>();
        qDeleteAll(window.actions());
        AttachActions(*storeBindings);
        storeBindings->Update();
    }

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
        qDeleteAll(window.actions());
    }

    void cleanup()
    {
        storeBindings.reset();
        fixture.reset();
    }

    void directoriesLiveUnderTheHostPrefsFolder()
    {
        const QString expected =
            QDir(fixture->AppDir()).filePath(QStringLiteral("2026/prefs/brindletEditor2"));
        QCOMPARE(QDir(Settings::GetUserConfigDirectory()).absolutePath(), expected);
        QCOMPARE(Settings::GetUserConfigPath(), expected + QStringLiteral("/brindletEditor2.ini"));
        const QStringList folders = {"internalBuffers", "temp", "workspaces"};
        for (const QString& name : folders)
            QVERIFY(!QDir(expected + QLatin1Char('/') + name).exists());
        QCOMPARE(Settings::GetInternalBufferDirectoryPath(), expected + "/internalBuffers");
        QCOMPARE(Settings::GetTempDirectoryPath(), expected + "/temp");
        QCOMPARE(Settings::GetWorkspacePath(), expected + "/workspaces/default.bq2-workspace");
        for (const QString& name : folders)
            QVERIFY(QDir(expected + QLatin1Char('/') + name).exists());
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
        QSettings raw(Settings::GetUserConfigPath(), QSettings::IniFormat);
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

        // A workspace outside the workspaces folder keeps its whole path.
        const QString outside = QStringLiteral("/projects/game.bq2-workspace");
        Settings::workspacePath = outside;
        Settings::WriteUserConfig();
        raw.sync();
        QCOMPARE(raw.value(QStringLiteral("workspace/workspacePath")).toString(), outside);
    }

    void revertModuleStateStartsOffUnlessTheUserAllowsIt()
    {
        WriteRaw("settings", "[preferences]\npythonRevertModuleStateOnExecute=true\n");
        Settings::ReadUserConfig();
        QCOMPARE(Settings::pythonRevertModuleStateOnExecute, false);

        WriteRaw("settings", "[preferences]\npythonRevertModuleStateOnExecute=true\n"
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
        QSettings raw(Settings::GetUserConfigPath(), QSettings::IniFormat);
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
        // A damaged outline record leaves no half hash.
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
        QTest::newRow("not a number") << QString("main/codeEditorZoom") << QString("abc") << false;
        QTest::newRow("a word") << QString("preferences/outputBufferSize") << QString("lots") << false;
        QTest::newRow("spaces around") << QString("preferences/tabsSizeMel") << QString(" 12 ") << true;
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
            WriteRaw("settings", QStringLiteral("[%1]\n%2=%3\n[main]\nsideBarLeft=0\n")
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
        WriteRaw("settings", "[main]\nsideBarLeft=" + value + "\nrenderWhitespace=" + value +
                                 "\nwindowGeometry=nonsense\n");
        Settings::ReadUserConfig();
        QCOMPARE(Settings::sideBarLeft, expected < 0 || expected == 1);
        QCOMPARE(Settings::renderWhitespace, expected == 1);
        QCOMPARE(Settings::windowGeometry, QRect());
    }

    void tablesHaveTheirShape()
    {
        // Thirty rows: the twelve editor parts, then the language rows whose font styles the user
        // may change; only the current line and the find selection colour the whole width.
        const QStringList& keys = ColorSettings::codeEditorHighlightOrderedKeys;
        QCOMPARE(keys.size(), 30);
        for (int i = 0; i < keys.size(); ++i)
        {
            const HighlightProperties row = ColorSettings::GetCodeEditorHighlightProperties(keys.at(i));
            QVERIFY2(!row.label.isEmpty(), qPrintable(keys.at(i)));
            QCOMPARE(row.fontStylesEnabled, i >= 12);
            QCOMPARE(row.format, row.defaultFormat);
            const bool fullWidth = keys.at(i) == ColorSettings::CURRENT_LINE ||
                                   keys.at(i) == ColorSettings::FIND_REPLACE_SELECTION;
            QCOMPARE(row.format.boolProperty(QTextFormat::FullWidthSelection), fullWidth);
            const bool italic = keys.at(i) == ColorSettings::MEL_COMMENTS ||
                                keys.at(i) == ColorSettings::PYTHON_DOC_STRINGS ||
                                keys.at(i) == ColorSettings::PYTHON_DECORATORS;
            QCOMPARE(row.format.fontItalic(), italic);
        }
        // Errors, warnings and infos are told apart by the colour of their wavy underline.
        QSet<QRgb> underlines;
        for (const QTextCharFormat* format :
             {&ColorSettings::errorFormat, &ColorSettings::warningFormat, &ColorSettings::infoFormat})
        {
            QCOMPARE(format->underlineStyle(), QTextCharFormat::WaveUnderline);
            QVERIFY(format->underlineColor().isValid());
            underlines.insert(format->underlineColor().rgb());
        }
        QCOMPARE(underlines.size(), 3);
        // Five listed output rows and a sixth, unlisted, that only sets the full width.
        QCOMPARE(ColorSettings::outputHighlightOrderedKeys.size(), 5);
        QCOMPARE(ColorSettings::outputHighlights.size(), 6);
        const HighlightProperties selection =
            ColorSettings::GetOutputHighlightProperties(ColorSettings::FIND_REPLACE_SELECTION);
        QVERIFY(selection.label.isEmpty());
        QCOMPARE(selection.format.properties().size(), 1);
        // The factory output rules: errors, warnings and results, each for both languages.
        QCOMPARE(SelectionNames(), FactorySelectionNames());
        const ExtraSelectionProperties& first = ColorSettings::outputUserDefinedSelections.first();
        QVERIFY(first.foregroundEnabled && !first.backgroundEnabled);
        QVERIFY(!first.format.hasProperty(QTextFormat::BackgroundBrush));
    }

    void loadFormatString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        // An empty expectation is the row's factory format, 4291135168,0,400,0,0, left as it was.
        const char* const rows[][3] = {
            {"bold italic keeps the colour", "0,0,700,1,0", "4291135168,0,700,1,0"},
            {"four fields", "4278190335,0,700,1", ""},
            {"six fields", "4278190335,0,700,1,0,0", ""},
            {"empty parts are dropped", ",4278190335,,0,700,1,0,", "4278190335,0,700,1,0"},
            {"colours", "4278190335,4294901760,400,0,1", "4278190335,4294901760,400,0,1"},
            {"not numbers", "red,blue,bold,yes,no", ""},
            {"negative colour", "-5,0,400,0,0", ""},
            {"weight out of range", "0,0,5000,0,0", ""},
            {"weight at its limits", "0,0,1,0,0", "4291135168,0,1,0,0"},
            {"weight zero", "0,0,0,0,0", ""},
            {"any flag value", "0,0,400,7,-3", "4291135168,0,400,1,1"},
            {"empty", "", ""}};
        for (const auto& row : rows)
            QTest::newRow(row[0]) << QString(row[1]) << QString(*row[2] ? row[2] : "4291135168,0,400,0,0");
    }

    void loadFormatString()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QTextCharFormat format = ColorSettings::GetCodeEditorFormat(ColorSettings::MEL_KEYWORDS);
        ColorSettings::LoadFormatString(format, text);
        QCOMPARE(ColorSettings::GetFormatString(format), expected);
    }

    void extraSelectionStrings()
    {
        ColorSettings::outputUserDefinedSelections.clear();
        const ExtraSelectionProperties tricky(QStringLiteral("100% %1, done"), QColor(Qt::black), QColor(),
                                              QStringLiteral("a%2b\\d+"), true, false, true);
        const QString text = ColorSettings::GetExtraSelectionString(tricky);
        QCOMPARE(text, QStringLiteral("100% %1, done;;;4278190080;;;0;;;1;;;0;;;a%2b\\d+;;;1;;;0;;;1"));
        ColorSettings::LoadExtraSelectionString(text);
        QCOMPARE(ColorSettings::outputUserDefinedSelections.size(), 1);
        const ExtraSelectionProperties loaded = ColorSettings::outputUserDefinedSelections.first();
        QCOMPARE(loaded.name, tricky.name);
        QCOMPARE(loaded.match, tricky.match);
        QCOMPARE(loaded.foreground, QColor(Qt::black));
        QVERIFY(loaded.foregroundEnabled && !loaded.backgroundEnabled);
        QVERIFY(loaded.regExp && !loaded.highlightLine && loaded.enabled);
        QCOMPARE(loaded.format.foreground().color(), QColor(Qt::black));

        // A colour whose flag is off is dropped, as is one that does not read.
        ColorSettings::LoadExtraSelectionString(
            QStringLiteral("x;;;4278190335;;;junk;;;0;;;1;;;m;;;0;;;0;;;0"));
        QCOMPARE(ColorSettings::outputUserDefinedSelections.size(), 2);
        const ExtraSelectionProperties off = ColorSettings::outputUserDefinedSelections.last();
        QVERIFY(!off.foreground.isValid() && !off.foregroundEnabled);
        QVERIFY(!off.background.isValid() && !off.backgroundEnabled);
        QVERIFY(!off.format.hasProperty(QTextFormat::ForegroundBrush));

        // An empty match leaves eight parts; any count but nine is ignored.
        const ExtraSelectionProperties noMatch(QStringLiteral("n"), QColor(Qt::red), QColor(), QString(),
                                               false, false, true);
        ColorSettings::LoadExtraSelectionString(ColorSettings::GetExtraSelectionString(noMatch));
        ColorSettings::LoadExtraSelectionString(QStringLiteral("a;;;b"));
        QCOMPARE(ColorSettings::outputUserDefinedSelections.size(), 2);
    }

    void roundTripThroughTheFile()
    {
        QTextCharFormat keywords = ColorSettings::GetCodeEditorFormat(ColorSettings::MEL_KEYWORDS);
        keywords.setForeground(QColor(0x12, 0x34, 0x56));
        keywords.setBackground(QColor(0x01, 0x02, 0x03));
        keywords.setFontWeight(900);
        keywords.setFontUnderline(true);
        ColorSettings::SetCodeEditorFormat(ColorSettings::MEL_KEYWORDS, keywords);
        QTextCharFormat output = ColorSettings::GetOutputFormat(ColorSettings::PLAIN_TEXT);
        output.setForeground(QColor(0xab, 0xcd, 0xef));
        ColorSettings::SetOutputFormat(ColorSettings::PLAIN_TEXT, output);
        ColorSettings::outputUserDefinedSelections = {
            ExtraSelectionProperties(QStringLiteral("Ünïcode; # comment, = sign"), QColor(), QColor(Qt::blue),
                                     QStringLiteral("^\\s*(#|//) TODO;[a-z]+=\"x\""), true, false, false),
            ExtraSelectionProperties(QStringLiteral("plain"), QColor(Qt::green), QColor(),
                                     QStringLiteral("done"), false, true, true),
        };
        const QString keywordsText = CodeEditorString(ColorSettings::MEL_KEYWORDS);
        const QString outputText = ColorSettings::GetFormatString(output);
        const QStringList written = {
            ColorSettings::GetExtraSelectionString(ColorSettings::outputUserDefinedSelections.at(0)),
            ColorSettings::GetExtraSelectionString(ColorSettings::outputUserDefinedSelections.at(1))};
        ColorSettings::WriteUserConfig();
        QVERIFY(QFile::exists(ColorSettings::GetUserConfigPath()));

        ColorSettings::Initialize();
        QCOMPARE(CodeEditorString(ColorSettings::MEL_KEYWORDS),
                 CodeEditorString(ColorSettings::MEL_KEYWORDS, true));
        QCOMPARE(SelectionNames(), FactorySelectionNames());

        ColorSettings::ReadUserConfig();
        QCOMPARE(CodeEditorString(ColorSettings::MEL_KEYWORDS), keywordsText);
        QCOMPARE(CodeEditorString(ColorSettings::MEL_STRINGS),
                 CodeEditorString(ColorSettings::MEL_STRINGS, true));
        QCOMPARE(ColorSettings::GetFormatString(ColorSettings::GetOutputFormat(ColorSettings::PLAIN_TEXT)),
                 outputText);
        QCOMPARE(ColorSettings::outputUserDefinedSelections.size(), 2);
        for (int i = 0; i < 2; ++i)
            QCOMPARE(ColorSettings::GetExtraSelectionString(ColorSettings::outputUserDefinedSelections.at(i)),
                     written.at(i));

        QSettings file(ColorSettings::GetUserConfigPath(), QSettings::IniFormat);
        QCOMPARE(file.value(QStringLiteral("main/version")).toInt(), 1);
        file.beginGroup(QStringLiteral("codeeditor"));
        QCOMPARE(file.childKeys().size(), 30);
        file.endGroup();
        file.beginGroup(QStringLiteral("output"));
        QCOMPARE(file.childKeys().size(), 5);
        QVERIFY(!file.contains(ColorSettings::FIND_REPLACE_SELECTION));
    }

    void customHighlightingOrderAndLength()
    {
        // Keys sort as numbers: 9 before 10, and a key that is no number counts as 0.
        const auto line = [](const char* name)
        { return QStringLiteral("%1;;;4278190335;;;0;;;1;;;0;;;m;;;1;;;1;;;1").arg(QLatin1String(name)); };
        {
            QSettings file(ColorSettings::GetUserConfigPath(), QSettings::IniFormat);
            file.setValue(QStringLiteral("customhighlighting/10"), line("ten"));
            file.setValue(QStringLiteral("customhighlighting/9"), line("nine"));
            file.setValue(QStringLiteral("customhighlighting/x"), line("letters"));
        }
        ColorSettings::ReadUserConfig();
        QCOMPARE(SelectionNames(), QStringList({"letters", "nine", "ten"}));
        QVERIFY(compareHighlightingKeys(QStringLiteral("9"), QStringLiteral("10")));
        QVERIFY(!compareHighlightingKeys(QStringLiteral("10"), QStringLiteral("9")));

        // A shorter list leaves no row of the longer one behind.
        ColorSettings::outputUserDefinedSelections.removeFirst();
        ColorSettings::WriteUserConfig();
        QSettings file(ColorSettings::GetUserConfigPath(), QSettings::IniFormat);
        file.beginGroup(QStringLiteral("customhighlighting"));
        QCOMPARE(file.childKeys(), QStringList({QStringLiteral("0"), QStringLiteral("1")}));
        file.endGroup();
        ColorSettings::ReadUserConfig();
        QCOMPARE(SelectionNames(), QStringList({QStringLiteral("nine"), QStringLiteral("ten")}));
    }

    void malformedFilesFallBackToDefaults_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("changedKeys");
        // Rows under "customhighlighting" that do not read leave the user's list empty.
        QTest::addColumn<QStringList>("customRows");
        const QStringList none;
        const QStringList plain = {QStringLiteral("plainText")};
        QTest::newRow("not a colour") << QByteArray("[codeeditor]\nmelKeywords=\"red,blue,bold,x,y\"\n"
                                                    "plainText=\"4278190335,0,400,0,0\"\n"
                                                    "[customhighlighting]\n0=\"a;;;b;;;c\"\n")
                                      << plain << none;
        QTest::newRow("wrong types") << QByteArray("[codeeditor]\nmelKeywords=@Rect(1 2 3 4)\n"
                                                   "melStrings=@ByteArray(\\0\\x1)\n"
                                                   "melNumbers=@Variant(\\0\\0\\0\\x7f\\0\\0\\0\\x1)\n"
                                                   "melProcs=@Invalid()\n"
                                                   "[customhighlighting]\n0=@Point(1 2)\n")
                                     << none << none;
        QTest::newRow("truncated") << QByteArray("[main]\nversion=1\n\n[codeeditor]\n"
                                                 "plainText=\"4278190335,0,400,0,0\"\nmelKeywords=\"4291135")
                                   << plain << FactorySelectionNames();
        QTest::newRow("not utf-8") << QByteArray("[codeeditor]\nmelKeywords=\"\xff\xfe,\xc0,400,0,0\"\n"
                                                 "[customhighlighting]\n0=\"\xff;;;\xfe;;;0;;;1;;;0\"\n")
                                   << none << none;
        QTest::newRow("only the rows that read")
            << QByteArray("[customhighlighting]\n0=\"a;;;b;;;c\"\n"
                          "1=\"kept;;;4278190335;;;0;;;1;;;0;;;m;;;1;;;1;;;1\"\n2=@Point(1 2)\n")
            << none << QStringList{QStringLiteral("kept")};
        QTest::newRow("empty custom group")
            << QByteArray("[customhighlighting]\n\n[codeeditor]\n"
                          "melProcs=\"4278190335,0,400,0,0\"\n")
            << QStringList{QStringLiteral("melProcs")} << FactorySelectionNames();
    }

    void malformedFilesFallBackToDefaults()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, changedKeys);
        QFETCH(QStringList, customRows);
        WriteRaw("colors", content);

        ColorSettings::ReadUserConfig();
        for (const QString& key : std::as_const(ColorSettings::codeEditorHighlightOrderedKeys))
        {
            const bool same = CodeEditorString(key) == CodeEditorString(key, true);
            QVERIFY2(same != changedKeys.contains(key), qPrintable(key));
        }
        QCOMPARE(SelectionNames(), customRows);
    }

    void pointersStayValidAndSeeEveryChange()
    {
        QTextCharFormat* format = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MEL_KEYWORDS);
        QTextCharFormat* factory = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MEL_KEYWORDS, true);
        QVERIFY(format != factory);

        WriteRaw("colors", "[codeeditor]\nmelKeywords=\"4278190335,0,900,0,0\"\n");
        ColorSettings::ReadUserConfig();
        QCOMPARE(ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MEL_KEYWORDS), format);
        QCOMPARE(ColorSettings::GetFormatString(*format), QStringLiteral("4278190335,0,900,0,0"));
        QCOMPARE(ColorSettings::GetFormatString(*factory), QStringLiteral("4291135168,0,400,0,0"));

        // A copy of the table must not pull the formats away from the pointers.
        QMap<QString, HighlightProperties> copy = ColorSettings::codeEditorHighlights;
        QTextCharFormat edited = *format;
        edited.setFontItalic(true);
        ColorSettings::SetCodeEditorFormat(ColorSettings::MEL_KEYWORDS, edited);
        QVERIFY(format->fontItalic());
        QCOMPARE(ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MEL_KEYWORDS), format);
        copy.clear();
        QVERIFY(format->fontItalic());

        ColorSettings::Initialize();
        QCOMPARE(ColorSettings::GetFormatString(*format), QStringLiteral("4291135168,0,400,0,0"));
    }

    void tableHoldsEveryRowWithItsDefaults()
    {
        const KeyBindings bindings;
        const QList<KeySequence*>& rows = bindings.GetKeySequences();
        QCOMPARE(rows.size(), 88);
        // The shape only: that each row reaches its action is checked through the main widget's keys.
        QStringList keys;
        int reserved = 0;
        for (int i = 0; i < rows.size(); ++i)
        {
            QCOMPARE(int(rows.at(i)->type), i + 1);
            QCOMPARE(rows.at(i)->userSequences, rows.at(i)->defaultSequences);
            QVERIFY(!rows.at(i)->action);
            keys.append(rows.at(i)->key);
            reserved += rows.at(i)->reserved ? 1 : 0;
        }
        QCOMPARE(QSet<QString>(keys.cbegin(), keys.cend()).size(), 88);
        QCOMPARE(reserved, 10);
        QVERIFY(bindings.GetShortcut(T::SaveAs).isEmpty());
        QVERIFY(bindings.GetKeySequence(T::SaveAs)->defaultSequences.isEmpty());
        QVERIFY(bindings.GetShortcut(T::NoBinding).isEmpty());
        QVERIFY(!bindings.GetKeySequence(T::NoBinding));
        QVERIFY(!bindings.GetKeySequence(static_cast<T>(500)));
    }

    void userBindingsRoundTripThroughTheFile()
    {
        QVERIFY(KeyBindings::GetUserKeyBindingsPath().endsWith(
            QStringLiteral("/brindletEditor2/brindletEditor2_bindings.ini")));
        {
            KeyBindings bindings;
            bindings.UpdateUserSequences(Edited(bindings, {{T::Find, {Keys("Ctrl+Alt+F"), Keys("F9")}},
                                                           {T::Replace, {}},
                                                           {T::Rename, {Keys("F2")}},
                                                           {T::Save, {Keys("Ctrl+Q")}}}));
            bindings.WriteUserKeyBindings();
        }

        KeyBindings bindings;
        AttachActions(bindings);
        bindings.ReadUserKeyBindings();
        QCOMPARE(bindings.GetKeySequence(T::Find)->userSequences,
                 QList<QKeySequence>({Keys("Ctrl+Alt+F"), Keys("F9")}));
        QCOMPARE(bindings.GetKeySequence(T::Find)->action->shortcuts(),
                 bindings.GetKeySequence(T::Find)->userSequences);
        QVERIFY(bindings.GetShortcut(T::Replace).isEmpty());
        QVERIFY(bindings.GetKeySequence(T::Replace)->action->shortcut().isEmpty());
        QCOMPARE(bindings.GetShortcut(T::Rename), Keys("F2"));
        QCOMPARE(bindings.GetShortcut(T::SaveAll), Keys("Ctrl+Shift+S"));
        // Reserved rows keep their defaults and never reach the file.
        QCOMPARE(bindings.GetKeySequence(T::Save)->action->shortcuts().value(0),
                 QKeySequence(QKeySequence::Save));

        QSettings file(KeyBindings::GetUserKeyBindingsPath(), QSettings::IniFormat);
        QCOMPARE(file.childGroups(), QStringList({QStringLiteral("user_bindings")}));
        file.beginGroup(QStringLiteral("user_bindings"));
        QCOMPARE(file.childKeys().size(), 78);
        for (const KeySequence* row : bindings.GetKeySequences())
            QCOMPARE(file.contains(row->key), !row->reserved);
        // A removed shortcut is an empty value, which the next session reads as none; this
        // process's QSettings cache would hide any other spelling, so the bytes are read.
        QVERIFY(TestFiles::Read(KeyBindings::GetUserKeyBindingsPath()).contains("\nreplace=\n"));
    }

    void valuesAsFound_data()
    {
        QTest::addColumn<QByteArray>("find");
        QTest::addColumn<QKeySequence>("expectedFind");
        // An empty value removes the shortcut; one of the wrong type is no value, and the default stays.
        QTest::newRow("empty") << QByteArray() << QKeySequence();
        QTest::newRow("wrong type") << QByteArray("@Rect(1 2 3 4)") << Keys("Ctrl+F");
        QTest::newRow("variant blob") << QByteArray("@Variant(\\0\\0\\0\\x7f\\0\\x1)") << Keys("Ctrl+F");
        QTest::newRow("unknown key name") << QByteArray("Ctrl+Sparkle") << QKeySequence();
        QTest::newRow("not utf-8") << QByteArray("\xff\xfe+\xc0") << QKeySequence();
    }

    void valuesAsFound()
    {
        QFETCH(QByteArray, find);
        WriteRaw("bindings",
                 "[user_bindings]\nfind=" + find + "\nnewBuffer=F5, Ctrl+F5\nexecute=F1\nsave=@Invalid()\n");
        KeyBindings bindings;
        AttachActions(bindings);
        bindings.ReadUserKeyBindings();
        QTEST(bindings.GetShortcut(T::Find), "expectedFind");
        // Keys the file leaves out keep their defaults; reserved ones are never read.
        QCOMPARE(bindings.GetShortcut(T::Replace), Keys("Ctrl+H"));
        QCOMPARE(bindings.GetKeySequence(T::NewBuffer)->action->shortcuts(),
                 QList<QKeySequence>({Keys("F5"), Keys("Ctrl+F5")}));
        QCOMPARE(bindings.GetKeySequence(T::Execute)->action->shortcuts().value(0), Keys("Ctrl+Return"));
        QCOMPARE(bindings.GetShortcut(T::Save), QKeySequence(QKeySequence::Save));
    }

    void duplicateHotkeyIsDroppedFromTheLaterRow()
    {
        KeyBindings bindings;
        AttachActions(bindings);
        bindings.UpdateUserSequences(Edited(bindings, {{T::Replace, {Keys("Ctrl+F"), Keys("F8")}},
                                                       {T::NewBuffer, {Keys("Ctrl+W")}},
                                                       {T::GotoLine, {Keys("Ctrl+S")}}}));

        QCOMPARE(bindings.GetKeySequence(T::Find)->action->shortcuts(),
                 QList<QKeySequence>({Keys("Ctrl+F")}));
        QCOMPARE(bindings.GetKeySequence(T::Replace)->userSequences, QList<QKeySequence>({Keys("F8")}));
        QCOMPARE(bindings.GetKeySequence(T::Replace)->action->shortcuts(), QList<QKeySequence>({Keys("F8")}));
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("Duplicate hotkey detected: Replace (Ctrl+F)")));

        // The earlier row wins, whichever of the two the user changed.
        QCOMPARE(bindings.GetShortcut(T::NewBuffer), Keys("Ctrl+W"));
        QCOMPARE(bindings.GetKeySequence(T::CloseFile)->userSequences, QList<QKeySequence>({QKeySequence()}));
        QVERIFY(bindings.GetShortcut(T::CloseFile).isEmpty());
        QVERIFY(
            fixture->HasMessageContaining(QStringLiteral("Duplicate hotkey detected: Close File (Ctrl+W)")));

        // A reserved row always holds its shortcut against a later row.
        QVERIFY(bindings.GetShortcut(T::GotoLine).isEmpty());
        QCOMPARE(bindings.GetKeySequence(T::Save)->action->shortcuts(),
                 QList<QKeySequence>({Keys("Ctrl+S")}));
        // Against an earlier row it loses the action's keys, yet its own row still names them.
        bindings.UpdateUserSequences(Edited(bindings, {{T::NewPythonBuffer, {Keys("Ctrl+O")}}}));
        QVERIFY(bindings.GetKeySequence(T::OpenFile)->action->shortcuts().value(0).isEmpty());
        QCOMPARE(bindings.GetShortcut(T::OpenFile), Keys("Ctrl+O"));
    }

    void rowsWithoutActionsTakePartInNoCheck()
    {
        KeyBindings bindings;
        auto* replace = new QAction(&window);
        bindings.SetAction(T::Replace, replace);
        bindings.SetAction(T::NoBinding, replace);
        bindings.UpdateUserSequences(Edited(bindings, {{T::Replace, {Keys("Ctrl+F")}}}));
        QCOMPARE(replace->shortcuts(), QList<QKeySequence>({Keys("Ctrl+F")}));
        QVERIFY(!fixture->HasMessageContaining(QStringLiteral("Duplicate hotkey")));
        // A deleted action is forgotten.
        delete replace;
        bindings.Update();
        bindings.SetBindingsEnabled(false);
        QVERIFY(!bindings.GetKeySequence(T::Replace)->action);
    }

    void actionsFireFromKeysOnlyWhileEnabled()
    {
        // That every default key reaches its action is checked through the main widget's keys.
        KeyBindings bindings;
        AttachActions(bindings);
        bindings.ReadUserKeyBindings();
        QSignalSpy found(bindings.GetKeySequence(T::Find)->action, &QAction::triggered);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));

        // Off, no action holds a key, while the rows keep theirs for later.
        bindings.SetBindingsEnabled(false);
        for (const KeySequence* row : bindings.GetKeySequences())
            QVERIFY(row->action->shortcuts().isEmpty());
        QCOMPARE(bindings.GetShortcut(T::Find), Keys("Ctrl+F"));
        bindings.SetBindingsEnabled(true);
        for (const KeySequence* row : bindings.GetKeySequences())
            QCOMPARE(row->action->shortcuts(), row->reserved ? row->defaultSequences : row->userSequences);

        // A new binding replaces the old one on the action.
        bindings.UpdateUserSequences(Edited(bindings, {{T::Find, {Keys("F9")}}}));
        QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(found.count(), 0);
        QTest::keyClick(&window, Qt::Key_F9);
        QCOMPARE(found.count(), 1);
        window.hide();
    }

    void damagedStoresGiveDefaults_data()
    {
        QTest::addColumn<QString>("store");
        QTest::addColumn<QByteArray>("bytes");
        static const char withNuls[] = "[main]\0\0\0outputVisible=false\n[codeeditor]\0melKeywords=\0";
        const QList<QPair<const char*, QByteArray>> damages = {
            {"missing", MISSING},
            {"empty", QByteArray()},
            {"binary", Garbage(20000)},
            {"truncated",
             "[main]\ncodeEditorVisible=fal\n[codeeditor]\nmelKeywords=\"4291\n[user_bindings]\nfi"},
            {"not utf-8", "[main]\nrecentFiles=\xff\xfe\xc3\n[user\xff_bindings]\nfind=\xfe\n[prefer"},
            {"nul bytes", QByteArray(withNuls, sizeof(withNuls) - 1)},
            {"huge value", QByteArray("[codeeditor]\nmelKeywords=") + QByteArray(4 << 20, '7') + "\n"},
            {"unreadable", UNREADABLE},
        };
        for (const char* store : {"settings", "colors", "bindings"})
        {
            for (const auto& damage : damages)
                QTest::addRow("%s, %s", store, damage.first) << QString::fromLatin1(store) << damage.second;
        }
    }

    void damagedStoresGiveDefaults()
    {
        QFETCH(QString, store);
        QFETCH(QByteArray, bytes);
        MakeBindings();
        const QString defaults = Value(store);
        if (bytes == UNREADABLE)
            QVERIFY(QDir().mkpath(Path(store)));
        else if (bytes != MISSING)
            QVERIFY(TestFiles::Write(Path(store), bytes));
        QCOMPARE(QFileInfo::exists(Path(store)), bytes != MISSING);
        Read(store);
        QCOMPARE(Value(store), defaults);

        Change(store);
        const QString changed = Value(store);
        QVERIFY(changed != defaults);
        fixture->ClearMessages();
        Write(store);
        if (bytes == UNREADABLE)
        {
            QVERIFY(fixture->HasMessageContaining(QStringLiteral("Failed to write %1").arg(Path(store))));
            QVERIFY(QFileInfo(Path(store)).isDir());
            return;
        }
        QVERIFY(!fixture->HasMessageContaining(QStringLiteral("Failed")));
        Settings::ResetToDefaults();
        ColorSettings::Initialize();
        MakeBindings();
        Read(store);
        QCOMPARE(Value(store), changed);
    }
};

QTEST_MAIN(TestSettings)
#include "tst_Settings.moc"
