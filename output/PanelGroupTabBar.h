#pragma once

#include <QtGui/QColor>
#include <QtWidgets/QTabBar>

// The tab strip above the output. It offers the operations of the editors' hand-drawn tab bar
// that the output panel uses, so that it can stand on that bar once the bar exists; for now it
// is drawn by a standard tab bar.
class PanelGroupTabBar : public QTabBar
{
    Q_OBJECT

public:
    explicit PanelGroupTabBar(QWidget* parent = nullptr);

    int Count() const { return count(); }
    int InsertTab(int index, const QString& text);
    QString GetTabText(int index) const { return tabText(index); }
    void SetTabsClosable(bool closable);
    void SetTabsMoveable(bool moveable);
    void SetUnderlineEnabled(bool enabled);
    void SetActiveTabBackgroundColor(const QColor& color);
    void SetHoverTabBackgroundColor(const QColor& color);
    void SetBackgroundColor(const QColor& color);

private:
    void UpdateStyleSheet();

    bool underlineEnabled = false;
    QColor activeTabBackground;
    QColor hoverTabBackground;
    QColor background;
};
