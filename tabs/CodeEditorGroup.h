#pragma once

#include <QtWidgets/QWidget>

class KeyBindings;
class QPlainTextEdit;
class QTabWidget;

// A group of buffers behind a tab bar. For now the buffers are plain text widgets in a
// standard tab widget; the hand-drawn tab bar, code editors, parsers and checkers come later
// behind the same operations.
class CodeEditorGroup : public QWidget
{
    Q_OBJECT

public:
    CodeEditorGroup(int id, KeyBindings* keyBindings, QWidget* parent = nullptr);

    int GetId() const { return id; }
    int GetCodeEditorCount() const;
    int GetCurrentIndex() const;
    void SetCurrentIndex(int index);
    QString GetLabel(int index) const;
    QPlainTextEdit* GetCodeEditor(int index) const;
    int AddBuffer(const QString& label);

    void SetMiniToolbarVisible(bool visible);
    bool IsMiniToolbarVisible() const { return miniToolbarVisible; }
    void SetTabDropOtherGroupsEnabled(bool enabled);
    bool IsTabDropOtherGroupsEnabled() const { return tabDropOtherGroupsEnabled; }
    void FocusCurrentCodeEditor();
    void UpdatePreferences();

signals:
    void CurrentTabChanged();
    void ReceivedFocus(CodeEditorGroup* group);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();

    int id;
    KeyBindings* keyBindings;
    QTabWidget* tabs = nullptr;
    bool miniToolbarVisible = false;
    bool tabDropOtherGroupsEnabled = true;
};
