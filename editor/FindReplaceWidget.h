#pragma once

#include <QtCore/QRegularExpression>
#include <QtWidgets/QWidget>

class FlatButton;
class KeyBindings;
class QLabel;
class QLineEdit;

// The find bar that floats over an editor group or the output view. It only gathers what to
// search for and emits it; its owner searches and reports the counts back by SetResults.
class FindReplaceWidget : public QWidget
{
    Q_OBJECT

public:
    explicit FindReplaceWidget(bool replaceEnabled, QWidget* parent = nullptr);

    bool HasSearchText() const;
    QString GetSearchText() const;
    void SetReplaceVisible(bool visible);
    void SetReplaceEnabled(bool enabled);
    bool IsReplaceVisible() const;
    bool IsFindInSelection() const;
    void SetParentWidth(int width);
    void UpdateKeyBindings(KeyBindings* keyBindings);
    QString GetResultsText() const;

signals:
    void FindNextRequested();
    void FindPreviousRequested();
    void Closed();
    void SearchChanged(const QRegularExpression& regEx, bool findInSelection, bool resetSelection, bool moveToFirst);
    void ShowRequested(bool replace);
    void ReplaceRequested(const QString& text);
    void ReplaceAllRequested(const QString& text);

public slots:
    void ToggleReplace();
    void FindNext();
    void FindPrevious();
    void OnReturnPressed();
    void Show(bool replace);
    void Close();
    void SetResults(int current, int total);
    void Replace();
    void ReplaceAll();
    void OnSearchParametersChanged(bool resetSelection = true, bool moveToFirst = false);
    void SetFindInSelectionEnabled(bool enabled, bool resetSelection);
    void ToggleMatchCase();
    void ToggleMatchWord();
    void ToggleRegularExpression();
    void ToggleFindInSelection();
    void SetSearchText(const QString& text);
    void FocusSearchText();
    void FocusReplaceText();

private slots:
    void OnSearchTextChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    FlatButton* CreateButton(const QString& name, const QString& image, int padding, const QString& toolTip,
                             bool mirrored = false);
    void SetButtonChecked(FlatButton* button, bool checked);

    QLineEdit* searchLineEdit = nullptr;
    FlatButton* regExpButton = nullptr;
    FlatButton* matchWordButton = nullptr;
    FlatButton* matchCaseButton = nullptr;
    QLabel* resultsLabel = nullptr;
    FlatButton* previousButton = nullptr;
    FlatButton* nextButton = nullptr;
    FlatButton* findInSelectionButton = nullptr;
    FlatButton* closeButton = nullptr;
    FlatButton* toggleReplaceButton = nullptr;
    QLineEdit* replaceLineEdit = nullptr;
    FlatButton* replaceButton = nullptr;
    FlatButton* replaceAllButton = nullptr;
    QWidget* replaceRow = nullptr;
    int currentResult = 0;
    bool replaceEnabled = true;
};
