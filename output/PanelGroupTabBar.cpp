#include "output/PanelGroupTabBar.h"

PanelGroupTabBar::PanelGroupTabBar(QWidget* parent) : QTabBar(parent)
{
    setDrawBase(false);
    setExpanding(false);
    setFixedHeight(24);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

int PanelGroupTabBar::InsertTab(int index, const QString& text)
{
    if (index < 0 || index >= count())
        return addTab(text);
    return insertTab(index, text);
}

void PanelGroupTabBar::SetTabsClosable(bool closable)
{
    setTabsClosable(closable);
}

void PanelGroupTabBar::SetTabsMoveable(bool moveable)
{
    setMovable(moveable);
    // A bar with fixed tabs takes no drops at all.
    setAcceptDrops(moveable);
}

void PanelGroupTabBar::SetUnderlineEnabled(bool enabled)
{
    underlineEnabled = enabled;
    UpdateStyleSheet();
}

void PanelGroupTabBar::SetActiveTabBackgroundColor(const QColor& color)
{
    activeTabBackground = color;
    UpdateStyleSheet();
}

void PanelGroupTabBar::SetHoverTabBackgroundColor(const QColor& color)
{
    // Stored only: no tab but the current one gets a background of its own.
    hoverTabBackground = color;
}

void PanelGroupTabBar::SetBackgroundColor(const QColor& color)
{
    background = color;
    UpdateStyleSheet();
}

void PanelGroupTabBar::UpdateStyleSheet()
{
    const auto colorName = [](const QColor& color)
    { return color.isValid() ? color.name(QColor::HexArgb) : QStringLiteral("transparent"); };
    QString sheet = QStringLiteral("QTabBar { background: %1; } "
                                   "QTabBar::tab { background: transparent; border: none; padding: 0 25px; } "
                                   "QTabBar::tab:selected { background: %2; color: white; %3}")
                        .arg(colorName(background), colorName(activeTabBackground),
                             underlineEnabled ? QStringLiteral("border-bottom: 1px solid darkgray; ")
                                              : QString());
    setStyleSheet(sheet);
}
