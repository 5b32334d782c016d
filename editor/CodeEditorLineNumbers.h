#pragma once

#include <QtWidgets/QWidget>

class CodeEditor;

// The gutter left of the text: line numbers and one dot per line with a message. The editor paints
// it, since only the editor knows where its blocks lie.
class CodeEditorLineNumbers : public QWidget
{
    Q_OBJECT

public:
    explicit CodeEditorLineNumbers(CodeEditor* codeEditor);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    CodeEditor* codeEditor;
};
