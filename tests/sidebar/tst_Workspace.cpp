#include "DialogAnswer.h"
#include "HostFixture.h"
#include "TestFiles.h"
#include "TreeRows.h"
#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "sidebar/WorkspaceTreeWidget.h"
#include "sidebar/WorkspaceView.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtTest/QtTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>

#include <algorithm>
#include <memory>

namespace
{
// Everything below a folder, as relative paths: what "changes nothing" compares.
QStringList Listing(const QString& root)
{
    QStringList entries;
    QDirIterator it(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        entries.append(QDir(root).relativeFilePath(it.next()));
    entries.sort();
    return entries;
}

// Another program at work on the folders.
void Shell(const QString& command)
{
    QProcess::execute(QStringLiteral("sh"), {QStringLiteral("-c"), command});
}

QVariantList Folders(const QByteArray& json)
{
    return QJsonDocument::fromJson(json).object().value("folders").toArray().toVariantList();
}

using TreeRows::Child;
} // namespace

// The workspace tree on real folders: lazy reading, the watcher, the workspace file and the
// file operations of its menu.
class TestWorkspace : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<KeyBindings> keyBindings;
    std::unique_ptr<QTemporaryDir> disk;
    std::unique_ptr<WorkspaceView> view;

    QString Disk(const QString& relative) const { return disk->filePath(relative); }
    bool Put(std::initializer_list<std::pair<const char*, const char*>> files) const
    {
        return std::all_of(files.begin(), files.end(),
                           [this](const auto& file)
                           { return TestFiles::Write(Disk(QLatin1String(file.first)), file.second); });
    }
    WorkspaceTreeWidget* Tree() const { return view->GetTreeWidget(); }

    // A shown view whose workspace is the given root folders, added to the workspace file that
    // was used last (an empty default one at first).
    bool MakeView(const QStringList& roots)
    {
        if (!QFileInfo::exists(Settings::GetWorkspacePath()) &&
            !TestFiles::Write(Settings::GetDefaultWorkspacePath(), "{\"folders\": []}"))
            return false;
        view = std::make_unique<WorkspaceView>(keyBindings.get());
        for (const QString& root : roots)
            view->AddFolderToWorkspace(root);
        view->resize(400, 600);
        view->show();
        return QTest::qWaitForWindowExposed(view.get());
    }

    void Click(QTreeWidgetItem* item)
    {
        Tree()->scrollToItem(item);
        const QPoint p = Tree()->visualItemRect(item).center();
        QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, p);
    }

    QStringList Watched() const
    {
        QStringList watched;
        for (const QString& path : Tree()->GetWatchedDirectories())
            watched.append(QDir(disk->path()).relativeFilePath(path));
        watched.sort();
        return watched;
    }

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
        keyBindings = std::make_unique<KeyBindings>();
    }

    void cleanupTestCase()
    {
        keyBindings.reset();
        fixture.reset();
    }

    void init()
    {
        Settings::ResetToDefaults();
        QFile::remove(Settings::GetDefaultWorkspacePath());
        disk = std::make_unique<QTemporaryDir>();
        QVERIFY(disk->isValid());
        fixture->ClearMessages();
    }

    void cleanup() { view.reset(); }

    void foldersAreReadOnlyWhenOpened()
    {
        QVERIFY(Put({{"root/a/b/c/deep.mel", "proc deep() {}"},
                     {"root/a/one.py", "x = 1"},
                     {"root/Zeta.txt", ""},
                     {"root/alpha.mel", ""}}));
        QVERIFY(QDir().mkpath(Disk("root/empty")));
        QVERIFY(MakeView({Disk("root")}));

        // Only the root has been looked at, and only to see that it has entries.
        QTreeWidgetItem* root = Tree()->topLevelItem(0);
        QCOMPARE(Tree()->topLevelItemCount(), 1);
        QCOMPARE(root->text(0), QStringLiteral("root"));
        QCOMPARE(root->childCount(), 1);
        QVERIFY(WorkspaceTreeWidget::IsPlaceholderItem(root->child(0)));
        QVERIFY(root->child(0)->isHidden());
        QCOMPARE(Watched(), QStringList{"root"});

        // Opening a folder reads it, folders first and names without case, and looks one level
        // ahead: "a" gets an arrow, "empty" does not, nothing below "a" is read.
        Click(root);
        QVERIFY(root->isExpanded());
        QCOMPARE(TreeRows::Below(root, false), (QStringList{"a", "empty", "alpha.mel", "Zeta.txt"}));
        QCOMPARE(Watched(), (QStringList{"root", "root/a", "root/empty"}));
        QTreeWidgetItem* a = Child(root, "a");
        QVERIFY(WorkspaceTreeWidget::IsPlaceholderItem(a->child(0)));
        QCOMPARE(Child(root, "empty")->childCount(), 0);
        QCOMPARE(Child(root, "alpha.mel")->data(0, Qt::UserRole).toString(), Disk("root/alpha.mel"));
        QVERIFY(Child(root, "alpha.mel")->flags() & Qt::ItemIsEditable);
        QVERIFY(!(a->flags() & Qt::ItemIsEditable));

        Click(a);
        QCOMPARE(TreeRows::Below(a, false), (QStringList{"b", "one.py"}));
        QCOMPARE(Watched(), (QStringList{"root", "root/a", "root/a/b", "root/empty"}));

        // A click on a file asks for a temporary tab, a double click for a permanent one.
        QSignalSpy open(Tree(), &WorkspaceTreeWidget::FileOpenRequested);
        Click(Child(a, "one.py"));
        const QPoint p = Tree()->visualItemRect(Child(a, "one.py")).center();
        QTest::mouseDClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, p);
        QVERIFY(open.size() >= 2);
        QCOMPARE(open.first(), (QVariantList{Disk("root/a/one.py"), true}));
        QCOMPARE(open.last(), (QVariantList{Disk("root/a/one.py"), false}));

        // Closing keeps what was read; the state is remembered for the next start.
        Click(a);
        QVERIFY(!a->isExpanded());
        QCOMPARE(Settings::workspaceExpandedFolderHashes.size(), 1);
        // Each row shows its kind: an open or a closed folder, MEL, Python or text.
        const auto shows = [](const QTreeWidgetItem* item, const char* icon) {
            return item->icon(0).pixmap(16).toImage() ==
                   QIcon(":/bq2_icons/" + QString(icon)).pixmap(16).toImage();
        };
        QVERIFY(shows(root, "folder_opened.png") && shows(a, "folder_closed.png"));
        QVERIFY(shows(Child(root, "alpha.mel"), "mel_icon.png") &&
                shows(Child(a, "one.py"), "python_icon.png"));
        QVERIFY(shows(Child(root, "Zeta.txt"), "text_icon.png"));

        // Revealing a file opens the way to it and makes it current.
        view->Reveal(Disk("root/a/b/c/deep.mel"));
        QTreeWidgetItem* current = Tree()->currentItem();
        QVERIFY(current);
        QCOMPARE(WorkspaceTreeWidget::GetPath(current), Disk("root/a/b/c/deep.mel"));
        for (QTreeWidgetItem* parent = current->parent(); parent; parent = parent->parent())
            QVERIFY(parent->isExpanded());
        QVERIFY(!Child(root, "empty")->isExpanded());
        QCOMPARE(Settings::workspaceExpandedFolderHashes.size(), 4);

        // The next session opens the same folders again.
        view.reset();
        QVERIFY(MakeView({}));
        QTreeWidgetItem* c = Child(Child(Child(Tree()->topLevelItem(0), "a"), "b"), "c");
        QVERIFY(c && c->isExpanded());
        QCOMPARE(TreeRows::Below(c, false), QStringList{"deep.mel"});
    }

    void changesOnDiskKeepOpenFoldersAndCurrentItem()
    {
        QVERIFY(Put({{"root/scripts/old.py", "x = 1"},
                     {"root/scripts/keep.mel", ""},
                     {"root/other/inside.txt", ""}}));
        QVERIFY(MakeView({Disk("root")}));
        QTreeWidgetItem* root = Tree()->topLevelItem(0);
        Click(root);
        Click(Child(root, "scripts"));
        Tree()->setCurrentItem(Child(root, "scripts"));

        Shell(QStringLiteral("touch '%1'").arg(Disk("root/scripts/new.mel")));
        QTRY_VERIFY(Child(Child(Tree()->topLevelItem(0), "scripts"), "new.mel"));
        Shell(
            QStringLiteral("mv '%1' '%2'").arg(Disk("root/scripts/old.py"), Disk("root/scripts/renamed.py")));
        QTRY_VERIFY(Child(Child(Tree()->topLevelItem(0), "scripts"), "renamed.py"));
        Shell(QStringLiteral("rm '%1'").arg(Disk("root/scripts/keep.mel")));
        QTRY_VERIFY(!Child(Child(Tree()->topLevelItem(0), "scripts"), "keep.mel"));

        root = Tree()->topLevelItem(0);
        QTreeWidgetItem* scripts = Child(root, "scripts");
        QCOMPARE(TreeRows::Below(scripts, false), (QStringList{"new.mel", "renamed.py"}));
        QVERIFY(root->isExpanded());
        QVERIFY(scripts->isExpanded());
        QVERIFY(!Child(root, "other")->isExpanded());
        QCOMPARE(Tree()->currentItem(), scripts);

        // A new folder is seen too, and is watched in its turn.
        Shell(QStringLiteral("mkdir '%1'").arg(Disk("root/scripts/sub")));
        QTRY_VERIFY(Child(Child(Tree()->topLevelItem(0), "scripts"), "sub"));
        QVERIFY(Watched().contains(QStringLiteral("root/scripts/sub")));
    }

    // A first start shows the user's scripts folder and writes no file; the folders added later
    // are written.
    void workspaceFileRoundTrips()
    {
        QVERIFY(QDir().mkpath(MayaUtil::GetUserScriptsDirectory()));
        view = std::make_unique<WorkspaceView>(keyBindings.get());
        QCOMPARE(Tree()->GetTopLevelFolders(),
                 QStringList{QFileInfo(MayaUtil::GetUserScriptsDirectory()).absoluteFilePath()});
        const QString path = Settings::GetDefaultWorkspacePath();
        QVERIFY(!QFileInfo::exists(path));
        QCOMPARE(Settings::workspacePath, path);

        QVERIFY(QDir().mkpath(Disk("first")));
        QVERIFY(QDir().mkpath(Disk("second")));
        QVERIFY(MakeView({Disk("first"), Disk("second"), Disk("first")}));
        QCOMPARE(Settings::workspacePath, path);
        QCOMPARE(view->GetTitleText(), QStringLiteral("<strong>WORKSPACE</strong>"));
        const QByteArray written = TestFiles::Read(path);
        QVERIFY(written.contains("\n    \"folders\""));
        QCOMPARE(Folders(written), (QVariantList{Disk("first"), Disk("second")}));

        // Saved under another name, the title follows the file's name.
        const QString rigging =
            QDir(Settings::GetWorkspacesDirectoryPath()).filePath("rigging.bq2-workspace");
        view->SaveWorkspaceAs(rigging);
        QCOMPARE(view->GetTitleText(), QStringLiteral("<strong>RIGGING</strong>"));

        // A new session opens the file that was used last, with its roots in their order.
        view.reset();
        Settings::workspaceFolders.clear();
        view = std::make_unique<WorkspaceView>(keyBindings.get());
        QCOMPARE(view->GetTreeWidget()->GetTopLevelFolders(), (QStringList{Disk("first"), Disk("second")}));
        QCOMPARE(Settings::workspacePath, rigging);

        // Removing a root rewrites the file at once; nothing on disk goes. A rebuild before it
        // keeps the watches, and the one after still lets go of the removed root's.
        view->GetTreeWidget()->Refresh();
        view->GetTreeWidget()->setCurrentItem(view->GetTreeWidget()->topLevelItem(0));
        view->GetTreeWidget()->RemoveFolderFromWorkspace();
        QCOMPARE(Folders(TestFiles::Read(rigging)), (QVariantList{Disk("second")}));
        QVERIFY(QFileInfo::exists(Disk("first")));
        view->GetTreeWidget()->Refresh();
        QCOMPARE(Watched(), QStringList{"second"});
    }

    void badWorkspaceFiles_data()
    {
        QTest::addColumn<QByteArray>("content"); // "missing" for no file at all
        QTest::addColumn<QStringList>("roots");
        QTest::newRow("missing") << QByteArray("missing") << QStringList{"kept"};
        QTest::newRow("empty") << QByteArray() << QStringList{};
        QTest::newRow("binary") << QByteArray("\x89PNG\r\n\x1a\n\0\0", 10) << QStringList{};
        QTest::newRow("not json") << QByteArray("{\"folders\": [\"a\"") << QStringList{};
        QTest::newRow("folders a string") << QByteArray("{\"folders\": \"DISK/a\"}") << QStringList{};
        QTest::newRow("no folders") << QByteArray("{\"roots\": [\"DISK/a\"]}") << QStringList{};
        QTest::newRow("mixed") << QByteArray("{\"folders\": [1, null, \"DISK/a\", {}]}") << QStringList{"a"};
        QTest::newRow("folder gone") << QByteArray(
                                            "{\"folders\": [\"DISK/gone\", \"DISK/a\", \"DISK/a/file.mel\"]}")
                                     << QStringList{"a"};
    }

    void badWorkspaceFiles()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, roots);
        const bool missing = content == "missing";
        QVERIFY(TestFiles::Write(Disk("a/file.mel"), ""));
        QVERIFY(QDir().mkpath(Disk("kept")));
        QVERIFY(MakeView({Disk("kept")}));
        fixture->ClearMessages();

        const QString path = Disk("team.bq2-workspace");
        content.replace("DISK", disk->path().toUtf8());
        if (!missing)
            QVERIFY(TestFiles::Write(path, content));
        view->OpenWorkspace(path);

        QStringList shown;
        for (const QString& folder : Tree()->GetTopLevelFolders())
            shown.append(QFileInfo(folder).fileName());
        QCOMPARE(shown, roots);
        const QStringList errors = fixture->MessagesOfType(MCommandMessage::kError);
        if (!missing)
        {
            QVERIFY2(errors.isEmpty(), qPrintable(errors.join('\n')));
            QCOMPARE(Settings::workspacePath, path);
            QCOMPARE(view->GetTitleText(), QStringLiteral("<strong>TEAM</strong>"));
        }
        else
        {
            QCOMPARE(errors.size(), 1);
            QVERIFY(errors.first().contains("Failed to open workspace file: " + path));
            QVERIFY(!QFileInfo::exists(path));
        }
        // A file that could not be read whole is never written over.
        if (roots.isEmpty() && !missing)
            QCOMPARE(TestFiles::Read(path), content);
        // The earlier workspace's roots stay known, for the search, until removed by the user.
        QVERIFY(Settings::workspaceFolders.contains(Disk("kept")));
    }

    void fileOperations()
    {
        QVERIFY(Put({{"root/unread/inside.txt", ""}, {"root/file.mel", "proc a() {}"}}));
        QVERIFY(MakeView({Disk("root")}));
        QTreeWidgetItem* root = Tree()->topLevelItem(0);
        DialogAnswer answer(QMessageBox::Yes);

        // A new file in a folder not yet read shows the folder whole, the new file with it.
        Tree()->setCurrentItem(root);
        Click(root);
        Tree()->setCurrentItem(Child(root, "unread"));
        answer.input = QStringLiteral("made.py");
        QSignalSpy modified(view.get(), &WorkspaceView::WorkspaceModified);
        Tree()->NewFile();
        QVERIFY(QFileInfo(Disk("root/unread/made.py")).isFile());
        QTreeWidgetItem* unread = Child(Tree()->topLevelItem(0), "unread");
        QCOMPARE(TreeRows::Below(unread, false), (QStringList{"inside.txt", "made.py"}));
        QVERIFY(unread->isExpanded());
        QCOMPARE(modified.size(), 1);
        QVERIFY(answer.titles.contains("New File") && answer.texts.contains("File Name"));

        fixture->ClearMessages();
        Tree()->NewFile();
        QVERIFY(fixture->HasMessageContaining("File already exists: " + Disk("root/unread/made.py")));

        answer.input = QStringLiteral("folder");
        Tree()->setCurrentItem(Child(Tree()->topLevelItem(0), "file.mel"));
        Tree()->NewFolder();
        QVERIFY(QFileInfo(Disk("root/folder")).isDir());

        // Renaming edits the row in place; the file follows when the edit is committed. The
        // watcher's rebuild after the new folder comes first.
        QTest::qWait(300);
        QTreeWidgetItem* file = Child(Tree()->topLevelItem(0), "file.mel");
        Tree()->setCurrentItem(file);
        QSignalSpy moved(Tree(), &WorkspaceTreeWidget::FilePathChanged);
        Tree()->Rename();
        auto* editor = Tree()->viewport()->findChild<QLineEdit*>();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, QStringLiteral("tool.mel"));
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_COMPARE(moved.size(), 1);
        QCOMPARE(moved.first(), (QVariantList{Disk("root/file.mel"), Disk("root/tool.mel")}));
        QCOMPARE(TestFiles::Read(Disk("root/tool.mel")), QByteArray("proc a() {}"));

        // Copy and paste into another folder, then delete with the question answered.
        QTRY_VERIFY(Child(Tree()->topLevelItem(0), "tool.mel"));
        Tree()->setCurrentItem(Child(Tree()->topLevelItem(0), "tool.mel"));
        Tree()->Copy();
        Tree()->CopyPath();
        QCOMPARE(QGuiApplication::clipboard()->text(), Disk("root/tool.mel"));
        Tree()->setCurrentItem(Child(Tree()->topLevelItem(0), "folder"));
        Tree()->Paste();
        QCOMPARE(TestFiles::Read(Disk("root/folder/tool.mel")), QByteArray("proc a() {}"));
        fixture->ClearMessages();
        Tree()->Paste();
        QVERIFY(fixture->HasMessageContaining("File already exists: " + Disk("root/folder/tool.mel")));
        QSignalSpy deleted(Tree(), &WorkspaceTreeWidget::ItemDeleted);
        answer.button = QMessageBox::No;
        Tree()->Remove();
        QVERIFY(QFileInfo::exists(Disk("root/folder")));
        answer.button = QMessageBox::Yes;
        Tree()->Remove();
        QVERIFY(!QFileInfo::exists(Disk("root/folder")));
        QCOMPARE(deleted.size(), 1);
        QCOMPARE(deleted.first(), (QVariantList{Disk("root/folder"), true}));
        QVERIFY(answer.titles.contains("Delete Folder") && answer.texts.contains("Delete 'folder'"));

        Tree()->setCurrentItem(nullptr);
        fixture->ClearMessages();
        Tree()->NewFile();
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("A folder needs to be selected first.")));
        Tree()->CopyPath();
        QCOMPARE(QGuiApplication::clipboard()->text(), Disk("root/tool.mel"));
    }

    void readOnlyFolderChangesNothing_data()
    {
        // The row's name is the operation.
        QTest::addColumn<QString>("message");
        QTest::newRow("new file") << "Failed to create file: DISK/root/locked/new.mel";
        QTest::newRow("new folder") << "Failed to create directory: DISK/root/locked/new.mel";
        QTest::newRow("rename") << "Rename file failed. Please verify file path and permissions: "
                                   "DISK/root/locked/in.mel -> DISK/root/locked/new.mel";
        QTest::newRow("rename existing") << "Raname failed. File already exists: DISK/root/locked/other.mel";
        QTest::newRow("delete file") << "Failed to delete file: DISK/root/locked/in.mel";
        QTest::newRow("delete folder") << "Failed to delete folder: DISK/root/locked/sub";
        QTest::newRow("paste") << "Copy file failed: DISK/root/source.mel -> DISK/root/locked/source.mel";
    }

    void readOnlyFolderChangesNothing()
    {
        const QString operation = QString::fromLatin1(QTest::currentDataTag());
        QFETCH(QString, message);
        message.replace(QStringLiteral("DISK"), disk->path());
        QVERIFY(Put({{"root/locked/in.mel", "x"},
                     {"root/locked/other.mel", "y"},
                     {"root/locked/sub/deep.mel", "z"},
                     {"root/source.mel", "s"}}));
        QVERIFY(MakeView({Disk("root")}));
        Click(Tree()->topLevelItem(0));
        QTreeWidgetItem* locked = Child(Tree()->topLevelItem(0), "locked");
        Click(locked);
        if (!TestFiles::MakeReadOnly(Disk("root/locked"), true))
            QSKIP("This platform cannot make a folder read-only.");
        const QStringList before = Listing(disk->path());
        fixture->ClearMessages();
        DialogAnswer answer(QMessageBox::Yes);
        answer.input = QStringLiteral("new.mel");

        // The row each operation starts from; a paste copies a file from beside the locked folder.
        // The folder "sub" itself could be emptied; its own entry in the locked folder cannot go.
        QTreeWidgetItem* item = operation == QLatin1String("delete folder")  ? Child(locked, "sub")
                                : operation.startsWith(QLatin1String("new")) ? locked
                                : operation == QLatin1String("paste") ? Child(locked->parent(), "source.mel")
                                                                      : Child(locked, "in.mel");
        Tree()->setCurrentItem(item);
        if (operation.startsWith(QLatin1String("new")))
            Tree()->NewItem(operation == QLatin1String("new file") ? WorkspaceItemFile : WorkspaceItemFolder);
        else if (operation.startsWith(QLatin1String("rename")))
            item->setText(0, operation == QLatin1String("rename") ? QStringLiteral("new.mel")
                                                                  : QStringLiteral("other.mel"));
        else if (operation.startsWith(QLatin1String("delete")))
            Tree()->Remove();
        else
        {
            Tree()->Copy();
            Tree()->setCurrentItem(locked);
            Tree()->Paste();
        }
        const QStringList after = Listing(disk->path());
        QVERIFY(TestFiles::MakeReadOnly(Disk("root/locked"), false));
        QCOMPARE(after, before);
        QCOMPARE(TestFiles::Read(Disk("root/locked/sub/deep.mel")), QByteArray("z"));
        const QStringList errors = fixture->MessagesOfType(MCommandMessage::kError);
        QCOMPARE(errors.size(), 1);
        QVERIFY2(errors.first().contains(message), qPrintable(errors.first()));
    }

    void compiledPythonIsHidden()
    {
        QVERIFY(Put({{"root/__pycache__/m.cpython-311.pyc", ""},
                     {"root/only/old.PYC", ""},
                     {"root/m.py", ""},
                     {"root/m.pyc", ""}}));
        QVERIFY(MakeView({Disk("root")}));
        QTreeWidgetItem* root = Tree()->topLevelItem(0);
        Click(root);
        QCOMPARE(TreeRows::Below(root, false), (QStringList{"only", "m.py"}));
        // The arrow comes from the raw listing; opened, the folder shows empty.
        QTreeWidgetItem* only = Child(root, "only");
        QCOMPARE(only->childCount(), 1);
        Click(only);
        QCOMPARE(TreeRows::Below(only, false), QStringList{});
        QCOMPARE(view->GetWorkspaceFiles(), (QStringList{Disk("root/m.py")}));
    }
};

QTEST_MAIN(TestWorkspace)
#include "tst_Workspace.moc"
