#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtGui/QTextCursor>
#include <QtWidgets/QWidget>

class QListView;
class QSortFilterProxyModel;

// The popup list under the cursor of a CodeEditor: a prefix filter over a model of words and the
// keys that move through it. It knows no language; the subclasses fill the model.
class AutoCompleter : public QWidget
{
    Q_OBJECT

public:
    explicit AutoCompleter(QWidget* parent);

    void Initialize();
    void SetFont(const QFont& font);
    int RowCount() const;
    // The popup's rows as the list shows them, top to bottom.
    QStringList VisibleRows() const;
    int SelectedRow() const { return selectedRow; }
    QString GetPrefix() const { return prefix; }
    void RefreshSelected();
    void SelectPrevious();
    void SelectNext();
    void SelectTop();
    void UpdateRect(const QRect& rect);
    void UpdateRect();
    void UpdateProxyModel();

    virtual void Update(const QTextCursor& cursor, const QRect& rect, bool autoApply);
    virtual void UpdateModel();
    virtual bool ValidateAndSetPrefix(QTextCursor cursor);
    virtual Qt::CaseSensitivity GetCaseSensitivity() const;

signals:
    void Accepted(const QString& text, int prefixLength);

public slots:
    void ApplySelection();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void SetModel(QSortFilterProxyModel* model);

    QListView* listView = nullptr;
    QSortFilterProxyModel* proxyModel = nullptr; // not owned by the base; see the subclasses
    QString prefix;
    int selectedRow = 0;

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
};
