#include "settings/Settings.h"
#include "widgets/ColorLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/OverlayWidget.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QEnterEvent>
#include <QtGui/QPainter>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

// The small widgets read nothing from the host; only the display scale of the settings.
class TestSmallWidgets : public QObject
{
    Q_OBJECT

private:
    // A 20 by 20 icon: an opaque blue disc on a transparent ground.
    static QImage DiscImage()
    {
        QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::blue);
        painter.drawEllipse(QRect(0, 0, 20, 20));
        return image;
    }

    static QColor CentreColor(const QLabel& label)
    {
        const QImage image = label.pixmap().toImage();
        return image.pixelColor(image.width() / 2, image.height() / 2);
    }

    static void SendEnter(QWidget* widget)
    {
        QEnterEvent event(QPointF(5, 5), QPointF(5, 5), widget->mapToGlobal(QPointF(5, 5)));
        QApplication::sendEvent(widget, &event);
    }

    static void SendLeave(QWidget* widget)
    {
        QEvent event(QEvent::Leave);
        QApplication::sendEvent(widget, &event);
    }

    QTemporaryDir appDir;

private slots:
    void initTestCase()
    {
        qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
        Settings::ResetToDefaults();
    }

    void init() { Settings::customScaleValue = 1.0; }

    void flatButtonWithoutImageKeepsSizeAndBackground()
    {
        FlatButton button;
        button.show();
        QVERIFY(QTest::qWaitForWindowExposed(&button));
        QVERIFY(button.pixmap().isNull());
        QCOMPARE(button.size(), QSize(30, 30));
        QCOMPARE(button.alignment(), Qt::AlignCenter);
        const QColor background = button.palette().window().color();
        QCOMPARE(button.GetColor(), background);
        QVERIFY(
            button.styleSheet().contains(QStringLiteral("background-color : %1;").arg(background.name())));

        button.SetImage(QImage(QStringLiteral(":/bq2_icons/no_such_icon.png")), 4);
        QVERIFY(button.pixmap().isNull());
        QCOMPARE(button.size(), QSize(30, 30));
    }

    void flatButtonSizeFollowsDisplayScale()
    {
        FlatButton button;
        button.SetSize(18, 18);
        QCOMPARE(button.size(), QSize(18, 18));
        Settings::customScaleValue = 1.5;
        button.SetSize(QSize(18, 25));
        QCOMPARE(button.size(), QSize(27, 37));
        Settings::customScaleValue = 0.0; // not a scale: sizes stay as given
        button.SetSize(18, 18);
        QCOMPARE(button.size(), QSize(18, 18));
    }

    void flatButtonPaintsIconFlat()
    {
        FlatButton button;
        button.SetSize(24, 24);
        button.SetImage(DiscImage(), 4);
        QVERIFY(!button.pixmap().isNull());
        QCOMPARE(button.pixmap().size(), QSize(20, 20));
        QCOMPARE(CentreColor(button), QColor(Qt::blue));
        QCOMPARE(button.pixmap().toImage().pixelColor(0, 0).alpha(), 0);

        button.SetColor(QColor(10, 20, 30), Qt::red);
        QCOMPARE(CentreColor(button), QColor(Qt::red));
        QCOMPARE(button.pixmap().toImage().pixelColor(0, 0).alpha(), 0);
        QVERIFY(button.styleSheet().contains(QStringLiteral("#0a141e")));
        QCOMPARE(button.GetColor(), QColor(10, 20, 30));

        // An invalid background falls back to the border colour.
        button.SetColor(QColor(), QColor());
        QCOMPARE(button.GetColor(), button.palette().window().color());
        QCOMPARE(CentreColor(button), QColor(Qt::blue));
    }

    void flatButtonCheckedAndHoveredShowWhite()
    {
        FlatButton button;
        button.SetSize(24, 24);
        button.SetImage(DiscImage(), 4);
        const qint64 before = button.pixmap().cacheKey();
        button.SetChecked(false);
        QCOMPARE(button.pixmap().cacheKey(), before);
        button.SetChecked(true);
        QVERIFY(button.IsChecked());
        QVERIFY(button.pixmap().cacheKey() != before);
        QCOMPARE(CentreColor(button), QColor(Qt::white));
        const qint64 checkedKey = button.pixmap().cacheKey();
        button.SetChecked(true);
        QCOMPARE(button.pixmap().cacheKey(), checkedKey);
        button.SetChecked(false);
        QCOMPARE(CentreColor(button), QColor(Qt::blue));

        SendEnter(&button);
        QCOMPARE(CentreColor(button), QColor(Qt::white));
        SendLeave(&button);
        QCOMPARE(CentreColor(button), QColor(Qt::blue));

        button.SetMouseOverColor(Qt::yellow);
        SendEnter(&button);
        QCOMPARE(CentreColor(button), QColor(Qt::yellow));
        SendLeave(&button);

        button.SetMouseOverEnabled(false);
        SendEnter(&button);
        QCOMPARE(CentreColor(button), QColor(Qt::blue));
    }

    void flatButtonClicksOnlyWhenReleasedOver()
    {
        FlatButton button;
        button.show();
        QVERIFY(QTest::qWaitForWindowExposed(&button));
        QSignalSpy pressed(&button, SIGNAL(pressed()));
        QSignalSpy released(&button, SIGNAL(released()));
        QSignalSpy clicked(&button, SIGNAL(clicked()));

        QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(10, 10));
        QCOMPARE(pressed.count(), 1);
        QVERIFY(button.styleSheet().contains(QColor(30, 30, 30).name()));
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(10, 10));
        QCOMPARE(released.count(), 1);
        QCOMPARE(clicked.count(), 1);
        QVERIFY(!button.styleSheet().contains(QColor(30, 30, 30).name()));

        QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(10, 10));
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(60, 10));
        QCOMPARE(pressed.count(), 2);
        QCOMPARE(released.count(), 2);
        QCOMPARE(clicked.count(), 1);

        QTest::mouseClick(&button, Qt::RightButton, {}, QPoint(10, 10));
        QCOMPARE(pressed.count(), 2);
        QCOMPARE(clicked.count(), 1);

        button.SetButtonDownEnabled(false);
        QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(10, 10));
        QVERIFY(!button.styleSheet().contains(QColor(30, 30, 30).name()));
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(10, 10));
        QCOMPARE(clicked.count(), 2);
    }

    void flatButtonBorder()
    {
        FlatButton button;
        button.SetBorderWidth(2);
        QVERIFY(button.styleSheet().contains(QStringLiteral("border-width: 2;")));
        QVERIFY(button.styleSheet().contains(
            QStringLiteral("border-color: %1;").arg(button.palette().window().color().name())));
    }

    void colorLabelShowsItsColour()
    {
        ColorLabel label;
        label.setFixedSize(71, 16);
        QVERIFY(!label.GetColor().isValid());
        label.SetColor(QColor(12, 200, 40));
        QCOMPARE(label.GetColor(), QColor(12, 200, 40));
        QCOMPARE(label.pixmap().size(), QSize(71, 16));
        QCOMPARE(label.pixmap().toImage().pixelColor(70, 15), QColor(12, 200, 40));

        label.show();
        QVERIFY(QTest::qWaitForWindowExposed(&label));
        label.setFixedSize(30, 10);
        QCOMPARE(label.pixmap().size(), QSize(30, 10));
        QCOMPARE(label.pixmap().toImage().pixelColor(0, 0), QColor(12, 200, 40));

        QSignalSpy clicked(&label, SIGNAL(Clicked()));
        QTest::mouseClick(&label, Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(clicked.count(), 1);
    }

    void overlayCoversItsParent()
    {
        QWidget parent;
        parent.resize(40, 30);
        OverlayWidget overlay(&parent);
        overlay.resize(40, 30);
        QImage image(40, 30, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        overlay.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        const QColor painted = image.pixelColor(39, 29);
        QCOMPARE(painted.alpha(), 50);
        QCOMPARE(painted.red(), 255);
        QCOMPARE(painted.blue(), 255);

        OverlayWidget orphan;
        orphan.resize(40, 30);
        image.fill(Qt::transparent);
        orphan.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
        QCOMPARE(image.pixelColor(20, 15).alpha(), 0);
    }
};

QTEST_MAIN(TestSmallWidgets)
#include "tst_SmallWidgets.moc"
