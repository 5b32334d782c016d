#pragma once

#include "settings/KeySequence.h"
#include "settings/PreferencePage.h"

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QStringList>
#include <QtGui/QFont>
#include <QtGui/QTextCharFormat>
#include <QtWidgets/QDialog>

class ColorLabel;
class KeyBindings;
class KeySequenceLineEdit;
class OutputHighlightingWidget;
class QCheckBox;
class QComboBox;
class QFontComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;
class QStackedWidget;
class QVBoxLayout;

// Edits the settings, the colours and the key bindings on working copies: every page shows what
// ResetSettings took from the stores, and only ApplySettings writes back.
class PreferencesDialog : public QDialog
{
    Q_OBJECT

public:
    explicit PreferencesDialog(KeyBindings* keyBindings, QWidget* parent = nullptr);

    void SetCurrentPage(PreferencePage page);
    int GetCurrentPage() const;

signals:
    void Modified();
    void WorkspaceModified();

public slots:
    void ResetSettings();
    void ApplySettings();
    void OnOk();

    // Tabs and spacing.
    void OnTabsLanguageChanged(int index);
    void OnTabsValueChanged();

    // Fonts and colours.
    void RefreshFontsAndColorsPage(int index);
    void SetFixedWidthFonts(bool on);
    void OnFontChanged();
    void OnHighlightItemChanged();
    void OnHighlightModifierChanged();
    void SelectForegroundColor();
    void SelectBackgroundColor();
    void UpdateSampleDisplay();
    void DefaultFontsAndColors();

    // Keyboard.
    void RefreshCurrentKeyBindings();
    void OnSelectedKeyBindingItemChanged();
    void UpdateExistingKeyBindingDisplay(const QString& text);
    void AssignKeyBinding();
    void RemoveKeyBinding();
    void RestoreDefaultKeyBindings();

    // Pylint.
    void GeneratePylintConfig();
    void SelectPylintPath();
    void SelectPylintConfigPath();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // A check box and the setting it shows and writes back.
    struct CheckRow
    {
        QCheckBox* box = nullptr;
        bool* setting = nullptr;
    };
    // The working tab values of one language: default, MEL, Python.
    struct TabValues
    {
        int size = 4;
        bool insertSpaces = true;
        bool autoIndent = true;
        bool useDefaults = false;
    };

    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    QWidget* CreateGeneralPage();
    QWidget* CreateKeyboardPage();
    QWidget* CreateTabsPage();
    QWidget* CreateFontsAndColorsPage();
    QWidget* CreateCodeEditorPage();
    QWidget* CreateOutputPage();
    QWidget* CreateMelPage();
    QWidget* CreatePythonPage();
    QWidget* CreatePylintPage();
    QCheckBox* AddCheck(QVBoxLayout* layout, const QString& name, const QString& label, bool* setting);
    QGroupBox* AddGroup(QVBoxLayout* layout, const QString& name, const QString& title, QVBoxLayout*& inner);
    QLineEdit* AddPathRow(QVBoxLayout* layout, const QString& label, const QString& name, QPushButton** browse);

    void ResetTabs();
    void ApplyTabs();
    void ShowTabValues(int language);
    void ResetFontsAndColors();
    void ApplyFontsAndColors();
    void ResetKeyBindings();
    void ApplyKeyBindings();
    void ResetOutputHighlighting();
    void ApplyOutputHighlighting();
    void ResetPylint();
    void ApplyPylint();

    bool IsOutputTarget() const;
    QFont& WorkingFont();
    QMap<QString, QTextCharFormat>& WorkingFormats();
    QString CurrentHighlightKey() const;
    bool CurrentSelectionFontStylesEnabled() const;
    void SelectColor(ColorLabel* label, bool foreground);
    KeySequence* SelectedKeySequence();
    void RemoveKeyBinding(const QString& text);

    KeyBindings* keyBindings; // not owned
    QList<CheckRow> checkRows;

    QListWidget* menuListWdg = nullptr;
    QStackedWidget* pageStack = nullptr;
    QPushButton* applyBtn = nullptr;
    QPushButton* okBtn = nullptr;
    QPushButton* cancelBtn = nullptr;

    // Keyboard.
    QListWidget* keyboardCommandListWdg = nullptr;
    QComboBox* assignedShortcutCmb = nullptr;
    QPushButton* removeShortcutBtn = nullptr;
    KeySequenceLineEdit* pressShortcutKeysLE = nullptr;
    QPushButton* assignShortcutBtn = nullptr;
    QLineEdit* shortcutCurrentlyUsedByLE = nullptr;
    QPushButton* restoreDefaultShortcutsBtn = nullptr;

    // Tabs and spacing.
    QComboBox* languageCombo = nullptr;
    QCheckBox* useDefaultTabsChk = nullptr;
    QGroupBox* tabGrp = nullptr;
    QGroupBox* indentingGrp = nullptr;
    QSpinBox* tabSizeSpinBox = nullptr;
    QCheckBox* replaceTabsChk = nullptr;
    QCheckBox* autoIndentChk = nullptr;

    // Fonts and colours.
    QComboBox* showSettingsForCombo = nullptr;
    QPushButton* useDefaultFontButton = nullptr;
    QFontComboBox* fontCombo = nullptr;
    QComboBox* fontSizeCombo = nullptr;
    QCheckBox* fixedWidthChk = nullptr;
    QListWidget* highlightItemList = nullptr;
    ColorLabel* foregroundColorLabel = nullptr;
    ColorLabel* backgroundColorLabel = nullptr;
    QCheckBox* boldChk = nullptr;
    QCheckBox* italicChk = nullptr;
    QCheckBox* underlineChk = nullptr;
    QLabel* sampleLabel = nullptr;

    // Output.
    QSpinBox* outputBufferSizeSB = nullptr;
    OutputHighlightingWidget* outputHighlightingWidget = nullptr;

    // Python.
    QLineEdit* pythonForcedImportsLE = nullptr;

    // Pylint.
    QLineEdit* pylintExecutablePathLE = nullptr;
    QPushButton* pylintExecutablePathBtn = nullptr;
    QLineEdit* pylintPythonHomePathLE = nullptr;
    QLineEdit* pylintConfigPathLE = nullptr;
    QPushButton* pylintConfigPathBtn = nullptr;
    QPushButton* pylintConfigGenerateBtn = nullptr;
    QLineEdit* pylintAdditionalPythonPathsLE = nullptr;

    // Working values.
    TabValues tabValues[3];
    int shownTabsLanguage = 0;
    bool updatingWidgets = false;
    QFont codeEditorFont;
    QFont outputFont;
    QMap<QString, QTextCharFormat> codeEditorFormats;
    QMap<QString, QTextCharFormat> outputFormats;
    QStringList codeEditorFontStyleKeys;
    QStringList outputFontStyleKeys;
    QList<KeySequence> keySequenceRows;
    QRect lastGeometry;
};
