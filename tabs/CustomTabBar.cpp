#include "tabs/CustomTabBar.h"

#include "settings/Settings.h"
#include "tabs/TabImages.h"

#include <QtGui/QCursor>
#include <QtGui/QFontMetrics>
#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

const QString CustomTabBar::DEFAULT_MIME_TYPE = QStringLiteral("tolvanek-bq2/unknown");

CustomTabBar::CustomTabBar(QWidget* parent) : QWidget(parent), mimeType(DEFAULT_MIME_TYPE)
{
    ScaleMetrics();
    setFixedHeight(barHeight);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    LoadPixmaps();
    connect(&scrollTimer, SIGNAL(timeout()), this, SLOT(DoScroll()));
}

void CustomTabBar::ScaleMetrics()
{
    const double scale = Settings::customScaleValue;
    if (scale == 1.0 || scale <= 0.0)
        return;
    for (int* metric : {&barHeight, &iconSize, &closeSize, &iconOffsetX, &iconOffsetY, &closeOffsetX,
                        &closeOffsetY, &tabPadding})
        *metric = static_cast<int>(*metric * scale);
}

void CustomTabBar::LoadPixmaps()
{
    closePixmap = TabImages::LoadPixmap(QStringLiteral(":/bq2_icons/close_white.png"), closeSize);
    modifiedPixmap = TabImages::LoadPixmap(QStringLiteral(":/bq2_icons/modified.png"), closeSize);
    pythonPixmap = TabImages::LoadPixmap(QStringLiteral(":/bq2_icons/python.png"), iconSize);
    melPixmap = TabImages::LoadPixmap(QStringLiteral(":/bq2_icons/mel.png"), iconSize);
    textPixmap = TabImages::LoadPixmap(QStringLiteral(":/bq2_icons/text.png"), iconSize);
}

// ---------------------------------------------------------------------------------------------
// Tabs

void CustomTabBar::SetCurrentIndex(int index, bool repaint)
{
    if (index == currentIndex || !IsValidIndex(index))
        return;
    currentIndex = index;
    ScrollToCurrent();
    emit CurrentChanged(index);
    if (repaint)
        this->repaint();
}

int CustomTabBar::InsertTab(int index, const QString& text)
{
    CustomTabElement tab;
    tab.text = text;
    if (IsValidIndex(index))
    {
        tabs.insert(index, tab);
    }
    else
    {
        tabs.append(tab);
        index = Count() - 1;
    }
    repaint();
    if (currentIndex < 0)
        currentIndex = 0;
    else if (currentIndex >= index)
        SetCurrentIndex(currentIndex + 1, false);
    return index;
}

void CustomTabBar::RemoveTab(int index)
{
    if (!IsValidIndex(index))
        return;
    tabs.removeAt(index);
    // The current tab keeps its place in the strip, as the owner's pages keep theirs.
    if (index < currentIndex)
        --currentIndex;
    if (hoverIndex >= Count())
        hoverIndex = -1;
    pressedIndex = -1;
    UpdateAbsoluteTabRects(true);
    if (!tabs.isEmpty() && LastTabRight() < width())
    {
        // No gap at the right end while tabs are hidden at the left.
        scrollOffset = width() - SumOfWidths(0, Count());
        UpdateAbsoluteTabRects(true);
    }
    UpdateFirstLastRectIndicies();
    if (tabs.isEmpty())
        currentIndex = -1; // as at the start, so that the next tab becomes current by itself
    else if (currentIndex >= Count())
        SetCurrentIndex(Count() - 1, false);
}

QString CustomTabBar::GetTabText(int index) const
{
    return IsValidIndex(index) ? tabs.at(index).text : QString();
}

void CustomTabBar::SetTabText(int index, const QString& text)
{
    if (!IsValidIndex(index))
        return;
    tabs[index].text = text;
    tabs[index].relativeRect = QRect();
    repaint();
}

QString CustomTabBar::GetTabToolTip(int index) const
{
    return IsValidIndex(index) ? tabs.at(index).toolTip : QString();
}

void CustomTabBar::SetTabToolTip(int index, const QString& toolTip)
{
    if (IsValidIndex(index))
        tabs[index].toolTip = toolTip;
}

QVariant CustomTabBar::GetData(int index) const
{
    return IsValidIndex(index) ? tabs.at(index).data : QVariant();
}

void CustomTabBar::SetData(int index, const QVariant& data)
{
    if (IsValidIndex(index))
        tabs[index].data = data;
}

bool CustomTabBar::IsModified(int index) const
{
    return IsValidIndex(index) && tabs.at(index).modified;
}

void CustomTabBar::SetModified(int index, bool modified)
{
    if (!IsValidIndex(index))
        return;
    tabs[index].modified = modified;
    update();
}

CodeEditorLanguage CustomTabBar::GetLanguage(int index) const
{
    return IsValidIndex(index) ? tabs.at(index).language : CodeEditorLanguage::TEXT;
}

void CustomTabBar::SetLanguage(int index, CodeEditorLanguage language)
{
    if (!IsValidIndex(index))
        return;
    tabs[index].language = language;
    update();
}

int CustomTabBar::TabAt(const QPoint& pos) const
{
    for (int i = 0; i < tabs.size(); ++i)
    {
        if (tabs.at(i).absoluteRect.contains(pos))
            return i;
    }
    return -1;
}

QRect CustomTabBar::GetTabRect(int index) const
{
    return IsValidIndex(index) ? tabs.at(index).absoluteRect : QRect();
}

QRect CustomTabBar::GetCloseRect(int index) const
{
    return IsValidIndex(index) ? tabs.at(index).closeRect : QRect();
}

// ---------------------------------------------------------------------------------------------
// Options and colours

void CustomTabBar::SetTabsClosable(bool closable)
{
    tabsClosable = closable;
    UpdateAbsoluteTabRects(true);
}

void CustomTabBar::SetTabsMoveable(bool moveable)
{
    tabsMoveable = moveable;
    // A bar with fixed tabs takes no drops at all.
    setAcceptDrops(moveable);
}

void CustomTabBar::SetUnderlineEnabled(bool enabled)
{
    underlineEnabled = enabled;
    update();
}

void CustomTabBar::SetIconsVisible(bool visible)
{
    iconsVisible = visible;
    update();
}

void CustomTabBar::SetActiveTabBackgroundColor(const QColor& color)
{
    activeTabBackground = color;
    update();
}

void CustomTabBar::SetInactiveTabBackgroundColor(const QColor& color)
{
    // Kept for owners that set it; only the current tab gets a background of its own.
    inactiveTabBackground = color;
    update();
}

void CustomTabBar::SetHoverTabBackgroundColor(const QColor& color)
{
    hoverTabBackground = color;
    update();
}

void CustomTabBar::SetBackgroundColor(const QColor& color)
{
    background = color;
    update();
}

// ---------------------------------------------------------------------------------------------
// Layout

void CustomTabBar::UpdateRelativeTabRect(const QFontMetrics& metrics, CustomTabElement& tab) const
{
    // The close button takes no width of its own: the padding holds it.
    tab.relativeRect = QRect(0, 0, metrics.horizontalAdvance(tab.text) + tabPadding, barHeight);
}

bool CustomTabBar::MeasureTabs(const QFontMetrics& metrics)
{
    bool measured = false;
    for (CustomTabElement& tab : tabs)
    {
        if (tab.relativeRect.isValid())
            continue;
        UpdateRelativeTabRect(metrics, tab);
        measured = true;
    }
    return measured;
}

void CustomTabBar::UpdateAbsoluteTabRects(bool repaint)
{
    if (scrollOffset > 0)
        scrollOffset = 0;
    int x = scrollOffset;
    for (CustomTabElement& tab : tabs)
    {
        tab.absoluteRect = tab.relativeRect.translated(x, 0);
        x += tab.relativeRect.width();
        tab.iconRect =
            QRect(tab.absoluteRect.topLeft() + QPoint(iconOffsetX, iconOffsetY), QSize(iconSize, iconSize));
        tab.closeRect = QRect(tab.absoluteRect.right() + closeOffsetX, tab.absoluteRect.top() + closeOffsetY,
                              closeSize, closeSize);
    }
    if (repaint)
        update();
}

void CustomTabBar::UpdateFirstLastRectIndicies()
{
    const QRect bar = rect();
    for (int i = 0; i < tabs.size(); ++i)
    {
        if (!bar.contains(tabs.at(i).absoluteRect))
            continue;
        if (firstVisible == -1)
            firstVisible = i;
        lastVisible = i;
    }
}

void CustomTabBar::RefreshVisibleRange()
{
    // Scrolling reads the range between two paints, so it is measured afresh first.
    MeasureTabs(fontMetrics());
    UpdateAbsoluteTabRects(false);
    firstVisible = -1;
    lastVisible = -1;
    UpdateFirstLastRectIndicies();
}

int CustomTabBar::SumOfWidths(int first, int end) const
{
    int sum = 0;
    for (int i = qMax(0, first); i < end && i < tabs.size(); ++i)
        sum += tabs.at(i).relativeRect.width();
    return sum;
}

int CustomTabBar::LastTabRight() const
{
    return tabs.isEmpty() ? scrollOffset - 1 : tabs.last().absoluteRect.right();
}

// ---------------------------------------------------------------------------------------------
// Painting

void CustomTabBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::TextAntialiasing);
    if (MeasureTabs(painter.fontMetrics()))
        UpdateAbsoluteTabRects(false);
    firstVisible = -1;
    lastVisible = -1;
    if (background.isValid())
        painter.fillRect(rect(), background);
    UpdateFirstLastRectIndicies();
    const QColor penColor = painter.pen().color();
    for (int i = 0; i < tabs.size(); ++i)
        PaintTab(painter, i, penColor);
    if (dropZoneRect.isValid())
        painter.fillRect(dropZoneRect, QColor(255, 255, 255, 80));
}

void CustomTabBar::PaintTab(QPainter& painter, int index, const QColor& penColor) const
{
    const CustomTabElement& tab = tabs.at(index);
    if (index != currentIndex)
    {
        painter.setPen(penColor);
        if (index != hoverIndex)
        {
            if (tab.modified)
                painter.drawPixmap(tab.closeRect.topLeft(), modifiedPixmap);
        }
        else if (tabsClosable)
        {
            PaintCloseButton(painter, tab, index);
        }
    }
    else
    {
        painter.setPen(Qt::white);
        if (activeTabBackground.isValid())
            painter.fillRect(tab.absoluteRect, activeTabBackground);
        if (tabsClosable)
            PaintCloseButton(painter, tab, index);
    }

    if (iconsVisible)
        painter.drawPixmap(tab.iconRect.topLeft(), LanguagePixmap(tab.language));

    QRect textRect;
    painter.drawText(tab.absoluteRect, Qt::AlignCenter, tab.text, &textRect);
    if (underlineEnabled && index == currentIndex)
        painter.fillRect(QRect(textRect.left(), height() - 1, textRect.width(), 1), Qt::darkGray);
}

void CustomTabBar::PaintCloseButton(QPainter& painter, const CustomTabElement& tab, int index) const
{
    // A modified tab shows its mark until the pointer is on it.
    if (!tab.modified || (index == hoverIndex && hoverOnClose))
        painter.drawPixmap(tab.closeRect.topLeft(), closePixmap);
    else
        painter.drawPixmap(tab.closeRect.topLeft(), modifiedPixmap);
}

const QPixmap& CustomTabBar::LanguagePixmap(CodeEditorLanguage language) const
{
    switch (language)
    {
    case CodeEditorLanguage::PYTHON:
        return pythonPixmap;
    case CodeEditorLanguage::MEL:
        return melPixmap;
    default:
        return textPixmap;
    }
}

// ---------------------------------------------------------------------------------------------
// Scrolling

void CustomTabBar::ScrollToCurrent()
{
    if (inDrop)
        return;
    if (currentIndex < Count())
    {
        RefreshVisibleRange();
        if (currentIndex < firstVisible)
            scrollOffset = -SumOfWidths(0, currentIndex);
        else if (currentIndex > lastVisible)
            scrollOffset = width() - SumOfWidths(0, currentIndex + 1);
    }
    else
    {
        scrollOffset = 0;
    }
    const int slack = width() - SumOfWidths(0, Count());
    if (scrollOffset < slack)
        scrollOffset = slack;
    UpdateAbsoluteTabRects(true);
    update();
}

void CustomTabBar::BeginScrollingLeft()
{
    scrollingLeft = true;
    scrollTimer.start(SCROLL_INTERVAL_MS);
    DoScroll();
}

void CustomTabBar::BeginScrollingRight()
{
    scrollingLeft = false;
    scrollTimer.start(SCROLL_INTERVAL_MS);
    DoScroll();
}

void CustomTabBar::EndScrolling()
{
    scrollTimer.stop();
}

void CustomTabBar::DoScroll()
{
    RefreshVisibleRange();
    if (scrollingLeft)
    {
        if (firstVisible < 1)
        {
            scrollTimer.stop();
            return;
        }
        scrollOffset = -SumOfWidths(0, firstVisible - 1);
    }
    else
    {
        if (lastVisible + 1 >= Count())
        {
            scrollTimer.stop();
            return;
        }
        scrollOffset = width() - SumOfWidths(0, lastVisible + 2);
    }
    UpdateAbsoluteTabRects(true);
    RefreshScrollingDropZone(mapFromGlobal(QCursor::pos()));
}

void CustomTabBar::SetScrollBarValue(int value)
{
    if (!isVisible())
    {
        pendingScrollValue = value;
        return;
    }
    ApplyScrollBarValue(value);
}

void CustomTabBar::ApplyScrollBarValue(int value)
{
    pendingScrollValue = -1;
    scrollOffset = -qMax(0, value);
    UpdateAbsoluteTabRects(true);
}

void CustomTabBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    UpdateAbsoluteTabRects(true);
    if (inDrop)
        return;
    // Applied whether or not the bar counts as visible yet: the first resize of a bar that is
    // being shown comes before it does.
    if (pendingScrollValue >= 0)
        ApplyScrollBarValue(pendingScrollValue);
    repaint();
    ScrollToCurrent();
}

// ---------------------------------------------------------------------------------------------
// Mouse

bool CustomTabBar::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    auto* help = static_cast<QHelpEvent*>(event);
    const int index = TabAt(help->pos());
    if (index >= 0)
    {
        QToolTip::showText(help->globalPos(), tabs.at(index).toolTip, this);
    }
    else
    {
        QToolTip::hideText();
        event->ignore();
    }
    return true;
}

void CustomTabBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint pos = event->position().toPoint();
    if (tabsClosable)
    {
        for (int i = 0; i < tabs.size(); ++i)
        {
            if (tabs.at(i).closeRect.contains(pos))
            {
                emit CloseTabRequested(i);
                return;
            }
        }
    }
    emit Activated();
    pressPos = pos;
    pressedIndex = -1;
    const int index = TabAt(pos);
    if (index < 0)
        return;
    SetCurrentIndex(index, true);
    if (!tabsMoveable)
        return;
    const double x = pos.x();
    dragStartX = (x <= 0.06 * width() || x >= 0.94 * width()) ? pos.x() : -1;
    pressedIndex = index;
}

void CustomTabBar::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint pos = event->position().toPoint();
    if (event->buttons() & Qt::LeftButton)
    {
        if (pressedIndex < 0 || (pos - pressPos).manhattanLength() < QApplication::startDragDistance())
            return;
        StartDrag();
        return;
    }
    const int index = TabAt(pos);
    const bool onClose = index >= 0 && tabs.at(index).closeRect.contains(pos);
    if (index != hoverIndex || onClose != hoverOnClose)
    {
        hoverIndex = index;
        hoverOnClose = onClose;
        update();
    }
}

void CustomTabBar::leaveEvent(QEvent* event)
{
    QWidget::leaveEvent(event);
    if (hoverIndex < 0)
        return;
    hoverIndex = -1;
    hoverOnClose = false;
    update();
}
