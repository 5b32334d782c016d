#include "language/AutoCompleter.h"

#include "settings/ColorSettings.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>
#include <QtCore/QSortFilterProxyModel>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QListView>
#include <QtWidgets/QVBoxLayout>

namespace
{
constexpr int DEFAULT_WIDTH = 140;
constexpr int WIDE_CONTENT = 100;
constexpr int WIDE_MARGIN = 40;
constexpr int MAX_VISIBLE_ROWS = 12;
} // namespace

AutoCompleter::AutoCompleter(QWidget* parent) : QWidget(parent) {}

void AutoCompleter::Initialize()
{
    setWindowFlags(Qt::Popup);
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    UpdateModel();
    hide();
}

void AutoCompleter::CreateWidgets()
{
    listView = new QListView(this);
    listView->setSelectionMode(QAbstractItemView::SingleSelection);
    listView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    listView->setFrameStyle(0);
    listView->installEventFilter(this);
    QPalette palette = listView->palette();
    palette.setColor(QPalette::Base, ColorSettings::sideBarBaseColor);
    listView->setPalette(palette);
}

void AutoCompleter::CreateLayout()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    // The popup is clipped at the screen's edges, even below the list's own minimum size.
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    listView->setMinimumSize(0, 0);
    layout->addWidget(listView);
}

void AutoCompleter::CreateConnections()
{
    connect(listView, SIGNAL(doubleClicked(QModelIndex)), this, SLOT(ApplySelection()));
}

void AutoCompleter::SetModel(QSortFilterProxyModel* model)
{
    proxyModel = model;
    listView->setModel(model);
}

void AutoCompleter::SetFont(const QFont& font)
{
    listView->setFont(font);
}

int AutoCompleter::RowCount() const
{
    return proxyModel ? proxyModel->rowCount() : 0;
}

QStringList AutoCompleter::VisibleRows() const
{
    QStringList rows;
    for (int row = 0; row < RowCount(); ++row)
        rows.append(proxyModel->index(row, 0).data().toString());
    return rows;
}

void AutoCompleter::RefreshSelected()
{
    if (!proxyModel)
        return;
    const QModelIndex index = proxyModel->index(selectedRow, 0);
    listView->selectionModel()->select(index, QItemSelectionModel::ClearAndSelect);
    listView->setCurrentIndex(index);
    listView->scrollTo(index);
}

void AutoCompleter::SelectPrevious()
{
    if (selectedRow <= 0)
        return;
    --selectedRow;
    RefreshSelected();
}

void AutoCompleter::SelectNext()
{
    if (selectedRow >= RowCount() - 1)
        return;
    ++selectedRow;
    RefreshSelected();
}

void AutoCompleter::SelectTop()
{
    // The first row that matches the prefix in its case too, else the first row.
    selectedRow = 0;
    for (int row = 0; row < RowCount(); ++row)
    {
        const QString text = proxyModel->index(row, 0).data().toString();
        if (text.startsWith(prefix, Qt::CaseInsensitive) && text.startsWith(prefix, Qt::CaseSensitive))
        {
            selectedRow = row;
            break;
        }
    }
    RefreshSelected();
}

void AutoCompleter::UpdateRect(const QRect& rect)
{
    const int hint = listView->sizeHintForColumn(0);
    const int width = hint > WIDE_CONTENT ? hint + WIDE_MARGIN : DEFAULT_WIDTH;
    const int height = listView->sizeHintForRow(0) * qMin(RowCount(), MAX_VISIBLE_ROWS);
    QRect geometry(rect.topLeft(), QSize(width, height));
    if (const QScreen* screen = QGuiApplication::screenAt(geometry.topLeft()))
    {
        // Clipped at the screen's edges, not moved.
        const QRect screenRect = screen->geometry();
        geometry.setRight(qMin(geometry.right(), screenRect.right()));
        geometry.setBottom(qMin(geometry.bottom(), screenRect.bottom()));
    }
    setGeometry(geometry);
}

void AutoCompleter::UpdateRect()
{
    UpdateRect(geometry());
}

void AutoCompleter::UpdateProxyModel()
{
    if (!proxyModel)
        return;
    // The prefix is a word of letters, digits and underscores, so it goes in unescaped.
    proxyModel->setFilterRegularExpression(QStringLiteral("^(%1)").arg(prefix));
    proxyModel->setFilterCaseSensitivity(GetCaseSensitivity());
}

void AutoCompleter::Update(const QTextCursor&, const QRect&, bool) {}

void AutoCompleter::UpdateModel() {}

bool AutoCompleter::ValidateAndSetPrefix(QTextCursor cursor)
{
    static const QRegularExpression wordOrDot(QStringLiteral("[a-zA-Z0-9_\\.]"));
    static const QRegularExpression notWordOrSpace(QStringLiteral("[^a-zA-Z0-9_\\s]"));
    static const QRegularExpression word(QStringLiteral("^[a-zA-Z0-9_]+$"));
    const QTextDocument* document = cursor.document();
    const int position = cursor.position();
    const QString previous(document->characterAt(position - 1));
    const QString next(document->characterAt(position));
    if (wordOrDot.match(previous).hasMatch() && notWordOrSpace.match(next).hasMatch())
        cursor.movePosition(QTextCursor::PreviousWord, QTextCursor::KeepAnchor);
    else
        cursor.movePosition(QTextCursor::StartOfWord, QTextCursor::KeepAnchor);
    prefix = cursor.selectedText();
    // Option flags and variables are not completed.
    const QChar before = document->characterAt(cursor.position() - 1);
    return !prefix.isEmpty() && word.match(prefix).hasMatch() && before != QLatin1Char('-') &&
           before != QLatin1Char('$');
}

Qt::CaseSensitivity AutoCompleter::GetCaseSensitivity() const
{
    return Qt::CaseSensitive;
}

void AutoCompleter::ApplySelection()
{
    const QModelIndex index = listView->currentIndex();
    if (!index.isValid())
        return;
    hide();
    if (parentWidget())
        parentWidget()->setFocus();
    emit Accepted(index.data().toString(), static_cast<int>(prefix.size()));
}

bool AutoCompleter::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == listView && event->type() == QEvent::KeyPress && isVisible())
    {
        keyPressEvent(static_cast<QKeyEvent*>(event));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void AutoCompleter::keyPressEvent(QKeyEvent* event)
{
    switch (event->key())
    {
    case Qt::Key_Escape:
        hide();
        break;
    case Qt::Key_Tab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        ApplySelection();
        break;
    case Qt::Key_Backtab:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        break;
    case Qt::Key_Up:
        SelectPrevious();
        break;
    case Qt::Key_Down:
        SelectNext();
        break;
    default:
        // Typing goes on in the editor while the popup has the focus.
        if (parentWidget())
            QCoreApplication::sendEvent(parentWidget(), event);
        break;
    }
}

void AutoCompleter::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    listView->setFocus();
}
