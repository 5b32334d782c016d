#pragma once

#include "editor/CodeEditorProperties.h"
#include "language/ParserItem.h"
#include "sidebar/GoToFilterType.h"

#include <QtCore/QList>
#include <QtCore/QRect>
#include <QtGui/QIcon>
#include <QtWidgets/QWidget>

class BaseParser;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListView;
class GoToFilterProxyModel;
class QStandardItem;
class QStandardItemModel;

// The small search palette over the editor: one text line, a result list and a help line. It
// jumps to a file of the workspace, a symbol of the buffer (text starting with "@"), a line (":"),
// or one of the group's open editors. It is made once and prepared anew by each Show.
class GoToWidget : public QWidget
{
    Q_OBJECT

public:
    // What a row is sorted and filtered on; the display text is its HTML-safe form.
    static constexpr int FilterRole = Qt::UserRole + 1;
    static constexpr int MaxVisibleRows = 12;

    explicit GoToWidget(QWidget* parent = nullptr);

    // The symbols are the parser's items of its last run; without a parser there are none.
    void Show(GoToFilterType filter, BaseParser* parser, int lineCount, int cursorPosition, int scrollValue,
              const QList<CodeEditorProperties>& lastUsedEditors, bool reverse);
    void Show(GoToFilterType filter, const QList<ParserItem>& symbols, int lineCount, int cursorPosition,
              int scrollValue, const QList<CodeEditorProperties>& lastUsedEditors, bool reverse);
    void Cancel();
    void SetText(const QString& text);
    QString GetText() const;
    void SetFileUpdateRequired();
    void UpdateRect(QRect rect);
    void UpdateRect();

    // What the palette shows now; for its owner and its checks.
    QLineEdit* GetLineEdit() const { return lineEdit; }
    QListView* GetListView() const { return listView; }
    QLabel* GetHelpLabel() const { return helpLabel; }
    bool IsHelpVisible() const { return helpVisible; }
    bool IsResultsVisible() const { return resultsVisible; }
    int GetSelectedRow() const { return selectedRow; }
    int GetRowCount() const;
    QString GetRowText(int row) const;

signals:
    void SeekPositionRequested(int position, bool select);
    void SeekLineNumberRequested(int line);
    void OpenFileRequested(const QString& path);
    void CodeEditorRequested(const QString& id);
    void Cancelled(int position, int scrollValue);

public slots:
    void Update(bool initial = false);
    void ApplySelection();
    void OnTextChanged();
    void OnSelectionChanged();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    void CreateIcons();
    bool HandleKey(QKeyEvent* event);
    bool HandleKeyRelease(QKeyEvent* event);

    void InitializeFiles();
    void InitializeSymbolsInFile(const QList<ParserItem>& symbols);
    void InitializeCodeEditorProperties(const QList<CodeEditorProperties>& editors);
    void UnloadAll();
    void LoadFiles();
    void LoadSymbolsInFile();
    void LoadLineNumbers();
    void LoadCodeEditorProperties();
    void SetSymbolIcon(QStandardItem* item, ParserItemType type) const;
    const QIcon& LanguageIcon(CodeEditorLanguage language) const;
    static bool IsDisplayedSymbolType(ParserItemType type);

    void SetResultsVisible(bool visible);
    void SetHelpText(const QString& text);
    void SelectTop(const QString& filterText);
    void SelectPrevious();
    void SelectNext();
    void RefreshSelected();
    int GetLineNumber() const;
    void UpdateLineNumberHelpText(int lineNumber);
    bool IsLineMode() const;
    bool IsSymbolMode() const;

    QLineEdit* lineEdit = nullptr;
    QListView* listView = nullptr;
    QLabel* helpLabel = nullptr;
    QHBoxLayout* helpLayout = nullptr;
    QStandardItemModel* fileModel = nullptr;
    QStandardItemModel* itemModel = nullptr;
    GoToFilterProxyModel* proxyModel = nullptr;
    int lineCount = 0;
    bool filesLoaded = false;
    bool symbolsLoaded = false;
    bool lineNumbersLoaded = false;
    bool editorsLoaded = false;
    bool filesUpdateRequired = true;
    int selectedRow = -1;
    int cancelPosition = 0;
    int cancelScrollValue = 0;
    bool resultsVisible = true;
    bool helpVisible = false;

    QIcon melIcon;
    QIcon pythonIcon;
    QIcon textIcon;
    QIcon melGlobalProcIcon;
    QIcon melProcIcon;
    QIcon pythonClassIcon;
    QIcon pythonMethodIcon;
    QIcon pythonClassMethodIcon;
    QIcon pythonStaticMethodIcon;
};
