#include "tabs/CodeEditorGroup.h"

#include "editor/CodeEditor.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "tabs/CodeEditorGroupTabBar.h"
#include "tabs/TabImages.h"
#include "widgets/FlatButton.h"

#include <QtGui/QAction>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QVBoxLayout>

namespace
{
const QString EXECUTE_LABEL = QStringLiteral("Execute");
const QString EXECUTE_ALL_LABEL = QStringLiteral("Execute All");
const QString EXECUTE_LINE_LABEL = QStringLiteral("Execute Line");
} // namespace

const QString CodeEditorGroup::MOVE_CODE_EDITOR_MIME_TYPE = QStringLiteral("tolvanek-bq2/move-code-editor");

CodeEditorGroup::CodeEditorGroup(int groupId, KeyBindings* bindings, QWidget* parent)
    : QWidget(parent), id(groupId), keyBindings(bindings)
{
    qRegisterMetaType<TabDropZone>("TabDropZone");
    setObjectName(QStringLiteral("CodeEditorGroup%1").arg(id));
    setAcceptDrops(true);
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    // The Pylint worker thread starts here once the worker is part of the build.
}

CodeEditorGroup::~CodeEditorGroup()
{
    // The editors go with the widget tree after this body has run: what they emit while they
    // are torn down must not reach a group that is half gone.
    for (CodeEditor* codeEditor : GetCodeEditors())
        DisconnectCodeEditor(codeEditor);
    // The Pylint worker thread is stopped here, with a bounded wait, once it exists.
}

void CodeEditorGroup::CreateWidgets()
{
    tabBar = new CodeEditorGroupTabBar(keyBindings, this);
    tabBar->setObjectName(QStringLiteral("tabBar"));
    tabBar->SetId(id);
    tabBar->SetDragAndDropMimeType(MOVE_CODE_EDITOR_MIME_TYPE);

    codeEditorStack = new QStackedWidget(this);
    codeEditorStack->setObjectName(QStringLiteral("codeEditorStack"));

    scrollLeftBtn = CreateButton(QStringLiteral("scrollLeftBtn"),
                                 QStringLiteral(":/bq2_icons/scroll_left.png"), 6, QString());
    scrollRightBtn = CreateButton(QStringLiteral("scrollRightBtn"),
                                  QStringLiteral(":/bq2_icons/scroll_right.png"), 6, QString());
    CreateMiniToolbar();
    listCodeEditorsBtn = CreateButton(QStringLiteral("listCodeEditorsBtn"),
                                      QStringLiteral(":/bq2_icons/list_code_editors.png"), 8, QString());
    // The find bar floats over the editors as a child of the group; it is created here, hidden,
    // once the editor's search is part of the build.
}

void CodeEditorGroup::CreateMiniToolbar()
{
    miniToolbarSeparator = new FlatButton(this);
    miniToolbarSeparator->setObjectName(QStringLiteral("miniToolbarSeparator"));
    miniToolbarSeparator->SetSize(14, 18);
    executeAllBtn = CreateButton(QStringLiteral("executeAllBtn"),
                                 QStringLiteral(":/bq2_icons/execute_all.png"), 4, EXECUTE_ALL_LABEL);
    executeBtn = CreateButton(QStringLiteral("executeBtn"), QStringLiteral(":/bq2_icons/execute.png"), 8,
                              EXECUTE_LABEL);
    executeLineBtn = CreateButton(QStringLiteral("executeLineBtn"),
                                  QStringLiteral(":/bq2_icons/execute_line.png"), 6, EXECUTE_LINE_LABEL);
    // Hidden until the owner asks for it on the active group.
    for (FlatButton* button : {miniToolbarSeparator, executeAllBtn, executeBtn, executeLineBtn})
        button->hide();
}

FlatButton* CodeEditorGroup::CreateButton(const QString& name, const QString& image, int padding,
                                          const QString& toolTip)
{
    auto* button = new FlatButton(this);
    button->setObjectName(name);
    button->SetSize(18, 18);
    button->SetImage(TabImages::Load(image), padding);
    button->setToolTip(toolTip);
    return button;
}

void CodeEditorGroup::CreateLayout()
{
    auto* barLayout = new QHBoxLayout;
    barLayout->setContentsMargins(0, 0, 0, 0);
    barLayout->setSpacing(0);
    barLayout->addWidget(scrollLeftBtn);
    barLayout->addWidget(scrollRightBtn);
    barLayout->addWidget(tabBar);
    barLayout->addWidget(miniToolbarSeparator);
    barLayout->addWidget(executeAllBtn);
    barLayout->addWidget(executeBtn);
    barLayout->addWidget(executeLineBtn);
    barLayout->addSpacing(2);
    barLayout->addWidget(listCodeEditorsBtn);

    auto* mainLayout = new QVBoxLayout(this);
    mainLayout->setContentsMargins(0, 0, 0, 0);
    mainLayout->setSpacing(0);
    mainLayout->addLayout(barLayout);
    mainLayout->addWidget(codeEditorStack);
}

void CodeEditorGroup::CreateConnections()
{
    connect(tabBar, SIGNAL(CurrentChanged(int)), this, SLOT(OnCurrentTabChanged(int)));
    connect(tabBar, SIGNAL(NewTabRequested()), this, SLOT(OnNewTabRequested()));
    connect(tabBar, SIGNAL(CloseTabRequested(int)), this, SLOT(OnCloseTabRequested(int)));
    connect(tabBar, SIGNAL(CloseOtherTabsRequested(int)), this, SLOT(OnCloseOtherTabsRequested(int)));
    connect(tabBar, SIGNAL(CloseTabsToRightRequested(int)), this, SLOT(OnCloseTabsToRightRequested(int)));
    connect(tabBar, SIGNAL(MoveTabRequested(int, int, int, int)), this,
            SLOT(OnMoveTabRequested(int, int, int, int)));
    connect(tabBar, SIGNAL(OpenFileRequested(int, const QString&)), this,
            SLOT(OnOpenFileRequested(int, const QString&)));
    connect(tabBar, SIGNAL(Activated()), this, SLOT(FocusCurrentCodeEditor()));
    connect(tabBar, SIGNAL(CopyPathRequested(int)), this, SLOT(CopyPath(int)));
    connect(tabBar, SIGNAL(RenameRequested(int)), this, SLOT(OnRenameRequested(int)));
    connect(tabBar, SIGNAL(ShowInFolderRequested(int)), this, SLOT(OnShowInFolder(int)));
    connect(tabBar, SIGNAL(ShowInSideBarRequested(int)), this, SLOT(OnShowInSideBar(int)));
    connect(tabBar, SIGNAL(EmptyZoneContextMenuSelected(const QPoint&)), this,
            SLOT(ShowMiniToolbarContextMenu(const QPoint&)));
    connect(scrollLeftBtn, SIGNAL(pressed()), tabBar, SLOT(BeginScrollingLeft()));
    connect(scrollLeftBtn, SIGNAL(released()), tabBar, SLOT(EndScrolling()));
    connect(scrollRightBtn, SIGNAL(pressed()), tabBar, SLOT(BeginScrollingRight()));
    connect(scrollRightBtn, SIGNAL(released()), tabBar, SLOT(EndScrolling()));
    connect(executeBtn, SIGNAL(clicked()), this, SLOT(OnExecuteBtnClicked()));
    connect(executeAllBtn, SIGNAL(clicked()), this, SLOT(OnExecuteAllBtnClicked()));
    connect(executeLineBtn, SIGNAL(clicked()), this, SLOT(OnExecuteLineBtnClicked()));
    connect(listCodeEditorsBtn, SIGNAL(clicked()), this, SLOT(ShowOpenCodeEditorContextMenu()));
}

// ---------------------------------------------------------------------------------------------
// Settings pushed in from outside

void CodeEditorGroup::UpdateTextOptions()
{
    for (CodeEditor* codeEditor : GetCodeEditors())
        codeEditor->UpdateTextOptions();
}

void CodeEditorGroup::UpdateFont()
{
    for (CodeEditor* codeEditor : GetCodeEditors())
        codeEditor->UpdateFont();
}

void CodeEditorGroup::UpdateOverwriteMode()
{
    for (CodeEditor* codeEditor : GetCodeEditors())
        codeEditor->UpdateOverwriteMode();
}

void CodeEditorGroup::UpdateFontsAndColors()
{
    for (CodeEditor* codeEditor : GetCodeEditors())
        codeEditor->UpdateFontsAndColors();
    // The current tab merges into the editor below it.
    const QBrush background = ColorSettings::GetCodeEditorFormat(ColorSettings::PLAIN_TEXT).background();
    tabBar->SetActiveTabBackgroundColor(background.style() == Qt::NoBrush ? QColor() : background.color());
    tabBar->SetHoverTabBackgroundColor(QColor(255, 255, 255, 80));
}

void CodeEditorGroup::UpdateKeyBindings()
{
    const auto toolTip = [this](const QString& name, KeySequenceType type)
    {
        if (!keyBindings)
            return name;
        return QStringLiteral("%1 (%2)").arg(
            name, keyBindings->GetShortcut(type).toString(QKeySequence::NativeText));
    };
    executeBtn->setToolTip(toolTip(EXECUTE_LABEL, KeySequenceType::Execute));
    executeAllBtn->setToolTip(toolTip(EXECUTE_ALL_LABEL, KeySequenceType::ExecuteAll));
    executeLineBtn->setToolTip(toolTip(EXECUTE_LINE_LABEL, KeySequenceType::ExecuteLine));
    // The find bar takes its shortcuts here once it exists.
}

void CodeEditorGroup::UpdatePreferences()
{
    tabBar->SetTabsClosable(Settings::showCloseButtonOnTabs);
    tabBar->SetTabsMoveable(!Settings::lockTabPositions);
    tabBar->SetIconsVisible(true);
    const QList<QWidget*> barWidgets{tabBar, scrollLeftBtn, scrollRightBtn, listCodeEditorsBtn};
    for (QWidget* widget : barWidgets)
        widget->setVisible(Settings::showTabBar);
    SetMiniToolbarVisible(miniToolbarVisible);
}

void CodeEditorGroup::SetMiniToolbarVisible(bool visible)
{
    miniToolbarVisible = visible;
    const bool shown = visible && Settings::showTabBar && Settings::showTabBarMiniToolbar;
    const bool execute = shown && Settings::showCodeEditorExecuteBtn;
    const bool executeAll = shown && Settings::showCodeEditorExecuteAllBtn;
    const bool executeLine = shown && Settings::showCodeEditorExecuteLineBtn;
    executeBtn->setVisible(execute);
    executeAllBtn->setVisible(executeAll);
    executeLineBtn->setVisible(executeLine);
    miniToolbarSeparator->setVisible(execute || executeAll || executeLine);
}

// ---------------------------------------------------------------------------------------------
// Menus

QMenu* CodeEditorGroup::CreateMiniToolbarContextMenu()
{
    auto* menu = new QMenu(this);
    const QList<QPair<QString, bool>> items = {{EXECUTE_LABEL, Settings::showCodeEditorExecuteBtn},
                                               {EXECUTE_ALL_LABEL, Settings::showCodeEditorExecuteAllBtn},
                                               {EXECUTE_LINE_LABEL, Settings::showCodeEditorExecuteLineBtn}};
    for (const auto& item : items)
    {
        QAction* action = menu->addAction(item.first);
        action->setCheckable(true);
        action->setChecked(item.second);
        connect(action, SIGNAL(triggered()), this, SLOT(ToggleMiniToolbarDisplay()));
    }
    return menu;
}

void CodeEditorGroup::ShowMiniToolbarContextMenu(const QPoint& pos)
{
    QMenu* menu = CreateMiniToolbarContextMenu();
    menu->exec(tabBar->mapToGlobal(pos));
    delete menu;
}

void CodeEditorGroup::ToggleMiniToolbarDisplay()
{
    const auto* action = qobject_cast<const QAction*>(sender());
    if (!action)
        return;
    const QString text = action->text();
    if (text == EXECUTE_LABEL)
        Settings::showCodeEditorExecuteBtn = !Settings::showCodeEditorExecuteBtn;
    else if (text == EXECUTE_ALL_LABEL)
        Settings::showCodeEditorExecuteAllBtn = !Settings::showCodeEditorExecuteAllBtn;
    else if (text == EXECUTE_LINE_LABEL)
        Settings::showCodeEditorExecuteLineBtn = !Settings::showCodeEditorExecuteLineBtn;
    else
        return;
    emit MiniToolbarDisplayModified();
}

QMenu* CodeEditorGroup::CreateOpenCodeEditorMenu()
{
    auto* menu = new QMenu(this);
    for (int i = 0; i < tabBar->Count(); ++i)
    {
        QString text = tabBar->GetTabText(i);
        QAction* action = menu->addAction(text.replace(QLatin1Char('&'), QStringLiteral("&&")));
        action->setData(i);
        connect(action, SIGNAL(triggered()), this, SLOT(SetCurrentTabFromAction()));
    }
    return menu;
}

void CodeEditorGroup::ShowOpenCodeEditorContextMenu()
{
    QMenu* menu = CreateOpenCodeEditorMenu();
    menu->exec(listCodeEditorsBtn->mapToGlobal(listCodeEditorsBtn->rect().bottomLeft()));
    delete menu;
}

void CodeEditorGroup::SetCurrentTabFromAction()
{
    const auto* action = qobject_cast<const QAction*>(sender());
    if (!action)
        return;
    SetCurrentIndex(action->data().toInt());
    FocusCurrentCodeEditor();
}

// ---------------------------------------------------------------------------------------------
// Parsing

BaseParser* CodeEditorGroup::GetParser() const
{
    const CodeEditor* codeEditor = GetCurrent();
    if (!codeEditor)
        return nullptr;
    switch (codeEditor->GetLanguage())
    {
    case CodeEditorLanguage::MEL:
        return const_cast<MelParser*>(&melParser);
    case CodeEditorLanguage::PYTHON:
        return const_cast<PythonParser*>(&pythonParser);
    default:
        return nullptr;
    }
}

void CodeEditorGroup::UpdateParser()
{
    UpdateParser(GetCurrent());
}

void CodeEditorGroup::UpdateParser(CodeEditor* codeEditor)
{
    // A hidden group parses when it shows.
    if (!codeEditor || !codeEditor->isVisible() || !parsingEnabled)
    {
        emit ParserUpdated(nullptr);
        return;
    }
    const QString text = codeEditor->GetText();
    const QString path = codeEditor->GetFilePath();
    BaseParser* parser = nullptr;
    if (codeEditor->GetLanguage() == CodeEditorLanguage::MEL)
        parser = &melParser;
    else if (codeEditor->GetLanguage() == CodeEditorLanguage::PYTHON)
        parser = &pythonParser;
    if (!parser)
    {
        codeEditor->UpdateErrorsAndWarnings({}, {}, {});
        emit ParserUpdated(nullptr);
        return;
    }
    parser->Parse(text, path);
    // With Pylint on, the symbols still come from the parser, but the messages come from Pylint
    // once the worker answers.
    if (!(parser == &pythonParser && Settings::pylintEnabled))
        codeEditor->UpdateErrorsAndWarnings(parser->GetErrors(), parser->GetWarnings(), parser->GetInfos());
    emit ParserUpdated(parser);
}

void CodeEditorGroup::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    UpdateParser();
}
