#include "HostFixture.h"
#include "TestFiles.h"
#include "settings/KeyBindings.h"

#include <QtGui/QAction>
#include <QtTest/QtTest>
#include <QtWidgets/QWidget>

#include <memory>

using T = KeySequenceType;

class TestKeyBindings : public QObject
{
    Q_OBJECT

private:
    static QString BindingsPath() { return KeyBindings::GetUserKeyBindingsPath(); }

    static void WriteRaw(const QByteArray& bytes) { QVERIFY(TestFiles::Write(BindingsPath(), bytes)); }

    static QKeySequence Keys(const char* text)
    {
        return QKeySequence(QString::fromLatin1(text), QKeySequence::PortableText);
    }

    // Every row gets an action, as the main widget does when it builds its menus.
    void AttachActions(KeyBindings& bindings)
    {
        for (const KeySequence* row : bindings.GetKeySequences())
        {
            auto* action = new QAction(row->label, &window);
            window.addAction(action);
            bindings.SetAction(row->type, action);
        }
    }

    static QList<KeySequence> Edited(const KeyBindings& bindings,
                                     const QList<QPair<T, QList<QKeySequence>>>& changes)
    {
        QList<KeySequence> rows;
        for (const KeySequence* row : bindings.GetKeySequences())
        {
            rows.append(*row);
            for (const auto& change : changes)
                rows.last().userSequences =
                    row->type == change.first ? change.second : rows.last().userSequences;
        }
        return rows;
    }

    std::unique_ptr<HostFixture> fixture;
    QWidget window;

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        qDeleteAll(window.actions());
    }

    void cleanup() { fixture.reset(); }

    void tableHoldsEveryRowWithItsDefaults()
    {
        const KeyBindings bindings;
        const QList<KeySequence*>& rows = bindings.GetKeySequences();
        QCOMPARE(rows.size(), 88);
        // The shape only: that each row reaches its action is checked through the main widget's keys.
        QStringList keys;
        int reserved = 0;
        for (int i = 0; i < rows.size(); ++i)
        {
            QCOMPARE(int(rows.at(i)->type), i + 1);
            QCOMPARE(rows.at(i)->userSequences, rows.at(i)->defaultSequences);
            QVERIFY(!rows.at(i)->action);
            keys.append(rows.at(i)->key);
            reserved += rows.at(i)->reserved ? 1 : 0;
        }
        QCOMPARE(QSet<QString>(keys.cbegin(), keys.cend()).size(), 88);
        QCOMPARE(reserved, 10);
        QVERIFY(bindings.GetShortcut(T::SaveAs).isEmpty());
        QVERIFY(bindings.GetKeySequence(T::SaveAs)->defaultSequences.isEmpty());
        QVERIFY(bindings.GetShortcut(T::NoBinding).isEmpty());
        QVERIFY(!bindings.GetKeySequence(T::NoBinding));
        QVERIFY(!bindings.GetKeySequence(static_cast<T>(500)));
    }

    void userBindingsRoundTripThroughTheFile()
    {
        QVERIFY(BindingsPath().endsWith(QStringLiteral("/brindletEditor2/brindletEditor2_bindings.ini")));
        {
            KeyBindings bindings;
            bindings.UpdateUserSequences(Edited(bindings, {{T::Find, {Keys("Ctrl+Alt+F"), Keys("F9")}},
                                                           {T::Replace, {}},
                                                           {T::Rename, {Keys("F2")}},
                                                           {T::Save, {Keys("Ctrl+Q")}}}));
            bindings.WriteUserKeyBindings();
        }

        KeyBindings bindings;
        AttachActions(bindings);
        bindings.ReadUserKeyBindings();
        QCOMPARE(bindings.GetKeySequence(T::Find)->userSequences,
                 QList<QKeySequence>({Keys("Ctrl+Alt+F"), Keys("F9")}));
        QCOMPARE(bindings.GetKeySequence(T::Find)->action->shortcuts(),
                 bindings.GetKeySequence(T::Find)->userSequences);
        QVERIFY(bindings.GetShortcut(T::Replace).isEmpty());
        QVERIFY(bindings.GetKeySequence(T::Replace)->action->shortcut().isEmpty());
        QCOMPARE(bindings.GetShortcut(T::Rename), Keys("F2"));
        QCOMPARE(bindings.GetShortcut(T::SaveAll), Keys("Ctrl+Shift+S"));
        // Reserved rows keep their defaults and never reach the file.
        QCOMPARE(bindings.GetKeySequence(T::Save)->action->shortcuts().value(0),
                 QKeySequence(QKeySequence::Save));

        QSettings file(BindingsPath(), QSettings::IniFormat);
        QCOMPARE(file.childGroups(), QStringList({QStringLiteral("user_bindings")}));
        file.beginGroup(QStringLiteral("user_bindings"));
        QCOMPARE(file.childKeys().size(), 78);
        for (const KeySequence* row : bindings.GetKeySequences())
            QCOMPARE(file.contains(row->key), !row->reserved);
        // A removed shortcut is an empty value, which the next session reads as none; this
        // process's QSettings cache would hide any other spelling, so the bytes are read.
        QVERIFY(TestFiles::Read(BindingsPath()).contains("\nreplace=\n"));
    }

    void valuesAsFound_data()
    {
        QTest::addColumn<QByteArray>("find");
        QTest::addColumn<QKeySequence>("expectedFind");
        // An empty value removes the shortcut; one of the wrong type is no value, and the default stays.
        QTest::newRow("empty") << QByteArray() << QKeySequence();
        QTest::newRow("wrong type") << QByteArray("@Rect(1 2 3 4)") << Keys("Ctrl+F");
        QTest::newRow("variant blob") << QByteArray("@Variant(\\0\\0\\0\\x7f\\0\\x1)") << Keys("Ctrl+F");
        QTest::newRow("unknown key name") << QByteArray("Ctrl+Sparkle") << QKeySequence();
        QTest::newRow("not utf-8") << QByteArray("\xff\xfe+\xc0") << QKeySequence();
    }

    void valuesAsFound()
    {
        QFETCH(QByteArray, find);
        WriteRaw("[user_bindings]\nfind=" + find + "\nnewBuffer=F5, Ctrl+F5\nexecute=F1\nsave=@Invalid()\n");
        KeyBindings bindings;
        AttachActions(bindings);
        bindings.ReadUserKeyBindings();
        QTEST(bindings.GetShortcut(T::Find), "expectedFind");
        // Keys the file leaves out keep their defaults; reserved ones are never read.
        QCOMPARE(bindings.GetShortcut(T::Replace), Keys("Ctrl+H"));
        QCOMPARE(bindings.GetKeySequence(T::NewBuffer)->action->shortcuts(),
                 QList<QKeySequence>({Keys("F5"), Keys("Ctrl+F5")}));
        QCOMPARE(bindings.GetKeySequence(T::Execute)->action->shortcuts().value(0), Keys("Ctrl+Return"));
        QCOMPARE(bindings.GetShortcut(T::Save), QKeySequence(QKeySequence::Save));
    }

    void duplicateHotkeyIsDroppedFromTheLaterRow()
    {
        KeyBindings bindings;
        AttachActions(bindings);
        bindings.UpdateUserSequences(Edited(bindings, {{T::Replace, {Keys("Ctrl+F"), Keys("F8")}},
                                                       {T::NewBuffer, {Keys("Ctrl+W")}},
                                                       {T::GotoLine, {Keys("Ctrl+S")}}}));

        QCOMPARE(bindings.GetKeySequence(T::Find)->action->shortcuts(),
                 QList<QKeySequence>({Keys("Ctrl+F")}));
        QCOMPARE(bindings.GetKeySequence(T::Replace)->userSequences, QList<QKeySequence>({Keys("F8")}));
        QCOMPARE(bindings.GetKeySequence(T::Replace)->action->shortcuts(), QList<QKeySequence>({Keys("F8")}));
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("Duplicate hotkey detected: Replace (Ctrl+F)")));

        // The earlier row wins, whichever of the two the user changed.
        QCOMPARE(bindings.GetShortcut(T::NewBuffer), Keys("Ctrl+W"));
        QCOMPARE(bindings.GetKeySequence(T::CloseFile)->userSequences, QList<QKeySequence>({QKeySequence()}));
        QVERIFY(bindings.GetShortcut(T::CloseFile).isEmpty());
        QVERIFY(
            fixture->HasMessageContaining(QStringLiteral("Duplicate hotkey detected: Close File (Ctrl+W)")));

        // A reserved row always holds its shortcut against a later row.
        QVERIFY(bindings.GetShortcut(T::GotoLine).isEmpty());
        QCOMPARE(bindings.GetKeySequence(T::Save)->action->shortcuts(),
                 QList<QKeySequence>({Keys("Ctrl+S")}));
        // Against an earlier row it loses the action's keys, yet its own row still names them.
        bindings.UpdateUserSequences(Edited(bindings, {{T::NewPythonBuffer, {Keys("Ctrl+O")}}}));
        QVERIFY(bindings.GetKeySequence(T::OpenFile)->action->shortcuts().value(0).isEmpty());
        QCOMPARE(bindings.GetShortcut(T::OpenFile), Keys("Ctrl+O"));
    }

    void rowsWithoutActionsTakePartInNoCheck()
    {
        KeyBindings bindings;
        auto* replace = new QAction(&window);
        bindings.SetAction(T::Replace, replace);
        bindings.SetAction(T::NoBinding, replace);
        bindings.UpdateUserSequences(Edited(bindings, {{T::Replace, {Keys("Ctrl+F")}}}));
        QCOMPARE(replace->shortcuts(), QList<QKeySequence>({Keys("Ctrl+F")}));
        QVERIFY(!fixture->HasMessageContaining(QStringLiteral("Duplicate hotkey")));
    }

    void actionsFireFromKeysOnlyWhileEnabled()
    {
        // That every default key reaches its action is checked through the main widget's keys.
        KeyBindings bindings;
        AttachActions(bindings);
        bindings.ReadUserKeyBindings();
        QSignalSpy found(bindings.GetKeySequence(T::Find)->action, &QAction::triggered);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));

        // Off, no action holds a key, while the rows keep theirs for later.
        bindings.SetBindingsEnabled(false);
        for (const KeySequence* row : bindings.GetKeySequences())
            QVERIFY(row->action->shortcuts().isEmpty());
        QCOMPARE(bindings.GetShortcut(T::Find), Keys("Ctrl+F"));
        bindings.SetBindingsEnabled(true);
        for (const KeySequence* row : bindings.GetKeySequences())
            QCOMPARE(row->action->shortcuts(), row->reserved ? row->defaultSequences : row->userSequences);

        // A new binding replaces the old one on the action.
        bindings.UpdateUserSequences(Edited(bindings, {{T::Find, {Keys("F9")}}}));
        QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(found.count(), 0);
        QTest::keyClick(&window, Qt::Key_F9);
        QCOMPARE(found.count(), 1);
        window.hide();
    }

    void deletedActionIsForgotten()
    {
        KeyBindings bindings;
        auto* action = new QAction(&window);
        bindings.SetAction(T::Find, action);
        delete action;
        bindings.Update();
        bindings.SetBindingsEnabled(false);
        QVERIFY(!bindings.GetKeySequence(T::Find)->action);
    }
};

QTEST_MAIN(TestKeyBindings)
#include "tst_KeyBindings.moc"
