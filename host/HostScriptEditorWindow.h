#pragma once
#include <QtWidgets/QWidget>

class QPlainTextEdit;

// The host's own Script Editor: a read-only view of everything reported so far.
class HostScriptEditorWindow : public QWidget
{
    Q_OBJECT

public:
    explicit HostScriptEditorWindow(QWidget* parent = nullptr);

    QString Text() const;
    // Reloads the reporter history, scrolled to its end.
    void Refresh();

private:
    void CreateWidgets();
    void CreateLayout();

    QPlainTextEdit* historyView = nullptr;
};
