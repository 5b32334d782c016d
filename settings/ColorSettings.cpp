#include "settings/ColorSettings.h"

#include "plugin/Logger.h"
#include "settings/IniValue.h"
#include "settings/Settings.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <QtCore/QThread>
#include <QtGui/QBrush>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPlainTextEdit>

#include <algorithm>

const QString ColorSettings::CONFIG_FILE_NAME = QStringLiteral("brindletEditor2_colors.ini");

const QString ColorSettings::PLAIN_TEXT = QStringLiteral("plainText");
const QString ColorSettings::SELECTED_TEXT = QStringLiteral("selectedText");
const QString ColorSettings::MATCHING_SELECTION = QStringLiteral("matchingSelection");
const QString ColorSettings::FIND_REPLACE_SELECTED = QStringLiteral("findReplaceSelectedFound");
const QString ColorSettings::FIND_REPLACE_MATCHING = QStringLiteral("findReplaceMatching");
const QString ColorSettings::FIND_REPLACE_SELECTION = QStringLiteral("findReplaceSelection");
const QString ColorSettings::CURRENT_LINE = QStringLiteral("currentLine");
const QString ColorSettings::MATCHING_BRACES = QStringLiteral("matchingBraces");
const QString ColorSettings::WHITESPACES = QStringLiteral("whitespaces");
const QString ColorSettings::INDENTATION_GUIDES = QStringLiteral("indentationGuides");
const QString ColorSettings::LINE_NUMBERS = QStringLiteral("lineNumbers");
const QString ColorSettings::GUTTER = QStringLiteral("gutter");
const QString ColorSettings::MEL_KEYWORDS = QStringLiteral("melKeywords");
const QString ColorSettings::MEL_COMMANDS = QStringLiteral("melCommands");
const QString ColorSettings::MEL_STRINGS = QStringLiteral("melStrings");
const QString ColorSettings::MEL_NUMBERS = QStringLiteral("melNumbers");
const QString ColorSettings::MEL_VARIABLES = QStringLiteral("melVariables");
const QString ColorSettings::MEL_PROCS = QStringLiteral("melProcs");
const QString ColorSettings::MEL_COMMENTS = QStringLiteral("melComments");
const QString ColorSettings::PYTHON_KEYWORDS = QStringLiteral("pythonKeywords");
const QString ColorSettings::PYTHON_BUILTINS = QStringLiteral("pythonBuiltins");
const QString ColorSettings::PYTHON_STRINGS = QStringLiteral("pythonStrings");
const QString ColorSettings::PYTHON_DOC_STRINGS = QStringLiteral("pythonDocStrings");
const QString ColorSettings::PYTHON_NUMBERS = QStringLiteral("pythonNumbers");
const QString ColorSettings::PYTHON_CLASSES = QStringLiteral("pythonClasses");
const QString ColorSettings::PYTHON_METHODS = QStringLiteral("pythonMethods");
const QString ColorSettings::PYTHON_COMMENTS = QStringLiteral("pythonComments");
const QString ColorSettings::PYTHON_DECORATORS = QStringLiteral("pythonDecorators");
const QString ColorSettings::PYTHON_SELF_CLS = QStringLiteral("pythonSelfCls");
const QString ColorSettings::PYTHON_MEL_COMMANDS = QStringLiteral("pythonMelCommands");

QMap<QString, HighlightProperties> ColorSettings::codeEditorHighlights;
QMap<QString, HighlightProperties> ColorSettings::outputHighlights;
QStringList ColorSettings::codeEditorHighlightOrderedKeys;
QStringList ColorSettings::outputHighlightOrderedKeys;
QList<ExtraSelectionProperties> ColorSettings::outputUserDefinedSelections;
QTextCharFormat ColorSettings::errorFormat;
QTextCharFormat ColorSettings::warningFormat;
QTextCharFormat ColorSettings::infoFormat;
QColor ColorSettings::sideBarBaseColor;
QColor ColorSettings::sideBarHighlightColor;

namespace
{
const QString MAIN_GROUP = QStringLiteral("main");
const QString CODE_EDITOR_GROUP = QStringLiteral("codeeditor");
const QString OUTPUT_GROUP = QStringLiteral("output");
const QString CUSTOM_HIGHLIGHTING_GROUP = QStringLiteral("customhighlighting");
const QString SELECTION_SEPARATOR = QStringLiteral(";;;");

QColor Rgb(QRgb rgb)
{
    return QColor::fromRgb(rgb);
}

// A colour of the file: the decimal of QColor::rgb(), where 0 (or anything unreadable) means none.
QColor ParseColor(const QString& text)
{
    bool ok = false;
    const uint value = text.trimmed().toUInt(&ok);
    return ok && value != 0 ? QColor::fromRgb(value) : QColor();
}

QString ColorText(const QColor& color)
{
    return QString::number(color.isValid() ? color.rgb() : 0u);
}

bool ParseFlag(const QString& text)
{
    return text.trimmed().toInt() != 0;
}

QString FlagText(bool flag)
{
    return flag ? QStringLiteral("1") : QStringLiteral("0");
}

uint BrushRgb(const QTextCharFormat& format, QTextFormat::Property property)
{
    return format.hasProperty(property) ? format.brushProperty(property).color().rgb() : 0u;
}
} // namespace

bool compareHighlightingKeys(const QString& a, const QString& b)
{
    return a.toInt() < b.toInt();
}

HighlightProperties* ColorSettings::Row(Table& table, const QString& key)
{
    // Found through the const side, so that the table is never detached: the pointers that the
    // views hold must keep pointing at the formats in use.
    const Table& readOnly = table;
    const auto it = readOnly.constFind(key);
    if (it != readOnly.constEnd())
        return const_cast<HighlightProperties*>(&it.value());
    return &table[key];
}

void ColorSettings::Initialize()
{
    const QPalette palette = EditorPalette();
    InitializeCodeEditorTable(palette);
    InitializeOutputTable(palette);
    InitializeUserDefinedSelections();
    InitializeFixedFormats();
}

QPalette ColorSettings::EditorPalette()
{
    // The selection colours are those of a fresh editor; a widget needs a QApplication and the
    // main thread, and without them the application's palette has to do.
    const QCoreApplication* application = QCoreApplication::instance();
    if (!qobject_cast<const QApplication*>(application) || QThread::currentThread() != application->thread())
        return QPalette();
    const QPlainTextEdit editor;
    return editor.palette();
}

void ColorSettings::InitializeCodeEditorTable(const QPalette& palette)
{
    codeEditorHighlightOrderedKeys.clear();
    AppendCodeEditorFormat(PLAIN_TEXT, QStringLiteral("Plain Text"), Rgb(0xd4d4d4), Rgb(0x1e1e1e));
    AppendCodeEditorFormat(SELECTED_TEXT, QStringLiteral("Selected Text"),
                           palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight));
    AppendCodeEditorFormat(MATCHING_SELECTION, QStringLiteral("Matching Selection"), QColor(), Rgb(0x324860));
    AppendCodeEditorFormat(FIND_REPLACE_SELECTED, QStringLiteral("Find/Replace Selected"), QColor(),
                           Rgb(0x644334));
    AppendCodeEditorFormat(FIND_REPLACE_MATCHING, QStringLiteral("Find/Replace Matching"), QColor(),
                           Rgb(0x613214));
    AppendCodeEditorFormat(FIND_REPLACE_SELECTION, QStringLiteral("Find/Replace Selection"), QColor(),
                           Rgb(0x232323));
    AppendCodeEditorFormat(CURRENT_LINE, QStringLiteral("Current Line"), QColor(), Rgb(0x272727));
    AppendCodeEditorFormat(MATCHING_BRACES, QStringLiteral("Matching Braces"), QColor(Qt::white),
                           Rgb(0x676d74));
    AppendCodeEditorFormat(WHITESPACES, QStringLiteral("Whitespaces"), Rgb(0x404040), QColor());
    AppendCodeEditorFormat(INDENTATION_GUIDES, QStringLiteral("Indentation Guides"), Rgb(0x404040), QColor());
    AppendCodeEditorFormat(LINE_NUMBERS, QStringLiteral("Line Numbers"), Rgb(0x404040), Rgb(0x1e1e1e));
    AppendCodeEditorFormat(GUTTER, QStringLiteral("Gutter"), QColor(), Rgb(0x1e1e1e));
    InitializeCodeEditorLanguageRows();
    // These two paint across the whole viewport, not only under the text.
    SetFullWidthSelection(Row(codeEditorHighlights, FIND_REPLACE_SELECTION));
    SetFullWidthSelection(Row(codeEditorHighlights, CURRENT_LINE));
}

void ColorSettings::InitializeCodeEditorLanguageRows()
{
    const QColor none;
    const int normal = QFont::Normal;
    AppendCodeEditorFormat(MEL_KEYWORDS, QStringLiteral("MEL Keywords"), Rgb(0xc586c0), none, true);
    AppendCodeEditorFormat(MEL_COMMANDS, QStringLiteral("MEL Commands"), Rgb(0x9cdcfe), none, true);
    AppendCodeEditorFormat(MEL_STRINGS, QStringLiteral("MEL Strings"), Rgb(0xce9178), none, true);
    AppendCodeEditorFormat(MEL_NUMBERS, QStringLiteral("MEL Numbers"), Rgb(0xb5cea8), none, true);
    AppendCodeEditorFormat(MEL_VARIABLES, QStringLiteral("MEL Variables"), Rgb(0x608b4e), none, true);
    AppendCodeEditorFormat(MEL_PROCS, QStringLiteral("MEL Procs"), Rgb(0x569cd6), none, true);
    AppendCodeEditorFormat(MEL_COMMENTS, QStringLiteral("MEL Comments"), QColor(Qt::darkGray), none, true,
                           normal, true);
    AppendCodeEditorFormat(PYTHON_KEYWORDS, QStringLiteral("Python Keywords"), Rgb(0xc586c0), none, true);
    AppendCodeEditorFormat(PYTHON_BUILTINS, QStringLiteral("Python Builtins"), Rgb(0xdcdcaa), none, true);
    AppendCodeEditorFormat(PYTHON_STRINGS, QStringLiteral("Python Strings"), Rgb(0xce9178), none, true);
    AppendCodeEditorFormat(PYTHON_DOC_STRINGS, QStringLiteral("Python Doc Strings"), QColor(Qt::darkGray),
                           none, true, normal, true);
    AppendCodeEditorFormat(PYTHON_NUMBERS, QStringLiteral("Python Numbers"), Rgb(0xb5cea8), none, true);
    AppendCodeEditorFormat(PYTHON_CLASSES, QStringLiteral("Python Classes"), Rgb(0x66c987), none, true);
    AppendCodeEditorFormat(PYTHON_METHODS, QStringLiteral("Python Methods"), Rgb(0x569cd6), none, true);
    AppendCodeEditorFormat(PYTHON_COMMENTS, QStringLiteral("Python Comments"), Rgb(0x608b4e), none, true);
    AppendCodeEditorFormat(PYTHON_DECORATORS, QStringLiteral("Python Decorators"), Rgb(0x66c987), none, true,
                           normal, true);
    AppendCodeEditorFormat(PYTHON_SELF_CLS, QStringLiteral("Python self/cls"), Rgb(0x9cdcfe), none, true);
    AppendCodeEditorFormat(PYTHON_MEL_COMMANDS, QStringLiteral("Python MEL Commands"), Rgb(0x569cd6), none,
                           true);
}

void ColorSettings::InitializeOutputTable(const QPalette& palette)
{
    outputHighlightOrderedKeys.clear();
    AppendOutputFormat(PLAIN_TEXT, QStringLiteral("Plain Text"), Rgb(0xd4d4d4), Rgb(0x1e1e1e));
    AppendOutputFormat(SELECTED_TEXT, QStringLiteral("Selected Text"),
                       palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight));
    AppendOutputFormat(MATCHING_SELECTION, QStringLiteral("Matching Selection"), QColor(), Rgb(0x324860));
    AppendOutputFormat(FIND_REPLACE_SELECTED, QStringLiteral("Find Selected"), QColor(), Rgb(0x644334));
    AppendOutputFormat(FIND_REPLACE_MATCHING, QStringLiteral("Find Matching"), QColor(), Rgb(0x613214));

    // A row of its own that is neither shown nor written: only the full width property.
    HighlightProperties* selection = Row(outputHighlights, FIND_REPLACE_SELECTION);
    selection->label.clear();
    selection->defaultFormat = QTextCharFormat();
    selection->format = QTextCharFormat();
    selection->fontStylesEnabled = false;
    SetFullWidthSelection(selection);
}

void ColorSettings::InitializeUserDefinedSelections()
{
    const QColor none;
    outputUserDefinedSelections = {
        ExtraSelectionProperties(QStringLiteral("Errors (Python)"), Rgb(0xf42828), none,
                                 QStringLiteral("^(\\# Error:)"), true, true, true),
        ExtraSelectionProperties(QStringLiteral("Errors (MEL)"), Rgb(0xf42828), none,
                                 QStringLiteral("^(// Error:)"), true, true, true),
        ExtraSelectionProperties(QStringLiteral("Warnings (Python)"), Rgb(0xdfe527), none,
                                 QStringLiteral("^(\\# Warning:)"), true, true, true),
        ExtraSelectionProperties(QStringLiteral("Warnings (MEL)"), Rgb(0xdfe527), none,
                                 QStringLiteral("^(// Warning:)"), true, true, true),
        ExtraSelectionProperties(QStringLiteral("Results (Python)"), Rgb(0x2ab422), none,
                                 QStringLiteral("^(\\# Result:)"), true, true, true),
        ExtraSelectionProperties(QStringLiteral("Results (MEL)"), Rgb(0x2ab422), none,
                                 QStringLiteral("^(// Result:)"), true, true, true),
    };
}

void ColorSettings::InitializeFixedFormats()
{
    // Assigned in place: the parser marks may be held by address as well.
    errorFormat = QTextCharFormat();
    errorFormat.setUnderlineColor(Rgb(0xf44646));
    errorFormat.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    warningFormat = QTextCharFormat();
    warningFormat.setUnderlineColor(QColor(Qt::yellow));
    warningFormat.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    infoFormat = QTextCharFormat();
    infoFormat.setUnderlineColor(Rgb(0x569cd6));
    infoFormat.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    sideBarBaseColor = Rgb(0x262626);
    sideBarHighlightColor = Rgb(0x363636);
}

void ColorSettings::SetFullWidthSelection(HighlightProperties* row)
{
    row->defaultFormat.setProperty(QTextFormat::FullWidthSelection, true);
    row->format.setProperty(QTextFormat::FullWidthSelection, true);
}

void ColorSettings::AppendFormat(Table& table, QStringList& orderedKeys, const QString& key,
                                 const QString& label, const QColor& foreground, const QColor& background,
                                 bool fontStylesEnabled, int weight, bool italic, bool underline)
{
    QTextCharFormat format;
    if (foreground.isValid())
        format.setForeground(QBrush(foreground));
    if (background.isValid())
        format.setBackground(QBrush(background));
    format.setFontWeight(weight);
    format.setFontItalic(italic);
    format.setFontUnderline(underline);

    // A row that exists is reset in place, so that pointers to its format stay good.
    HighlightProperties* row = Row(table, key);
    row->label = label;
    row->defaultFormat = format;
    row->format = format;
    row->fontStylesEnabled = fontStylesEnabled;
    if (!orderedKeys.contains(key))
        orderedKeys.append(key);
}

void ColorSettings::AppendCodeEditorFormat(const QString& key, const QString& label, const QColor& foreground,
                                           const QColor& background, bool fontStylesEnabled, int weight,
                                           bool italic, bool underline)
{
    AppendFormat(codeEditorHighlights, codeEditorHighlightOrderedKeys, key, label, foreground, background,
                 fontStylesEnabled, weight, italic, underline);
}

void ColorSettings::AppendOutputFormat(const QString& key, const QString& label, const QColor& foreground,
                                       const QColor& background, bool fontStylesEnabled, int weight,
                                       bool italic, bool underline)
{
    AppendFormat(outputHighlights, outputHighlightOrderedKeys, key, label, foreground, background,
                 fontStylesEnabled, weight, italic, underline);
}

QTextCharFormat ColorSettings::GetCodeEditorFormat(const QString& key, bool useDefault)
{
    const HighlightProperties row = GetCodeEditorHighlightProperties(key);
    return useDefault ? row.defaultFormat : row.format;
}

QTextCharFormat ColorSettings::GetOutputFormat(const QString& key, bool useDefault)
{
    const HighlightProperties row = GetOutputHighlightProperties(key);
    return useDefault ? row.defaultFormat : row.format;
}

QTextCharFormat* ColorSettings::GetCodeEditorFormatPtr(const QString& key, bool useDefault)
{
    HighlightProperties* row = Row(codeEditorHighlights, key);
    return useDefault ? &row->defaultFormat : &row->format;
}

void ColorSettings::SetCodeEditorFormat(const QString& key, const QTextCharFormat& format)
{
    Row(codeEditorHighlights, key)->format = format;
}

void ColorSettings::SetOutputFormat(const QString& key, const QTextCharFormat& format)
{
    Row(outputHighlights, key)->format = format;
}

HighlightProperties ColorSettings::GetCodeEditorHighlightProperties(const QString& key)
{
    return std::as_const(codeEditorHighlights).value(key);
}

HighlightProperties ColorSettings::GetOutputHighlightProperties(const QString& key)
{
    return std::as_const(outputHighlights).value(key);
}

QString ColorSettings::GetFormatString(const QTextCharFormat& format)
{
    return QStringLiteral("%1,%2,%3,%4,%5")
        .arg(BrushRgb(format, QTextFormat::ForegroundBrush))
        .arg(BrushRgb(format, QTextFormat::BackgroundBrush))
        .arg(format.fontWeight())
        .arg(format.fontItalic() ? 1 : 0)
        .arg(format.underlineStyle() != QTextCharFormat::NoUnderline ? 1 : 0);
}

void ColorSettings::LoadFormatString(QTextCharFormat& format, const QString& string)
{
    const QStringList fields = string.split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (fields.size() != 5)
        return;
    // Each field stands alone: one that does not read leaves its property as it was, and a
    // colour of 0 never erases one that the format has.
    const QColor foreground = ParseColor(fields.at(0));
    if (foreground.isValid())
        format.setForeground(QBrush(foreground));
    const QColor background = ParseColor(fields.at(1));
    if (background.isValid())
        format.setBackground(QBrush(background));
    bool ok = false;
    const int weight = fields.at(2).trimmed().toInt(&ok);
    if (ok && weight >= 1 && weight <= 1000)
        format.setFontWeight(weight);
    const int italic = fields.at(3).trimmed().toInt(&ok);
    if (ok)
        format.setFontItalic(italic != 0);
    const int underline = fields.at(4).trimmed().toInt(&ok);
    if (ok)
        format.setUnderlineStyle(underline != 0 ? QTextCharFormat::SingleUnderline
                                                : QTextCharFormat::NoUnderline);
}

QString ColorSettings::GetExtraSelectionString(const ExtraSelectionProperties& properties)
{
    // One call of arg(), so that a '%' in the name or the match is never taken for a marker.
    return QStringLiteral("%1;;;%2;;;%3;;;%4;;;%5;;;%6;;;%7;;;%8;;;%9")
        .arg(properties.name, ColorText(properties.foreground), ColorText(properties.background),
             FlagText(properties.foregroundEnabled), FlagText(properties.backgroundEnabled), properties.match,
             FlagText(properties.regExp), FlagText(properties.highlightLine), FlagText(properties.enabled));
}

void ColorSettings::LoadExtraSelectionString(const QString& string)
{
    const QStringList parts = string.split(SELECTION_SEPARATOR, Qt::SkipEmptyParts);
    if (parts.size() != 9)
        return;
    const QColor foreground = ParseFlag(parts.at(3)) ? ParseColor(parts.at(1)) : QColor();
    const QColor background = ParseFlag(parts.at(4)) ? ParseColor(parts.at(2)) : QColor();
    outputUserDefinedSelections.append(
        ExtraSelectionProperties(parts.at(0), foreground, background, parts.at(5), ParseFlag(parts.at(6)),
                                 ParseFlag(parts.at(7)), ParseFlag(parts.at(8))));
}

QString ColorSettings::GetUserConfigPath()
{
    const QString directory = Settings::GetUserConfigDirectory();
    if (directory.isEmpty())
        return QString();
    return QFileInfo(directory + QLatin1Char('/') + CONFIG_FILE_NAME).absoluteFilePath();
}

void ColorSettings::ReadUserConfig()
{
    Initialize();
    const QString path = GetUserConfigPath();
    if (path.isEmpty())
        return;
    QSettings file(path, QSettings::IniFormat);
    ReadTable(file, CODE_EDITOR_GROUP, codeEditorHighlights, codeEditorHighlightOrderedKeys);
    ReadTable(file, OUTPUT_GROUP, outputHighlights, outputHighlightOrderedKeys);
    ReadUserDefinedSelections(file);
}

void ColorSettings::ReadTable(QSettings& file, const QString& group, Table& table,
                              const QStringList& orderedKeys)
{
    file.beginGroup(group);
    for (const QString& key : orderedKeys)
        LoadFormatString(Row(table, key)->format, IniValue::ReadString(file, key, QString()));
    file.endGroup();
}

void ColorSettings::ReadUserDefinedSelections(QSettings& file)
{
    file.beginGroup(CUSTOM_HIGHLIGHTING_GROUP);
    QStringList keys = file.childKeys();
    if (!keys.isEmpty())
    {
        // Keys mean the user's own list: it replaces the factory rows, and a row that does not
        // read is dropped, even when that leaves none.
        std::stable_sort(keys.begin(), keys.end(), compareHighlightingKeys);
        outputUserDefinedSelections.clear();
        for (const QString& key : std::as_const(keys))
            LoadExtraSelectionString(IniValue::ReadString(file, key, QString()));
    }
    file.endGroup();
}

void ColorSettings::WriteUserConfig()
{
    const QString path = GetUserConfigPath();
    if (path.isEmpty())
        return;
    QSettings file(path, QSettings::IniFormat);
    file.beginGroup(MAIN_GROUP);
    file.setValue(QStringLiteral("version"), Settings::CONFIG_FILE_VERSION);
    file.endGroup();
    WriteTable(file, CODE_EDITOR_GROUP, codeEditorHighlights, codeEditorHighlightOrderedKeys);
    WriteTable(file, OUTPUT_GROUP, outputHighlights, outputHighlightOrderedKeys);
    WriteUserDefinedSelections(file);
    file.sync();
    // A damaged old file leaves FormatError behind although the write went through.
    if (file.status() == QSettings::AccessError)
        Logger::Error(QStringLiteral("Failed to write %1").arg(path));
}

void ColorSettings::WriteTable(QSettings& file, const QString& group, const Table& table,
                               const QStringList& orderedKeys)
{
    file.beginGroup(group);
    for (const QString& key : orderedKeys)
        file.setValue(key, GetFormatString(table.value(key).format));
    file.endGroup();
}

void ColorSettings::WriteUserDefinedSelections(QSettings& file)
{
    // A shorter list must leave no rows of a longer, older one behind.
    file.remove(CUSTOM_HIGHLIGHTING_GROUP);
    file.beginGroup(CUSTOM_HIGHLIGHTING_GROUP);
    for (qsizetype i = 0; i < outputUserDefinedSelections.size(); ++i)
        file.setValue(QString::number(i), GetExtraSelectionString(outputUserDefinedSelections.at(i)));
    file.endGroup();
}
