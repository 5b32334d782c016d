#include "sidebar/SubView.h"

#include "settings/Settings.h"
#include "widgets/FlatButton.h"
#include "widgets/OverlayWidget.h"

#include <QtGui/QCursor>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace
{
int Scaled(int value)
{
    const double scale = Settings::customScaleValue;
    return scale != 1.0 && scale > 0.0 ? static_cast<int>(value * scale) : value;
}
} // namespace

SubView::SubView(KeyBindings* bindings, QWidget* parent) : QWidget(parent), keyBindings(bindings)
{
    titleBarHeight = Scaled(20);
    CreateWidgets();
    CreateLayout();
    UpdateVisibility();
}

void SubView::CreateWidgets()
{
    collapsedPixmap = QPixmap(QStringLiteral(":/bq2_icons/view_collapsed.png"))
                          .scaled(12, 12, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    expandedPixmap = QPixmap(QStringLiteral(":/bq2_icons/view_expanded.png"))
                         .scaled(12, 12, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    arrowLabel = new QLabel(this);
    arrowLabel->setFixedWidth(16);
    arrowLabel->setAlignment(Qt::AlignCenter);
    arrowLabel->setAttribute(Qt::WA_TransparentForMouseEvents);
    titleLabel = new QLabel(this);
    titleLabel->setFixedHeight(titleBarHeight);
    titleLabel->setAttribute(Qt::WA_TransparentForMouseEvents);
    overlay = new OverlayWidget(this);
    overlay->hide();
}

void SubView::CreateLayout()
{
    titleLayout = new QHBoxLayout();
    titleLayout->setContentsMargins(0, 0, 0, 0);
    titleLayout->setSpacing(2);
    titleLayout->addWidget(arrowLabel);
    titleLayout->addWidget(titleLabel);
    titleLayout->addStretch(1);
    mainLayout = new QVBoxLayout(this);
    mainLayout->setContentsMargins(0, 0, 0, 0);
    mainLayout->setSpacing(0);
    mainLayout->addLayout(titleLayout);
}

void SubView::SetViewName(const QString& name, bool bold)
{
    const QString upper = name.toUpper();
    titleLabel->setText(bold ? QStringLiteral("<strong>%1</strong>").arg(upper) : upper);
}

QString SubView::GetTitleText() const
{
    return titleLabel->text();
}

void SubView::UpdateVisibility()
{
    arrowLabel->setPixmap(expanded ? expandedPixmap : collapsedPixmap);
    if (expanded)
    {
        setMinimumHeight(100);
        setMaximumHeight(QWIDGETSIZE_MAX);
    }
    else
    {
        setFixedHeight(titleBarHeight);
    }
}

void SubView::SetExpanded(bool value)
{
    if (!collapsible)
        return;
    expanded = value;
    UpdateVisibility();
    if (!expanded)
        SetTitleBarButtonsVisible(false);
    emit ExpandedStateChanged();
}

void SubView::SetCollapable(bool value)
{
    collapsible = value;
    if (!collapsible)
    {
        // Forced open first: a section that can't collapse must not stay collapsed.
        collapsible = true;
        SetExpanded(true);
        collapsible = false;
    }
    arrowLabel->setVisible(collapsible);
    titleBarButtonsAlwaysVisible = !collapsible;
    SetTitleBarButtonsVisible(titleBarButtonsAlwaysVisible);
}

void SubView::AppendTitleBarButton(FlatButton* button)
{
    titleBarButtons.append(button);
    titleLayout->addWidget(button);
    button->setVisible(false);
}

void SubView::SetTitleBarButtonsVisible(bool visible)
{
    const bool show = expanded && (visible || titleBarButtonsAlwaysVisible);
    for (FlatButton* button : std::as_const(titleBarButtons))
        button->setVisible(show);
    UpdateMainLabelWidth();
}

void SubView::UpdateMainLabelWidth()
{
    int buttonsWidth = 0;
    bool anyVisible = false;
    for (const FlatButton* button : std::as_const(titleBarButtons))
    {
        if (button->isVisibleTo(this))
        {
            anyVisible = true;
            buttonsWidth += button->width() + 3;
        }
    }
    if (!anyVisible)
    {
        titleLabel->setMaximumWidth(QWIDGETSIZE_MAX);
        return;
    }
    const int arrowWidth = arrowLabel->isVisibleTo(this) ? arrowLabel->width() : 0;
    titleLabel->setMaximumWidth(qMax(0, width() - arrowWidth - buttonsWidth - 12));
}

void SubView::SetOverlayVisible(bool visible)
{
    if (!visible)
    {
        overlay->hide();
        return;
    }
    overlay->raise();
    overlay->setGeometry(rect());
    overlay->show();
}

bool SubView::IsOverlayVisible() const
{
    return overlay->isVisibleTo(this);
}

QSize SubView::GetTitleBarButtonSize() const
{
    return QSize(18, 18);
}

QRect SubView::TitleBarGeometry() const
{
    return QRect(0, 0, width(), titleBarHeight).translated(pos());
}

QRect SubView::TitleBarLabelGeometry() const
{
    return titleLabel->geometry();
}

void SubView::enterEvent(QEnterEvent* event)
{
    QWidget::enterEvent(event);
    SetTitleBarButtonsVisible(true);
}

void SubView::leaveEvent(QEvent* event)
{
    QWidget::leaveEvent(event);
    SetTitleBarButtonsVisible(false);
}

void SubView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    SetTitleBarButtonsVisible(rect().contains(mapFromGlobal(QCursor::pos())));
}

void SubView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    UpdateMainLabelWidth();
    if (overlay->isVisibleTo(this))
        overlay->setGeometry(rect());
}

void SubView::mouseReleaseEvent(QMouseEvent* event)
{
    QWidget::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    if (!QRect(0, 0, width(), titleLabel->height()).contains(event->position().toPoint()))
        return;
    SetExpanded(!expanded);
    if (expanded)
        SetTitleBarButtonsVisible(true);
}
