#include "HostFixture.h"
#include "TestFiles.h"
#include "settings/Settings.h"
#include "tabs/CustomTabBar.h"

#include <QtCore/QMimeData>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtTest/QtTest>
#include <QtWidgets/QToolTip>

#include <memory>

#include "DragSimulation.h"

namespace
{
const QString MIME_TYPE = QStringLiteral("tolvanek-bq2/move-code-editor");
const QColor ACTIVE(200, 40, 40);
const QColor BACKGROUND(30, 30, 120);

void MoveMouse(QWidget* widget, const QPoint& pos)
{
    QMouseEvent event(QEvent::MouseMove, QPointF(pos), QPointF(widget->mapToGlobal(pos)), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

// The tab whose right edge meets the bar's right edge, or -1.
int RightAlignedTab(const CustomTabBar& bar)
{
    for (int i = 0; i < bar.Count(); ++i)
    {
        if (bar.GetTabRect(i).right() == bar.width() - 1)
            return i;
    }
    return -1;
}
} // namespace

class TestCustomTabBar : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<CustomTabBar> bar;

    // A bar of `count` tabs named "tab 0" and up, shown at the given width.
    void ShowBar(int count, int width)
    {
        bar = std::make_unique<CustomTabBar>();
        bar->SetId(3);
        bar->SetDragAndDropMimeType(MIME_TYPE);
        bar->SetTabsMoveable(true);
        for (int i = 0; i < count; ++i)
            bar->InsertTab(-1, QStringLiteral("tab %1").arg(i));
        bar->resize(width, bar->height());
        bar->show();
        QVERIFY(QTest::qWaitForWindowExposed(bar.get()));
    }

    QImage Region(const QRect& rect) { return bar->grab(rect).toImage(); }

private slots:
    void initTestCase() { fixture = std::make_unique<HostFixture>(); }
    void cleanupTestCase() { fixture.reset(); }
    void init() { Settings::ResetToDefaults(); }
    void cleanup() { bar.reset(); }

    void tabsAreLaidOutSideBySideAndHitTested()
    {
        ShowBar(3, 600);
        QCOMPARE(bar->height(), 24);
        QCOMPARE(bar->GetTabRect(0).left(), 0);
        for (int i = 0; i < 3; ++i)
        {
            const QRect tab = bar->GetTabRect(i);
            QVERIFY(tab.width() > bar->fontMetrics().horizontalAdvance(bar->GetTabText(i)));
            QCOMPARE(tab.height(), 24);
            QVERIFY(tab.contains(bar->GetCloseRect(i)));
            QCOMPARE(bar->TabAt(tab.center()), i);
            if (i > 0)
                QCOMPARE(tab.left(), bar->GetTabRect(i - 1).right() + 1);
        }
        QCOMPARE(bar->TabAt(QPoint(bar->GetTabRect(2).right() + 5, 10)), -1);

        // Out-of-range indices are ignored or give empty values.
        bar->SetTabText(7, QStringLiteral("x"));
        QCOMPARE(bar->GetTabText(7), QString());
        QVERIFY(!bar->GetData(-1).isValid());
        QVERIFY(!bar->IsModified(3));

        // A tab inserted before the current one keeps the current tab current.
        QSignalSpy current(bar.get(), &CustomTabBar::CurrentChanged);
        QCOMPARE(bar->InsertTab(0, QStringLiteral("front")), 0);
        QCOMPARE(bar->GetCurrentIndex(), 1);
        QCOMPARE(current.count(), 1);
        QCOMPARE(bar->InsertTab(42, QStringLiteral("back")), 4);
        QCOMPARE(bar->GetTabText(4), QStringLiteral("back"));

        // A longer text makes a wider tab and pushes the next one.
        const int oldWidth = bar->GetTabRect(1).width();
        bar->SetTabText(1, QStringLiteral("a much longer label than before"));
        QTRY_VERIFY(bar->GetTabRect(1).width() > oldWidth);
        QCOMPARE(bar->GetTabRect(2).left(), bar->GetTabRect(1).right() + 1);
    }

    // The bar grows with the interface's scale; a scale that makes no sense leaves it as it is.
    void heightFollowsTheInterfaceScale()
    {
        for (const auto& [scale, height] : {std::pair{2.0, 48}, {0.0, 24}, {-1.5, 24}})
        {
            Settings::customScaleValue = scale;
            CustomTabBar scaled;
            QCOMPARE(scaled.height(), height);
        }
    }

    void toolTipsFollowThePointer()
    {
        ShowBar(2, 400);
        bar->SetTabToolTip(1, QStringLiteral("/scripts/tab.py"));
        const QPoint pos = bar->GetTabRect(1).center();
        QHelpEvent over(QEvent::ToolTip, pos, bar->mapToGlobal(pos));
        QVERIFY(QCoreApplication::sendEvent(bar.get(), &over));
        QTRY_COMPARE(QToolTip::text(), QStringLiteral("/scripts/tab.py"));

        const QPoint empty(bar->width() - 2, 5);
        QHelpEvent outside(QEvent::ToolTip, empty, bar->mapToGlobal(empty));
        QCoreApplication::sendEvent(bar.get(), &outside);
        QVERIFY(!outside.isAccepted());
        QTRY_VERIFY(!QToolTip::isVisible());
    }

    void paintingShowsCurrentTabUnderlineAndDropZone()
    {
        ShowBar(3, 500);
        bar->SetActiveTabBackgroundColor(ACTIVE);
        bar->SetBackgroundColor(BACKGROUND);
        bar->SetCurrentIndex(1, true);
        // A corner of a tab holds neither icon, text nor close button.
        const QPoint corner(2, 2);
        QCOMPARE(bar->grab().toImage().pixelColor(bar->GetTabRect(1).topLeft() + corner), ACTIVE);
        QCOMPARE(bar->grab().toImage().pixelColor(bar->GetTabRect(0).topLeft() + corner), BACKGROUND);

        const QPoint underText(bar->GetTabRect(1).center().x(), bar->height() - 1);
        QCOMPARE(bar->grab().toImage().pixelColor(underText), ACTIVE);
        bar->SetUnderlineEnabled(true);
        QCOMPARE(bar->grab().toImage().pixelColor(underText), QColor(Qt::darkGray));
        // The underline is as wide as the label, not the tab.
        QCOMPARE(bar->grab().toImage().pixelColor(bar->GetTabRect(1).bottomLeft() + QPoint(2, 0)), ACTIVE);

        std::unique_ptr<QMimeData> mimeData(DragSimulation::TabMimeData(3, 0));
        const QPoint over = bar->GetTabRect(2).topLeft() + corner;
        DragSimulation::DragTo(bar.get(), over, mimeData.get(), false);
        QCOMPARE(bar->GetDropZoneRect(), bar->GetTabRect(2));
        const QColor highlighted = bar->grab().toImage().pixelColor(over);
        QVERIFY(highlighted.red() > BACKGROUND.red() && highlighted.green() > BACKGROUND.green());
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(bar.get(), &leave);
        QVERIFY(!bar->GetDropZoneRect().isValid());
        QCOMPARE(bar->grab().toImage().pixelColor(over), BACKGROUND);
    }

    void modifiedMarkGivesWayToTheCloseButtonUnderThePointer()
    {
        ShowBar(3, 500);
        bar->SetTabsClosable(true);
        bar->SetBackgroundColor(BACKGROUND);
        const QRect close = bar->GetCloseRect(2);
        const QImage blank = Region(close);
        bar->SetModified(2, true);
        const QImage mark = Region(close);
        QVERIFY(mark != blank);

        MoveMouse(bar.get(), bar->GetTabRect(2).topLeft() + QPoint(3, 3));
        QCOMPARE(Region(close), mark);
        MoveMouse(bar.get(), close.center());
        const QImage cross = Region(close);
        QVERIFY(cross != mark && cross != blank);

        // An unmodified tab shows its close button only under the pointer.
        bar->SetModified(2, false);
        QCOMPARE(Region(close), cross);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(bar.get(), &leave);
        QCOMPARE(Region(close), blank);
    }

    // A tab removed under the pointer takes the hover along: the next tab at that place shows
    // no close button until the pointer moves again.
    void removedTabTakesItsHoverAlong()
    {
        ShowBar(3, 500);
        bar->SetTabsClosable(true);
        bar->SetBackgroundColor(BACKGROUND);
        const QRect close = bar->GetCloseRect(2);
        const QImage blank = Region(close);
        MoveMouse(bar.get(), close.center());
        QVERIFY(Region(close) != blank);
        bar->RemoveTab(2);
        bar->InsertTab(-1, QStringLiteral("tab 2"));
        bar->grab();
        QCOMPARE(bar->GetCloseRect(2), close);
        QCOMPARE(Region(close), blank);
    }

    void closeButtonClickRequestsCloseWithoutActivating()
    {
        ShowBar(3, 500);
        bar->SetTabsClosable(true);
        QSignalSpy close(bar.get(), &CustomTabBar::CloseTabRequested);
        QSignalSpy activated(bar.get(), &CustomTabBar::Activated);
        QSignalSpy current(bar.get(), &CustomTabBar::CurrentChanged);

        QTest::mouseClick(bar.get(), Qt::LeftButton, Qt::NoModifier, bar->GetCloseRect(2).center());
        QCOMPARE(close.count(), 1);
        QCOMPARE(close.at(0).at(0).toInt(), 2);
        QCOMPARE(activated.count(), 0);
        QCOMPARE(bar->GetCurrentIndex(), 0);

        QTest::mouseClick(bar.get(), Qt::RightButton, Qt::NoModifier, bar->GetCloseRect(1).center());
        QCOMPARE(close.count(), 1);

        QTest::mouseClick(bar.get(), Qt::LeftButton, Qt::NoModifier, bar->GetTabRect(1).center());
        QCOMPARE(activated.count(), 1);
        QCOMPARE(bar->GetCurrentIndex(), 1);
        QCOMPARE(current.count(), 1);

        // Without close buttons the same spot selects the tab.
        bar->SetTabsClosable(false);
        QTest::mouseClick(bar.get(), Qt::LeftButton, Qt::NoModifier, bar->GetCloseRect(2).center());
        QCOMPARE(close.count(), 1);
        QCOMPARE(bar->GetCurrentIndex(), 2);
    }

    void scrollingMovesOneTabPerStepAndStopsAtTheEnds()
    {
        ShowBar(10, 220);
        QCOMPARE(bar->GetScrollBarValue(), 0);
        QCOMPARE(RightAlignedTab(*bar), -1);

        // Right, one tab at a time, each landing on the right edge.
        bar->BeginScrollingRight();
        QVERIFY(bar->IsScrolling());
        int expected = RightAlignedTab(*bar);
        QVERIFY(expected > 0);
        while (expected < bar->Count() - 1)
        {
            bar->DoScroll();
            QCOMPARE(RightAlignedTab(*bar), ++expected);
        }
        QVERIFY(bar->IsScrolling());
        const int atEnd = bar->GetScrollBarValue();
        bar->DoScroll();
        QVERIFY(!bar->IsScrolling());
        QCOMPARE(bar->GetScrollBarValue(), atEnd);

        // Left again, each step bringing the previous tab to the left edge.
        bar->BeginScrollingLeft();
        int left = bar->TabAt(QPoint(0, 5));
        QCOMPARE(bar->GetTabRect(left).left(), 0);
        while (true)
        {
            bar->DoScroll();
            if (!bar->IsScrolling())
                break;
            QCOMPARE(bar->TabAt(QPoint(0, 5)), --left);
            QCOMPARE(bar->GetTabRect(left).left(), 0);
        }
        QCOMPARE(left, 0);
        QCOMPARE(bar->GetScrollBarValue(), 0);

        // Held at the start, the button stops the timer at once; held elsewhere, the timer goes on.
        bar->BeginScrollingLeft();
        QVERIFY(!bar->IsScrolling());
        bar->BeginScrollingRight();
        const int afterFirstStep = bar->GetScrollBarValue();
        QTRY_VERIFY_WITH_TIMEOUT(bar->GetScrollBarValue() > afterFirstStep, 5000);
        bar->EndScrolling();
        QVERIFY(!bar->IsScrolling());
    }

    void currentTabIsScrolledIntoView()
    {
        ShowBar(10, 220);
        bar->SetCurrentIndex(9, true);
        QCOMPARE(bar->GetTabRect(9).right(), bar->width() - 1);
        bar->SetCurrentIndex(4, true);
        QVERIFY(bar->rect().contains(bar->GetTabRect(4)));
        bar->SetCurrentIndex(0, true);
        QCOMPARE(bar->GetScrollBarValue(), 0);

        // Removing tabs at the end closes the gap that would open on the right.
        bar->SetCurrentIndex(9, true);
        bar->RemoveTab(9);
        QCOMPARE(bar->GetCurrentIndex(), 8);
        QCOMPARE(bar->GetTabRect(8).right(), bar->width() - 1);

        // A single tab wider than the bar starts at 0 or ends at the bar's right edge.
        ShowBar(0, 60);
        bar->InsertTab(0, QStringLiteral("a label far wider than this little bar"));
        bar->ScrollToCurrent();
        QVERIFY(bar->GetScrollBarValue() >= 0);
        QVERIFY(bar->GetTabRect(0).left() == 0 || bar->GetTabRect(0).right() == bar->width() - 1);
    }

    void removingTabsKeepsTheCurrentTab()
    {
        ShowBar(4, 600);
        bar->SetCurrentIndex(2, true);
        QSignalSpy current(bar.get(), &CustomTabBar::CurrentChanged);
        bar->RemoveTab(0);
        QCOMPARE(bar->GetTabText(bar->GetCurrentIndex()), QStringLiteral("tab 2"));
        bar->RemoveTab(bar->GetCurrentIndex());
        QCOMPARE(bar->GetTabText(bar->GetCurrentIndex()), QStringLiteral("tab 3"));
        bar->RemoveTab(bar->GetCurrentIndex());
        QCOMPARE(bar->GetTabText(bar->GetCurrentIndex()), QStringLiteral("tab 1"));
        QCOMPARE(current.count(), 1);
        bar->RemoveTab(5);
        QCOMPARE(bar->Count(), 1);
        bar->RemoveTab(0);
        QCOMPARE(bar->GetCurrentIndex(), -1);
        bar->InsertTab(0, QStringLiteral("again"));
        QCOMPARE(bar->GetCurrentIndex(), 0);
    }

    void scrollValueSetWhileHiddenAppliesAtTheNextResize()
    {
        ShowBar(10, 220);
        bar->SetCurrentIndex(4, true);
        bar->SetScrollBarValue(0);
        const int value = bar->GetTabRect(4).left() - bar->GetTabRect(0).left();
        bar->hide();
        bar->SetScrollBarValue(value);
        QCOMPARE(bar->GetScrollBarValue(), 0);
        bar->show();
        bar->resize(230, bar->height());
        QTRY_COMPARE(bar->GetScrollBarValue(), value);
        QCOMPARE(bar->GetTabRect(4).left(), 0);
    }

    void droppedTabRequestsAMoveToTheTabUnderThePointer()
    {
        ShowBar(4, 600);
        QSignalSpy move(bar.get(), &CustomTabBar::MoveTabRequested);
        std::unique_ptr<QMimeData> own(DragSimulation::TabMimeData(3, 0));
        DragSimulation::DragTo(bar.get(), bar->GetTabRect(2).center(), own.get(), true);
        QCOMPARE(move.count(), 1);
        QCOMPARE(move.at(0), (QList<QVariant>{3, 0, 3, 2}));

        // Past the last tab: the last index for a tab of this bar, one past it for another bar's.
        const QPoint end(bar->GetTabRect(3).right() + 20, 10);
        DragSimulation::DragTo(bar.get(), end, own.get(), false);
        QCOMPARE(bar->GetDropZoneRect().left(), bar->GetTabRect(3).right() + 1);
        QCOMPARE(bar->GetDropZoneRect().right(), bar->width() - 1);
        QDropEvent drop(end, Qt::MoveAction, own.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(bar.get(), &drop);
        QCOMPARE(move.at(1), (QList<QVariant>{3, 0, 3, 3}));
        std::unique_ptr<QMimeData> foreign(DragSimulation::TabMimeData(7, 5));
        DragSimulation::DragTo(bar.get(), end, foreign.get(), true);
        QCOMPARE(move.at(2), (QList<QVariant>{7, 5, 3, 4}));

        // A tab over itself shows no zone.
        std::unique_ptr<QMimeData> second(DragSimulation::TabMimeData(3, 1));
        DragSimulation::DragTo(bar.get(), bar->GetTabRect(1).center(), second.get(), false);
        QVERIFY(!bar->GetDropZoneRect().isValid());
        DragSimulation::DragTo(bar.get(), bar->GetTabRect(0).center(), second.get(), false);
        QCOMPARE(bar->GetDropZoneRect(), bar->GetTabRect(0));
    }

    void malformedOrForeignDragsAreNotTabDrags()
    {
        ShowBar(3, 600);
        QSignalSpy move(bar.get(), &CustomTabBar::MoveTabRequested);
        QMimeData malformed;
        malformed.setData(MIME_TYPE, QByteArray("abc"));
        DragSimulation::DragTo(bar.get(), bar->GetTabRect(2).center(), &malformed, true);
        QMimeData text;
        text.setText(QStringLiteral("plain"));
        DragSimulation::DragTo(bar.get(), bar->GetTabRect(2).center(), &text, false);
        QVERIFY(!bar->GetDropZoneRect().isValid());
        QDropEvent drop(bar->GetTabRect(2).center(), Qt::MoveAction, &text, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(bar.get(), &drop);
        QVERIFY(!drop.isAccepted());
        QCOMPARE(move.count(), 0);

        // A bar whose tabs are locked takes no drops at all.
        bar->SetTabsMoveable(false);
        std::unique_ptr<QMimeData> own(DragSimulation::TabMimeData(3, 0));
        DragSimulation::DragTo(bar.get(), bar->GetTabRect(2).center(), own.get(), true);
        QCOMPARE(move.count(), 0);
    }

    void droppedFilesOpenAtTheTabUnderThePointerInOrder()
    {
        ShowBar(3, 600);
        QTemporaryDir dir;
        const QString a = dir.filePath(QStringLiteral("a.mel"));
        const QString b = dir.filePath(QStringLiteral("b.py"));
        QVERIFY(TestFiles::Write(a, QByteArray()) && TestFiles::Write(b, QByteArray()));
        QSignalSpy open(bar.get(), &CustomTabBar::OpenFileRequested);
        std::unique_ptr<QMimeData> files(
            DragSimulation::UrlMimeData({a, dir.filePath(QStringLiteral("gone.py")), dir.path(), b}));
        DragSimulation::DragTo(bar.get(), bar->GetTabRect(1).center(), files.get(), false);
        QCOMPARE(bar->GetDropZoneRect(), bar->GetTabRect(1));
        QDropEvent drop(bar->GetTabRect(1).center(), Qt::CopyAction, files.get(), Qt::LeftButton,
                        Qt::NoModifier);
        QCoreApplication::sendEvent(bar.get(), &drop);
        // Each file opens at the same index: the last first, so that they end in URL order.
        QCOMPARE(open.count(), 2);
        QCOMPARE(open.at(0), (QList<QVariant>{1, b}));
        QCOMPARE(open.at(1), (QList<QVariant>{1, a}));

        DragSimulation::DragTo(bar.get(), QPoint(bar->width() - 3, 10), files.get(), true);
        QCOMPARE(open.count(), 4);
        QCOMPARE(open.at(3), (QList<QVariant>{3, a}));
    }

    void draggingNearAnEdgeScrolls()
    {
        ShowBar(10, 220);
        std::unique_ptr<QMimeData> foreign(DragSimulation::TabMimeData(7, 0));
        DragSimulation::DragTo(bar.get(), QPoint(bar->width() - 2, 10), foreign.get(), false);
        QVERIFY(bar->IsScrolling());
        QVERIFY(bar->GetScrollBarValue() > 0);
        QDragMoveEvent middle(QPoint(bar->width() / 2, 10), Qt::MoveAction, foreign.get(), Qt::LeftButton,
                              Qt::NoModifier);
        QCoreApplication::sendEvent(bar.get(), &middle);
        QVERIFY(!bar->IsScrolling());
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(bar.get(), &leave);
    }

    void dragStartedInTheLeftEdgeScrollsOnlyFurtherLeft()
    {
        ShowBar(10, 300);
        bar->SetCurrentIndex(9, true);
        QVERIFY(bar->GetScrollBarValue() > 0);
        const QPoint press(12, 10);
        QVERIFY(press.x() <= 0.06 * bar->width());
        QTest::mousePress(bar.get(), Qt::LeftButton, Qt::NoModifier, press);
        const int value = bar->GetScrollBarValue();

        std::unique_ptr<QMimeData> own(DragSimulation::TabMimeData(3, bar->GetCurrentIndex()));
        DragSimulation::DragTo(bar.get(), press, own.get(), false);
        QVERIFY(!bar->IsScrolling());
        QCOMPARE(bar->GetScrollBarValue(), value);
        QDragMoveEvent further(QPoint(4, 10), Qt::MoveAction, own.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(bar.get(), &further);
        QVERIFY(bar->IsScrolling());
        QVERIFY(bar->GetScrollBarValue() < value);
        QDropEvent drop(QPoint(4, 10), Qt::MoveAction, own.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(bar.get(), &drop);
        QVERIFY(!bar->IsScrolling());
        QTest::mouseRelease(bar.get(), Qt::LeftButton, Qt::NoModifier, QPoint(4, 10));
    }
};

QTEST_MAIN(TestCustomTabBar)
#include "tst_CustomTabBar.moc"
