// The three configuration stores read back from damaged, unreadable and odd files: each gives its
// defaults, says once what it could not write, and writes a file that reads back afterwards.
#include "HostFixture.h"
#include "TestFiles.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"

#include <QtGui/QAction>
#include <QtTest/QtTest>
#include <QtWidgets/QWidget>

#include <memory>

namespace
{
const QByteArray UNREADABLE = QByteArrayLiteral("<a folder where the file should be>");
const QByteArray MISSING = QByteArrayLiteral("<no file at all>");

QByteArray Garbage(int size)
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i)
        bytes.append(char((i * 7919 + i / 13) % 256));
    return bytes;
}
} // namespace

class TestDamagedStores : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<KeyBindings> bindings;
    QWidget window;

    // One store, by the name of its file: where it lives, how it is read and written, and one
    // value of it that the test changes and expects back.
    QString Path(const QString& store) const
    {
        if (store == QLatin1String("colors"))
            return ColorSettings::GetUserConfigPath();
        if (store == QLatin1String("bindings"))
            return KeyBindings::GetUserKeyBindingsPath();
        return Settings::GetUserConfigPath();
    }

    void Read(const QString& store)
    {
        if (store == QLatin1String("colors"))
            ColorSettings::ReadUserConfig();
        else if (store == QLatin1String("bindings"))
            bindings->ReadUserKeyBindings();
        else
            Settings::ReadUserConfig();
    }

    void Write(const QString& store)
    {
        if (store == QLatin1String("colors"))
            ColorSettings::WriteUserConfig();
        else if (store == QLatin1String("bindings"))
            bindings->WriteUserKeyBindings();
        else
            Settings::WriteUserConfig();
    }

    QString Value(const QString& store) const
    {
        if (store == QLatin1String("colors"))
            return ColorSettings::GetFormatString(
                ColorSettings::GetCodeEditorFormat(ColorSettings::MEL_KEYWORDS));
        if (store == QLatin1String("bindings"))
            return bindings->GetShortcut(KeySequenceType::Find).toString(QKeySequence::PortableText) +
                   QLatin1Char('|') +
                   bindings->GetKeySequence(KeySequenceType::Execute)
                       ->action->shortcut()
                       .toString(QKeySequence::PortableText);
        return QStringLiteral("%1|%2|%3")
            .arg(Settings::outputBufferSize)
            .arg(Settings::codeEditorVisible)
            .arg(Settings::codeEditorFont.pointSize());
    }

    void Change(const QString& store)
    {
        if (store == QLatin1String("colors"))
        {
            QTextCharFormat format = ColorSettings::GetCodeEditorFormat(ColorSettings::MEL_KEYWORDS);
            format.setFontWeight(900);
            ColorSettings::SetCodeEditorFormat(ColorSettings::MEL_KEYWORDS, format);
        }
        else if (store == QLatin1String("bindings"))
        {
            QList<KeySequence> rows;
            for (const KeySequence* row : bindings->GetKeySequences())
                rows.append(*row);
            for (KeySequence& row : rows)
            {
                if (row.type == KeySequenceType::Find)
                    row.userSequences = {QKeySequence(QStringLiteral("F9"))};
            }
            bindings->UpdateUserSequences(rows);
        }
        else
        {
            Settings::outputBufferSize = 77;
        }
    }

    // Fresh bindings with an action on every row, as the main widget makes them.
    void MakeBindings()
    {
        bindings = std::make_unique<KeyBindings>();
        qDeleteAll(window.actions());
        for (const KeySequence* row : bindings->GetKeySequences())
        {
            auto* action = new QAction(row->label, &window);
            window.addAction(action);
            bindings->SetAction(row->type, action);
        }
        bindings->Update();
    }

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
        MakeBindings();
    }

    void cleanup()
    {
        bindings.reset();
        fixture.reset();
    }

    void damagedStoresGiveDefaults_data()
    {
        QTest::addColumn<QString>("store");
        QTest::addColumn<QByteArray>("bytes");
        static const char withNuls[] = "[main]\0\0\0outputVisible=false\n[codeeditor]\0melKeywords=\0";
        const QList<QPair<const char*, QByteArray>> damages = {
            {"missing", MISSING},
            {"empty", QByteArray()},
            {"binary", Garbage(20000)},
            {"truncated",
             "[main]\ncodeEditorVisible=fal\n[codeeditor]\nmelKeywords=\"4291\n[user_bindings]\nfi"},
            {"not utf-8", "[main]\nrecentFiles=\xff\xfe\xc3\n[user\xff_bindings]\nfind=\xfe\n[prefer"},
            {"nul bytes", QByteArray(withNuls, sizeof(withNuls) - 1)},
            {"huge value", QByteArray("[codeeditor]\nmelKeywords=") + QByteArray(4 << 20, '7') + "\n"},
            {"unreadable", UNREADABLE},
        };
        for (const char* store : {"settings", "colors", "bindings"})
        {
            for (const auto& damage : damages)
                QTest::addRow("%s, %s", store, damage.first) << QString::fromLatin1(store) << damage.second;
        }
    }

    void damagedStoresGiveDefaults()
    {
        QFETCH(QString, store);
        QFETCH(QByteArray, bytes);
        const QString defaults = Value(store);
        if (bytes == UNREADABLE)
            QVERIFY(QDir().mkpath(Path(store)));
        else if (bytes != MISSING)
            QVERIFY(TestFiles::Write(Path(store), bytes));
        QCOMPARE(QFileInfo::exists(Path(store)), bytes != MISSING);
        Read(store);
        QCOMPARE(Value(store), defaults);

        Change(store);
        const QString changed = Value(store);
        QVERIFY(changed != defaults);
        fixture->ClearMessages();
        Write(store);
        if (bytes == UNREADABLE)
        {
            QVERIFY(fixture->HasMessageContaining(QStringLiteral("Failed to write %1").arg(Path(store))));
            QVERIFY(QFileInfo(Path(store)).isDir());
            return;
        }
        QVERIFY(!fixture->HasMessageContaining(QStringLiteral("Failed")));
        Settings::ResetToDefaults();
        ColorSettings::Initialize();
        MakeBindings();
        Read(store);
        QCOMPARE(Value(store), changed);
    }
};

QTEST_MAIN(TestDamagedStores)
#include "tst_DamagedStores.moc"
