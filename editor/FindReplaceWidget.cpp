#include "editor/FindReplaceWidget.h"

#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "sidebar/SearchFunctions.h"
#include "tabs/TabImages.h"
#include "widgets/FlatButton.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

namespace
{
const QString NEXT_MATCH = QStringLiteral("Next Match");
const QString PREVIOUS_MATCH = QStringLiteral("Previous Match");
const QString REPLACE = QStringLiteral("Replace");
const QString REPLACE_ALL = QStringLiteral("Replace All");
constexpr int BUTTON_SIZE = 20;
constexpr int FIELD_WIDTH = 220;
} // namespace

FindReplaceWidget::FindReplaceWidget(bool replace, QWidget* parent) : QWidget(parent), replaceEnabled(replace)
{
    setObjectName(QStringLiteral("FindReplaceWidget"));
    setAutoFillBackground(true);
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    SetReplaceEnabled(replace);
    SetResults(0, 0);
}

FlatButton* FindReplaceWidget::CreateButton(const QString& name, const QString& image, int padding,
                                            const QString& toolTip, bool mirrored)
{
    auto* button = new FlatButton(this);
    button->setObjectName(name);
    button->SetSize(BUTTON_SIZE, BUTTON_SIZE);
    QImage icon = TabImages::Load(image);
    button->SetImage(mirrored ? icon.mirrored(false, true) : icon, padding);
    button->setToolTip(toolTip);
    return button;
}

void FindReplaceWidget::CreateWidgets()
{
    searchLineEdit = new QLineEdit(this);
    searchLineEdit->setObjectName(QStringLiteral("searchLineEdit"));
    searchLineEdit->setPlaceholderText(QStringLiteral("Find"));
    searchLineEdit->setMinimumWidth(FIELD_WIDTH);
    searchLineEdit->installEventFilter(this);

    matchCaseButton = CreateButton(QStringLiteral("matchCaseButton"), QStringLiteral(":/bq2_icons/match_case.png"),
                                   3, QStringLiteral("Match Case"));
    matchWordButton = CreateButton(QStringLiteral("matchWordButton"), QStringLiteral(":/bq2_icons/match_word.png"),
                                   3, QStringLiteral("Match Whole Word"));
    regExpButton = CreateButton(QStringLiteral("regExpButton"),
                                QStringLiteral(":/bq2_icons/regular_expression.png"), 4,
                                QStringLiteral("Use Regular Expression"));

    resultsLabel = new QLabel(this);
    resultsLabel->setObjectName(QStringLiteral("resultsLabel"));
    resultsLabel->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("9999 of 9999")) + 8);

    previousButton = CreateButton(QStringLiteral("previousButton"), QStringLiteral(":/bq2_icons/next.png"), 4,
                                  PREVIOUS_MATCH, true);
    nextButton = CreateButton(QStringLiteral("nextButton"), QStringLiteral(":/bq2_icons/next.png"), 4, NEXT_MATCH);
    findInSelectionButton = CreateButton(QStringLiteral("findInSelectionButton"),
                                         QStringLiteral(":/bq2_icons/find_in_selection.png"), 3,
                                         QStringLiteral("Find in Selection"));
    closeButton = CreateButton(QStringLiteral("closeButton"), QStringLiteral(":/bq2_icons/close.png"), 5,
                               QStringLiteral("Close"));
    toggleReplaceButton = CreateButton(QStringLiteral("toggleReplaceButton"),
                                       QStringLiteral(":/bq2_icons/view_collapsed.png"), 5,
                                       QStringLiteral("Toggle Replace"));

    replaceRow = new QWidget(this);
    replaceLineEdit = new QLineEdit(replaceRow);
    replaceLineEdit->setObjectName(QStringLiteral("replaceLineEdit"));
    replaceLineEdit->setPlaceholderText(REPLACE);
    replaceLineEdit->installEventFilter(this);
    replaceButton = CreateButton(QStringLiteral("replaceButton"), QStringLiteral(":/bq2_icons/replace.png"), 3,
                                 REPLACE);
    replaceAllButton = CreateButton(QStringLiteral("replaceAllButton"),
                                    QStringLiteral(":/bq2_icons/replace_all.png"), 3, REPLACE_ALL);
    replaceButton->setParent(replaceRow);
    replaceAllButton->setParent(replaceRow);
}

void FindReplaceWidget::CreateLayout()
{
    auto* searchRow = new QHBoxLayout;
    searchRow->setContentsMargins(0, 0, 0, 0);
    searchRow->setSpacing(2);
    searchRow->addWidget(toggleReplaceButton);
    searchRow->addWidget(searchLineEdit, 1);
    searchRow->addWidget(matchCaseButton);
    searchRow->addWidget(matchWordButton);
    searchRow->addWidget(regExpButton);
    searchRow->addSpacing(4);
    searchRow->addWidget(resultsLabel);
    searchRow->addWidget(previousButton);
    searchRow->addWidget(nextButton);
    searchRow->addWidget(findInSelectionButton);
    searchRow->addWidget(closeButton);

    auto* replaceLayout = new QHBoxLayout(replaceRow);
    replaceLayout->setContentsMargins(0, 0, 0, 0);
    replaceLayout->setSpacing(2);
    // Under the search field, past the toggle.
    replaceLayout->addSpacing(toggleReplaceButton->width() + 2);
    replaceLayout->addWidget(replaceLineEdit);
    replaceLayout->addWidget(replaceButton);
    replaceLayout->addWidget(replaceAllButton);
    replaceLayout->addStretch(1);

    auto* mainLayout = new QVBoxLayout(this);
    mainLayout->setContentsMargins(4, 4, 4, 4);
    mainLayout->setSpacing(3);
    mainLayout->addLayout(searchRow);
    mainLayout->addWidget(replaceRow);
}

void FindReplaceWidget::CreateConnections()
{
    connect(searchLineEdit, SIGNAL(textChanged(QString)), this, SLOT(OnSearchTextChanged()));
    connect(searchLineEdit, SIGNAL(returnPressed()), this, SLOT(OnReturnPressed()));
    connect(replaceLineEdit, SIGNAL(returnPressed()), this, SLOT(Replace()));
    connect(matchCaseButton, SIGNAL(clicked()), this, SLOT(ToggleMatchCase()));
    connect(matchWordButton, SIGNAL(clicked()), this, SLOT(ToggleMatchWord()));
    connect(regExpButton, SIGNAL(clicked()), this, SLOT(ToggleRegularExpression()));
    connect(previousButton, SIGNAL(clicked()), this, SLOT(FindPrevious()));
    connect(nextButton, SIGNAL(clicked()), this, SLOT(FindNext()));
    connect(findInSelectionButton, SIGNAL(clicked()), this, SLOT(ToggleFindInSelection()));
    connect(closeButton, SIGNAL(clicked()), this, SLOT(Close()));
    connect(toggleReplaceButton, SIGNAL(clicked()), this, SLOT(ToggleReplace()));
    connect(replaceButton, SIGNAL(clicked()), this, SLOT(Replace()));
    connect(replaceAllButton, SIGNAL(clicked()), this, SLOT(ReplaceAll()));
}

// ---------------------------------------------------------------------------------------------
// State

bool FindReplaceWidget::HasSearchText() const
{
    return !searchLineEdit->text().isEmpty();
}

QString FindReplaceWidget::GetSearchText() const
{
    return searchLineEdit->text();
}

QString FindReplaceWidget::GetResultsText() const
{
    return resultsLabel->text();
}

void FindReplaceWidget::SetReplaceVisible(bool visible)
{
    const bool shown = visible && replaceEnabled;
    replaceRow->setVisible(shown);
    toggleReplaceButton->SetImage(TabImages::Load(shown ? QStringLiteral(":/bq2_icons/view_expanded.png")
                                                        : QStringLiteral(":/bq2_icons/view_collapsed.png")),
                                  5);
    adjustSize();
}

void FindReplaceWidget::SetReplaceEnabled(bool enabled)
{
    // A bar without replacing, the output's, offers neither the replace row nor a range.
    replaceEnabled = enabled;
    toggleReplaceButton->setVisible(enabled);
    findInSelectionButton->setVisible(enabled);
    if (!enabled)
        SetButtonChecked(findInSelectionButton, false);
    SetReplaceVisible(IsReplaceVisible());
}

bool FindReplaceWidget::IsReplaceVisible() const
{
    return replaceEnabled && !replaceRow->isHidden();
}

bool FindReplaceWidget::IsFindInSelection() const
{
    return findInSelectionButton->IsChecked();
}

void FindReplaceWidget::SetParentWidth(int width)
{
    // Never wider than the owner, but wide enough for its buttons while there is room.
    const int preferred = sizeHint().width();
    const int newWidth = qMax(qMin(preferred, width - 30), qMin(minimumSizeHint().width(), width));
    resize(qMax(0, newWidth), sizeHint().height());
}

void FindReplaceWidget::UpdateKeyBindings(KeyBindings* keyBindings)
{
    const auto toolTip = [keyBindings](const QString& text, KeySequenceType type)
    {
        const QKeySequence sequence = keyBindings ? keyBindings->GetShortcut(type) : QKeySequence();
        if (sequence.isEmpty())
            return text;
        return QStringLiteral("%1 (%2)").arg(text, sequence.toString(QKeySequence::NativeText));
    };
    nextButton->setToolTip(toolTip(NEXT_MATCH, KeySequenceType::FindNext));
    previousButton->setToolTip(toolTip(PREVIOUS_MATCH, KeySequenceType::FindPrevious));
    replaceButton->setToolTip(toolTip(REPLACE, KeySequenceType::ReplaceNext));
    replaceAllButton->setToolTip(toolTip(REPLACE_ALL, KeySequenceType::ReplaceAll));
}

void FindReplaceWidget::SetButtonChecked(FlatButton* button, bool checked)
{
    button->SetChecked(checked);
}

// ---------------------------------------------------------------------------------------------
// Actions

void FindReplaceWidget::ToggleReplace()
{
    SetReplaceVisible(!IsReplaceVisible());
    if (IsReplaceVisible())
        FocusReplaceText();
}

void FindReplaceWidget::FindNext()
{
    emit FindNextRequested();
}

void FindReplaceWidget::FindPrevious()
{
    emit FindPreviousRequested();
}

void FindReplaceWidget::OnReturnPressed()
{
    if (QApplication::keyboardModifiers() & Qt::ShiftModifier)
        FindPrevious();
    else
        FindNext();
}

void FindReplaceWidget::Show(bool replace)
{
    emit ShowRequested(replace);
}

void FindReplaceWidget::Close()
{
    emit Closed();
    hide();
    SetButtonChecked(findInSelectionButton, false);
}

void FindReplaceWidget::SetResults(int current, int total)
{
    if (current >= 1)
        currentResult = current;
    if (total < 1)
    {
        resultsLabel->setText(QStringLiteral("No Results"));
        return;
    }
    if (current < 1)
        currentResult = qBound(1, currentResult, total);
    if (currentResult > total)
        currentResult = total;
    resultsLabel->setText(QStringLiteral("%1 of %2").arg(currentResult).arg(total));
}

void FindReplaceWidget::Replace()
{
    if (IsReplaceVisible())
        emit ReplaceRequested(replaceLineEdit->text());
}

void FindReplaceWidget::ReplaceAll()
{
    if (IsReplaceVisible())
        emit ReplaceAllRequested(replaceLineEdit->text());
}

void FindReplaceWidget::OnSearchParametersChanged(bool resetSelection, bool moveToFirst)
{
    const QRegularExpression regEx = CreateSearchRegEx(searchLineEdit->text(), matchCaseButton->IsChecked(),
                                                       matchWordButton->IsChecked(), regExpButton->IsChecked());
    emit SearchChanged(regEx, findInSelectionButton->IsChecked(), resetSelection, moveToFirst);
}

void FindReplaceWidget::SetFindInSelectionEnabled(bool enabled, bool resetSelection)
{
    if (!replaceEnabled)
        return;
    SetButtonChecked(findInSelectionButton, enabled);
    OnSearchParametersChanged(resetSelection, false);
}

void FindReplaceWidget::ToggleMatchCase()
{
    SetButtonChecked(matchCaseButton, !matchCaseButton->IsChecked());
    OnSearchParametersChanged(true, false);
}

void FindReplaceWidget::ToggleMatchWord()
{
    SetButtonChecked(matchWordButton, !matchWordButton->IsChecked());
    OnSearchParametersChanged(true, false);
}

void FindReplaceWidget::ToggleRegularExpression()
{
    SetButtonChecked(regExpButton, !regExpButton->IsChecked());
    OnSearchParametersChanged(true, false);
}

void FindReplaceWidget::ToggleFindInSelection()
{
    if (!replaceEnabled)
        return;
    SetButtonChecked(findInSelectionButton, !findInSelectionButton->IsChecked());
    OnSearchParametersChanged(true, false);
}

void FindReplaceWidget::SetSearchText(const QString& text)
{
    if (text == searchLineEdit->text())
        return;
    // The text change itself reports the new search.
    searchLineEdit->setText(text);
}

void FindReplaceWidget::OnSearchTextChanged()
{
    OnSearchParametersChanged(true, false);
}

void FindReplaceWidget::FocusSearchText()
{
    searchLineEdit->setFocus(Qt::OtherFocusReason);
    searchLineEdit->selectAll();
    OnSearchParametersChanged(false, true);
}

void FindReplaceWidget::FocusReplaceText()
{
    replaceLineEdit->setFocus(Qt::OtherFocusReason);
    replaceLineEdit->selectAll();
}

// ---------------------------------------------------------------------------------------------
// Events

bool FindReplaceWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == searchLineEdit && event->type() == QEvent::Resize)
    {
        replaceLineEdit->setFixedWidth(searchLineEdit->width());
        return false;
    }
    if (event->type() != QEvent::KeyPress || (watched != searchLineEdit && watched != replaceLineEdit))
        return QWidget::eventFilter(watched, event);
    const auto* keyEvent = static_cast<QKeyEvent*>(event);
    if (keyEvent->key() != Qt::Key_Tab && keyEvent->key() != Qt::Key_Backtab)
        return QWidget::eventFilter(watched, event);
    // Tab moves between the two fields and never leaves the bar.
    if (watched == searchLineEdit && IsReplaceVisible())
        replaceLineEdit->setFocus(Qt::TabFocusReason);
    else if (watched == replaceLineEdit)
        searchLineEdit->setFocus(Qt::TabFocusReason);
    return true;
}

void FindReplaceWidget::paintEvent(QPaintEvent* event)
{
    QWidget::paintEvent(event);
    // A thin frame sets the floating bar off from the text below it.
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void FindReplaceWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
    {
        Close();
        event->accept();
        return;
    }
    QWidget::keyPressEvent(event);
}
