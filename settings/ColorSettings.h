#pragma once

#include "settings/ExtraSelectionProperties.h"
#include "settings/HighlightProperties.h"

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QTextCharFormat>

class QPalette;
class QSettings;

// Every colour and text style of the editors and the output view: one process-wide store of
// static members, persisted in "brindletEditor2_colors.ini".
//
// Highlighters and editors keep pointers to the formats inside the tables, so that an edit in
// place reaches them at the next repaint. The class therefore never rebuilds a table and never
// detaches one: rows are reset in place, and rows that exist are reached through the const side
// of the map. Do not keep copies of the tables themselves.
class ColorSettings
{
public:
    ColorSettings() = delete;

    static const QString CONFIG_FILE_NAME;

    static const QString PLAIN_TEXT;
    static const QString SELECTED_TEXT;
    static const QString MATCHING_SELECTION;
    static const QString FIND_REPLACE_SELECTED;
    static const QString FIND_REPLACE_MATCHING;
    static const QString FIND_REPLACE_SELECTION;
    static const QString CURRENT_LINE;
    static const QString MATCHING_BRACES;
    static const QString WHITESPACES;
    static const QString INDENTATION_GUIDES;
    static const QString LINE_NUMBERS;
    static const QString GUTTER;
    static const QString MEL_KEYWORDS;
    static const QString MEL_COMMANDS;
    static const QString MEL_STRINGS;
    static const QString MEL_NUMBERS;
    static const QString MEL_VARIABLES;
    static const QString MEL_PROCS;
    static const QString MEL_COMMENTS;
    static const QString PYTHON_KEYWORDS;
    static const QString PYTHON_BUILTINS;
    static const QString PYTHON_STRINGS;
    static const QString PYTHON_DOC_STRINGS;
    static const QString PYTHON_NUMBERS;
    static const QString PYTHON_CLASSES;
    static const QString PYTHON_METHODS;
    static const QString PYTHON_COMMENTS;
    static const QString PYTHON_DECORATORS;
    static const QString PYTHON_SELF_CLS;
    static const QString PYTHON_MEL_COMMANDS;

    static QMap<QString, HighlightProperties> codeEditorHighlights;
    static QMap<QString, HighlightProperties> outputHighlights;
    // Keys in the order of Append: the order of the preferences and of the file.
    static QStringList codeEditorHighlightOrderedKeys;
    static QStringList outputHighlightOrderedKeys;
    static QList<ExtraSelectionProperties> outputUserDefinedSelections;
    static QTextCharFormat errorFormat;
    static QTextCharFormat warningFormat;
    static QTextCharFormat infoFormat;
    static QColor sideBarBaseColor;
    static QColor sideBarHighlightColor;

    // Puts every table, list and fixed format back to the factory values. Needs a QApplication
    // for the palette's selection colours.
    static void Initialize();

    static QTextCharFormat GetCodeEditorFormat(const QString& key, bool useDefault = false);
    static QTextCharFormat GetOutputFormat(const QString& key, bool useDefault = false);
    // The format inside the table; it stays valid, and keeps its address, for the whole run.
    // A key that names no row gets an empty row, as indexing the table would.
    static QTextCharFormat* GetCodeEditorFormatPtr(const QString& key, bool useDefault = false);
    static void SetCodeEditorFormat(const QString& key, const QTextCharFormat& format);
    static void SetOutputFormat(const QString& key, const QTextCharFormat& format);
    static HighlightProperties GetCodeEditorHighlightProperties(const QString& key);
    static HighlightProperties GetOutputHighlightProperties(const QString& key);
    static void AppendCodeEditorFormat(const QString& key, const QString& label, const QColor& foreground,
                                       const QColor& background, bool fontStylesEnabled = false,
                                       int weight = QFont::Normal, bool italic = false,
                                       bool underline = false);
    static void AppendOutputFormat(const QString& key, const QString& label, const QColor& foreground,
                                   const QColor& background, bool fontStylesEnabled = false,
                                   int weight = QFont::Normal, bool italic = false, bool underline = false);

    static QString GetFormatString(const QTextCharFormat& format);
    static void LoadFormatString(QTextCharFormat& format, const QString& string);
    static QString GetExtraSelectionString(const ExtraSelectionProperties& properties);
    static void LoadExtraSelectionString(const QString& string);

    static QString GetUserConfigPath();
    static void ReadUserConfig();
    static void WriteUserConfig();

private:
    using Table = QMap<QString, HighlightProperties>;

    static HighlightProperties* Row(Table& table, const QString& key);
    static void AppendFormat(Table& table, QStringList& orderedKeys, const QString& key, const QString& label,
                             const QColor& foreground, const QColor& background, bool fontStylesEnabled,
                             int weight, bool italic, bool underline);
    static void SetFullWidthSelection(HighlightProperties* row);
    static QPalette EditorPalette();
    static void InitializeCodeEditorTable(const QPalette& palette);
    static void InitializeCodeEditorLanguageRows();
    static void InitializeOutputTable(const QPalette& palette);
    static void InitializeUserDefinedSelections();
    static void InitializeFixedFormats();
    static void ReadTable(QSettings& file, const QString& group, Table& table,
                          const QStringList& orderedKeys);
    static void WriteTable(QSettings& file, const QString& group, const Table& table,
                           const QStringList& orderedKeys);
    static void ReadUserDefinedSelections(QSettings& file);
    static void WriteUserDefinedSelections(QSettings& file);
};

// Orders two keys of the user's highlight rules as integers; a key that is no integer counts as 0.
bool compareHighlightingKeys(const QString& a, const QString& b);
