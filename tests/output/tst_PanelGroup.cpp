#include "DialogAnswer.h"
#include "HostFixture.h"
#include "ModalAnswer.h"
#include "TestFiles.h"
#include "WheelSimulation.h"
#include "output/OutputHighlightingDialog.h"
#include "output/OutputHighlightingWidget.h"
#include "output/OutputTextEdit.h"
#include "output/PanelGroup.h"
#include "output/PanelGroupTabBar.h"
#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "widgets/ColorLabel.h"
#include "widgets/FlatButton.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtGui/QTextBlock>
#include <QtTest/QtTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <memory>

class TestPanelGroup : public QObject
{
    Q_OBJECT

private:
    // Fills in the save dialog as a user would, typing the whole path, and accepts it.
    void WhenSaveDialog(const QString& path, const QString& filter)
    {
        WhenModal<QFileDialog>(
            this,
            [=](QFileDialog* dialog)
            {
                dialog->selectNameFilter(filter);
                dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
                // As the Save button does.
                QMetaObject::invokeMethod(dialog, "accept");
            });
    }

    // Names the rule in the dialog that the next step opens, switched off if asked, and accepts it.
    void WhenRuleDialog(const QString& name, bool enabled = true)
    {
        WhenModal<OutputHighlightingDialog>(
            this,
            [=](OutputHighlightingDialog* dialog)
            {
                dialog->findChild<QLineEdit*>(QStringLiteral("nameLineEdit"))->setText(name);
                dialog->findChild<QLineEdit*>(QStringLiteral("matchLineEdit"))
                    ->setText(QStringLiteral("hello"));
                if (!enabled)
                    dialog->findChild<QCheckBox*>(QStringLiteral("enabledCB"))->setChecked(false);
                dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
            });
    }

    std::unique_ptr<HostFixture> fixture;
    KeyBindings keyBindings;
    QTemporaryDir dir;
    std::unique_ptr<PanelGroup> panel; // shown, echo off at its start
    FlatButton* writeButton = nullptr;

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
        MayaUtil::SetEchoAllCommandsEnabled(false);
        panel = std::make_unique<PanelGroup>(&keyBindings);
        panel->resize(600, 300);
        panel->show();
        QVERIFY(QTest::qWaitForWindowExposed(panel.get()));
        writeButton = panel->findChild<FlatButton*>(QStringLiteral("writeToFileBtn"));
    }

    void cleanup()
    {
        for (QTimer* timer : findChildren<QTimer*>())
            delete timer;
        panel.reset();
        fixture.reset();
    }

    // A new panel starts from the host's echo and the setting; the choice drives both.
    void verbosityFollowsAndDrivesEchoAndMinimalTrace()
    {
        MayaUtil::SetEchoAllCommandsEnabled(true);
        QCOMPARE(PanelGroup(&keyBindings).GetVebosityIndex(), 0);
        MayaUtil::SetEchoAllCommandsEnabled(false);
        Settings::outputMinimalTrace = true;
        QCOMPARE(PanelGroup(&keyBindings).GetVebosityIndex(), 2);
        Settings::outputMinimalTrace = false;
        QCOMPARE(PanelGroup(&keyBindings).GetVebosityIndex(), 1);

        auto* combo = panel->findChild<QComboBox*>(QStringLiteral("outputTypeCmb"));
        QVERIFY(combo);
        QSignalSpy changed(panel.get(), SIGNAL(EchoAllCommandsChanged()));

        // Up once from the middle, then down twice; the echo is the host's own, not its option variable.
        for (const int index : {0, 1, 2})
        {
            QTest::keyClick(combo, index == 0 ? Qt::Key_Up : Qt::Key_Down);
            QCOMPARE(panel->GetVebosityIndex(), index);
            QCOMPARE(MayaUtil::EchoAllCommandsEnabled(), index == 0);
            int echo = -1;
            QTRY_VERIFY(MayaUtil::ExecuteMelIntResult(QStringLiteral("commandEcho -q -state"), echo) &&
                        echo == int(index == 0));
            QCOMPARE(Settings::outputMinimalTrace, index == 2);
            QCOMPARE(changed.count(), index + 1);
        }

        // Switching echo off goes back to the verbosity that the setting holds.
        panel->SetEchoAllCommandsEnabled(true);
        QCOMPARE(panel->GetVebosityIndex(), 0);
        Settings::outputMinimalTrace = true;
        panel->SetEchoAllCommandsEnabled(false);
        QCOMPARE(panel->GetVebosityIndex(), 2);
        QVERIFY(!MayaUtil::EchoAllCommandsEnabled());
    }

    void capComesFromPreferences()
    {
        OutputTextEdit* edit = panel->GetOutputTextEdit();
        Settings::outputBufferSize = 3000;
        panel->ApplyPreferences();
        QCOMPARE(edit->document()->maximumBlockCount(), 3000);
        for (int i = 1; i <= 50; ++i)
            panel->OutputAppendText(QStringLiteral("line %1\n").arg(i));
        // Lowered while output is still held: the newest lines stay.
        Settings::outputBufferSize = 10;
        panel->ApplyPreferences();
        QCOMPARE(edit->document()->blockCount(), 10);
        QCOMPARE(edit->document()->firstBlock().text(), QStringLiteral("line 42"));
        QCoreApplication::processEvents();
        QVERIFY(edit->GetText().endsWith(QStringLiteral("line 50\n")));

        panel->OutputClearAll();
        QVERIFY(edit->GetText().isEmpty());
        panel->OutputAppendText(QStringLiteral("a\nb\n"));
        QCOMPARE(edit->document()->maximumBlockCount(), 10);
    }

    void writeToFileNamesTheLog_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QString>("written");
        const QString log = QStringLiteral("LOG (*.log)");
        QTest::newRow("LOG filter adds the extension") << "session" << log << "session.log";
        QTest::newRow("other filter keeps the name")
            << "plain" << QStringLiteral("All Files(*.*)") << "plain";
        QTest::newRow("extension in capitals is kept") << "sub/OUT.LOG" << log << "sub/OUT.LOG";
        // "blocked" gets ".log", and "blocked.log" is a folder.
        QTest::newRow("cannot open") << "blocked" << log << QString();
    }

    void writeToFileNamesTheLog()
    {
        QFETCH(QString, typed);
        QFETCH(QString, filter);
        QFETCH(QString, written);
        QTemporaryDir folder;
        QDir(folder.path()).mkdir(QStringLiteral("sub"));
        QDir(folder.path()).mkdir(QStringLiteral("blocked.log"));
        QSignalSpy updated(panel.get(), SIGNAL(WriteToFileUpdated(bool)));
        WhenSaveDialog(folder.filePath(typed), filter);
        panel->ToggleWriteToFile();
        QCOMPARE(updated.count(), 1);
        QCOMPARE(updated.at(0).at(0).toBool(), !written.isEmpty());
        QCOMPARE(writeButton->IsChecked(), !written.isEmpty());
        panel->OutputAppendText(QStringLiteral("# Result: 42 #\n"));
        QCoreApplication::processEvents();
        if (written.isEmpty())
        {
            QVERIFY(fixture->HasMessageContaining(QStringLiteral("Failed to open log file for write: ")));
            return;
        }
        QCOMPARE(TestFiles::Read(folder.filePath(written)), QByteArray("# Result: 42 #\n"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), typed.contains(QLatin1Char('/')) ? 0 : 1);
    }

    // Stopping asks first; the next save dialog opens where the last log went, and a cancel starts nothing.
    void writeToFileStopsWhenConfirmed()
    {
        QSignalSpy updated(panel.get(), SIGNAL(WriteToFileUpdated(bool)));
        const QString path = dir.filePath(QStringLiteral("stop.log"));
        WhenSaveDialog(path, QStringLiteral("LOG (*.log)"));
        panel->ToggleWriteToFile();
        panel->OutputAppendText(QStringLiteral("kept\n"));
        QCoreApplication::processEvents();

        DialogAnswer answer(QMessageBox::No);
        panel->ToggleWriteToFile();
        QCOMPARE(answer.titles + answer.texts,
                 (QStringList{"Write Output to File", "Stop writing output to file?"}));
        QCOMPARE(updated.count(), 2);
        QCOMPARE(updated.at(1).at(0).toBool(), true);
        QVERIFY(writeButton->IsChecked());

        answer.button = QMessageBox::Yes;
        panel->ToggleWriteToFile();
        QCOMPARE(updated.at(2).at(0).toBool(), false);
        QVERIFY(!writeButton->IsChecked());
        panel->OutputAppendText(QStringLiteral("after\n"));
        QCoreApplication::processEvents();
        QCOMPARE(TestFiles::Read(path), QByteArray("kept\n"));

        QString seen;
        WhenModal<QFileDialog>(this,
                               [&seen](QFileDialog* dialog)
                               {
                                   seen = dialog->directory().absolutePath();
                                   dialog->reject();
                               });
        panel->ToggleWriteToFile();
        QCOMPARE(seen, QDir(dir.path()).absolutePath());
        QCOMPARE(updated.last().at(0).toBool(), false);
        QVERIFY(!panel->GetOutputTextEdit()->IsWriteToFileActive());
    }

    // One fixed output tab; its clear button, zoom and focus reach the main widget, its colours the pane.
    void buttonsAndRelays()
    {
        auto* tabBar = panel->findChild<PanelGroupTabBar*>();
        QVERIFY(tabBar);
        QCOMPARE(tabBar->Count(), 1);
        QCOMPARE(tabBar->GetTabText(0), QStringLiteral("OUTPUT"));
        QVERIFY(!tabBar->AreTabsMoveable() && !tabBar->AreTabsClosable() && !tabBar->acceptDrops());
        OutputTextEdit* edit = panel->GetOutputTextEdit();
        QVERIFY(edit->isVisible());
        panel->OutputAppendText(QStringLiteral("text\n"));
        QTest::mouseClick(panel->findChild<FlatButton*>(QStringLiteral("clearBtn")), Qt::LeftButton);
        QVERIFY(edit->GetText().isEmpty());

        QSignalSpy increase(panel.get(), SIGNAL(IncreaseOutputFontSizeRequested()));
        QSignalSpy decrease(panel.get(), SIGNAL(DecreaseOutputFontSizeRequested()));
        QSignalSpy focus(panel.get(), SIGNAL(ReceivedFocus()));
        for (const int delta : {120, -120, -120})
            WheelSimulation::Turn(edit->viewport(), delta, Qt::ControlModifier);
        QCOMPARE(increase.count(), 1);
        QCOMPARE(decrease.count(), 2);

        panel->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(panel.get()));
        panel->findChild<QComboBox*>()->setFocus();
        QTest::mouseClick(edit->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
        QTRY_VERIFY(focus.count() >= 1);

        QTextCharFormat plain = ColorSettings::GetOutputFormat(ColorSettings::PLAIN_TEXT);
        plain.setBackground(QColor(1, 2, 3));
        plain.setForeground(QColor(200, 201, 202));
        ColorSettings::SetOutputFormat(ColorSettings::PLAIN_TEXT, plain);
        panel->UpdateFontsAndColors();
        QCOMPARE(panel->palette().color(QPalette::Window), QColor(1, 2, 3));
        QCOMPARE(panel->GetOutputTextEdit()->palette().color(QPalette::Base), QColor(1, 2, 3));
        QCOMPARE(panel->GetOutputTextEdit()->viewport()->palette().color(QPalette::Text),
                 QColor(200, 201, 202));
    }

    // Defaults, the refusal of empty fields, and a stored rule read back as it was.
    void ruleDialogDefaultsAndValidation()
    {
        OutputHighlightingDialog dialog;
        dialog.SetDefaults();
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("nameLineEdit"));
        auto* match = dialog.findChild<QLineEdit*>(QStringLiteral("matchLineEdit"));
        auto* foreground = dialog.findChild<ColorLabel*>(QStringLiteral("foregroundColor"));
        auto* background = dialog.findChild<ColorLabel*>(QStringLiteral("backgroundColor"));
        auto* backgroundEnabled = dialog.findChild<QCheckBox*>(QStringLiteral("backgroundEnabledCB"));
        QVERIFY(name && match && foreground && background && backgroundEnabled);
        QCOMPARE(name->text(), QStringLiteral("Unnamed"));
        QCOMPARE(foreground->GetColor(), QColor(Qt::green));
        QVERIFY(!background->isEnabled());
        // Each colour sits on the row of its label.
        for (ColorLabel* color : {foreground, background})
        {
            const QString label =
                color->objectName().replace(QStringLiteral("Color"), QStringLiteral("Label"));
            const QRect row = dialog.findChild<QLabel*>(label)->geometry();
            const int y = color->geometry().center().y();
            QVERIFY2(row.top() <= y && y <= row.bottom(), qPrintable(label));
        }
        QPushButton* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);

        DialogAnswer answer(QMessageBox::Ok);
        ok->click();
        QVERIFY(dialog.isVisible());
        name->clear();
        match->setText(QStringLiteral("^Done"));
        ok->click();
        QVERIFY(dialog.isVisible());
        QCOMPARE(answer.titles + answer.texts,
                 (QStringList{"Warning", "Warning", "Text matching field is empty", "Name field is empty"}));

        QTest::keyClicks(name, QStringLiteral("Done"));
        QTest::mouseClick(backgroundEnabled, Qt::LeftButton);
        QVERIFY(background->isEnabled());
        ok->click();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        const ExtraSelectionProperties rule = dialog.GetSelectionProperties();
        QCOMPARE(rule.name + rule.match, QStringLiteral("Done^Done"));
        QVERIFY(rule.foregroundEnabled && rule.backgroundEnabled && rule.enabled && !rule.regExp);
        QCOMPARE(rule.foreground, QColor(Qt::green));

        // A colour switched off stays off when the rule is edited.
        dialog.SetSelectionProperties(ExtraSelectionProperties(
            QStringLiteral("Mine"), QColor(), QColor(9, 8, 7), QStringLiteral("x+"), true, true, false));
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Edit Highlight"));
        QVERIFY(!dialog.findChild<QCheckBox*>(QStringLiteral("foregroundEnabledCB"))->isChecked());
        QVERIFY(!foreground->isEnabled());

        const ExtraSelectionProperties again = dialog.GetSelectionProperties();
        QVERIFY(!again.foregroundEnabled);
        QCOMPARE(again.background, QColor(9, 8, 7));
        QVERIFY(again.regExp && again.highlightLine && !again.enabled);
    }

    void ruleListEditsAWorkingCopy()
    {
        OutputHighlightingWidget widget;
        widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&widget));
        auto* list = widget.findChild<QListWidget*>(QStringLiteral("listWidget"));
        QVERIFY(list);
        QCOMPARE(list->count(), ColorSettings::outputUserDefinedSelections.size());
        QCOMPARE(list->item(0)->text(), QStringLiteral("Errors (Python)"));
        QCOMPARE(list->currentRow(), 0);
        const auto button = [&](const char* name)
        { return widget.findChild<FlatButton*>(QString::fromLatin1(name)); };

        WhenRuleDialog(QStringLiteral("Mine"));
        QTest::mouseClick(button("newItemBtn"), Qt::LeftButton);
        QCOMPARE(list->count(), 7);
        QCOMPARE(list->currentRow(), 6);
        QCOMPARE(list->item(6)->text(), QStringLiteral("Mine"));
        QCOMPARE(list->item(6)->checkState(), Qt::Checked);
        QCOMPARE(ColorSettings::outputUserDefinedSelections.size(), 6);

        WhenModal<OutputHighlightingDialog>(this, [](OutputHighlightingDialog* dialog) { dialog->reject(); });
        QTest::mouseClick(button("newItemBtn"), Qt::LeftButton);
        QCOMPARE(list->count(), 7);

        WhenRuleDialog(QStringLiteral("Greeting"), false);
        // A user's double click starts with a click.
        const QPoint row = list->visualItemRect(list->item(6)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row);
        QCOMPARE(list->item(6)->text(), QStringLiteral("Greeting"));
        QCOMPARE(list->item(6)->checkState(), Qt::Unchecked);
        QCOMPARE(widget.GetSelections().at(6).enabled, false);
        list->item(6)->setCheckState(Qt::Checked);
        QCOMPARE(widget.GetSelections().at(6).enabled, true);

        for (const char* move : {"moveItemUpBtn", "moveItemUpBtn", "moveItemDownBtn"})
            QTest::mouseClick(button(move), Qt::LeftButton);
        QCOMPARE(list->currentRow(), 5);
        QCOMPARE(list->item(5)->text(), QStringLiteral("Greeting"));
        QCOMPARE(widget.GetSelections().at(5).name, QStringLiteral("Greeting"));
        QCOMPARE(widget.GetSelections().at(6).name, QStringLiteral("Results (MEL)"));

        list->setCurrentRow(0);
        QTest::mouseClick(button("deleteItemBtn"), Qt::LeftButton);
        QCOMPARE(list->count(), 6);
        QCOMPARE(widget.GetSelections().first().name, QStringLiteral("Errors (MEL)"));
        QTest::mouseClick(button("moveItemUpBtn"), Qt::LeftButton);
        QCOMPARE(widget.GetSelections().first().name, QStringLiteral("Errors (MEL)"));

        widget.Apply();
        QCOMPARE(ColorSettings::outputUserDefinedSelections.size(), 6);
        QCOMPARE(ColorSettings::outputUserDefinedSelections.at(4).name, QStringLiteral("Greeting"));

        widget.Reset();
        QCOMPARE(list->count(), 6);
    }
};

QTEST_MAIN(TestPanelGroup)
#include "tst_PanelGroup.moc"
