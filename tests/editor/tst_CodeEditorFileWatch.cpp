#include "HostFixture.h"
#include "editor/CodeEditor.h"
#include "settings/ColorSettings.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QSaveFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <cstdio>
#include <memory>

namespace
{
constexpr int NOTICE_TIMEOUT_MS = 5000;
// How long a change that must not be reported gets to show up anyway.
constexpr int QUIET_MS = 600;

CodeEditorProperties FileProperties(const QString& path, CodeEditorType type = CodeEditorType::FILE)
{
    CodeEditorProperties properties;
    properties.type = type;
    properties.language = CodeEditorLanguage::MEL;
    properties.filePath = path;
    properties.label = QStringLiteral("watched.mel");
    return properties;
}

bool Write(const QString& path, const QByteArray& bytes, QIODevice::OpenMode mode = QIODevice::WriteOnly)
{
    QFile file(path);
    return file.open(mode) && file.write(bytes) == bytes.size();
}

bool AppendFromAnotherProcess(const QString& path)
{
    return QProcess::execute(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("echo x >> \"$1\""),
                                                    QStringLiteral("sh"), path}) == 0;
}
} // namespace

class TestCodeEditorFileWatch : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<QTemporaryDir> dir;
    QString path;

    // Lets the events of a finished change arrive, then forgets them.
    static void Settle(QSignalSpy& spy)
    {
        QTest::qWait(200);
        spy.clear();
    }

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
    }

    void cleanupTestCase() { fixture.reset(); }

    void init()
    {
        dir = std::make_unique<QTemporaryDir>();
        QVERIFY(dir->isValid());
        path = dir->filePath(QStringLiteral("watched.mel"));
        QVERIFY(Write(path, "print 1;\n"));
    }

    void changesAreReportedForFilesOnly_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("reported");
        const int file = int(CodeEditorType::FILE), buffer = int(CodeEditorType::INTERNAL_BUFFER);
        QTest::newRow("file appended by another process") << "append" << file << true;
        QTest::newRow("file deleted") << "delete" << file << true;
        QTest::newRow("buffer appended by another process") << "append" << buffer << false;
        QTest::newRow("buffer deleted") << "delete" << buffer << false;
    }

    void changesAreReportedForFilesOnly()
    {
        QFETCH(QString, change);
        QFETCH(int, type);
        QFETCH(bool, reported);
        CodeEditor editor(FileProperties(path, static_cast<CodeEditorType>(type)), nullptr);
        QSignalSpy spy(&editor, &CodeEditor::FileChanged);
        QVERIFY(change == QLatin1String("append") ? AppendFromAnotherProcess(path) : QFile::remove(path));
        if (!reported)
        {
            QTest::qWait(QUIET_MS);
            QCOMPARE(spy.count(), 0);
            return;
        }
        QTRY_VERIFY_WITH_TIMEOUT(spy.count() >= 1, NOTICE_TIMEOUT_MS);
        QCOMPARE(spy.value(0).value(0).toString(), path);
    }

    void saveThroughRenameKeepsTheWatch()
    {
        CodeEditor editor(FileProperties(path), nullptr);
        QSignalSpy spy(&editor, &CodeEditor::FileChanged);
        for (int save = 0; save < 2; ++save)
        {
            QSaveFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("print 2;\n");
            QVERIFY(file.commit());
            QTRY_VERIFY_WITH_TIMEOUT(spy.count() >= 1, NOTICE_TIMEOUT_MS);
            Settle(spy);
        }

        // A plain rename of a finished temporary file, as other editors save.
        const QString temporary = dir->filePath(QStringLiteral("watched.mel.tmp"));
        QVERIFY(Write(temporary, "print 3;\n"));
        QCOMPARE(std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(path).constData()),
                 0);
        QTRY_VERIFY_WITH_TIMEOUT(spy.count() >= 1, NOTICE_TIMEOUT_MS);
        Settle(spy);

        QVERIFY(Write(path, "print 4;\n", QIODevice::Append));
        QTRY_VERIFY_WITH_TIMEOUT(spy.count() >= 1, NOTICE_TIMEOUT_MS);
        QCOMPARE(spy.last().first().toString(), path);
    }

    void newPathMovesTheWatch()
    {
        CodeEditor editor(FileProperties(path), nullptr);
        const QString other = dir->filePath(QStringLiteral("other.mel"));
        QVERIFY(Write(other, "print 5;\n"));
        editor.SetProperties(FileProperties(other));
        QSignalSpy spy(&editor, &CodeEditor::FileChanged);

        QVERIFY(AppendFromAnotherProcess(path));
        QTest::qWait(QUIET_MS);
        QCOMPARE(spy.count(), 0);

        QVERIFY(AppendFromAnotherProcess(other));
        QTRY_VERIFY_WITH_TIMEOUT(spy.count() >= 1, NOTICE_TIMEOUT_MS);
        QCOMPARE(spy.value(0).value(0).toString(), other);

        // Saved under a new name as an internal buffer: no longer a file of the user's.
        editor.SetProperties(FileProperties(other, CodeEditorType::INTERNAL_BUFFER));
        Settle(spy);
        QVERIFY(AppendFromAnotherProcess(other));
        QTest::qWait(QUIET_MS);
        QCOMPARE(spy.count(), 0);
    }
};

QTEST_MAIN(TestCodeEditorFileWatch)
#include "tst_CodeEditorFileWatch.moc"
