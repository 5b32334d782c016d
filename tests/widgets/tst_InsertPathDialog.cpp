#include "HostFixture.h"
#include "editor/CodeEditor.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "widgets/InsertPathDialog.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>

#include <functional>
#include <memory>

namespace
{
// Waits, inside a modal loop, for a modal widget of type T to come up, and hands it to `use`;
// a loaded machine may take seconds to build a file chooser.
template <typename T> void WhenModal(QObject* context, const std::function<void(T*)>& use, int tries = 1500)
{
    QTimer::singleShot(20, context,
                       [context, use, tries]()
                       {
                           if (T* widget = qobject_cast<T*>(QApplication::activeModalWidget()))
                               use(widget);
                           else if (tries > 0)
                               WhenModal<T>(context, use, tries - 1);
                       });
}
} // namespace

// The dialog on its own and from the editor's Insert Path, with the file chooser it opens.
class TestInsertPathDialog : public QObject
{
    Q_OBJECT

private:
    QString Touch(const QString& relative)
    {
        const QString path = QDir(root->path()).filePath(relative);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        return path;
    }

    BrindletEditor* OpenEditor()
    {
        BrindletEditor* editor = fixture->OpenEditor();
        if (!editor)
            return nullptr;
        QWidget* window = editor->window();
        window->resize(1000, 700);
        window->show();
        window->activateWindow();
        if (!QTest::qWaitForWindowActive(window))
            return nullptr;
        return editor;
    }

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        QVERIFY(fixture->LoadPlugin() == MStatus::kSuccess);
        root = std::make_unique<QTemporaryDir>();
        Settings::insertPathAbsolute = true;
        Settings::insertPathForwardSlashes = true;
        Settings::insertPathEscapeBackslashes = false;
    }

    void cleanup()
    {
        root.reset();
        fixture.reset();
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
        QTest::newRow("absolute") << buffer << QStringLiteral("%R/project/icons/a.png") << true << true
                                  << false << QStringLiteral("%R/project/icons/a.png");
        QTest::newRow("relative, up one folder")
            << buffer << QStringLiteral("%R/project/icons/a.png") << false << true << false
            << QStringLiteral("../icons/a.png");
        QTest::newRow("relative, same folder") << buffer << QStringLiteral("%R/project/scripts/b.py") << false
                                               << true << false << QStringLiteral("b.py");
        QTest::newRow("relative, backslashes") << buffer << QStringLiteral("%R/project/icons/a.png") << false
                                               << false << false << QStringLiteral("..\\icons\\a.png");
        QTest::newRow("relative, escaped backslashes")
            << buffer << QStringLiteral("%R/project/icons/a.png") << false << false << true
            << QStringLiteral("..\\\\icons\\\\a.png");
        QTest::newRow("escape without backslashes changes nothing")
            << buffer << QStringLiteral("%R/project/icons/a.png") << false << true << true
            << QStringLiteral("../icons/a.png");
        QTest::newRow("relative text is read against the buffer's folder")
            << buffer << QStringLiteral("../data/x.json") << true << true << false
            << QStringLiteral("%R/project/data/x.json");
        QTest::newRow("relative text, relative form")
            << buffer << QStringLiteral("sub/../y.txt") << false << true << false << QStringLiteral("y.txt");
        QTest::newRow("buffer folder gone from disk")
            << QStringLiteral("%R/gone/deeper/t.mel") << QStringLiteral("%R/other/z.mel") << false << true
            << false << QStringLiteral("../../other/z.mel");
        QTest::newRow("empty") << buffer << QString() << true << false << true << QString();
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
        QVERIFY(!dialog.findChild<QCheckBox*>() || !dialog.findChild<QCheckBox*>()->isVisibleTo(&dialog));
        QTest::mouseClick(absolute ? dialog.GetAbsoluteRadio() : dialog.GetRelativeRadio(), Qt::LeftButton);
        QTest::keyClicks(dialog.GetPathEdit(), typed.replace(QStringLiteral("%R"), rootPath));
        if (!forwardSlashes)
            expected.replace(QStringLiteral("%R"),
                             QString(rootPath).replace(QLatin1Char('/'), escape ? QStringLiteral("\\\\")
                                                                                : QStringLiteral("\\")));
        QCOMPARE(dialog.GetPath(), expected.replace(QStringLiteral("%R"), rootPath));
        QCOMPARE(dialog.GetPreviewEdit()->text(), dialog.GetPath());
        QVERIFY(dialog.GetPreviewEdit()->isReadOnly());
    }

    void startsWithTheStoredForm()
    {
        Settings::insertPathAbsolute = false;
        InsertPathDialog relative(root->path() + QStringLiteral("/a.py"));
        QVERIFY(relative.GetRelativeRadio()->isChecked());
        Settings::insertPathAbsolute = true;
        InsertPathDialog absolute(root->path() + QStringLiteral("/a.py"));
        QVERIFY(absolute.GetAbsoluteRadio()->isChecked());
        QCOMPARE(absolute.windowTitle(), QStringLiteral("Insert Path"));
        QCOMPARE(absolute.GetBrowseButton()->size(), QSize(36, 20));
    }

    void bufferWithoutAnyPathStartsAtTheUserScripts()
    {
        InsertPathDialog dialog{QString()};
        dialog.GetRelativeRadio()->setChecked(true);
        const QString scripts = MayaUtil::GetUserScriptsDirectory();
        QVERIFY(!scripts.isEmpty());
        dialog.GetPathEdit()->setText(QDir(scripts).filePath(QStringLiteral("sub/f.mel")));
        QCOMPARE(dialog.GetPath(), QStringLiteral("sub/f.mel"));
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
        WhenModal<QFileDialog>(&dialog,
                               [&](QFileDialog* chooser)
                               {
                                   chooserFolder = chooser->directory().absolutePath();
                                   chooser->reject();
                               });
        QTRY_VERIFY_WITH_TIMEOUT(!chooserFolder.isEmpty(), 30000);
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.GetPathEdit()->text(), QStringLiteral("kept"));

        WhenModal<QFileDialog>(&dialog,
                               [&](QFileDialog* chooser)
                               {
                                   chooser->selectFile(picked);
                                   static_cast<QDialog*>(chooser)->accept();
                               });
        QTest::mouseClick(dialog.GetBrowseButton(), Qt::LeftButton);
        QCOMPARE(dialog.GetPathEdit()->text(), picked);

        // The next chooser starts in the picked file's folder.
        WhenModal<QFileDialog>(&dialog,
                               [&](QFileDialog* chooser)
                               {
                                   chooserFolder = chooser->directory().absolutePath();
                                   chooser->reject();
                               });
        dialog.ShowOpenFileDialog();
        QCOMPARE(chooserFolder, QFileInfo(picked).absolutePath());
    }

    void insertsAtTheCursor_data()
    {
        QTest::addColumn<bool>("absolute");
        QTest::newRow("absolute") << true;
        QTest::newRow("relative") << false;
    }

    // From the editor: the dialog reads the buffer's own folder, and the path goes in at the cursor.
    void insertsAtTheCursor()
    {
        QFETCH(bool, absolute);
        const QString icon = Touch(QStringLiteral("icons/i.png"));
        BrindletEditor* editor = OpenEditor();
        QVERIFY(editor);
        CodeEditor* codeEditor = editor->GetActiveCodeEditor();
        codeEditor->setFocus();
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(codeEditor));
        codeEditor->SetText(QStringLiteral("source \"\";"));
        codeEditor->SetCursorPosition(8);

        WhenModal<QFileDialog>(editor,
                               [&](QFileDialog* chooser)
                               {
                                   chooser->selectFile(icon);
                                   static_cast<QDialog*>(chooser)->accept();
                                   WhenModal<InsertPathDialog>(
                                       editor,
                                       [&](InsertPathDialog* dialog)
                                       {
                                           QTest::mouseClick(absolute ? dialog->GetAbsoluteRadio()
                                                                      : dialog->GetRelativeRadio(),
                                                             Qt::LeftButton);
                                           QTest::mouseClick(dialog->GetOkButton(), Qt::LeftButton);
                                       });
                               });
        editor->ShowInsertPathDialog();

        // The text around the cursor is kept; what went in leads from the buffer's folder to the file.
        const QString text = codeEditor->GetText();
        QVERIFY(text.startsWith(QStringLiteral("source \"")));
        QVERIFY(text.endsWith(QStringLiteral("\";")));
        const QString path = text.mid(8, text.size() - 10);
        QCOMPARE(QFileInfo(path).isAbsolute(), absolute);
        const QString bufferDir = QFileInfo(codeEditor->GetFilePath()).absolutePath();
        QCOMPARE(QDir::cleanPath(QDir(bufferDir).absoluteFilePath(path)), icon);
        if (!absolute)
            QVERIFY(path.startsWith(QStringLiteral("../")));
        QCOMPARE(Settings::insertPathAbsolute, absolute);
    }

    void cancelInsertsNothingAndStoresNothing()
    {
        BrindletEditor* editor = OpenEditor();
        QVERIFY(editor);
        CodeEditor* codeEditor = editor->GetActiveCodeEditor();
        codeEditor->setFocus();
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(codeEditor));
        codeEditor->SetText(QStringLiteral("x"));
        WhenModal<QFileDialog>(editor,
                               [&](QFileDialog* chooser)
                               {
                                   chooser->reject();
                                   WhenModal<InsertPathDialog>(
                                       editor,
                                       [](InsertPathDialog* dialog)
                                       {
                                           dialog->GetRelativeRadio()->click();
                                           dialog->GetPathEdit()->setText(QStringLiteral("/tmp/a"));
                                           QTest::mouseClick(dialog->GetCancelButton(), Qt::LeftButton);
                                       });
                               });
        editor->ShowInsertPathDialog();
        QCOMPARE(codeEditor->GetText(), QStringLiteral("x"));
        QVERIFY(Settings::insertPathAbsolute);
    }

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<QTemporaryDir> root;
};

QTEST_MAIN(TestInsertPathDialog)
#include "tst_InsertPathDialog.moc"
