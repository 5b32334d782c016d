#include "HostFixture.h"
#include "TestFiles.h"
#include "settings/ColorSettings.h"

#include <QtTest/QtTest>
#include <QtWidgets/QPlainTextEdit>

#include <memory>

class TestColorSettings : public QObject
{
    Q_OBJECT

private:
    static QString ConfigPath() { return ColorSettings::GetUserConfigPath(); }

    static void WriteRaw(const QByteArray& bytes) { QVERIFY(TestFiles::Write(ConfigPath(), bytes)); }

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
        return QStringLiteral(
                   "Errors (Python)|Errors (MEL)|Warnings (Python)|Warnings (MEL)|Results (Python)|"
                   "Results (MEL)")
            .split(QLatin1Char('|'));
    }

    std::unique_ptr<HostFixture> fixture;

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
    }

    void cleanup() { fixture.reset(); }

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
        }
        // The selection colours are a fresh editor's.
        const QPalette palette = QPlainTextEdit().palette();
        for (const QTextCharFormat& format :
             {ColorSettings::GetCodeEditorFormat(ColorSettings::SELECTED_TEXT),
              ColorSettings::GetOutputFormat(ColorSettings::SELECTED_TEXT)})
        {
            QCOMPARE(format.foreground().color(), palette.color(QPalette::HighlightedText));
            QCOMPARE(format.background().color(), palette.color(QPalette::Highlight));
        }
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
        WriteRaw(content);

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
