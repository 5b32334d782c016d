#include "settings/PreferencesDialog.h"

#include "settings/ColorSettings.h"
#include "settings/Settings.h"
#include "widgets/ColorLabel.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFontComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>

namespace
{
const QString SAMPLE_TEXT = QStringLiteral("ij = I:oO(0xB81l);");
constexpr int CODE_EDITOR_TARGET = 0;
constexpr int BOLD_WEIGHT = 900;
constexpr int NORMAL_WEIGHT = 400;

QString HexColor(const QColor& color)
{
    return QStringLiteral("#%1%2%3")
        .arg(color.red(), 2, 16, QLatin1Char('0'))
        .arg(color.green(), 2, 16, QLatin1Char('0'))
        .arg(color.blue(), 2, 16, QLatin1Char('0'));
}
} // namespace

bool PreferencesDialog::IsOutputTarget() const
{
    return showSettingsForCombo->currentIndex() != CODE_EDITOR_TARGET;
}

QFont& PreferencesDialog::WorkingFont()
{
    return IsOutputTarget() ? outputFont : codeEditorFont;
}

QMap<QString, QTextCharFormat>& PreferencesDialog::WorkingFormats()
{
    return IsOutputTarget() ? outputFormats : codeEditorFormats;
}

QString PreferencesDialog::CurrentHighlightKey() const
{
    const QListWidgetItem* item = highlightItemList->currentItem();
    return item ? item->data(Qt::UserRole).toString() : QString();
}

bool PreferencesDialog::CurrentSelectionFontStylesEnabled() const
{
    const QStringList& keys = IsOutputTarget() ? outputFontStyleKeys : codeEditorFontStyleKeys;
    return keys.contains(CurrentHighlightKey());
}

void PreferencesDialog::ResetFontsAndColors()
{
    codeEditorFont = Settings::codeEditorFont;
    outputFont = Settings::outputFont;
    codeEditorFormats.clear();
    outputFormats.clear();
    codeEditorFontStyleKeys.clear();
    outputFontStyleKeys.clear();
    for (const QString& key : ColorSettings::codeEditorHighlightOrderedKeys)
    {
        const HighlightProperties row = ColorSettings::GetCodeEditorHighlightProperties(key);
        codeEditorFormats.insert(key, row.format);
        if (row.fontStylesEnabled)
            codeEditorFontStyleKeys.append(key);
    }
    for (const QString& key : ColorSettings::outputHighlightOrderedKeys)
    {
        const HighlightProperties row = ColorSettings::GetOutputHighlightProperties(key);
        outputFormats.insert(key, row.format);
        if (row.fontStylesEnabled)
            outputFontStyleKeys.append(key);
    }
    RefreshFontsAndColorsPage(showSettingsForCombo->currentIndex());
}

void PreferencesDialog::ApplyFontsAndColors()
{
    // A new family or size starts from no zoom.
    if (codeEditorFont.family() != Settings::codeEditorFont.family() ||
        codeEditorFont.pointSize() != Settings::codeEditorFont.pointSize())
        Settings::codeEditorZoom = 0;
    if (outputFont.family() != Settings::outputFont.family() ||
        outputFont.pointSize() != Settings::outputFont.pointSize())
        Settings::outputZoom = 0;
    Settings::codeEditorFont = codeEditorFont;
    Settings::outputFont = outputFont;
    for (const QString& key : ColorSettings::codeEditorHighlightOrderedKeys)
        ColorSettings::SetCodeEditorFormat(key, codeEditorFormats.value(key));
    for (const QString& key : ColorSettings::outputHighlightOrderedKeys)
        ColorSettings::SetOutputFormat(key, outputFormats.value(key));
}

void PreferencesDialog::RefreshFontsAndColorsPage(int /*index*/)
{
    const bool output = IsOutputTarget();
    const QStringList& keys =
        output ? ColorSettings::outputHighlightOrderedKeys : ColorSettings::codeEditorHighlightOrderedKeys;
    updatingWidgets = true;
    highlightItemList->clear();
    for (const QString& key : keys)
    {
        const HighlightProperties row = output ? ColorSettings::GetOutputHighlightProperties(key)
                                               : ColorSettings::GetCodeEditorHighlightProperties(key);
        auto* item = new QListWidgetItem(row.label, highlightItemList);
        item->setData(Qt::UserRole, key);
    }
    const QFont& font = WorkingFont();
    fontCombo->setCurrentFont(font);
    fontSizeCombo->setCurrentIndex(qBound(0, font.pointSize() - Settings::MINIMUM_FONT_SIZE, fontSizeCombo->count() - 1));
    updatingWidgets = false;
    highlightItemList->setCurrentRow(0);
    OnHighlightItemChanged();
}

void PreferencesDialog::SetFixedWidthFonts(bool on)
{
    fontCombo->setFontFilters(on ? QFontComboBox::MonospacedFonts : QFontComboBox::AllFonts);
}

void PreferencesDialog::OnFontChanged()
{
    if (updatingWidgets)
        return;
    QFont& font = WorkingFont();
    font.setFamily(fontCombo->currentFont().family());
    font.setPointSize(fontSizeCombo->currentIndex() + Settings::MINIMUM_FONT_SIZE);
    UpdateSampleDisplay();
}

void PreferencesDialog::OnHighlightItemChanged()
{
    const QString key = CurrentHighlightKey();
    const QTextCharFormat format = WorkingFormats().value(key);
    const bool stylesEnabled = CurrentSelectionFontStylesEnabled();
    updatingWidgets = true;
    foregroundColorLabel->SetColor(format.foreground().color());
    backgroundColorLabel->SetColor(format.background().color());
    boldChk->setChecked(format.fontWeight() > QFont::Normal);
    italicChk->setChecked(format.fontItalic());
    underlineChk->setChecked(format.fontUnderline());
    for (QCheckBox* box : {boldChk, italicChk, underlineChk})
        box->setEnabled(stylesEnabled);
    updatingWidgets = false;
    UpdateSampleDisplay();
}

void PreferencesDialog::OnHighlightModifierChanged()
{
    if (updatingWidgets)
        return;
    const QString key = CurrentHighlightKey();
    if (key.isEmpty())
        return;
    QTextCharFormat& format = WorkingFormats()[key];
    format.setFontWeight(boldChk->isChecked() ? BOLD_WEIGHT : NORMAL_WEIGHT);
    format.setFontItalic(italicChk->isChecked());
    format.setFontUnderline(underlineChk->isChecked());
    UpdateSampleDisplay();
}

void PreferencesDialog::SelectForegroundColor()
{
    SelectColor(foregroundColorLabel, true);
}

void PreferencesDialog::SelectBackgroundColor()
{
    SelectColor(backgroundColorLabel, false);
}

void PreferencesDialog::SelectColor(ColorLabel* label, bool foreground)
{
    const QString key = CurrentHighlightKey();
    if (key.isEmpty())
        return;
    const QColor color = QColorDialog::getColor(label->GetColor(), this);
    if (!color.isValid())
        return;
    label->SetColor(color);
    QTextCharFormat& format = WorkingFormats()[key];
    if (foreground)
        format.setForeground(color);
    else
        format.setBackground(color);
    UpdateSampleDisplay();
}

void PreferencesDialog::UpdateSampleDisplay()
{
    const QString key = CurrentHighlightKey();
    const QTextCharFormat format = WorkingFormats().value(key);
    const QString plainKey = ColorSettings::PLAIN_TEXT;
    QColor background = format.background().style() != Qt::NoBrush ? format.background().color()
                                                                   : WorkingFormats().value(plainKey).background().color();
    QFont font = WorkingFont();
    font.setBold(format.fontWeight() > QFont::Normal);
    font.setItalic(format.fontItalic());
    font.setUnderline(format.fontUnderline());
    sampleLabel->setFont(font);
    QPalette palette = sampleLabel->palette();
    palette.setColor(QPalette::Window, background);
    sampleLabel->setPalette(palette);
    sampleLabel->setText(QStringLiteral("<font color=%1>%2</font>").arg(HexColor(format.foreground().color()), SAMPLE_TEXT));
}

void PreferencesDialog::DefaultFontsAndColors()
{
    const bool output = IsOutputTarget();
    WorkingFont() = Settings::GetDefaultFont();
    QMap<QString, QTextCharFormat>& formats = WorkingFormats();
    const QStringList& keys =
        output ? ColorSettings::outputHighlightOrderedKeys : ColorSettings::codeEditorHighlightOrderedKeys;
    for (const QString& key : keys)
        formats[key] = output ? ColorSettings::GetOutputFormat(key, true) : ColorSettings::GetCodeEditorFormat(key, true);
    const int row = highlightItemList->currentRow();
    RefreshFontsAndColorsPage(showSettingsForCombo->currentIndex());
    highlightItemList->setCurrentRow(qMax(row, 0));
}
