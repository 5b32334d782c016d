#include "EditorWindow.h"
#include "HostFixture.h"
#include "ModalAnswer.h"
#include "editor/CodeEditor.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "widgets/InsertPathDialog.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>

#include <memory>


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

    BrindletEditor* OpenEditor() { return EditorWindow::Open(*fixture, QSize(1000, 700), true); }

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
        QTest::mouseClick(absolute ? dialog.GetAbsoluteRadio() : dialog.GetRelativeRadio(), Qt::LeftButton);
        QTest::keyClicks(dialog.GetPathEdit(), typed.replace(QStringLiteral("%R"), rootPath));
        if (!forwardSlashes)
            expected.replace(QStringLiteral("%R"),
                             QString(rootPath).replace(QLatin1Char('/'), escape ? QStringLiteral("\\\\")
                                                                                : QStringLiteral("\\")));
        QCOMPARE(dialog.GetPath(), expected.replace(QStringLiteral("%R"), rootPath));
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
        // "kept" names no file beside the buffer: the chooser does not start there.
        QVERIFY(chooserFolder != QFileInfo(picked).absolutePath());
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.GetPathEdit()->text(), QStringLiteral("kept"));

        // With a file named in the edit, the browse button's chooser starts beside it.
        dialog.GetPathEdit()->setText(picked);
        chooserFolder.clear();
        WhenModal<QFileDialog>(&dialog,
                               [&](QFileDialog* chooser)
                               {
                                   chooserFolder = chooser->directory().absolutePath();
                                   chooser->reject();
                               });
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
                                           QTest::mouseClick(accept ? dialog->GetOkButton()
                                                                    : dialog->GetCancelButton(),
                                                             Qt::LeftButton);
                                       });
                               });
        editor->ShowInsertPathDialog();

        const QString text = codeEditor->GetText();
        QCOMPARE(Settings::insertPathAbsolute, absolute || !accept);
        if (!accept)
        {
            QCOMPARE(text, QStringLiteral("source \"\";"));
            return;
        }
        // The text around the cursor is kept; what went in leads from the buffer's folder to the file.
        QVERIFY(text.startsWith(QStringLiteral("source \"")));
        QVERIFY(text.endsWith(QStringLiteral("\";")));
        const QString path = text.mid(8, text.size() - 10);
        QCOMPARE(QFileInfo(path).isAbsolute(), absolute);
        const QString bufferDir = QFileInfo(codeEditor->GetFilePath()).absolutePath();
        QCOMPARE(QDir::cleanPath(QDir(bufferDir).absoluteFilePath(path)), icon);
    }

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<QTemporaryDir> root;
};

QTEST_MAIN(TestInsertPathDialog)
#include "tst_InsertPathDialog.moc"
