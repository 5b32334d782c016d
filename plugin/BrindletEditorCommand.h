#pragma once

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

class BrindletEditor;
class QString;

// The "brindletEditor2" MEL command: opens or raises the editor, and answers its four flags.
// All its state is static: Maya makes one instance per call.
class BrindletEditorCommand : public MPxCommand
{
public:
    BrindletEditorCommand() = default;
    ~BrindletEditorCommand() override;

    MStatus doIt(const MArgList& args) override;

    static void* Creator();
    static MSyntax CommandSyntax();
    static MString GetCommandName();
    static void Initialize();
    static void Shutdown();
    static void Cleanup();
    static bool GuiAvailable();
    static void AppendToOutput(const QString& text);

    static BrindletEditor* editorWidget;
    static bool firstCall;

private:
    MStatus OpenEditor();
    MStatus ClearOutput();
    MStatus OpenFile(const MArgDatabase& database);
    MStatus RevertModuleState();
    static void CreateEditorWidget();
};
