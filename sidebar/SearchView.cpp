#include "sidebar/SearchView.h"

#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "sidebar/SearchResultsView.h"
#include "tabs/TabImages.h"
#include "widgets/FlatButton.h"

#include <QtGui/QAction>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace
{
const QString REPLACE_ALL = QStringLiteral("Replace All");
const QString VIEW_EXPANDED = QStringLiteral(":/bq2_icons/view_expanded.png");
const QString VIEW_COLLAPSED = QStringLiteral(":/bq2_icons/view_collapsed.png");
constexpr int BUTTON_SIZE = 20;
} // namespace

SearchView::SearchView(KeyBindings* bindings, QWidget* parent) : QWidget(parent), keyBindings(bindings)
{
    setObjectName(QStringLiteral("SearchView"));
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    SetReplaceVisible(false);
    SetFiltersVisible(false);
}

FlatButton* SearchView::CreateButton(const QString& name, const QString& image, int padding,
                                     const QString& toolTip)
{
    auto* button = new FlatButton(this);
    button->setObjectName(name);
    button->SetSize(BUTTON_SIZE, BUTTON_SIZE);
    button->SetImage(TabImages::Load(image), padding);
    button->setToolTip(toolTip);
    return button;
}

void SearchView::CreateWidgets()
{
    titleRow = new QWidget(this);
    titleRow->setContextMenuPolicy(Qt::CustomContextMenu);
    titleLabel = new QLabel(QStringLiteral("SEARCH"), titleRow);
    titleLabel->setObjectName(QStringLiteral("titleLabel"));
    refreshBtn = CreateButton(QStringLiteral("refreshBtn"), QStringLiteral(":/bq2_icons/refresh.png"), 6,
                              QStringLiteral("Refresh"));
    collapseBtn = CreateButton(QStringLiteral("collapseBtn"), QStringLiteral(":/bq2_icons/collapse.png"), 6,
                               QStringLiteral("Collapse All"));
    clearBtn = CreateButton(QStringLiteral("clearBtn"), QStringLiteral(":/bq2_icons/clear_field.png"), 6,
                            QStringLiteral("Clear"));
    toggleReplaceBtn = CreateButton(QStringLiteral("toggleReplaceBtn"), VIEW_COLLAPSED, 6,
                                    QStringLiteral("Toggle Replace"));
    matchCaseBtn = CreateButton(QStringLiteral("matchCaseBtn"), QStringLiteral(":/bq2_icons/match_case.png"), 2,
                                QStringLiteral("Match Case"));
    matchWordBtn = CreateButton(QStringLiteral("matchWordBtn"), QStringLiteral(":/bq2_icons/match_word.png"), 1,
                                QStringLiteral("Match Whole Word"));
    regExBtn = CreateButton(QStringLiteral("regExBtn"), QStringLiteral(":/bq2_icons/regular_expression.png"), 6,
                            QStringLiteral("Use Regular Expression"));
    replaceAllBtn = CreateButton(QStringLiteral("replaceAllBtn"), QStringLiteral(":/bq2_icons/replace_all.png"), 4,
                                 REPLACE_ALL);
    showFiltersBtn = CreateButton(QStringLiteral("showFiltersBtn"), QStringLiteral(":/bq2_icons/search_filters.png"),
                                  2, QStringLiteral("Toggle Search Details"));
    hideFiltersBtn = CreateButton(QStringLiteral("hideFiltersBtn"), QStringLiteral(":/bq2_icons/search_filters.png"),
                                  2, QStringLiteral("Toggle Search Details"));
    showFiltersBtn->SetSize(12, 12);
    hideFiltersBtn->SetSize(12, 12);
    hideFiltersBtn->SetChecked(true);

    searchEdit = new QLineEdit(this);
    searchEdit->setObjectName(QStringLiteral("searchEdit"));
    searchEdit->setPlaceholderText(QStringLiteral("Search"));
    replaceEdit = new QLineEdit(this);
    replaceEdit->setObjectName(QStringLiteral("replaceEdit"));
    replaceEdit->setPlaceholderText(QStringLiteral("Replace"));
    includeLabel = new QLabel(QStringLiteral("files to include"), this);
    includeEdit = new QLineEdit(this);
    includeEdit->setObjectName(QStringLiteral("includeEdit"));
    includeEdit->setPlaceholderText(QStringLiteral("files to include"));
    excludeLabel = new QLabel(QStringLiteral("files to exclude"), this);
    excludeEdit = new QLineEdit(this);
    excludeEdit->setObjectName(QStringLiteral("excludeEdit"));
    excludeEdit->setPlaceholderText(QStringLiteral("files to exclude"));

    resultsView = new SearchResultsView(this);
}

void SearchView::CreateLayout()
{
    auto* titleLayout = new QHBoxLayout(titleRow);
    titleLayout->setContentsMargins(0, 6, 0, 6);
    titleLayout->setSpacing(2);
    titleLayout->addWidget(titleLabel, 1);
    titleLayout->addWidget(refreshBtn);
    titleLayout->addWidget(collapseBtn);
    titleLayout->addWidget(clearBtn);

    auto* searchRow = new QHBoxLayout;
    searchRow->setContentsMargins(0, 0, 0, 0);
    searchRow->setSpacing(2);
    searchRow->addWidget(toggleReplaceBtn);
    searchRow->addWidget(searchEdit, 1);
    searchRow->addWidget(matchCaseBtn);
    searchRow->addWidget(matchWordBtn);
    searchRow->addWidget(regExBtn);

    auto* replaceRow = new QHBoxLayout;
    replaceRow->setContentsMargins(0, 2, 0, 0);
    replaceRow->setSpacing(2);
    replaceRow->addSpacing(toggleReplaceBtn->width());
    replaceRow->addWidget(replaceEdit, 1);
    replaceRow->addWidget(replaceAllBtn);
    replaceRow->addSpacing(2 * (BUTTON_SIZE + 2));

    auto* filterRow = new QHBoxLayout;
    filterRow->setContentsMargins(0, 2, 0, 2);
    filterRow->addStretch(1);
    filterRow->addWidget(showFiltersBtn);
    filterRow->addWidget(hideFiltersBtn);
    filterRow->addSpacing(3);

    auto* filterBlock = new QVBoxLayout;
    filterBlock->setContentsMargins(18, 0, 0, 4);
    filterBlock->setSpacing(2);
    filterBlock->addWidget(includeLabel);
    filterBlock->addWidget(includeEdit);
    filterBlock->addWidget(excludeLabel);
    filterBlock->addWidget(excludeEdit);

    auto* mainLayout = new QVBoxLayout(this);
    mainLayout->setContentsMargins(0, 0, 0, 0);
    mainLayout->setSpacing(0);
    mainLayout->addWidget(titleRow);
    mainLayout->addLayout(searchRow);
    mainLayout->addLayout(replaceRow);
    mainLayout->addLayout(filterRow);
    mainLayout->addLayout(filterBlock);
    mainLayout->addWidget(resultsView, 1);
}

void SearchView::CreateConnections()
{
    connect(titleRow, SIGNAL(customContextMenuRequested(const QPoint&)), this,
            SLOT(ShowContextMenu(const QPoint&)));
    connect(refreshBtn, SIGNAL(clicked()), this, SLOT(Refresh()));
    connect(collapseBtn, SIGNAL(clicked()), this, SLOT(CollapseAll()));
    connect(clearBtn, SIGNAL(clicked()), this, SLOT(Clear()));
    connect(toggleReplaceBtn, SIGNAL(clicked()), this, SLOT(ToggleReplace()));
    connect(matchCaseBtn, SIGNAL(clicked()), this, SLOT(ToggleMatchCase()));
    connect(matchWordBtn, SIGNAL(clicked()), this, SLOT(ToggleMatchWord()));
    connect(regExBtn, SIGNAL(clicked()), this, SLOT(ToggleRegularExpression()));
    connect(replaceAllBtn, SIGNAL(clicked()), this, SLOT(ReplaceAll()));
    connect(showFiltersBtn, SIGNAL(clicked()), this, SLOT(ShowFilters()));
    connect(hideFiltersBtn, SIGNAL(clicked()), this, SLOT(HideFilters()));
    connect(searchEdit, SIGNAL(textChanged(const QString&)), this, SLOT(OnSearchTextChanged()));
    connect(searchEdit, SIGNAL(returnPressed()), this, SLOT(Refresh()));
    connect(replaceEdit, SIGNAL(returnPressed()), this, SLOT(Refresh()));
    connect(replaceEdit, SIGNAL(textChanged(const QString&)), this, SLOT(UpdateReplaceText()));
    connect(includeEdit, SIGNAL(returnPressed()), this, SLOT(Refresh()));
    connect(excludeEdit, SIGNAL(returnPressed()), this, SLOT(Refresh()));
    connect(resultsView, SIGNAL(SearchFocusChanged(const QString&, int)), this,
            SLOT(OnSearchFocusChanged(const QString&, int)));
    connect(resultsView, SIGNAL(FindAndReplace(const QString&, int)), this,
            SLOT(OnFindAndReplace(const QString&, int)));
}

// ---------------------------------------------------------------------------------------------
// Fields

void SearchView::SetSearchText(const QString& text)
{
    searchEdit->setText(text);
}

void SearchView::SelectAllSearchText()
{
    searchEdit->selectAll();
}

void SearchView::SetReplaceText(const QString& text)
{
    replaceEdit->setText(text);
}

void SearchView::SetIncludeText(const QString& text)
{
    includeEdit->setText(text);
}

void SearchView::SetExcludeText(const QString& text)
{
    excludeEdit->setText(text);
}

void SearchView::SetReplaceVisible(bool visible)
{
    replaceEdit->setVisible(visible);
    replaceAllBtn->setVisible(visible);
    toggleReplaceBtn->SetImage(TabImages::Load(visible ? VIEW_EXPANDED : VIEW_COLLAPSED), 6);
    UpdateReplaceText();
    resultsView->SetReplaceVisible(visible);
}

bool SearchView::IsReplaceActive() const
{
    return searchPerformed && !replaceEdit->isHidden();
}

void SearchView::FocusSearch()
{
    searchEdit->setFocus(Qt::OtherFocusReason);
}

void SearchView::FocusReplace()
{
    replaceEdit->setFocus(Qt::OtherFocusReason);
}

void SearchView::ClearResults()
{
    resultsView->Clear();
}

void SearchView::NextResult()
{
    resultsView->Next();
}

void SearchView::PreviousResult()
{
    resultsView->Previous();
}

void SearchView::Append(const QString& folder, const QString& relativeDir, QList<SearchResult> results)
{
    resultsView->Append(folder, relativeDir, std::move(results));
}

void SearchView::Update(const QString& path, QList<SearchResult> results)
{
    resultsView->Update(path, std::move(results));
}

void SearchView::UpdateColors()
{
    QPalette viewPalette = palette();
    viewPalette.setColor(QPalette::Window, ColorSettings::sideBarBaseColor);
    setPalette(viewPalette);
}

void SearchView::UpdateKeyBindings()
{
    QString toolTip = REPLACE_ALL;
    const QKeySequence sequence = keyBindings ? keyBindings->GetShortcut(KeySequenceType::ReplaceAll) : QKeySequence();
    if (!sequence.isEmpty())
        toolTip = QStringLiteral("%1 (%2)").arg(REPLACE_ALL, sequence.toString(QKeySequence::NativeText));
    replaceAllBtn->setToolTip(toolTip);
}

// ---------------------------------------------------------------------------------------------
// Slots

QStringList SearchView::SplitFilters(const QString& text)
{
    return text.split(QLatin1Char(','), Qt::SkipEmptyParts);
}

void SearchView::Refresh()
{
    emit SearchRequested(searchEdit->text(), SplitFilters(includeEdit->text()), SplitFilters(excludeEdit->text()),
                         matchCaseBtn->IsChecked(), matchWordBtn->IsChecked(), regExBtn->IsChecked());
    searchPerformed = true;
}

void SearchView::CollapseAll()
{
    resultsView->CollapseAll();
}

void SearchView::Clear()
{
    searchEdit->clear();
    replaceEdit->clear();
    Settings::globalSearchRegEx = QRegularExpression();
    Settings::globalSearchIncludePatterns.clear();
    Settings::globalSearchExcludePatterns.clear();
    ClearResults();
    emit SearchCleared();
}

void SearchView::ToggleReplace()
{
    SetReplaceVisible(replaceEdit->isHidden());
}

void SearchView::ToggleMatchCase()
{
    matchCaseBtn->SetChecked(!matchCaseBtn->IsChecked());
}

void SearchView::ToggleMatchWord()
{
    matchWordBtn->SetChecked(!matchWordBtn->IsChecked());
}

void SearchView::ToggleRegularExpression()
{
    regExBtn->SetChecked(!regExBtn->IsChecked());
}

void SearchView::ReplaceAll()
{
    if (!IsReplaceActive())
        return;
    QMessageBox box(QMessageBox::Question, QStringLiteral("Replace All"),
                    QStringLiteral("Replace %1 occurrances across %2 files with '%3'")
                        .arg(resultsView->GetReplaceCount())
                        .arg(resultsView->GetFileCount())
                        .arg(replaceEdit->text()),
                    QMessageBox::NoButton, this);
    QPushButton* replaceButton = box.addButton(QStringLiteral("Replace"), QMessageBox::AcceptRole);
    box.addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
    box.setDefaultButton(replaceButton);
    box.exec();
    if (box.clickedButton() == replaceButton)
        resultsView->ReplaceAll();
}

void SearchView::SetFiltersVisible(bool visible)
{
    showFiltersBtn->setVisible(!visible);
    for (QWidget* widget : QList<QWidget*>{hideFiltersBtn, includeLabel, includeEdit, excludeLabel, excludeEdit})
        widget->setVisible(visible);
}

void SearchView::ShowFilters()
{
    SetFiltersVisible(true);
}

void SearchView::HideFilters()
{
    SetFiltersVisible(false);
}

void SearchView::OnSearchTextChanged()
{
    searchPerformed = false;
}

void SearchView::UpdateReplaceText()
{
    // The row's own state, not the view's: the row may be switched on before the side bar shows.
    Settings::globalSearchReplaceText = replaceEdit->isHidden() ? QString() : replaceEdit->text();
}

void SearchView::OnSearchFocusChanged(const QString& fileName, int position)
{
    emit SearchFocusChanged(fileName, position);
}

void SearchView::OnFindAndReplace(const QString& filePath, int position)
{
    if (IsReplaceActive())
        emit FindAndReplace(filePath, position);
}

void SearchView::OnHideSideBarRequested()
{
    emit HideSideBarRequested();
}

void SearchView::ShowContextMenu(const QPoint& p)
{
    QMenu menu(this);
    QAction* hide = menu.addAction(QStringLiteral("Hide Side Bar"));
    if (keyBindings)
        hide->setShortcut(keyBindings->GetShortcut(KeySequenceType::ToggleSideBar));
    hide->setShortcutContext(Qt::WidgetShortcut);
    connect(hide, SIGNAL(triggered()), this, SLOT(OnHideSideBarRequested()));
    menu.exec(titleRow->mapToGlobal(p));
}

void SearchView::hideEvent(QHideEvent* event)
{
    UpdateReplaceText();
    QWidget::hideEvent(event);
}
