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
    // A 24 by 24 button showing a 20 by 20 opaque blue disc on a transparent ground.
    static void SetDisc(FlatButton& button)
    {
        QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::blue);
        painter.drawEllipse(QRect(0, 0, 20, 20));
        painter.end();
        button.SetSize(24, 24);
        button.SetImage(image, 4);
    }

    static QColor CentreColor(const QLabel& label)
    {
        const QImage image = label.pixmap().toImage();
        return image.pixelColor(image.width() / 2, image.height() / 2);
    }

    static void Hover(QWidget* widget, bool enter)
    {
        QEnterEvent enterEvent(QPointF(5, 5), QPointF(5, 5), widget->mapToGlobal(QPointF(5, 5)));
        QEvent leaveEvent(QEvent::Leave);
        QApplication::sendEvent(widget, enter ? static_cast<QEvent*>(&enterEvent) : &leaveEvent);
    }

    QTemporaryDir appDir;

private slots:
    void initTestCase()
    {
        qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
        Settings::ResetToDefaults();
    }

    void init() { Settings::customScaleValue = 1.0; }

    void flatButtonSizeFollowsDisplayScale_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<QSize>("expected");
        QTest::newRow("none") << 1.0 << QSize(18, 25);
        QTest::newRow("one and a half") << 1.5 << QSize(27, 37);
        QTest::newRow("zero is no scale") << 0.0 << QSize(18, 25);
    }

    void flatButtonSizeFollowsDisplayScale()
    {
        QFETCH(double, scale);
        QFETCH(QSize, expected);
        FlatButton button;
        QCOMPARE(button.size(), QSize(30, 30));
        Settings::customScaleValue = scale;
        button.SetSize(QSize(18, 25));
        QCOMPARE(button.size(), expected);
    }

    // The icon is drawn as one flat shape: its own colour, the tint, or white when checked or hovered.
    void flatButtonPaintsIconFlat()
    {
        FlatButton button;
        button.SetImage(QImage(QStringLiteral(":/bq2_icons/no_such_icon.png")), 4);
        QVERIFY(button.pixmap().isNull());
        SetDisc(button);
        QCOMPARE(button.pixmap().size(), QSize(20, 20));
        QCOMPARE(CentreColor(button), QColor(Qt::blue));
        QCOMPARE(button.pixmap().toImage().pixelColor(0, 0).alpha(), 0);

        button.SetColor(QColor(10, 20, 30), Qt::red);
        QCOMPARE(CentreColor(button), QColor(Qt::red));
        QCOMPARE(button.pixmap().toImage().pixelColor(0, 0).alpha(), 0);
        QVERIFY(button.styleSheet().contains(QStringLiteral("background-color : #0a141e;")));
        // An invalid background falls back to the border colour.
        button.SetColor(QColor(), QColor());
        QCOMPARE(button.GetColor(), button.palette().window().color());
        QCOMPARE(CentreColor(button), QColor(Qt::blue));

        button.SetChecked(true);
        QVERIFY(button.IsChecked());
        QCOMPARE(CentreColor(button), QColor(Qt::white));
        button.SetChecked(false);
        QCOMPARE(CentreColor(button), QColor(Qt::blue));

        button.SetMouseOverColor(Qt::yellow);
        Hover(&button, true);
        QCOMPARE(CentreColor(button), QColor(Qt::yellow));
        Hover(&button, false);
        QCOMPARE(CentreColor(button), QColor(Qt::blue));
        button.SetMouseOverEnabled(false);
        Hover(&button, true);
        QCOMPARE(CentreColor(button), QColor(Qt::blue));

        button.SetBorderWidth(2);
        QVERIFY(button.styleSheet().contains(QStringLiteral("border-width: 2;")));
    }

    void flatButtonClicksOnlyWhenReleasedOver()
    {
        FlatButton button;
        button.show();
        QVERIFY(QTest::qWaitForWindowExposed(&button));
        QSignalSpy pressed(&button, SIGNAL(pressed()));
        QSignalSpy released(&button, SIGNAL(released()));
        QSignalSpy clicked(&button, SIGNAL(clicked()));
        const QString down = QColor(30, 30, 30).name();

        QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(10, 10));
        QVERIFY(button.styleSheet().contains(down));
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(10, 10));
        QVERIFY(!button.styleSheet().contains(down));
        QCOMPARE(clicked.count(), 1);

        QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(10, 10));
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(60, 10));
        QTest::mouseClick(&button, Qt::RightButton, {}, QPoint(10, 10));
        QCOMPARE(pressed.count(), 2);
        QCOMPARE(released.count(), 2);
        QCOMPARE(clicked.count(), 1);

        button.SetButtonDownEnabled(false);
        QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(10, 10));
        QVERIFY(!button.styleSheet().contains(down));
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(10, 10));
        QCOMPARE(clicked.count(), 2);
    }

    void colorLabelShowsItsColour()
    {
        QWidget window;
        auto* label = new ColorLabel(&window);
        label->setFixedSize(71, 16);
        label->SetColor(QColor(12, 200, 40));
        QCOMPARE(label->pixmap().size(), QSize(71, 16));
        QCOMPARE(label->pixmap().toImage().pixelColor(70, 15), QColor(12, 200, 40));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        label->setFixedSize(30, 10);
        QCOMPARE(label->pixmap().size(), QSize(30, 10));
        QSignalSpy clicked(label, SIGNAL(Clicked()));
        QTest::mouseClick(label, Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(clicked.count(), 1);
        // No width: no picture, rather than a stale one.
        label->setFixedSize(0, 10);
        QCOMPARE(label->width(), 0);
        QVERIFY(label->pixmap().isNull());
    }

    void overlayCoversItsParent()
    {
        QWidget parent;
        parent.resize(40, 30);
        OverlayWidget overlay(&parent);
        OverlayWidget orphan;
        QImage image(40, 30, QImage::Format_ARGB32);
        for (OverlayWidget* widget : {&overlay, &orphan})
        {
            widget->resize(40, 30);
            image.fill(Qt::transparent);
            widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
            QCOMPARE(image.pixelColor(39, 29),
                     widget == &overlay ? QColor(255, 255, 255, 50) : QColor(0, 0, 0, 0));
        }
    }
};

QTEST_MAIN(TestSmallWidgets)
#include "tst_SmallWidgets.moc"
