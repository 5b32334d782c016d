#include "EditorWindow.h"
#include "HostFixture.h"
#include "ModalAnswer.h"
#include "TestFiles.h"
#include "editor/CodeEditor.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "widgets/ColorLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/InsertPathDialog.h"
#include "widgets/OverlayWidget.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtGui/QEnterEvent>
#include <QtGui/QPainter>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>

#include <memory>

// The small widgets, which read only the display scale of the settings; and the insert path
// dialog on its own and from the editor's Insert Path, with the file chooser it opens.
class TestWidgets : public QObject
{
    Q_OBJECT

private:
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

    QString Touch(const QString& relative)
    {
        const QString path = QDir(root->path()).filePath(relative);
        return TestFiles::Write(path, QByteArray()) ? path : QString();
    }

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        QVERIFY(fixture->LoadPlugin() == MStatus::kSuccess);
        // The fixture starts from the default settings: scale 1, absolute paths, forward slashes.
        root = std::make_unique<QTemporaryDir>();
    }

    void cleanup()
    {
        root.reset();
        fixture.reset();
    }

    // A scale of zero is no scale. The icon is drawn as one flat shape: its own colour, the tint, or
    // white when checked or hovered.
    void flatButtonSizeAndFlatIcon()
    {
        const QList<QPair<double, QSize>> scales{
            {1.0, QSize(18, 25)}, {1.5, QSize(27, 37)}, {0.0, QSize(18, 25)}};
        for (const auto& [scale, expected] : scales)
        {
            Settings::customScaleValue = 1.0;
            FlatButton button;
            QCOMPARE(button.size(), QSize(30, 30));
            Settings::customScaleValue = scale;
            button.SetSize(QSize(18, 25));
            QCOMPARE(button.size(), expected);
        }
        FlatButton button;
        button.SetImage(QImage(QStringLiteral(":/bq2_icons/no_such_icon.png")), 4);
        QVERIFY(button.pixmap().isNull());
        // A 24 by 24 button showing a 20 by 20 image: an opaque blue square on a transparent ground.
        QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter(&image).fillRect(QRect(5, 5, 10, 10), Qt::blue);
        button.SetSize(24, 24);
        button.SetImage(image, 4);
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

    void colorLabelAndOverlay()
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

        // The overlay veils its parent; without one it paints nothing.
        window.resize(40, 30);
        OverlayWidget overlay(&window);
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

    void preview_data()
    {
        QTest::addColumn<QString>("buffer");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("absolute");
        QTest::addColumn<bool>("forwardSlashes");
        QTest::addColumn<bool>("escape");
        QTest::addColumn<QString>("expected");

        // %R stands for the temporary root folder.
        const QString buffer = QStringLiteral("%R/project/scripts/tool.py");
        const QString icon = QStringLiteral("%R/project/icons/a.png");
        QTest::newRow("absolute") << buffer << icon << true << true << false << icon;
        QTest::newRow("relative, up one folder")
            << buffer << icon << false << true << false << "../icons/a.png";
        QTest::newRow("relative, same folder")
            << buffer << QStringLiteral("%R/project/scripts/b.py") << false << true << false << "b.py";
        QTest::newRow("relative, backslashes")
            << buffer << icon << false << false << false << "..\\icons\\a.png";
        QTest::newRow("relative, escaped backslashes")
            << buffer << icon << false << false << true << "..\\\\icons\\\\a.png";
        QTest::newRow("escape without backslashes changes nothing")
            << buffer << icon << false << true << true << "../icons/a.png";
        QTest::newRow("relative text is read against the buffer's folder")
            << buffer << "../data/x.json" << true << true << false << "%R/project/data/x.json";
        QTest::newRow("relative text, relative form")
            << buffer << "sub/../y.txt" << false << true << false << "y.txt";
        QTest::newRow("buffer folder gone from disk")
            << QStringLiteral("%R/gone/deeper/t.mel") << "%R/other/z.mel" << false << true << false
            << "../../other/z.mel";
        QTest::newRow("empty") << buffer << QString() << true << false << true << QString();
        // A buffer without any path reads relative paths from the user scripts folder (%S).
        QTest::newRow("no buffer path")
            << QString() << "%S/sub/f.mel" << false << true << false << "sub/f.mel";
    }

    void preview()
    {
        QFETCH(QString, buffer);
        QFETCH(QString, typed);
        QFETCH(bool, absolute);
        QFETCH(bool, forwardSlashes);
        QFETCH(bool, escape);
        QFETCH(QString, expected);
        const QString rootPath = root->path();
        Settings::insertPathForwardSlashes = forwardSlashes;
        Settings::insertPathEscapeBackslashes = escape;
        QDir().mkpath(rootPath + QStringLiteral("/project/scripts"));

        InsertPathDialog dialog(buffer.replace(QStringLiteral("%R"), rootPath));
        QTest::mouseClick(absolute ? dialog.GetAbsoluteRadio() : dialog.GetRelativeRadio(), Qt::LeftButton);
        QTest::keyClicks(dialog.GetPathEdit(),
                         typed.replace(QStringLiteral("%R"), rootPath)
                             .replace(QStringLiteral("%S"), MayaUtil::GetUserScriptsDirectory()));
        QCOMPARE(dialog.GetPath(), expected.replace(QStringLiteral("%R"), rootPath));
        QVERIFY(dialog.GetPreviewEdit()->isReadOnly());
    }

    // The chooser comes up by itself; a file picked there lands in the path edit, a cancel
    // leaves the dialog open as it was.
    void chooserOpensByItself()
    {
        const QString picked = Touch(QStringLiteral("lib/picked.py"));
        InsertPathDialog dialog(Touch(QStringLiteral("lib/buffer.py")));
        dialog.GetPathEdit()->setText(QStringLiteral("kept"));
        dialog.show();
        QString chooserFolder;
        const auto readChooser = [&]
        {
            WhenModal<QFileDialog>(&dialog,
                                   [&](QFileDialog* chooser)
                                   {
                                       chooserFolder = chooser->directory().absolutePath();
                                       chooser->reject();
                                   });
        };
        readChooser();
        QTRY_VERIFY_WITH_TIMEOUT(!chooserFolder.isEmpty(), 30000);
        // "kept" names no file beside the buffer: the chooser does not start there.
        QVERIFY(chooserFolder != QFileInfo(picked).absolutePath());
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.GetPathEdit()->text(), QStringLiteral("kept"));

        // With a file named in the edit, the browse button's chooser starts beside it.
        dialog.GetPathEdit()->setText(picked);
        chooserFolder.clear();
        readChooser();
        QTest::mouseClick(dialog.GetBrowseButton(), Qt::LeftButton);
        QCOMPARE(chooserFolder, QFileInfo(picked).absolutePath());
        QCOMPARE(dialog.GetPathEdit()->text(), picked);
    }

    void insertsAtTheCursor_data()
    {
        QTest::addColumn<bool>("absolute");
        QTest::addColumn<bool>("accept");
        QTest::newRow("absolute") << true << true;
        QTest::newRow("relative") << false << true;
        QTest::newRow("relative, cancelled") << false << false;
    }

    // From the editor: the dialog reads the buffer's own folder, and the path goes in at the cursor;
    // a cancel inserts nothing and keeps the stored form.
    void insertsAtTheCursor()
    {
        QFETCH(bool, absolute);
        QFETCH(bool, accept);
        const QString icon = Touch(QStringLiteral("icons/i.png"));
        BrindletEditor* editor = EditorWindow::Open(*fixture, QSize(1000, 700), true);
        QVERIFY(editor);
        CodeEditor* codeEditor = editor->GetActiveCodeEditor();
        codeEditor->setFocus();
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(codeEditor));
        codeEditor->SetText(QStringLiteral("source \"\";"));
        codeEditor->SetCursorPosition(8);
        // The dialog opens on the form stored last; here always the other one than the row's.
        Settings::insertPathAbsolute = !absolute;
        bool openedAbsolute = absolute;

        WhenModal<QFileDialog>(
            editor,
            [&](QFileDialog* chooser)
            {
                chooser->selectFile(icon);
                static_cast<QDialog*>(chooser)->accept();
                WhenModal<InsertPathDialog>(
                    editor,
                    [&](InsertPathDialog* dialog)
                    {
                        openedAbsolute = dialog->GetAbsoluteRadio()->isChecked();
                        QTest::mouseClick(absolute ? dialog->GetAbsoluteRadio() : dialog->GetRelativeRadio(),
                                          Qt::LeftButton);
                        QTest::mouseClick(accept ? dialog->GetOkButton() : dialog->GetCancelButton(),
                                          Qt::LeftButton);
                    });
            });
        editor->ShowInsertPathDialog();

        QCOMPARE(openedAbsolute, !absolute);
        QCOMPARE(Settings::insertPathAbsolute, accept ? absolute : !absolute);
        // The text around the cursor is kept; what went in leads from the buffer's folder to the file.
        const QString text = codeEditor->GetText();
        QCOMPARE(text.left(8) + text.right(2), QStringLiteral("source \"\";"));
        const QString path = text.mid(8, text.size() - 10);
        QCOMPARE(path.isEmpty(), !accept);
        if (!accept)
            return;
        QCOMPARE(QFileInfo(path).isAbsolute(), absolute);
        const QString bufferDir = QFileInfo(codeEditor->GetFilePath()).absolutePath();
        QCOMPARE(QDir::cleanPath(QDir(bufferDir).absoluteFilePath(path)), icon);
    }

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<QTemporaryDir> root;
};

QTEST_MAIN(TestWidgets)
#include "tst_Widgets.moc"
