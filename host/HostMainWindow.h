#pragma once
#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtWidgets/QMainWindow>

class QMenu;
class QToolBar;
class QToolButton;
class HostCommandLine;
class HostScriptEditorWindow;
class HostSymbolButton;
class HostWorkspaceControl;

// Maya's main window as far as plug-ins see it: the Windows menu, the status line with its
// symbol buttons, a shelf, the command line, and room for workspace controls.
class HostMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit HostMainWindow(QWidget* parent = nullptr);

    QMenu* WindowsMenu() const;
    // Null until the Windows menu is built.
    QMenu* GeneralEditorsMenu() const;
    // Maya builds these menus when they first open, or when a script asks for them.
    void BuildWindowsMenu();
    void BuildGeneralEditorsMenu();
    QToolBar* StatusLine() const;
    QToolBar* ShelfBar() const;
    HostCommandLine* CommandLine() const;

    QList<HostSymbolButton*> SymbolButtons() const;
    HostSymbolButton* FindSymbolButton(const QString& name) const;
    QList<HostWorkspaceControl*> WorkspaceControls() const;
    HostWorkspaceControl* FindWorkspaceControl(const QString& name) const;

    QToolButton* AddShelfButton(const QString& label, const QString& command, bool isMel);
    HostScriptEditorWindow* ShowScriptEditor();

signals:
    // A close event reached the window and nobody vetoed it.
    void CloseAccepted();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void CreateWidgets();
    void CreateMenus();
    void CreateStatusLine();
    void CreateLayout();
    void CreateConnections();

    QMenu* windowsMenu = nullptr;
    QMenu* generalEditorsMenu = nullptr;
    QAction* exitAction = nullptr;
    QAction* scriptEditorAction = nullptr;
    QToolBar* statusLine = nullptr;
    QToolBar* shelfBar = nullptr;
    QToolBar* commandLineBar = nullptr;
    HostCommandLine* commandLine = nullptr;
    QWidget* viewport = nullptr;
    QPointer<HostScriptEditorWindow> scriptEditor;
};
