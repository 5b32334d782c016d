#include "settings/PreferencesDialog.h"

#include "output/OutputHighlightingWidget.h"
#include "settings/KeySequenceLineEdit.h"
#include "settings/Settings.h"
#include "widgets/ColorLabel.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFontComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QVBoxLayout>

namespace
{
constexpr int OUT_OF_RANGE_PAGE = 10;
constexpr int PAGE_COUNT = 9;
const char* const PAGE_LABELS[PAGE_COUNT] = {"General",     "Keyboard", "Tabs and Spacing", "Fonts and Colors",
                                             "Code Editor", "Output",   "MEL",              "Python",
                                             "Pylint"};
const char* const PAGE_NAMES[PAGE_COUNT] = {"generalPage",    "keyboardPage", "tabsSettingsPage",
                                            "fontAndColorPage", "codeEditorPage", "outputPage",
                                            "melSettingsPage", "pythonSettingsPage", "Pylint"};

// A page's widgets stand in a scroll area, so that nothing is cut at the dialog's minimum size.
QWidget* Scrolled(QWidget* content, const QString& name)
{
    auto* area = new QScrollArea;
    area->setObjectName(name);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(content);
    return area;
}
} // namespace

PreferencesDialog::PreferencesDialog(KeyBindings* bindings, QWidget* parent)
    : QDialog(parent), keyBindings(bindings)
{
    setObjectName(QStringLiteral("PreferencesDialog"));
    setWindowTitle(QStringLiteral("Preferences"));
    setMinimumSize(620, 480);
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    SetCurrentPage(GENERAL_PAGE);
}

void PreferencesDialog::CreateWidgets()
{
    menuListWdg = new QListWidget(this);
    menuListWdg->setObjectName(QStringLiteral("menuListWdg"));
    menuListWdg->setFixedWidth(140);
    pageStack = new QStackedWidget(this);
    pageStack->setObjectName(QStringLiteral("pageStack"));
    QWidget* pages[PAGE_COUNT] = {CreateGeneralPage(),    CreateKeyboardPage(), CreateTabsPage(),
                                  CreateFontsAndColorsPage(), CreateCodeEditorPage(), CreateOutputPage(),
                                  CreateMelPage(),        CreatePythonPage(),   CreatePylintPage()};
    for (int i = 0; i < PAGE_COUNT; ++i)
    {
        menuListWdg->addItem(QString::fromLatin1(PAGE_LABELS[i]));
        pageStack->addWidget(Scrolled(pages[i], QString::fromLatin1(PAGE_NAMES[i])));
    }
    applyBtn = new QPushButton(QStringLiteral("Apply"), this);
    applyBtn->setObjectName(QStringLiteral("applyBtn"));
    okBtn = new QPushButton(QStringLiteral("OK"), this);
    okBtn->setObjectName(QStringLiteral("okBtn"));
    okBtn->setDefault(true);
    cancelBtn = new QPushButton(QStringLiteral("Cancel"), this);
    cancelBtn->setObjectName(QStringLiteral("cancelBtn"));
}

void PreferencesDialog::CreateLayout()
{
    auto* pagesLayout = new QHBoxLayout;
    pagesLayout->addWidget(menuListWdg);
    pagesLayout->addWidget(pageStack, 1);
    auto* buttonLayout = new QHBoxLayout;
    buttonLayout->addStretch(1);
    buttonLayout->addWidget(applyBtn);
    buttonLayout->addWidget(okBtn);
    buttonLayout->addWidget(cancelBtn);
    auto* mainLayout = new QVBoxLayout(this);
    mainLayout->addLayout(pagesLayout, 1);
    mainLayout->addLayout(buttonLayout);
}

void PreferencesDialog::CreateConnections()
{
    connect(menuListWdg, SIGNAL(currentRowChanged(int)), pageStack, SLOT(setCurrentIndex(int)));
    connect(applyBtn, SIGNAL(clicked()), this, SLOT(ApplySettings()));
    connect(okBtn, SIGNAL(clicked()), this, SLOT(OnOk()));
    connect(cancelBtn, SIGNAL(clicked()), this, SLOT(reject()));

    connect(languageCombo, SIGNAL(currentIndexChanged(int)), this, SLOT(OnTabsLanguageChanged(int)));
    connect(useDefaultTabsChk, SIGNAL(toggled(bool)), this, SLOT(OnTabsValueChanged()));
    connect(tabSizeSpinBox, SIGNAL(valueChanged(int)), this, SLOT(OnTabsValueChanged()));
    connect(replaceTabsChk, SIGNAL(toggled(bool)), this, SLOT(OnTabsValueChanged()));
    connect(autoIndentChk, SIGNAL(toggled(bool)), this, SLOT(OnTabsValueChanged()));

    connect(showSettingsForCombo, SIGNAL(currentIndexChanged(int)), this, SLOT(RefreshFontsAndColorsPage(int)));
    connect(useDefaultFontButton, SIGNAL(clicked()), this, SLOT(DefaultFontsAndColors()));
    connect(fixedWidthChk, SIGNAL(toggled(bool)), this, SLOT(SetFixedWidthFonts(bool)));
    connect(fontCombo, SIGNAL(currentFontChanged(QFont)), this, SLOT(OnFontChanged()));
    connect(fontSizeCombo, SIGNAL(currentIndexChanged(int)), this, SLOT(OnFontChanged()));
    connect(highlightItemList, SIGNAL(currentRowChanged(int)), this, SLOT(OnHighlightItemChanged()));
    connect(foregroundColorLabel, SIGNAL(Clicked()), this, SLOT(SelectForegroundColor()));
    connect(backgroundColorLabel, SIGNAL(Clicked()), this, SLOT(SelectBackgroundColor()));
    for (QCheckBox* box : {boldChk, italicChk, underlineChk})
        connect(box, SIGNAL(toggled(bool)), this, SLOT(OnHighlightModifierChanged()));

    connect(keyboardCommandListWdg, SIGNAL(currentRowChanged(int)), this, SLOT(OnSelectedKeyBindingItemChanged()));
    connect(pressShortcutKeysLE, SIGNAL(textEdited(QString)), this, SLOT(UpdateExistingKeyBindingDisplay(QString)));
    connect(assignShortcutBtn, SIGNAL(clicked()), this, SLOT(AssignKeyBinding()));
    connect(removeShortcutBtn, SIGNAL(clicked()), this, SLOT(RemoveKeyBinding()));
    connect(restoreDefaultShortcutsBtn, SIGNAL(clicked()), this, SLOT(RestoreDefaultKeyBindings()));

    connect(pylintExecutablePathBtn, SIGNAL(clicked()), this, SLOT(SelectPylintPath()));
    connect(pylintConfigPathBtn, SIGNAL(clicked()), this, SLOT(SelectPylintConfigPath()));
    connect(pylintConfigGenerateBtn, SIGNAL(clicked()), this, SLOT(GeneratePylintConfig()));
}

QCheckBox* PreferencesDialog::AddCheck(QVBoxLayout* layout, const QString& name, const QString& label, bool* setting)
{
    auto* box = new QCheckBox(label);
    box->setObjectName(name);
    layout->addWidget(box);
    if (setting)
        checkRows.append({box, setting});
    return box;
}

QGroupBox* PreferencesDialog::AddGroup(QVBoxLayout* layout, const QString& name, const QString& title,
                                       QVBoxLayout*& inner)
{
    auto* group = new QGroupBox(title);
    group->setObjectName(name);
    inner = new QVBoxLayout(group);
    layout->addWidget(group);
    return group;
}

QLineEdit* PreferencesDialog::AddPathRow(QVBoxLayout* layout, const QString& label, const QString& name,
                                         QPushButton** browse)
{
    layout->addWidget(new QLabel(label));
    auto* row = new QHBoxLayout;
    auto* edit = new QLineEdit;
    edit->setObjectName(name);
    row->addWidget(edit, 1);
    if (browse)
    {
        *browse = new QPushButton(QStringLiteral("..."));
        (*browse)->setObjectName(name + QStringLiteral("Btn"));
        (*browse)->setFixedWidth(32);
        row->addWidget(*browse);
    }
    layout->addLayout(row);
    return edit;
}

QWidget* PreferencesDialog::CreateGeneralPage()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    QVBoxLayout* group = nullptr;
    AddGroup(layout, QStringLiteral("mainWindowGrp"), QStringLiteral("Main Window"), group);
    AddCheck(group, QStringLiteral("saveOnExecuteChk"), QStringLiteral("Save all on execute"), &Settings::saveAllOnExecute);
    AddCheck(group, QStringLiteral("saveOnExitChk"), QStringLiteral("Save all on exit"), &Settings::saveAllOnExit);
    AddCheck(group, QStringLiteral("checkForModifiedFilesChk"), QStringLiteral("Check for modified files"),
             &Settings::checkForModifiedFiles);
    AddCheck(group, QStringLiteral("overrideScriptEdChk"), QStringLiteral("Override Script Editor button"),
             &Settings::overrideScriptEditorButton);
    AddCheck(group, QStringLiteral("alwaysShowEditorAndOutputOnStartupChk"),
             QStringLiteral("Always show Code Editor and Output on startup"),
             &Settings::alwaysShowEditorAndOutputOnStartup);
    AddCheck(group, QStringLiteral("confirmCloseTemporaryBufferChk"),
             QStringLiteral("Display confirmation dialog when closing an internal buffer"),
             &Settings::showConfirmDialogOnInternalBufferClose);
    AddCheck(group, QStringLiteral("unsavedFileDialogOnExitChk"),
             QStringLiteral("Display unsaved files dialog when exiting Maya"),
             &Settings::showUnsavedFileDialogOnMayaExit);
    AddGroup(layout, QStringLiteral("tabBarGrp"), QStringLiteral("Tab Bar"), group);
    AddCheck(group, QStringLiteral("showTabBarChk"), QStringLiteral("Show Tab Bar"), &Settings::showTabBar);
    AddCheck(group, QStringLiteral("showCloseButtonOnTabsChk"), QStringLiteral("Show close button on each tab"),
             &Settings::showCloseButtonOnTabs);
    AddCheck(group, QStringLiteral("showTabBarMiniToolbarChk"), QStringLiteral("Show mini toolbar"),
             &Settings::showTabBarMiniToolbar);
    AddCheck(group, QStringLiteral("mouseWheelChangesActiveTabChk"), QStringLiteral("Mouse wheel changes active tab"),
             &Settings::mouseWheelChangesActiveTab);
    AddCheck(group, QStringLiteral("lockTabPositionsChk"), QStringLiteral("Lock tabs"), &Settings::lockTabPositions);
    layout->addStretch(1);
    return page;
}

QWidget* PreferencesDialog::CreateKeyboardPage()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    keyboardCommandListWdg = new QListWidget;
    keyboardCommandListWdg->setObjectName(QStringLiteral("keyboardCommandListWdg"));
    layout->addWidget(keyboardCommandListWdg, 1);

    layout->addWidget(new QLabel(QStringLiteral("Assigned Shortcut:")));
    auto* assignedRow = new QHBoxLayout;
    assignedShortcutCmb = new QComboBox;
    assignedShortcutCmb->setObjectName(QStringLiteral("assignedShortcutCmb"));
    removeShortcutBtn = new QPushButton(QStringLiteral("Remove"));
    removeShortcutBtn->setObjectName(QStringLiteral("removeShortcutBtn"));
    assignedRow->addWidget(assignedShortcutCmb, 1);
    assignedRow->addWidget(removeShortcutBtn);
    layout->addLayout(assignedRow);

    layout->addWidget(new QLabel(QStringLiteral("Press Shortcut Keys:")));
    auto* pressRow = new QHBoxLayout;
    pressShortcutKeysLE = new KeySequenceLineEdit;
    pressShortcutKeysLE->setObjectName(QStringLiteral("pressShortcutKeysLE"));
    assignShortcutBtn = new QPushButton(QStringLiteral("Assign"));
    assignShortcutBtn->setObjectName(QStringLiteral("assignShortcutBtn"));
    pressRow->addWidget(pressShortcutKeysLE, 1);
    pressRow->addWidget(assignShortcutBtn);
    layout->addLayout(pressRow);

    layout->addWidget(new QLabel(QStringLiteral("Shortcut currently used by:")));
    shortcutCurrentlyUsedByLE = new QLineEdit;
    shortcutCurrentlyUsedByLE->setObjectName(QStringLiteral("shortcutCurrentlyUsedByLE"));
    shortcutCurrentlyUsedByLE->setReadOnly(true);
    layout->addWidget(shortcutCurrentlyUsedByLE);

    auto* restoreRow = new QHBoxLayout;
    restoreDefaultShortcutsBtn = new QPushButton(QStringLiteral("Restore Defaults"));
    restoreDefaultShortcutsBtn->setObjectName(QStringLiteral("restoreDefaultShortcutsBtn"));
    restoreRow->addStretch(1);
    restoreRow->addWidget(restoreDefaultShortcutsBtn);
    layout->addLayout(restoreRow);
    return page;
}

QWidget* PreferencesDialog::CreateTabsPage()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    languageCombo = new QComboBox;
    languageCombo->setObjectName(QStringLiteral("languageCombo"));
    languageCombo->addItems({QStringLiteral("Default"), QStringLiteral("MEL"), QStringLiteral("Python")});
    layout->addWidget(languageCombo);
    useDefaultTabsChk = AddCheck(layout, QStringLiteral("useDefaultTabsChk"), QStringLiteral("Use Default"), nullptr);

    QVBoxLayout* group = nullptr;
    tabGrp = AddGroup(layout, QStringLiteral("tabGrp"), QStringLiteral("Tabs"), group);
    auto* sizeRow = new QHBoxLayout;
    sizeRow->addWidget(new QLabel(QStringLiteral("Tab Size:")));
    tabSizeSpinBox = new QSpinBox;
    tabSizeSpinBox->setObjectName(QStringLiteral("tabSizeSpinBox"));
    tabSizeSpinBox->setRange(1, 32);
    sizeRow->addWidget(tabSizeSpinBox);
    sizeRow->addStretch(1);
    group->addLayout(sizeRow);
    replaceTabsChk = AddCheck(group, QStringLiteral("replaceTabsChk"), QStringLiteral("Replace tabs with spaces"), nullptr);
    indentingGrp = AddGroup(layout, QStringLiteral("indentingGrp"), QStringLiteral("Indenting"), group);
    autoIndentChk = AddCheck(group, QStringLiteral("autoIndentChk"), QStringLiteral("Auto-indent"), nullptr);
    layout->addStretch(1);
    return page;
}

QWidget* PreferencesDialog::CreateFontsAndColorsPage()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    auto* targetRow = new QHBoxLayout;
    targetRow->addWidget(new QLabel(QStringLiteral("Show settings for:")));
    showSettingsForCombo = new QComboBox;
    showSettingsForCombo->setObjectName(QStringLiteral("showSettingsForCombo"));
    showSettingsForCombo->addItems({QStringLiteral("Code Editor"), QStringLiteral("Output Window")});
    targetRow->addWidget(showSettingsForCombo, 1);
    useDefaultFontButton = new QPushButton(QStringLiteral("Use Defaults"));
    useDefaultFontButton->setObjectName(QStringLiteral("useDefaultFontButton"));
    targetRow->addWidget(useDefaultFontButton);
    layout->addLayout(targetRow);

    auto* fontRow = new QHBoxLayout;
    fontRow->addWidget(new QLabel(QStringLiteral("Font:")));
    fontCombo = new QFontComboBox;
    fontCombo->setObjectName(QStringLiteral("fontCombo"));
    fontRow->addWidget(fontCombo, 1);
    fontRow->addWidget(new QLabel(QStringLiteral("Size:")));
    fontSizeCombo = new QComboBox;
    fontSizeCombo->setObjectName(QStringLiteral("fontSizeCombo"));
    for (int size = Settings::MINIMUM_FONT_SIZE; size <= Settings::MAXIMUM_FONT_SIZE; ++size)
        fontSizeCombo->addItem(QString::number(size));
    fontRow->addWidget(fontSizeCombo);
    layout->addLayout(fontRow);
    fixedWidthChk = AddCheck(layout, QStringLiteral("fixedWidthChk"), QStringLiteral("Show only fixed width"), nullptr);

    layout->addWidget(new QLabel(QStringLiteral("Display items:")));
    auto* itemsRow = new QHBoxLayout;
    highlightItemList = new QListWidget;
    highlightItemList->setObjectName(QStringLiteral("highlightItemList"));
    itemsRow->addWidget(highlightItemList, 1);
    auto* styleColumn = new QVBoxLayout;
    auto* colorForm = new QFormLayout;
    foregroundColorLabel = new ColorLabel;
    foregroundColorLabel->setObjectName(QStringLiteral("foregroundColorLabel"));
    foregroundColorLabel->setFixedSize(48, 20);
    backgroundColorLabel = new ColorLabel;
    backgroundColorLabel->setObjectName(QStringLiteral("backgroundColorLabel"));
    backgroundColorLabel->setFixedSize(48, 20);
    colorForm->addRow(QStringLiteral("Foreground:"), foregroundColorLabel);
    colorForm->addRow(QStringLiteral("Background:"), backgroundColorLabel);
    styleColumn->addLayout(colorForm);
    boldChk = AddCheck(styleColumn, QStringLiteral("boldChk"), QStringLiteral("Bold"), nullptr);
    italicChk = AddCheck(styleColumn, QStringLiteral("italicChk"), QStringLiteral("Italic"), nullptr);
    underlineChk = AddCheck(styleColumn, QStringLiteral("underlineChk"), QStringLiteral("Underline"), nullptr);
    styleColumn->addStretch(1);
    itemsRow->addLayout(styleColumn);
    layout->addLayout(itemsRow, 1);

    layout->addWidget(new QLabel(QStringLiteral("Sample:")));
    sampleLabel = new QLabel;
    sampleLabel->setObjectName(QStringLiteral("sampleLabel"));
    sampleLabel->setTextFormat(Qt::RichText);
    sampleLabel->setAutoFillBackground(true);
    sampleLabel->setMinimumHeight(40);
    sampleLabel->setAlignment(Qt::AlignCenter);
    layout->addWidget(sampleLabel);
    return page;
}

QWidget* PreferencesDialog::CreateCodeEditorPage()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    AddCheck(layout, QStringLiteral("codeEditorBackspaceToTabStop"), QStringLiteral("Backspace to tab stop"),
             &Settings::codeEditorBackspaceToTabStop);
    AddCheck(layout, QStringLiteral("codeEditorDisplayIndentationGuides"), QStringLiteral("Display Indentation Guides"),
             &Settings::codeEditorDisplayIndentationGuides);
    AddCheck(layout, QStringLiteral("codeEditorMouseWheelChangesFontSize"),
             QStringLiteral("Ctrl+Mouse Wheel changes font size"), &Settings::codeEditorMouseWheelChangesFontSize);
    AddCheck(layout, QStringLiteral("codeEditorMatchedSelectionWordsOnly"),
             QStringLiteral("Limit matching selection highlight to words"),
             &Settings::codeEditorMatchedSelectionWordsOnly);
    layout->addStretch(1);
    return page;
}

QWidget* PreferencesDialog::CreateOutputPage()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    QVBoxLayout* group = nullptr;
    AddGroup(layout, QStringLiteral("bufferSizeGrp"), QStringLiteral("Buffer Size"), group);
    outputBufferSizeSB = new QSpinBox;
    outputBufferSizeSB->setObjectName(QStringLiteral("outputBufferSizeSB"));
    outputBufferSizeSB->setRange(100, 99999);
    group->addWidget(outputBufferSizeSB);
    AddCheck(layout, QStringLiteral("outputMouseWheelChangesFontSize"),
             QStringLiteral("Ctrl+Mouse Wheel changes font size"), &Settings::outputMouseWheelChangesFontSize);
    AddCheck(layout, QStringLiteral("outputMatchedSelectionWordsOnly"),
             QStringLiteral("Limit matching selection highlight to words"), &Settings::outputMatchedSelectionWordsOnly);
    AddCheck(layout, QStringLiteral("outputDoubleClickIncludesDollarSign"),
             QStringLiteral("Double-click selection includes leading $ (e.g. MEL variables)"),
             &Settings::outputDoubleClickIncludesDollarSign);
    AddCheck(layout, QStringLiteral("outputDisableEchoAllOnStartup"), QStringLiteral("Disable Echo All Commands on startup"),
             &Settings::outputDisableEchoAllOnStartup);
    AddCheck(layout, QStringLiteral("outputWordWrapEnabled"), QStringLiteral("Word wrap"), &Settings::outputWordWrapEnabled);
    AddGroup(layout, QStringLiteral("highlightingGrp"), QStringLiteral("Highlighting"), group);
    AddCheck(group, QStringLiteral("outputSyntaxHighlightingEnabled"), QStringLiteral("Enable Highlighting"),
             &Settings::outputSyntaxHighlightingEnabled);
    outputHighlightingWidget = new OutputHighlightingWidget;
    outputHighlightingWidget->setObjectName(QStringLiteral("outputHighlightingWidget"));
    outputHighlightingWidget->setMinimumHeight(140);
    group->addWidget(outputHighlightingWidget, 1);
    return page;
}

QWidget* PreferencesDialog::CreateMelPage()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    AddCheck(layout, QStringLiteral("melDisplayErrors"), QStringLiteral("Display errors and warnings"), &Settings::melDisplayErrors);
    AddCheck(layout, QStringLiteral("melSmartIndent"), QStringLiteral("Smart indent (requires auto-indent)"), &Settings::melSmartIndent);
    AddCheck(layout, QStringLiteral("melIndentToParentheses"), QStringLiteral("Indent to bracket (requires auto-indent)"),
             &Settings::melIndentToParentheses);
    AddCheck(layout, QStringLiteral("melInsertClosingParentheses"), QStringLiteral("Insert closing bracket"),
             &Settings::melInsertClosingParentheses);
    AddCheck(layout, QStringLiteral("melInsertClosingQuotes"), QStringLiteral("Insert closing quotes"),
             &Settings::melInsertClosingQuotes);
    AddCheck(layout, QStringLiteral("melTrimTrailingWhiteSpacesOnSave"), QStringLiteral("Trim trailing whitespace on save"),
             &Settings::melTrimTrailingWhiteSpacesOnSave);
    AddCheck(layout, QStringLiteral("melEnsureNewLineAtEofOnSave"), QStringLiteral("Ensure newline at end of file on save"),
             &Settings::melEnsureNewLineAtEofOnSave);
    AddCheck(layout, QStringLiteral("melDoubleClickIncludesDollarSign"), QStringLiteral("Double-click selection includes leading $"),
             &Settings::melDoubleClickIncludesDollarSign);
    AddCheck(layout, QStringLiteral("melAutoCompleteToQuickHelp"), QStringLiteral("Auto-complete updates Quick Help"),
             &Settings::melAutoCompleteToQuickHelp);
    QVBoxLayout* group = nullptr;
    AddGroup(layout, QStringLiteral("melAutoCompleteGrp"), QStringLiteral("Auto-Complete"), group);
    AddCheck(group, QStringLiteral("melCompleteOnUser"), QStringLiteral("CTRL + Space"), &Settings::melCompleteOnUser);
    AddCheck(group, QStringLiteral("melCompleteOnLetters"), QStringLiteral("On  letters  and  '_' "), &Settings::melCompleteOnLetters);
    layout->addStretch(1);
    return page;
}

QWidget* PreferencesDialog::CreatePythonPage()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    AddCheck(layout, QStringLiteral("pythonDisplayErrors"), QStringLiteral("Display errors and warnings"), &Settings::pythonDisplayErrors);
    AddCheck(layout, QStringLiteral("pythonSmartIndent"), QStringLiteral("Smart indent (requires auto-indent)"), &Settings::pythonSmartIndent);
    AddCheck(layout, QStringLiteral("pythonIndentToParentheses"), QStringLiteral("Indent to bracket (requires auto-indent)"),
             &Settings::pythonIndentToParentheses);
    AddCheck(layout, QStringLiteral("pythonInsertClosingParentheses"), QStringLiteral("Insert closing bracket"),
             &Settings::pythonInsertClosingParentheses);
    AddCheck(layout, QStringLiteral("pythonInsertClosingQuotes"), QStringLiteral("Insert closing quotes"),
             &Settings::pythonInsertClosingQuotes);
    AddCheck(layout, QStringLiteral("pythonTrimTrailingWhiteSpacesOnSave"), QStringLiteral("Trim trailing whitespace on save"),
             &Settings::pythonTrimTrailingWhiteSpacesOnSave);
    AddCheck(layout, QStringLiteral("pythonEnsureNewLineAtEofOnSave"), QStringLiteral("Ensure newline at end of file on save"),
             &Settings::pythonEnsureNewLineAtEofOnSave);
    AddCheck(layout, QStringLiteral("pythonAutoCompleteToQuickHelp"), QStringLiteral("Auto-complete updates Quick Help"),
             &Settings::pythonAutoCompleteToQuickHelp);
    AddCheck(layout, QStringLiteral("pythonHideCompiledFiles"), QStringLiteral("Hide .pyc files in workspace (__pycache__)"),
             &Settings::pythonHideCompiledFiles);
    AddCheck(layout, QStringLiteral("pythonImportPyMelOnLoad"), QStringLiteral("Import PyMEL on load"),
             &Settings::pythonImportPyMelOnLoad);
    AddCheck(layout, QStringLiteral("pythonConfirmOverwriteModuleState"),
             QStringLiteral("Show confirm dialog before overwriting Python module state"),
             &Settings::pythonConfirmOverwriteModuleState);
    AddCheck(layout, QStringLiteral("pythonDisableRevertModuleStateOnExecuteOnStartup"),
             QStringLiteral("Disable \"Revert Module State on Execute\" on startup"),
             &Settings::pythonDisableRevertModuleStateOnExecuteOnStartup);
    QVBoxLayout* group = nullptr;
    AddGroup(layout, QStringLiteral("pythonAutoCompleteGrp"), QStringLiteral("Auto-Complete"), group);
    AddCheck(group, QStringLiteral("pythonCompleteOnUser"), QStringLiteral("CTRL + Space"), &Settings::pythonCompleteOnUser);
    AddCheck(group, QStringLiteral("pythonCompleteOnLetters"), QStringLiteral("On  letters  and  '_' "),
             &Settings::pythonCompleteOnLetters);
    AddCheck(group, QStringLiteral("pythonCompleteOnDot"), QStringLiteral("On '.'"), &Settings::pythonCompleteOnDot);
    AddGroup(layout, QStringLiteral("pythonAutoCompleteOptionsGrp"), QStringLiteral("Auto-Complete Options"), group);
    AddCheck(group, QStringLiteral("pythonIncludeKeywords"), QStringLiteral("Include Keywords"), &Settings::pythonIncludeKeywords);
    AddCheck(group, QStringLiteral("pythonIncludeBuiltins"), QStringLiteral("Include Built-ins"), &Settings::pythonIncludeBuiltins);
    AddCheck(group, QStringLiteral("pythonNativeMayaAutoCompleteFallback"), QStringLiteral("Native Maya Fallback"),
             &Settings::pythonNativeMayaAutoCompleteFallback);
    AddGroup(layout, QStringLiteral("pythonForcedImportsGrp"), QStringLiteral("Forced Imports"), group);
    pythonForcedImportsLE = new QLineEdit;
    pythonForcedImportsLE->setObjectName(QStringLiteral("pythonForcedImportsLE"));
    group->addWidget(pythonForcedImportsLE);
    layout->addStretch(1);
    return page;
}

QWidget* PreferencesDialog::CreatePylintPage()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    QVBoxLayout* group = nullptr;
    AddGroup(layout, QStringLiteral("pylintGrp"), QStringLiteral("Pylint Code Analysis"), group);
    AddCheck(group, QStringLiteral("pylintEnabled"), QStringLiteral("Enable Pylint"), &Settings::pylintEnabled);
    pylintExecutablePathLE = AddPathRow(group, QStringLiteral("Pylint Executable Path"),
                                        QStringLiteral("pylintExecutablePathLE"), &pylintExecutablePathBtn);
    pylintPythonHomePathLE = AddPathRow(group, QStringLiteral("Python Home (PYTHONHOME, empty for the system's)"),
                                        QStringLiteral("pylintPythonHomePathLE"), nullptr);
    pylintConfigPathLE = AddPathRow(group, QStringLiteral("Configuration Path (pylintrc)"),
                                    QStringLiteral("pylintConfigPathLE"), &pylintConfigPathBtn);
    pylintConfigGenerateBtn = new QPushButton(QStringLiteral("Generate"));
    pylintConfigGenerateBtn->setObjectName(QStringLiteral("pylintConfigGenerateBtn"));
    pylintConfigGenerateBtn->setToolTip(QStringLiteral("Generate a pylintrc in the preferences folder"));
    auto* generateRow = new QHBoxLayout;
    generateRow->addStretch(1);
    generateRow->addWidget(pylintConfigGenerateBtn);
    group->addLayout(generateRow);
    pylintAdditionalPythonPathsLE = AddPathRow(group, QStringLiteral("Additional Python Paths"),
                                               QStringLiteral("pylintAdditionalPythonPathsLE"), nullptr);
    AddCheck(group, QStringLiteral("pylintUseMinimalCheckers"), QStringLiteral("Use minimal checkers (overrides pylintrc)"),
             &Settings::pylintUseMinimalCheckers);
    AddCheck(group, QStringLiteral("pylintShowErrors"), QStringLiteral("Log output errors (debug)"), &Settings::pylintShowErrors);
    layout->addStretch(1);
    return page;
}

void PreferencesDialog::SetCurrentPage(PreferencePage page)
{
    menuListWdg->setCurrentRow(static_cast<int>(page));
}

int PreferencesDialog::GetCurrentPage() const
{
    const int row = menuListWdg->currentRow();
    return row >= GENERAL_PAGE && row <= PYLINT_PAGE ? row : OUT_OF_RANGE_PAGE;
}

// ---------------------------------------------------------------------------------------------
// Reset and apply

void PreferencesDialog::ResetSettings()
{
    for (const CheckRow& row : checkRows)
        row.box->setChecked(*row.setting);
    outputBufferSizeSB->setValue(Settings::outputBufferSize);
    pythonForcedImportsLE->setText(Settings::pythonForcedImports);
    ResetTabs();
    ResetFontsAndColors();
    ResetPylint();
    ResetKeyBindings();
    ResetOutputHighlighting();
}

void PreferencesDialog::ApplySettings()
{
    const bool hideCompiledFiles = Settings::pythonHideCompiledFiles;
    for (const CheckRow& row : checkRows)
        *row.setting = row.box->isChecked();
    ApplyTabs();
    Settings::outputBufferSize = outputBufferSizeSB->value();
    Settings::pythonForcedImports = pythonForcedImportsLE->text();
    ApplyFontsAndColors();
    ApplyPylint();
    ApplyKeyBindings();
    ApplyOutputHighlighting();
    emit Modified();
    if (hideCompiledFiles != Settings::pythonHideCompiledFiles)
        emit WorkspaceModified();
}

void PreferencesDialog::OnOk()
{
    ApplySettings();
    accept();
}

void PreferencesDialog::ResetOutputHighlighting()
{
    outputHighlightingWidget->Reset();
}

void PreferencesDialog::ApplyOutputHighlighting()
{
    outputHighlightingWidget->Apply();
}

void PreferencesDialog::showEvent(QShowEvent* event)
{
    if (lastGeometry.isValid())
        setGeometry(lastGeometry);
    QDialog::showEvent(event);
}

void PreferencesDialog::closeEvent(QCloseEvent* event)
{
    lastGeometry = geometry();
    QDialog::closeEvent(event);
}

// ---------------------------------------------------------------------------------------------
// Tabs and spacing

void PreferencesDialog::ResetTabs()
{
    tabValues[0] = {Settings::tabsSizeDefault, Settings::tabsInsertSpacesDefault, Settings::tabsAutoIndentDefault, false};
    tabValues[1] = {Settings::tabsSizeMel, Settings::tabsInsertSpacesMel, Settings::tabsAutoIndentMel,
                    Settings::tabsUseDefaultsMel};
    tabValues[2] = {Settings::tabsSizePython, Settings::tabsInsertSpacesPython, Settings::tabsAutoIndentPython,
                    Settings::tabsUseDefaultsPython};
    ShowTabValues(languageCombo->currentIndex());
}

void PreferencesDialog::ApplyTabs()
{
    Settings::tabsSizeDefault = tabValues[0].size;
    Settings::tabsInsertSpacesDefault = tabValues[0].insertSpaces;
    Settings::tabsAutoIndentDefault = tabValues[0].autoIndent;
    Settings::tabsSizeMel = tabValues[1].size;
    Settings::tabsInsertSpacesMel = tabValues[1].insertSpaces;
    Settings::tabsAutoIndentMel = tabValues[1].autoIndent;
    Settings::tabsUseDefaultsMel = tabValues[1].useDefaults;
    Settings::tabsSizePython = tabValues[2].size;
    Settings::tabsInsertSpacesPython = tabValues[2].insertSpaces;
    Settings::tabsAutoIndentPython = tabValues[2].autoIndent;
    Settings::tabsUseDefaultsPython = tabValues[2].useDefaults;
}

void PreferencesDialog::ShowTabValues(int language)
{
    shownTabsLanguage = qBound(0, language, 2);
    const TabValues& values = tabValues[shownTabsLanguage];
    updatingWidgets = true;
    tabSizeSpinBox->setValue(values.size);
    replaceTabsChk->setChecked(values.insertSpaces);
    autoIndentChk->setChecked(values.autoIndent);
    useDefaultTabsChk->setChecked(values.useDefaults);
    updatingWidgets = false;
    const bool isDefault = shownTabsLanguage == 0;
    useDefaultTabsChk->setVisible(!isDefault);
    tabGrp->setVisible(isDefault || !values.useDefaults);
    indentingGrp->setVisible(isDefault || !values.useDefaults);
}

void PreferencesDialog::OnTabsLanguageChanged(int index)
{
    ShowTabValues(index);
}

void PreferencesDialog::OnTabsValueChanged()
{
    if (updatingWidgets)
        return;
    TabValues& values = tabValues[shownTabsLanguage];
    values.size = tabSizeSpinBox->value();
    values.insertSpaces = replaceTabsChk->isChecked();
    values.autoIndent = autoIndentChk->isChecked();
    if (shownTabsLanguage != 0)
        values.useDefaults = useDefaultTabsChk->isChecked();
    ShowTabValues(shownTabsLanguage);
}
