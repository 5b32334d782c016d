#include "DialogAnswer.h"
#include "ModalAnswer.h"
#include "ShellFixture.h"
#include "TestFiles.h"

#include "editor/CodeEditor.h"
#include "output/OutputTextEdit.h"
#include "output/PanelGroup.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/KeySequenceLineEdit.h"
#include "settings/PreferencesDialog.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "widgets/ColorLabel.h"

#include <QtTest/QtTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFontComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

namespace
{
const QString PYLINT = QStringLiteral("/usr/bin/pylint");

QListWidgetItem* FindItem(QListWidget* list, const QString& text)
{
    const QList<QListWidgetItem*> items = list->findItems(text, Qt::MatchExactly);
    return items.isEmpty() ? nullptr : items.first();
}
// A row, reserved or one the user may rebind, that carries a shortcut, other than the one given.
KeySequence* RowWithShortcut(KeyBindings* bindings, bool reserved, KeySequenceType other)
{
    for (KeySequence* row : bindings->GetKeySequences())
    {
        if (row->reserved == reserved && row->type != other && !row->userSequences.isEmpty())
            return row;
    }
    return nullptr;
}
} // namespace

class tst_PreferencesDialog : public ShellFixture
{
    Q_OBJECT

private slots:
    void pagesAndMinimumSize()
    {
        PreferencesDialog* dialog = Dialog(PYLINT_PAGE);
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Preferences"));
        QCOMPARE(dialog->minimumSize(), QSize(620, 480));
        QCOMPARE(dialog->GetCurrentPage(), static_cast<int>(PYLINT_PAGE));
        auto* pages = Child<QListWidget>("menuListWdg");
        const QStringList labels{
            "General", "Keyboard", "Tabs and Spacing", "Fonts and Colors", "Code Editor", "Output", "MEL",
            "Python",  "Pylint"};
        QCOMPARE(pages->count(), labels.size());
        for (int row = 0; row < labels.size(); ++row)
            QCOMPARE(pages->item(row)->text(), labels.at(row));
        pages->setCurrentRow(-1);
        QCOMPARE(dialog->GetCurrentPage(), 10);
    }

    void checkBoxReachesSettingAndFile_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("factory");
        // A box is named after its setting, "Chk" added or not, or is given as "box=setting"; "!"
        // marks one that a fresh install leaves clear (the host of the tests clears completion
        // while typing).
        const QString boxes = QStringLiteral(
            "codeEditorBackspaceToTabStop codeEditorDisplayIndentationGuides "
            "codeEditorMouseWheelChangesFontSize !codeEditorMatchedSelectionWordsOnly "
            "outputMouseWheelChangesFontSize !outputMatchedSelectionWordsOnly "
            "outputDoubleClickIncludesDollarSign !outputDisableEchoAllOnStartup !outputWordWrapEnabled "
            "outputSyntaxHighlightingEnabled melDisplayErrors melSmartIndent !melIndentToParentheses "
            "melInsertClosingParentheses melInsertClosingQuotes !melTrimTrailingWhiteSpacesOnSave "
            "!melEnsureNewLineAtEofOnSave melDoubleClickIncludesDollarSign melAutoCompleteToQuickHelp "
            "melCompleteOnUser !melCompleteOnLetters pythonDisplayErrors pythonSmartIndent "
            "!pythonIndentToParentheses pythonInsertClosingParentheses pythonInsertClosingQuotes "
            "!pythonTrimTrailingWhiteSpacesOnSave !pythonEnsureNewLineAtEofOnSave "
            "pythonAutoCompleteToQuickHelp pythonHideCompiledFiles !pythonImportPyMelOnLoad "
            "pythonConfirmOverwriteModuleState pythonDisableRevertModuleStateOnExecuteOnStartup "
            "pythonCompleteOnUser !pythonCompleteOnLetters !pythonCompleteOnDot pythonIncludeKeywords "
            "pythonIncludeBuiltins !pythonNativeMayaAutoCompleteFallback pylintUseMinimalCheckers "
            "!pylintShowErrors checkForModifiedFilesChk alwaysShowEditorAndOutputOnStartupChk "
            "showTabBarChk showCloseButtonOnTabsChk !showTabBarMiniToolbarChk "
            "!mouseWheelChangesActiveTabChk !lockTabPositionsChk saveOnExecuteChk=saveAllOnExecute "
            "saveOnExitChk=saveAllOnExit "
            "confirmCloseTemporaryBufferChk=showConfirmDialogOnInternalBufferClose "
            "unsavedFileDialogOnExitChk=showUnsavedFileDialogOnMayaExit");
        for (QString entry : boxes.split(QLatin1Char(' ')))
        {
            const bool factory = !entry.startsWith(QLatin1Char('!'));
            entry.remove(QLatin1Char('!'));
            QString key = entry.section(QLatin1Char('='), -1);
            if (key.endsWith(QLatin1String("Chk")))
                key.chop(3);
            const QString box = entry.section(QLatin1Char('='), 0, 0);
            QTest::newRow(qPrintable(box)) << box << key << factory;
        }
    }

    void checkBoxReachesSettingAndFile()
    {
        QFETCH(QString, box);
        QFETCH(QString, key);
        QFETCH(bool, factory);
        // Only the compiled-files option changes what the explorer lists.
        QSignalSpy workspace(Dialog(GENERAL_PAGE), SIGNAL(WorkspaceModified()));
        auto* check = Child<QCheckBox>(box);
        QVERIFY(check);
        const bool before = check->isChecked();
        QCOMPARE(before, factory);
        QCOMPARE(Stored(key, before).toBool(), before);
        check->setChecked(!before);
        Apply();
        QCOMPARE(Stored(key).toBool(), !before);
        QCOMPARE(workspace.count(), key == QLatin1String("pythonHideCompiledFiles") ? 1 : 0);
        Dialog(GENERAL_PAGE);
        QCOMPARE(Child<QCheckBox>(box)->isChecked(), !before);
    }

    void cancelChangesNothing()
    {
        editor->SaveState();
        const QByteArray settingsBefore = TestFiles::Read(Settings::GetUserConfigPath());
        const QByteArray colorsBefore = TestFiles::Read(ColorSettings::GetUserConfigPath());
        const bool saveOnExecute = Settings::saveAllOnExecute;
        const int bufferSize = Settings::outputBufferSize;
        const QFont font = Settings::codeEditorFont;
        Dialog(GENERAL_PAGE);
        Child<QCheckBox>("saveOnExecuteChk")->setChecked(!saveOnExecute);
        Child<QSpinBox>("outputBufferSizeSB")->setValue(bufferSize + 100);
        Child<QComboBox>("fontSizeCombo")->setCurrentIndex(10);
        Child<QPushButton>("cancelBtn")->click();
        QCOMPARE(Settings::saveAllOnExecute, saveOnExecute);
        QCOMPARE(Settings::outputBufferSize, bufferSize);
        QCOMPARE(Settings::codeEditorFont, font);
        QCOMPARE(TestFiles::Read(Settings::GetUserConfigPath()), settingsBefore);
        QCOMPARE(TestFiles::Read(ColorSettings::GetUserConfigPath()), colorsBefore);
        // Opening again shows the stores, not the abandoned edits.
        Dialog(GENERAL_PAGE);
        QCOMPARE(Child<QCheckBox>("saveOnExecuteChk")->isChecked(), saveOnExecute);
    }

    void numericFieldsStayInTheirLimits_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<int>("entered");
        QTest::addColumn<int>("kept");
        for (const auto& [field, low, high] :
             {std::tuple{"outputBufferSizeSB", 100, 99999}, {"tabSizeSpinBox", 1, 32}})
        {
            QTest::addRow("%s below", field) << field << low - 1 << low;
            QTest::addRow("%s minimum", field) << field << low << low;
            QTest::addRow("%s maximum", field) << field << high << high;
            QTest::addRow("%s above", field) << field << high + 1 << high;
        }
    }

    void numericFieldsStayInTheirLimits()
    {
        QFETCH(QString, field);
        QFETCH(int, entered);
        QFETCH(int, kept);
        Dialog(OUTPUT_PAGE);
        auto* spin = Child<QSpinBox>(field);
        spin->setValue(entered);
        QCOMPARE(spin->value(), kept);
        Apply();
        const int stored = field == QLatin1String("outputBufferSizeSB") ? Settings::outputBufferSize
                                                                        : Settings::tabsSizeDefault;
        QCOMPARE(stored, kept);
    }

    void tabsPerLanguage()
    {
        Dialog(TABS_PAGE);
        auto* language = Child<QComboBox>("languageCombo");
        auto* useDefault = Child<QCheckBox>("useDefaultTabsChk");
        auto* tabGroup = Child<QGroupBox>("tabGrp");
        auto* indentGroup = Child<QGroupBox>("indentingGrp");
        QCOMPARE(language->currentIndex(), 0);
        QVERIFY(useDefault->isHidden());
        language->setCurrentIndex(1); // MEL
        QVERIFY(!useDefault->isHidden());
        useDefault->setChecked(true);
        QVERIFY(tabGroup->isHidden() && indentGroup->isHidden());
        useDefault->setChecked(false);
        QVERIFY(!tabGroup->isHidden() && !indentGroup->isHidden());
        Child<QSpinBox>("tabSizeSpinBox")->setValue(7);
        Child<QCheckBox>("replaceTabsChk")->setChecked(false);
        language->setCurrentIndex(2); // Python keeps its own values
        QCOMPARE(Child<QSpinBox>("tabSizeSpinBox")->value(), Settings::tabsSizePython);
        QCOMPARE(Child<QCheckBox>("replaceTabsChk")->isChecked(), Settings::tabsInsertSpacesPython);
        Apply();
        QCOMPARE(Settings::tabsSizeMel, 7);
        QCOMPARE(Settings::tabsUseDefaultsMel, false);
        QCOMPARE(Settings::tabsInsertSpacesMel, false);
        QCOMPARE(Stored("tabsSizeMel").toInt(), 7);
    }

    void fontSizeReachesEditorsAndOutput()
    {
        editor->NewMelBuffer();
        CodeEditor* codeEditor = editor->GetActiveCodeEditor();
        QVERIFY(codeEditor);
        OutputTextEdit* output = editor->GetPanelGroup()->GetOutputTextEdit();
        Dialog(FONTS_AND_COLORS_PAGE);
        auto* target = Child<QComboBox>("showSettingsForCombo");
        auto* size = Child<QComboBox>("fontSizeCombo");
        // The list runs from the smallest size to the largest, both ends offered.
        target->setCurrentIndex(0);
        size->setCurrentIndex(size->count() - 1);
        target->setCurrentIndex(1);
        size->setCurrentIndex(0);
        Apply();
        QCOMPARE(codeEditor->font().pointSize(), Settings::MAXIMUM_FONT_SIZE);
        QCOMPARE(output->font().pointSize(), Settings::MINIMUM_FONT_SIZE);
        QSettings written(Settings::GetUserConfigPath(), QSettings::IniFormat);
        QVERIFY(written.allKeys().join(QLatin1Char(' ')).contains(QStringLiteral("Font")));
    }

    void fontFamilyResetsZoomOfItsTargetOnly()
    {
        Settings::codeEditorZoom = 3;
        Settings::outputZoom = 2;
        Dialog(FONTS_AND_COLORS_PAGE);
        Child<QComboBox>("showSettingsForCombo")->setCurrentIndex(0);
        auto* family = Child<QFontComboBox>("fontCombo");
        const QString current = family->currentFont().family();
        family->setCurrentIndex(family->currentIndex() == 0 ? 1 : 0);
        QVERIFY(family->currentFont().family() != current);
        Apply();
        QCOMPARE(Settings::codeEditorZoom, 0);
        QCOMPARE(Settings::outputZoom, 2);
    }

    void colourReachesEditorInPlace()
    {
        editor->NewMelBuffer();
        CodeEditor* codeEditor = editor->GetActiveCodeEditor();
        QTextCharFormat* keywords = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MEL_KEYWORDS);
        Dialog(FONTS_AND_COLORS_PAGE);
        Child<QComboBox>("showSettingsForCombo")->setCurrentIndex(0);
        auto* items = Child<QListWidget>("highlightItemList");
        const HighlightProperties plain =
            ColorSettings::GetCodeEditorHighlightProperties(ColorSettings::PLAIN_TEXT);
        const HighlightProperties keyword =
            ColorSettings::GetCodeEditorHighlightProperties(ColorSettings::MEL_KEYWORDS);
        const QColor chosen(12, 200, 34);

        // The colour dialog answers with the chosen colour, as a user picking it would.
        const std::function<void(QColorDialog*)> answer = [&](QColorDialog* dialog)
        {
            dialog->setCurrentColor(chosen);
            dialog->accept();
        };
        items->setCurrentItem(FindItem(items, plain.label));
        WhenModal<QColorDialog>(this, answer);
        QTest::mouseClick(Child<ColorLabel>("backgroundColorLabel"), Qt::LeftButton);
        items->setCurrentItem(FindItem(items, keyword.label));
        WhenModal<QColorDialog>(this, answer);
        QTest::mouseClick(Child<ColorLabel>("foregroundColorLabel"), Qt::LeftButton);
        QVERIFY(Child<QCheckBox>("boldChk")->isEnabled() == keyword.fontStylesEnabled);
        QVERIFY(Child<QLabel>("sampleLabel")->text().contains(QStringLiteral("#0cc822")));
        Apply();
        // The same format object, now with the new colour: views that hold it need no rebuild.
        QCOMPARE(ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MEL_KEYWORDS), keywords);
        QCOMPARE(keywords->foreground().color(), chosen);
        QCOMPARE(codeEditor->viewport()->palette().color(QPalette::Base), chosen);
        QVERIFY(
            TestFiles::Read(ColorSettings::GetUserConfigPath()).contains(QByteArray::number(chosen.rgb())));
    }

    void keyBindingReachesItsAction()
    {
        KeyBindings* bindings = editor->GetKeyBindings();
        KeySequence* row = bindings->GetKeySequence(KeySequenceType::ClearOutput);
        QVERIFY(row && row->action);
        Dialog(KEYBOARD_PAGE);
        SelectCommand(row->label);
        auto* press = Child<KeySequenceLineEdit>("pressShortcutKeysLE");
        QTest::keyClick(press, Qt::Key_Control); // modifiers alone show nothing
        QCOMPARE(press->text(), QString());
        QTest::keyClick(press, Qt::Key_K, Qt::ControlModifier | Qt::AltModifier);
        QCOMPARE(press->text(), QStringLiteral("Ctrl+Alt+K"));
        Child<QPushButton>("assignShortcutBtn")->click();
        Apply();
        QVERIFY(row->action->shortcuts().contains(QKeySequence(QStringLiteral("Ctrl+Alt+K"))));
        QSettings written(KeyBindings::GetUserKeyBindingsPath(), QSettings::IniFormat);
        QVERIFY(written.value(KeyBindings::GROUP_NAME + QLatin1Char('/') + row->key)
                    .toStringList()
                    .contains(QStringLiteral("Ctrl+Alt+K")));
        Dialog(KEYBOARD_PAGE);
        SelectCommand(row->label);
        auto* assigned = Child<QComboBox>("assignedShortcutCmb");
        assigned->setCurrentIndex(assigned->findText(QStringLiteral("Ctrl+Alt+K")));
        Child<QPushButton>("removeShortcutBtn")->click();
        Apply();
        QVERIFY(!row->action->shortcuts().contains(QKeySequence(QStringLiteral("Ctrl+Alt+K"))));
    }

    void duplicateKeyBindingMovesToNewRow()
    {
        KeyBindings* bindings = editor->GetKeyBindings();
        KeySequence* clear = bindings->GetKeySequence(KeySequenceType::ClearOutput);
        KeySequence* save = RowWithShortcut(bindings, false, KeySequenceType::ClearOutput);
        QVERIFY(save && clear && !save->userSequences.isEmpty());
        const QString taken = save->userSequences.first().toString(QKeySequence::PortableText);
        Dialog(KEYBOARD_PAGE);
        SelectCommand(clear->label);
        PressShortcut(taken);
        QCOMPARE(Child<QLineEdit>("shortcutCurrentlyUsedByLE")->text(), save->label);
        Child<QPushButton>("assignShortcutBtn")->click();
        Apply();
        QVERIFY(clear->userSequences.contains(QKeySequence(taken)));
        QVERIFY(!save->userSequences.contains(QKeySequence(taken)));
    }

    void reservedShortcutShownAsPermanent()
    {
        KeySequence* reserved = RowWithShortcut(editor->GetKeyBindings(), true, KeySequenceType::NoBinding);
        if (!reserved)
            QSKIP("no reserved row carries a shortcut");
        Dialog(KEYBOARD_PAGE);
        QVERIFY(!FindItem(Child<QListWidget>("keyboardCommandListWdg"), reserved->label));
        PressShortcut(reserved->userSequences.first().toString(QKeySequence::PortableText));
        QCOMPARE(Child<QLineEdit>("shortcutCurrentlyUsedByLE")->text(),
                 reserved->label + QStringLiteral(" (Permanent)"));
    }

    void restoreDefaultKeyBindingsAsks()
    {
        KeySequence* row = RowWithShortcut(editor->GetKeyBindings(), false, KeySequenceType::NoBinding);
        QVERIFY(row);
        const QList<QKeySequence> defaults = row->defaultSequences;
        row->userSequences.clear();
        editor->GetKeyBindings()->Update();
        Dialog(KEYBOARD_PAGE);
        {
            DialogAnswer no(QMessageBox::No);
            Child<QPushButton>("restoreDefaultShortcutsBtn")->click();
            QCOMPARE(no.texts, QStringList{QStringLiteral(
                                   "Keyboard mappings will reset to their default values. Continue?")});
        }
        Apply();
        QVERIFY(row->userSequences.isEmpty());
        {
            DialogAnswer yes(QMessageBox::Yes);
            Child<QPushButton>("restoreDefaultShortcutsBtn")->click();
            QCOMPARE(yes.texts.size(), 1);
        }
        Apply();
        QCOMPARE(row->userSequences, defaults);
    }

    void additionalPythonPathsLoseTrailingSeparator()
    {
        Dialog(PYLINT_PAGE);
        auto* paths = Child<QLineEdit>("pylintAdditionalPythonPathsLE");
        paths->setText(QStringLiteral("/a/b:/c::"));
        Apply();
        QCOMPARE(Settings::pylintAdditionalPythonPaths, QStringLiteral("/a/b:/c"));
        QCOMPARE(paths->text(), QStringLiteral("/a/b:/c"));
        QVERIFY(Settings::pylintPythonPath.startsWith(QStringLiteral("/a/b:/c:")));
    }

    void generatePylintrcFailures_data()
    {
        QTest::addColumn<QString>("executable");
        QTest::addColumn<QString>("told");
        QTest::newRow("empty") << QString() << QString("The path to the Pylint executable is not set.");
        QTest::newRow("missing") << QString("/no/such/pylint") << QString("Failed to generate pylintrc");
        QTest::newRow("not pylint") << QString("/bin/false") << QString("Failed to generate pylintrc");
    }

    void generatePylintrcFailures()
    {
        QFETCH(QString, executable);
        QFETCH(QString, told);
        Dialog(PYLINT_PAGE);
        Child<QLineEdit>("pylintExecutablePathLE")->setText(executable);
        const QString target = Settings::GetUserConfigDirectory() + QStringLiteral("/pylintrc");
        DialogAnswer ok(QMessageBox::Ok);
        Child<QPushButton>("pylintConfigGenerateBtn")->click();
        QCOMPARE(ok.texts, QStringList{told});
        QCOMPARE(ok.titles, QStringList{QStringLiteral("Pylint")});
        QVERIFY(!QFile::exists(target));
        QVERIFY(Child<QLineEdit>("pylintConfigPathLE")->text().isEmpty());
    }

    void generatedPylintrcIsAcceptedByPylint()
    {
        if (!QFile::exists(PYLINT))
            QSKIP("Pylint is not installed (scripts/setup.sh installs it)");
        Dialog(PYLINT_PAGE);
        Child<QLineEdit>("pylintExecutablePathLE")->setText(PYLINT);
        const QString target = Settings::GetUserConfigDirectory() + QStringLiteral("/pylintrc");
        Child<QPushButton>("pylintConfigGenerateBtn")->click();
        QTRY_VERIFY(QFile::exists(target));
        QCOMPARE(Child<QLineEdit>("pylintConfigPathLE")->text(), target);
        QVERIFY(TestFiles::Read(target).contains("[MAIN]") || TestFiles::Read(target).contains("[MASTER]"));

        // Pylint runs with it: exit status 32 would be a usage or configuration error.
        QTemporaryDir folder;
        const QString script = folder.filePath(QStringLiteral("check.py"));
        QVERIFY(TestFiles::Write(script, "import os\n"));
        QProcess pylint;
        pylint.start(PYLINT, {QStringLiteral("--rcfile=%1").arg(target), script});
        QVERIFY(pylint.waitForFinished(60000));
        QVERIFY2(pylint.exitCode() != 32 && pylint.exitCode() != 1,
                 pylint.readAllStandardError().constData());
        QVERIFY(pylint.readAllStandardOutput().contains("W0611"));

        // A second generation asks first; No keeps the file as it is.
        QFile::resize(target, 3);
        {
            DialogAnswer no(QMessageBox::No);
            Child<QPushButton>("pylintConfigGenerateBtn")->click();
            QCOMPARE(no.texts, QStringList{QStringLiteral("Overwrite existing pylintrc file?")});
        }
        QCOMPARE(QFileInfo(target).size(), 3);
    }

private:
    PreferencesDialog* Dialog(PreferencePage page)
    {
        editor->ShowPreferencesDialog(page);
        return editor->findChild<PreferencesDialog*>();
    }

    template <typename T> T* Child(const QString& name)
    {
        PreferencesDialog* dialog = editor->findChild<PreferencesDialog*>();
        T* child = dialog ? dialog->findChild<T*>(name) : nullptr;
        if (!child)
            qWarning("no child %s", qPrintable(name));
        return child;
    }

    void Apply() { Child<QPushButton>("applyBtn")->click(); }

    void SelectCommand(const QString& label)
    {
        auto* commands = Child<QListWidget>("keyboardCommandListWdg");
        commands->setCurrentItem(FindItem(commands, label));
    }

    // As typed into the shortcut field: the text, then the signal of an edit.
    void PressShortcut(const QString& text)
    {
        auto* press = Child<KeySequenceLineEdit>("pressShortcutKeysLE");
        press->setText(text);
        emit press->textEdited(text);
    }

    static QVariant Stored(const QString& key, const QVariant& fallback = QVariant())
    {
        const QSettings file(Settings::GetUserConfigPath(), QSettings::IniFormat);
        return file.value(QStringLiteral("preferences/") + key, fallback);
    }
};

QTEST_MAIN(tst_PreferencesDialog)
#include "tst_PreferencesDialog.moc"
