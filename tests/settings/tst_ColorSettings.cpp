#include "HostFixture.h"
#include "settings/ColorSettings.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtTest/QtTest>
#include <QtWidgets/QPlainTextEdit>

#include <memory>

class TestColorSettings : public QObject
{
    Q_OBJECT

private:
    static QString ConfigPath() { return ColorSettings::GetUserConfigPath(); }

    static void WriteRaw(const QByteArray& bytes)
    {
        QFile file(ConfigPath());
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
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
        return {QStringLiteral("Errors (Python)"),   QStringLiteral("Errors (MEL)"),
                QStringLiteral("Warnings (Python)"), QStringLiteral("Warnings (MEL)"),
                QStringLiteral("Results (Python)"),  QStringLiteral("Results (MEL)")};
    }

    static void Row(const char* key, const char* label, const char* formatString, bool fontStylesEnabled)
    {
        QTest::newRow(key) << QString::fromLatin1(key) << QString::fromLatin1(label)
                           << QString::fromLatin1(formatString) << fontStylesEnabled;
    }

    std::unique_ptr<HostFixture> fixture;

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
    }

    void cleanup() { fixture.reset(); }

    void codeEditorFactoryRows_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("formatString");
        QTest::addColumn<bool>("fontStylesEnabled");
        Row("plainText", "Plain Text", "4292138196,4280163870,400,0,0", false);
        Row("matchingSelection", "Matching Selection", "0,4281485408,400,0,0", false);
        Row("findReplaceSelectedFound", "Find/Replace Selected", "0,4284760884,400,0,0", false);
        Row("findReplaceMatching", "Find/Replace Matching", "0,4284559892,400,0,0", false);
        Row("findReplaceSelection", "Find/Replace Selection", "0,4280492835,400,0,0", false);
        Row("currentLine", "Current Line", "0,4280756007,400,0,0", false);
        Row("matchingBraces", "Matching Braces", "4294967295,4284968308,400,0,0", false);
        Row("whitespaces", "Whitespaces", "4282400832,0,400,0,0", false);
        Row("indentationGuides", "Indentation Guides", "4282400832,0,400,0,0", false);
        Row("lineNumbers", "Line Numbers", "4282400832,4280163870,400,0,0", false);
        Row("gutter", "Gutter", "0,4280163870,400,0,0", false);
        Row("melKeywords", "MEL Keywords", "4291135168,0,400,0,0", true);
        Row("melCommands", "MEL Commands", "4288470270,0,400,0,0", true);
        Row("melStrings", "MEL Strings", "4291727736,0,400,0,0", true);
        Row("melNumbers", "MEL Numbers", "4290105000,0,400,0,0", true);
        Row("melVariables", "MEL Variables", "4284517198,0,400,0,0", true);
        Row("melProcs", "MEL Procs", "4283866326,0,400,0,0", true);
        Row("melComments", "MEL Comments", "4286611584,0,400,1,0", true);
        Row("pythonKeywords", "Python Keywords", "4291135168,0,400,0,0", true);
        Row("pythonBuiltins", "Python Builtins", "4292664490,0,400,0,0", true);
        Row("pythonStrings", "Python Strings", "4291727736,0,400,0,0", true);
        Row("pythonDocStrings", "Python Doc Strings", "4286611584,0,400,1,0", true);
        Row("pythonNumbers", "Python Numbers", "4290105000,0,400,0,0", true);
        Row("pythonClasses", "Python Classes", "4284926343,0,400,0,0", true);
        Row("pythonMethods", "Python Methods", "4283866326,0,400,0,0", true);
        Row("pythonComments", "Python Comments", "4284517198,0,400,0,0", true);
        Row("pythonDecorators", "Python Decorators", "4284926343,0,400,1,0", true);
        Row("pythonSelfCls", "Python self/cls", "4288470270,0,400,0,0", true);
        Row("pythonMelCommands", "Python MEL Commands", "4283866326,0,400,0,0", true);
    }

    void codeEditorFactoryRows()
    {
        QFETCH(QString, key);
        QFETCH(QString, label);
        QFETCH(QString, formatString);
        QFETCH(bool, fontStylesEnabled);
        const HighlightProperties row = ColorSettings::GetCodeEditorHighlightProperties(key);
        QCOMPARE(row.label, label);
        QCOMPARE(row.fontStylesEnabled, fontStylesEnabled);
        QCOMPARE(ColorSettings::GetFormatString(row.defaultFormat), formatString);
        QCOMPARE(row.format, row.defaultFormat);
        const bool fullWidth =
            key == ColorSettings::CURRENT_LINE || key == ColorSettings::FIND_REPLACE_SELECTION;
        QCOMPARE(row.format.boolProperty(QTextFormat::FullWidthSelection), fullWidth);
    }

    void factoryOrderAndTheOtherTables()
    {
        QCOMPARE(ColorSettings::codeEditorHighlightOrderedKeys.size(), 30);
        QCOMPARE(ColorSettings::codeEditorHighlightOrderedKeys.at(1), ColorSettings::SELECTED_TEXT);
        QCOMPARE(ColorSettings::codeEditorHighlightOrderedKeys.at(12), ColorSettings::MEL_KEYWORDS);
        QCOMPARE(ColorSettings::codeEditorHighlightOrderedKeys.last(), ColorSettings::PYTHON_MEL_COMMANDS);

        // The selection colours are a fresh editor's.
        const QPalette palette = QPlainTextEdit().palette();
        for (const QTextCharFormat& format :
             {ColorSettings::GetCodeEditorFormat(ColorSettings::SELECTED_TEXT),
              ColorSettings::GetOutputFormat(ColorSettings::SELECTED_TEXT)})
        {
            QCOMPARE(format.foreground().color(), palette.color(QPalette::HighlightedText));
            QCOMPARE(format.background().color(), palette.color(QPalette::Highlight));
        }

        const QStringList outputKeys = {
            ColorSettings::PLAIN_TEXT, ColorSettings::SELECTED_TEXT, ColorSettings::MATCHING_SELECTION,
            ColorSettings::FIND_REPLACE_SELECTED, ColorSettings::FIND_REPLACE_MATCHING};
        QCOMPARE(ColorSettings::outputHighlightOrderedKeys, outputKeys);
        QCOMPARE(ColorSettings::GetOutputHighlightProperties(ColorSettings::FIND_REPLACE_SELECTED).label,
                 QStringLiteral("Find Selected"));
        QCOMPARE(ColorSettings::GetFormatString(ColorSettings::GetOutputFormat(ColorSettings::PLAIN_TEXT)),
                 QStringLiteral("4292138196,4280163870,400,0,0"));
        // The sixth output row: only the full width property, never listed.
        QCOMPARE(ColorSettings::outputHighlights.size(), 6);
        const HighlightProperties selection =
            ColorSettings::GetOutputHighlightProperties(ColorSettings::FIND_REPLACE_SELECTION);
        QVERIFY(selection.label.isEmpty());
        QCOMPARE(selection.format.properties().size(), 1);
        QVERIFY(selection.format.boolProperty(QTextFormat::FullWidthSelection));

        QCOMPARE(SelectionNames(), FactorySelectionNames());
        const ExtraSelectionProperties& first = ColorSettings::outputUserDefinedSelections.first();
        QCOMPARE(first.match, QStringLiteral("^(\\# Error:)"));
        QCOMPARE(first.foreground, QColor(0xf4, 0x28, 0x28));
        QVERIFY(first.foregroundEnabled && !first.backgroundEnabled);
        QVERIFY(first.regExp && first.highlightLine && first.enabled);
        QVERIFY(!first.format.hasProperty(QTextFormat::BackgroundBrush));

        QCOMPARE(ColorSettings::errorFormat.underlineColor(), QColor(0xf4, 0x46, 0x46));
        QCOMPARE(ColorSettings::warningFormat.underlineColor(), QColor(Qt::yellow));
        QCOMPARE(ColorSettings::infoFormat.underlineStyle(), QTextCharFormat::WaveUnderline);
        QCOMPARE(ColorSettings::sideBarBaseColor, QColor(0x26, 0x26, 0x26));
        QCOMPARE(ColorSettings::sideBarHighlightColor, QColor(0x36, 0x36, 0x36));
    }

    void loadFormatString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const QString defaults = QStringLiteral("4291135168,0,400,0,0");
        QTest::newRow("bold italic keeps the colour") << "0,0,700,1,0"
                                                      << "4291135168,0,700,1,0";
        QTest::newRow("four fields") << "4278190335,0,700,1" << defaults;
        QTest::newRow("six fields") << "4278190335,0,700,1,0,0" << defaults;
        QTest::newRow("empty parts are dropped") << ",4278190335,,0,700,1,0,"
                                                 << "4278190335,0,700,1,0";
        QTest::newRow("colours") << "4278190335,4294901760,400,0,1"
                                 << "4278190335,4294901760,400,0,1";
        QTest::newRow("not numbers") << "red,blue,bold,yes,no" << defaults;
        QTest::newRow("negative colour") << "-5,0,400,0,0" << defaults;
        QTest::newRow("weight out of range") << "0,0,5000,0,0" << defaults;
        QTest::newRow("any flag value") << "0,0,400,7,-3"
                                        << "4291135168,0,400,1,1";
        QTest::newRow("empty") << "" << defaults;
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
        QVERIFY(QFile::exists(ConfigPath()));

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

        QSettings file(ConfigPath(), QSettings::IniFormat);
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
            QSettings file(ConfigPath(), QSettings::IniFormat);
            file.setValue(QStringLiteral("customhighlighting/10"), line("ten"));
            file.setValue(QStringLiteral("customhighlighting/9"), line("nine"));
            file.setValue(QStringLiteral("customhighlighting/x"), line("letters"));
        }
        ColorSettings::ReadUserConfig();
        QCOMPARE(SelectionNames(),
                 QStringList({QStringLiteral("letters"), QStringLiteral("nine"), QStringLiteral("ten")}));
        QVERIFY(compareHighlightingKeys(QStringLiteral("9"), QStringLiteral("10")));
        QVERIFY(!compareHighlightingKeys(QStringLiteral("10"), QStringLiteral("9")));

        // A shorter list leaves no row of the longer one behind.
        ColorSettings::outputUserDefinedSelections.removeFirst();
        ColorSettings::WriteUserConfig();
        QSettings file(ConfigPath(), QSettings::IniFormat);
        file.beginGroup(QStringLiteral("customhighlighting"));
        QCOMPARE(file.childKeys(), QStringList({QStringLiteral("0"), QStringLiteral("1")}));
        file.endGroup();
        ColorSettings::ReadUserConfig();
        QCOMPARE(SelectionNames(), QStringList({QStringLiteral("nine"), QStringLiteral("ten")}));
    }

    void customRowsKeepOnlyWhatReads()
    {
        WriteRaw("[customhighlighting]\n0=\"a;;;b;;;c\"\n"
                 "1=\"kept;;;4278190335;;;0;;;1;;;0;;;m;;;1;;;1;;;1\"\n2=@Point(1 2)\n");
        ColorSettings::ReadUserConfig();
        QCOMPARE(SelectionNames(), QStringList({QStringLiteral("kept")}));
    }

    void emptyCustomHighlightingGroupKeepsTheFactoryRows()
    {
        WriteRaw("[customhighlighting]\n\n[codeeditor]\nmelProcs=\"4278190335,0,400,0,0\"\n");
        ColorSettings::ReadUserConfig();
        QCOMPARE(SelectionNames(), FactorySelectionNames());
        QCOMPARE(CodeEditorString(ColorSettings::MEL_PROCS), QStringLiteral("4278190335,0,400,0,0"));
    }

    void malformedFilesFallBackToDefaults_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("changedKeys");
        // Rows under "customhighlighting" that do not read leave the user's list empty.
        QTest::addColumn<bool>("customRowsUnread");
        const QStringList none;
        const QStringList plain = {QStringLiteral("plainText")};
        QTest::newRow("not a colour") << QByteArray("[codeeditor]\nmelKeywords=\"red,blue,bold,x,y\"\n"
                                                    "plainText=\"4278190335,0,400,0,0\"\n"
                                                    "[customhighlighting]\n0=\"a;;;b;;;c\"\n")
                                      << plain << true;
        QTest::newRow("wrong types") << QByteArray("[codeeditor]\nmelKeywords=@Rect(1 2 3 4)\n"
                                                   "melStrings=@ByteArray(\\0\\x1)\n"
                                                   "melNumbers=@Variant(\\0\\0\\0\\x7f\\0\\0\\0\\x1)\n"
                                                   "melProcs=@Invalid()\n"
                                                   "[customhighlighting]\n0=@Point(1 2)\n")
                                     << none << true;
        QTest::newRow("truncated") << QByteArray("[main]\nversion=1\n\n[codeeditor]\n"
                                                 "plainText=\"4278190335,0,400,0,0\"\nmelKeywords=\"4291135")
                                   << plain << false;
        QByteArray garbage;
        for (int i = 0; i < 20000; ++i)
            garbage.append(char((i * 7919 + i / 13) % 256));
        QTest::newRow("binary garbage") << garbage << none << false;
        QTest::newRow("not utf-8") << QByteArray("[codeeditor]\nmelKeywords=\"\xff\xfe,\xc0,400,0,0\"\n"
                                                 "[customhighlighting]\n0=\"\xff;;;\xfe;;;0;;;1;;;0\"\n")
                                   << none << true;
        QTest::newRow("huge value") << QByteArray("[codeeditor]\nmelKeywords=") + QByteArray(4 << 20, '7') +
                                           "\n"
                                    << none << false;
        QTest::newRow("unreadable") << QByteArray() << none << false;
    }

    void malformedFilesFallBackToDefaults()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, changedKeys);
        QFETCH(bool, customRowsUnread);
        if (content.isEmpty())
            QVERIFY(QDir().mkpath(ConfigPath())); // a folder where the file should be
        else
            WriteRaw(content);

        ColorSettings::ReadUserConfig();
        for (const QString& key : std::as_const(ColorSettings::codeEditorHighlightOrderedKeys))
        {
            const bool same = CodeEditorString(key) == CodeEditorString(key, true);
            QVERIFY2(same != changedKeys.contains(key), qPrintable(key));
        }
        QCOMPARE(SelectionNames(), customRowsUnread ? QStringList() : FactorySelectionNames());

        if (content.isEmpty())
        {
            ColorSettings::WriteUserConfig();
            QVERIFY(fixture->HasMessageContaining(QStringLiteral("Failed to write")));
        }
    }

    void pointersStayValidAndSeeEveryChange()
    {
        QTextCharFormat* format = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MEL_KEYWORDS);
        QTextCharFormat* factory = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MEL_KEYWORDS, true);
        QVERIFY(format != factory);

        WriteRaw("[codeeditor]\nmelKeywords=\"4278190335,0,900,0,0\"\n");
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
};

QTEST_MAIN(TestColorSettings)
#include "tst_ColorSettings.moc"
