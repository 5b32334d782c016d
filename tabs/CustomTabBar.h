#pragma once

#include "editor/CodeEditorLanguage.h"
#include "tabs/CustomTabElement.h"

#include <QtCore/QList>
#include <QtCore/QPoint>
#include <QtCore/QTimer>
#include <QtGui/QColor>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

class QFontMetrics;
class QMimeData;
class QPainter;

// A hand-drawn tab strip. Every tab is a record with cached rectangles, the whole strip is
// painted in one pass, and scrolling is a pixel offset that moves one tab at a time. A tab is
// dragged as ordinary drag and drop with a private mime type whose payload is two bytes, the
// source bar's id and the tab's index, so that it can travel to another bar. The bar knows
// nothing of what its tabs stand for: it reports by signal, and its owner carries the change
// out and calls back.
class CustomTabBar : public QWidget
{
    Q_OBJECT

public:
    static const QString DEFAULT_MIME_TYPE;
    static constexpr int SCROLL_INTERVAL_MS = 400;

    explicit CustomTabBar(QWidget* parent = nullptr);

    void SetId(int id) { tabId = id; }
    int GetId() const { return tabId; }
    int Count() const { return static_cast<int>(tabs.size()); }
    int GetCurrentIndex() const { return currentIndex; }
    void SetCurrentIndex(int index, bool repaint);

    // Inserts at an index from 0 to Count() - 1; any other index appends. Returns the index.
    int InsertTab(int index, const QString& text);
    void RemoveTab(int index);
    QString GetTabText(int index) const;
    void SetTabText(int index, const QString& text);
    QString GetTabToolTip(int index) const;
    void SetTabToolTip(int index, const QString& toolTip);
    QVariant GetData(int index) const;
    void SetData(int index, const QVariant& data);
    bool IsModified(int index) const;
    void SetModified(int index, bool modified);
    CodeEditorLanguage GetLanguage(int index) const;
    void SetLanguage(int index, CodeEditorLanguage language);

    int TabAt(const QPoint& pos) const;
    // Where a tab and its close button stand now; null rectangles for an index out of range.
    QRect GetTabRect(int index) const;
    QRect GetCloseRect(int index) const;

    void SetTabsClosable(bool closable);
    bool AreTabsClosable() const { return tabsClosable; }
    void SetTabsMoveable(bool moveable);
    bool AreTabsMoveable() const { return tabsMoveable; }
    void SetUnderlineEnabled(bool enabled);
    void SetIconsVisible(bool visible);
    bool AreIconsVisible() const { return iconsVisible; }

    void SetActiveTabBackgroundColor(const QColor& color);
    void SetInactiveTabBackgroundColor(const QColor& color);
    void SetHoverTabBackgroundColor(const QColor& color);
    void SetBackgroundColor(const QColor& color);
    QColor GetActiveTabBackgroundColor() const { return activeTabBackground; }

    void SetDragAndDropMimeType(const QString& type) { mimeType = type; }
    QString GetDragAndDropMimeType() const { return mimeType; }

    // The scroll position as a scroll bar would give it: 0 or more.
    int GetScrollBarValue() const { return -scrollOffset; }
    void SetScrollBarValue(int value);

    // The area that the drop highlight covers while something is dragged over the bar.
    QRect GetDropZoneRect() const { return dropZoneRect; }
    bool IsScrolling() const { return scrollTimer.isActive(); }

signals:
    void CurrentChanged(int index);
    void NewTabRequested();
    void CloseTabRequested(int index);
    void CloseOtherTabsRequested(int index);
    void CloseTabsToRightRequested(int index);
    void MoveTabRequested(int oldId, int oldIndex, int newId, int newIndex);
    void Activated();
    void OpenFileRequested(int index, const QString& filePath);

public slots:
    void BeginScrollingLeft();
    void BeginScrollingRight();
    void EndScrolling();
    void DoScroll();
    void ScrollToCurrent();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void ScaleMetrics();
    void LoadPixmaps();
    bool IsValidIndex(int index) const { return index >= 0 && index < tabs.size(); }

    // Layout.
    void UpdateRelativeTabRect(const QFontMetrics& metrics, CustomTabElement& tab) const;
    bool MeasureTabs(const QFontMetrics& metrics);
    void UpdateAbsoluteTabRects(bool repaint);
    void UpdateFirstLastRectIndicies();
    void RefreshVisibleRange();
    int SumOfWidths(int first, int end) const;
    int LastTabRight() const;
    void ApplyScrollBarValue(int value);

    // Painting.
    void PaintTab(QPainter& painter, int index, const QColor& penColor) const;
    void PaintCloseButton(QPainter& painter, const CustomTabElement& tab, int index) const;
    const QPixmap& LanguagePixmap(CodeEditorLanguage language) const;

    // Dragging.
    void StartDrag();
    void UpdateDropZone(const QPoint& pos, const QMimeData* mimeData);
    void SetDropZoneRect(const QRect& rect);
    void ClearDropZone(bool forget);
    void RefreshScrollingDropZone(const QPoint& pos);
    void ScrollForDragPosition(double x);
    void DropUrls(const QPoint& pos, const QMimeData* mimeData);
    void DropTab(const QPoint& pos, const QMimeData* mimeData);

    int tabId = -1;
    int currentIndex = -1;
    int hoverIndex = -1;
    bool hoverOnClose = false;
    QRect dropZoneRect;
    int dragSourceId = -1;
    int dragSourceIndex = -1;
    bool urlDrag = false;
    QList<CustomTabElement> tabs;
    QPoint pressPos;
    int pressedIndex = -1;
    int scrollOffset = 0; // x of the first tab; never above 0
    int firstVisible = -1;
    int lastVisible = -1;
    bool tabsClosable = false;
    bool tabsMoveable = false;
    bool underlineEnabled = false;
    bool iconsVisible = false;
    bool scrollingLeft = false;
    QTimer scrollTimer;
    bool inDrop = false; // an owner may move tabs in answer to a drop; the view must not jump
    QColor activeTabBackground;
    QColor inactiveTabBackground;
    QColor hoverTabBackground;
    QColor background;
    QString mimeType;
    int dragStartX = -1;
    QPixmap closePixmap;
    QPixmap modifiedPixmap;
    QPixmap pythonPixmap;
    QPixmap melPixmap;
    QPixmap textPixmap;
    int pendingScrollValue = -1; // set while hidden, applied at the next resize

    // Scaled together with the interface in the constructor.
    int barHeight = 24;
    int iconSize = 12;
    int closeSize = 8;
    int iconOffsetX = 8;
    int iconOffsetY = 7;
    int closeOffsetX = -16;
    int closeOffsetY = 9;
    int tabPadding = 50;
};
