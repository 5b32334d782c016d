#include "shell/BrindletEditor.h"

#include "settings/PreferencesDialog.h"

void BrindletEditor::ShowPreferencesDialog()
{
    ShowPreferencesDialog(preferencesDialog ? static_cast<PreferencePage>(preferencesDialog->GetCurrentPage())
                                            : GENERAL_PAGE);
}

void BrindletEditor::ShowPreferencesDialog(PreferencePage page)
{
    if (!preferencesDialog)
    {
        preferencesDialog = new PreferencesDialog(&keyBindings, this);
        preferencesDialog->setWindowFlag(Qt::Dialog);
        connect(preferencesDialog, SIGNAL(Modified()), this, SLOT(OnPreferencesModified()));
        connect(preferencesDialog, SIGNAL(WorkspaceModified()), this, SLOT(RefreshWorkspace()));
    }
    preferencesDialog->ResetSettings();
    // A page outside the list asks for none in particular: the last one shown stays.
    if (page >= GENERAL_PAGE && page <= PYLINT_PAGE)
        preferencesDialog->SetCurrentPage(page);
    preferencesDialog->show();
    preferencesDialog->raise();
    preferencesDialog->activateWindow();
}
