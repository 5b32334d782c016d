#pragma once

#include "editor/CodeEditorLanguage.h"

#include <QtWidgets/QWidget>

class KeyBindings;
class QLabel;

// The thin row at the foot of the editor: language, error and warning counts, the message of
// the cursor's line, the cursor's position and the insert mode. BrindletEditor pushes values in.
class StatusBar : public QWidget
{
    Q_OBJECT

public:
    StatusBar(KeyBindings* keyBindings, QWidget* parent = nullptr);

    void SetInterpreter(CodeEditorLanguage language);
    QString GetInterpreterText() const;
    void SetErrorAndWarningCount(int errors, int warnings);
    void SetInfo(const QString& text);
    void SetCursorPosition(int line, int column, int selected);
    void SetOverwriteEnabled(bool enabled);
    void UpdateVisibility();

signals:
    void StatusBarVisibilityChangeRequested(bool visible);

public slots:
    void ToggleInterpreter();
    void ToggleErrorWarningCount();
    void ToggleCurrentLineMessage();
    void ShowContextMenu(const QPoint& pos);
    void OnHideActivityBarRequested();

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    QLabel* CreateIconLabel(const QString& path);

    QLabel* interpreterLabel = nullptr;
    QLabel* infoLabel = nullptr;
    QLabel* cursorLabel = nullptr;
    QLabel* overwriteLabel = nullptr;
    QLabel* errorIcon = nullptr;
    QLabel* errorCountLabel = nullptr;
    QLabel* warningIcon = nullptr;
    QLabel* warningCountLabel = nullptr;
    KeyBindings* keyBindings;
};
