#pragma once
#include <QtWidgets/QDockWidget>

class QMainWindow;

// A Maya workspace control: a dock widget of the main window, docked or floating, named like
// the control and holding one content widget of the same name that scripts fill.
class HostWorkspaceControl : public QDockWidget
{
    Q_OBJECT

public:
    HostWorkspaceControl(const QString& name, QMainWindow* mainWindow);

    QString Name() const;
    QWidget* Content() const;

    bool IsRetained() const;
    void SetRetained(bool retained);
    QString UiScript() const;
    void SetUiScript(const QString& script);
    bool IsCollapsed() const;
    void SetCollapsed(bool collapsed);
    bool IsShown() const;
    void SetShown(bool shown);
    void SetLabel(const QString& label);
    // As Maya's workspaceControlState does, places the floating window by its frame: the corner
    // and the size include the window's title bar and borders.
    void SetFloatingGeometry(const QRect& frame);

    // Shown, raised and no longer collapsed.
    void Restore();
    // Hidden if retained, else discarded.
    void CloseControl();
    // Loses its name at once, so that nothing finds it any more, and is deleted later.
    void Discard();
    bool IsDiscarded() const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    static constexpr int DEFAULT_WIDTH = 1000;
    static constexpr int DEFAULT_HEIGHT = 700;

    void PlaceFirstTime();

    QWidget* content = nullptr;
    bool placed = false;
    QString uiScript;
    bool retained = true;
    bool collapsed = false;
    bool discarded = false;
};
