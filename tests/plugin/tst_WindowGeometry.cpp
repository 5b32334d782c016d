#include "HostFixture.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"

#include <QtCore/QSettings>
#include <QtTest/QtTest>

// A floating panel across restarts of the host: the window must come back where the user left it,
// frame for frame, and the editor inside it with it.
class TestWindowGeometry : public QObject
{
    Q_OBJECT

private:
    static QRect SavedGeometry(const HostFixture& fixture)
    {
        const QSettings file(fixture.UserConfigDirectory() + QStringLiteral("/brindletEditor2.ini"),
                             QSettings::IniFormat);
        return file.value(QStringLiteral("main/windowGeometry")).toRect();
    }

    static QRect EditorOnScreen(const BrindletEditor* editor)
    {
        return QRect(editor->mapToGlobal(QPoint(0, 0)), editor->size());
    }

private slots:
    void floatingPanelStaysPutAcrossRestarts_data()
    {
        QTest::addColumn<QRect>("frame");
        QTest::newRow("where the user put it") << QRect(141, 70, 998, 679);
        QTest::newRow("near the origin") << QRect(0, 0, 640, 480);
    }

    void floatingPanelStaysPutAcrossRestarts()
    {
        QFETCH(QRect, frame);
        HostFixture fixture;
        QCOMPARE(fixture.LoadPlugin(), MStatus::kSuccess);
        BrindletEditor* editor = fixture.OpenEditor();
        QVERIFY(editor);
        QWidget* window = editor->window();
        QVERIFY(window != editor);
        QVERIFY(window != MayaUtil::GetMainWindow());
        // The user drags and sizes the floating window: a move places its frame, a resize its inside.
        window->move(frame.topLeft());
        const QMargins margins(window->geometry().left() - window->frameGeometry().left(),
                               window->geometry().top() - window->frameGeometry().top(),
                               window->frameGeometry().right() - window->geometry().right(),
                               window->frameGeometry().bottom() - window->geometry().bottom());
        window->resize(frame.marginsRemoved(margins).size());
        QCoreApplication::processEvents();
        QCOMPARE(window->frameGeometry(), frame);
        const QRect editorArea = EditorOnScreen(editor);

        for (int restart = 1; restart <= 5; ++restart)
        {
            fixture.Restart();
            QCOMPARE(SavedGeometry(fixture), frame);
            editor = fixture.OpenEditor();
            QVERIFY(editor);
            QCOMPARE(editor->window()->frameGeometry(), frame);
            QCOMPARE(EditorOnScreen(editor), editorArea);
        }
    }
};

QTEST_MAIN(TestWindowGeometry)
#include "tst_WindowGeometry.moc"
