#pragma once
#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

class QLineEdit;
class QToolButton;

// Maya's command line: one line of MEL or Python run on Return, with the last line of output
// shown beside it and the lines entered before reachable with Up and Down.
class HostCommandLine : public QWidget
{
    Q_OBJECT

public:
    explicit HostCommandLine(QWidget* parent = nullptr);

    bool IsPython() const;
    void SetPython(bool python);
    QLineEdit* InputField() const;
    QString ResultText() const;
    QStringList EnteredLines() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();

    void ToggleLanguage();
    void OnReturnPressed();
    void StepHistory(int step);
    void UpdateResult(const QString& historyBefore);

    QToolButton* languageButton = nullptr;
    QLineEdit* inputField = nullptr;
    QLineEdit* resultField = nullptr;
    bool python = false;
    QStringList enteredLines;
    int historyIndex = 0; // == enteredLines.size() while editing a new line
    QString pendingLine;  // what was typed before stepping into the history
};
