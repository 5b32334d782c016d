// Tab rules, font, zoom, colours and overwrite mode of CodeEditor, as the settings give them.
#include "editor/CodeEditor.h"
#include "language/Highlighter.h"

#include "settings/ColorSettings.h"
#include "settings/Settings.h"

#include <QtGui/QFontInfo>
#include <QtGui/QSyntaxHighlighter>
#include <QtGui/QTextDocument>
#include <QtGui/QTextOption>

namespace
{
void SetBrush(QPalette& palette, QPalette::ColorRole role, const QBrush& brush)
{
    // A format without this colour leaves the palette's own.
    if (brush.style() == Qt::NoBrush)
        return;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        palette.setBrush(group, role, brush);
}

void ApplyEditorColors(QPalette& palette)
{
    const QTextCharFormat plain = ColorSettings::GetCodeEditorFormat(ColorSettings::PLAIN_TEXT);
    const QTextCharFormat selected = ColorSettings::GetCodeEditorFormat(ColorSettings::SELECTED_TEXT);
    SetBrush(palette, QPalette::Text, plain.foreground());
    SetBrush(palette, QPalette::Base, plain.background());
    SetBrush(palette, QPalette::HighlightedText, selected.foreground());
    SetBrush(palette, QPalette::Highlight, selected.background());
}
} // namespace

void CodeEditor::UpdateTextOptions()
{
    tabSize = Settings::tabsSizeDefault;
    insertSpaces = Settings::tabsInsertSpacesDefault;
    autoIndent = Settings::tabsAutoIndentDefault;
    if (properties.language == CodeEditorLanguage::MEL && !Settings::tabsUseDefaultsMel)
    {
        tabSize = Settings::tabsSizeMel;
        insertSpaces = Settings::tabsInsertSpacesMel;
        autoIndent = Settings::tabsAutoIndentMel;
    }
    else if (properties.language == CodeEditorLanguage::PYTHON && !Settings::tabsUseDefaultsPython)
    {
        tabSize = Settings::tabsSizePython;
        insertSpaces = Settings::tabsInsertSpacesPython;
        autoIndent = Settings::tabsAutoIndentPython;
    }
    if (tabSize < 1)
        tabSize = 4;
    tabStopPixels = fontMetrics().horizontalAdvance(QLatin1Char(' ')) * tabSize;

    // The widget's own wrap mode decides the horizontal scroll range; the document's option the
    // layout. Both follow the one setting.
    setLineWrapMode(Settings::wordWrapEnabled ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
    QTextOption option = document()->defaultTextOption();
    option.setWrapMode(Settings::wordWrapEnabled ? QTextOption::WordWrap : QTextOption::NoWrap);
    QTextOption::Flags flags = option.flags();
    flags.setFlag(QTextOption::ShowTabsAndSpaces, Settings::renderWhitespace);
    flags.setFlag(QTextOption::ShowLineAndParagraphSeparators, Settings::renderEndOfLine);
    option.setFlags(flags);
    option.setTabStopDistance(tabStopPixels);
    document()->setDefaultTextOption(option);
    errorBarMeasuredBlockCount = -1;
    UpdateErrorBarBlockHeights();
}

void CodeEditor::UpdateFont()
{
    QFont newFont = Settings::codeEditorFont;
    const int pointSize = newFont.pointSize() > 0 ? newFont.pointSize() : QFontInfo(newFont).pointSize();
    int size = pointSize;
    if (Settings::codeEditorZoom != 0)
    {
        size = pointSize + Settings::codeEditorZoom;
        // The zoom that overshoots is cut back, so that the next step moves the size at once.
        if (size < Settings::MINIMUM_FONT_SIZE || size > Settings::MAXIMUM_FONT_SIZE)
        {
            size = qBound(Settings::MINIMUM_FONT_SIZE, size, Settings::MAXIMUM_FONT_SIZE);
            Settings::codeEditorZoom = size - pointSize;
        }
    }
    const double scale = Settings::customScaleValue;
    if (scale != 1.0 && scale > 0.0)
        size = static_cast<int>(size * scale);
    newFont.setPointSize(qMax(1, size));
    // Code is drawn glyph for glyph: without the shaper (where the script does not need it), Qt
    // lays out a changed line in about half the time.
    newFont.setStyleStrategy(QFont::PreferNoShaping);
    setFont(newFont);
    UpdateTextOptions();
    UpdateLineNumberWidth();
}

void CodeEditor::UpdateFontsAndColors()
{
    UpdateFont();
    QPalette editorPalette = palette();
    ApplyEditorColors(editorPalette);
    setPalette(editorPalette);
    QPalette viewportPalette = viewport()->palette();
    ApplyEditorColors(viewportPalette);
    viewport()->setPalette(viewportPalette);
    if (auto* own = qobject_cast<Highlighter*>(highlighter.data()))
        own->HighlightDocument();
    else if (highlighter)
        highlighter->rehighlight();
    UpdateExtraSelections();
}

void CodeEditor::UpdateOverwriteMode()
{
    setOverwriteMode(Settings::overwriteEnabled);
}

void CodeEditor::ToggleOverwriteMode()
{
    // One mode for all editors: the others follow when the change is pushed to them.
    Settings::overwriteEnabled = !Settings::overwriteEnabled;
    UpdateOverwriteMode();
    emit OverwriteModeChanged();
}
