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

    void changesAreReported_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<bool>("reported");
        // Each step: "append" (from another process), "delete", "save" (QSaveFile, a rename over the
        // file), "rename" (a finished temporary file renamed over it, as other editors save), "move"
        // (the buffer takes another path), "buffer" (it becomes an internal buffer); the last one is
        // the change that is or is not reported.
        QTest::newRow("file appended") << QStringList{"append"} << true;
        QTest::newRow("file deleted") << QStringList{"delete"} << true;
        QTest::newRow("buffer appended") << QStringList{"buffer", "append"} << false;
        QTest::newRow("buffer deleted") << QStringList{"buffer", "delete"} << false;
        QTest::newRow("append after saves") << QStringList{"save", "save", "rename", "append"} << true;
        QTest::newRow("old path after a move") << QStringList{"move", "append"} << false;
        QTest::newRow("new path after a move") << QStringList{"move", "append other"} << true;
        QTest::newRow("moved, then a buffer") << QStringList{"move", "buffer", "append other"} << false;
    }

    void changesAreReported()
    {
        QFETCH(QStringList, steps);
        QFETCH(bool, reported);
        const QString other = dir->filePath(QStringLiteral("other.mel"));
        QVERIFY(Write(other, "print 5;\n"));
        CodeEditor editor(FileProperties(path), nullptr);
        QSignalSpy spy(&editor, &CodeEditor::FileChanged);
        QString watched = path;
        for (const QString& step : std::as_const(steps))
        {
            const bool last = &step == &steps.constLast();
            if (step == QLatin1String("buffer"))
                editor.SetProperties(FileProperties(watched, CodeEditorType::INTERNAL_BUFFER));
            else if (step == QLatin1String("move"))
                editor.SetProperties(FileProperties(watched = other));
            else if (step == QLatin1String("append"))
                QVERIFY(AppendFromAnotherProcess(path));
            else if (step == QLatin1String("append other"))
                QVERIFY(AppendFromAnotherProcess(other));
            else if (step == QLatin1String("delete"))
                QVERIFY(QFile::remove(path));
            else if (step == QLatin1String("save"))
            {
                QSaveFile file(path);
                QVERIFY(file.open(QIODevice::WriteOnly));
                file.write("print 2;\n");
                QVERIFY(file.commit());
            }
            else if (step == QLatin1String("rename"))
            {
                const QString temporary = dir->filePath(QStringLiteral("watched.mel.tmp"));
                QVERIFY(Write(temporary, "print 3;\n"));
                QCOMPARE(std::rename(QFile::encodeName(temporary).constData(),
                                     QFile::encodeName(path).constData()),
                         0);
            }
            if (last)
                break;
            // A save is seen, and the watch goes on after it.
            if (step == QLatin1String("save") || step == QLatin1String("rename"))
                QTRY_VERIFY_WITH_TIMEOUT(spy.count() >= 1, NOTICE_TIMEOUT_MS);
            QTest::qWait(200);
            spy.clear();
        }
        if (!reported)
        {
            QTest::qWait(QUIET_MS);
            QCOMPARE(spy.count(), 0);
            return;
        }
        QTRY_VERIFY_WITH_TIMEOUT(spy.count() >= 1, NOTICE_TIMEOUT_MS);
        QCOMPARE(spy.last().first().toString(), watched);
    }
};

QTEST_MAIN(TestCodeEditorFileWatch)
#include "tst_CodeEditorFileWatch.moc"
