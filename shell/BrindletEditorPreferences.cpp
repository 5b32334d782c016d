#include "shell/BrindletEditor.h"

#include "settings/PreferencesDialog.h"

void BrindletEditor::ShowPreferencesDialog()
{
    ShowPreferencesDialog(preferencesDialog ? static_cast<PreferencePage>(qBound(0, preferencesDialog->GetCurrentPage(), 8))
                                            : GENERAL_PAGE);
}

void BrindletEditor::ShowPreferencesDialog(PreferencePage page)
{
    if (!preferencesDialog)
    {
        preferencesDialog = new PreferencesDialog(&keyBindings, this);
        preferencesDialog->setWindowFlag(Qt::Dialog);
        connect(preferencesDialog, SIGNAL(Modified()), this, SLOT(OnPreferencesModified()));
    }
    preferencesDialog->ResetSettings();
    preferencesDialog->SetCurrentPage(page);
    preferencesDialog->show();
    preferencesDialog->raise();
    preferencesDialog->activateWindow();
}
