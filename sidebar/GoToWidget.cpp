#include "sidebar/GoToWidget.h"

#include "language/BaseParser.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"
#include "sidebar/GoToFilterProxyModel.h"
#include "sidebar/HtmlDelegate.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QVBoxLayout>

namespace
{
const QString FILE_ROW_FORMAT = QStringLiteral("%1 <font color=\"#808080\"><small>%2/%3</small></font>");
}

GoToWidget::GoToWidget(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("GoToWidget"));
    setWindowFlags(Qt::Popup);
    setFixedWidth(400);
    setAutoFillBackground(true);
    CreateIcons();
    CreateWidgets();
    CreateLayout();
    CreateConnections();
}

void GoToWidget::CreateIcons()
{
    const auto icon = [](const char* name)
    { return QIcon(QStringLiteral(":/bq2_icons/%1.png").arg(QLatin1String(name))); };
    melIcon = icon("mel_icon");
    pythonIcon = icon("python_icon");
    textIcon = icon("text_icon");
    melGlobalProcIcon = icon("mel_global_proc");
    melProcIcon = icon("mel_proc");
    pythonClassIcon = icon("python_class");
    pythonMethodIcon = icon("python_method");
    pythonClassMethodIcon = icon("python_class_method");
    pythonStaticMethodIcon = icon("python_static_method");
}

void GoToWidget::CreateWidgets()
{
    QPalette windowPalette = palette();
    windowPalette.setColor(QPalette::Window, ColorSettings::sideBarBaseColor);
    setPalette(windowPalette);

    lineEdit = new QLineEdit(this);

    fileModel = new QStandardItemModel(this);
    itemModel = new QStandardItemModel(this);
    proxyModel = new GoToFilterProxyModel(FilterRole, this);
    proxyModel->setSourceModel(fileModel);

    listView = new QListView(this);
    listView->setSelectionMode(QAbstractItemView::SingleSelection);
    listView->setFrameStyle(0);
    listView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    listView->setItemDelegate(new HtmlDelegate(listView));
    // Every row is one line: the view then measures one row, not twenty thousand.
    listView->setUniformItemSizes(true);
    listView->setModel(proxyModel);
    QPalette listPalette = listView->palette();
    listPalette.setColor(QPalette::Base, ColorSettings::sideBarBaseColor);
    listPalette.setColor(QPalette::Highlight, ColorSettings::sideBarHighlightColor);
    listView->setPalette(listPalette);

    helpLabel = new QLabel(QStringLiteral("Help Text"), this);
    helpLabel->hide();
}

void GoToWidget::CreateLayout()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(lineEdit);
    layout->addWidget(listView);
    helpLayout = new QHBoxLayout();
    helpLayout->addWidget(helpLabel);
    layout->addLayout(helpLayout);
}

void GoToWidget::CreateConnections()
{
    connect(lineEdit, SIGNAL(textEdited(QString)), this, SLOT(Update()));
    connect(listView, SIGNAL(activated(QModelIndex)), this, SLOT(ApplySelection()));
    connect(listView, SIGNAL(clicked(QModelIndex)), this, SLOT(ApplySelection()));
    lineEdit->installEventFilter(this);
    listView->installEventFilter(this);
}

// ---------------------------------------------------------------------------------------------
// Showing and closing

void GoToWidget::Show(GoToFilterType filter, BaseParser* parser, int lines, int cursorPosition,
                      int scrollValue, const QList<CodeEditorProperties>& lastUsedEditors, bool reverse)
{
    Show(filter, parser ? parser->GetItems() : QList<ParserItem>(), lines, cursorPosition, scrollValue,
         lastUsedEditors, reverse);
}

void GoToWidget::Show(GoToFilterType filter, const QList<ParserItem>& symbols, int lines, int cursorPosition,
                      int scrollValue, const QList<CodeEditorProperties>& lastUsedEditors, bool reverse)
{
    selectedRow = -1;
    lineCount = lines;
    cancelPosition = cursorPosition;
    cancelScrollValue = scrollValue;

    if (filter == GoToFilterCodeEditor)
    {
        lineEdit->clear();
        InitializeCodeEditorProperties(lastUsedEditors);
        LoadCodeEditorProperties();
        lineEdit->hide();
        SetResultsVisible(true);
        proxyModel->SetFilterText(QString());
        UpdateRect();
        // Row 0 is the current editor: the palette opens on the one before it, or the oldest.
        if (reverse)
            SelectPrevious();
        else
            SelectNext();
        show();
        listView->setFocus();
        return;
    }

    if (filter == GoToFilterSymbol)
        lineEdit->setText(QStringLiteral("@"));
    else if (filter == GoToFilterLine)
        lineEdit->setText(QStringLiteral(":"));
    else
        lineEdit->clear();
    lineEdit->show();
    InitializeSymbolsInFile(symbols);
    Update(true);
    raise();
    show();
    lineEdit->setFocus();
    lineEdit->deselect();
    lineEdit->end(false);
}

void GoToWidget::Cancel()
{
    emit Cancelled(cancelPosition, cancelScrollValue);
    close();
}

void GoToWidget::SetText(const QString& text)
{
    lineEdit->setText(text);
    Update(false);
}

QString GoToWidget::GetText() const
{
    const QString text = lineEdit->text();
    if (text.startsWith(QLatin1Char('@')) || text.startsWith(QLatin1Char(':')))
        return text.mid(1);
    return text;
}

void GoToWidget::SetFileUpdateRequired()
{
    filesUpdateRequired = true;
}

int GoToWidget::GetRowCount() const
{
    return proxyModel->rowCount();
}

QString GoToWidget::GetRowText(int row) const
{
    return proxyModel->index(row, 0).data(Qt::DisplayRole).toString();
}

// ---------------------------------------------------------------------------------------------
// Filtering

void GoToWidget::Update(bool initial)
{
    const QString text = lineEdit->text();
    if (text.startsWith(QLatin1Char(':')))
    {
        SetResultsVisible(false);
        if (!lineNumbersLoaded)
            LoadLineNumbers();
        UpdateRect();
        OnTextChanged();
        return;
    }

    SetResultsVisible(true);
    QString filterText;
    if (text.startsWith(QLatin1Char('@')))
    {
        if (!symbolsLoaded)
            LoadSymbolsInFile();
        filterText = text.mid(1);
    }
    else if (!Settings::workspaceFolders.isEmpty())
    {
        if (filesUpdateRequired)
            InitializeFiles();
        if (!filesLoaded)
            LoadFiles();
        filterText = text;
    }
    else
    {
        UnloadAll();
        SetResultsVisible(false);
        SetHelpText(QStringLiteral("No workspace folders found"));
        UpdateRect();
        return;
    }

    // A plain substring test; among the matches the order is alphabetical.
    proxyModel->SetFilterText(filterText);

    UpdateRect();
    if (initial && filterText.isEmpty())
    {
        selectedRow = -1;
        listView->clearSelection();
        return;
    }
    SelectTop(filterText);
    if (filterText.isEmpty())
        listView->scrollToTop();
    else if (selectedRow >= 0)
        listView->scrollTo(proxyModel->index(selectedRow, 0), QAbstractItemView::PositionAtCenter);
}

void GoToWidget::SelectTop(const QString& filterText)
{
    selectedRow = proxyModel->rowCount() > 0 ? 0 : -1;
    if (!filterText.isEmpty())
    {
        const int rows = proxyModel->rowCount();
        for (int row = 0; row < rows; ++row)
        {
            if (proxyModel->GetKey(row).startsWith(filterText, Qt::CaseSensitive))
            {
                selectedRow = row;
                break;
            }
        }
    }
    OnSelectionChanged();
    RefreshSelected();
}

void GoToWidget::SelectPrevious()
{
    const int rows = proxyModel->rowCount();
    if (rows == 0)
        return;
    selectedRow = selectedRow <= 0 ? rows - 1 : selectedRow - 1;
    RefreshSelected();
    OnSelectionChanged();
}

void GoToWidget::SelectNext()
{
    const int rows = proxyModel->rowCount();
    if (rows == 0)
        return;
    selectedRow = selectedRow < 0 || selectedRow >= rows - 1 ? 0 : selectedRow + 1;
    RefreshSelected();
    OnSelectionChanged();
}

void GoToWidget::RefreshSelected()
{
    if (selectedRow < 0 || selectedRow >= proxyModel->rowCount())
    {
        listView->clearSelection();
        return;
    }
    const QModelIndex index = proxyModel->index(selectedRow, 0);
    listView->setCurrentIndex(index);
    listView->scrollTo(index);
}

void GoToWidget::OnSelectionChanged()
{
    // Live preview: the editor follows the symbol list.
    if (!symbolsLoaded || selectedRow < 0 || selectedRow >= proxyModel->rowCount())
        return;
    emit SeekPositionRequested(proxyModel->index(selectedRow, 0).data(Qt::UserRole).toInt(), true);
}

void GoToWidget::OnTextChanged()
{
    if (!lineNumbersLoaded)
        return;
    const int lineNumber = GetLineNumber();
    UpdateLineNumberHelpText(lineNumber);
    if (lineNumber > 0)
        emit SeekLineNumberRequested(lineNumber);
}

int GoToWidget::GetLineNumber() const
{
    bool ok = false;
    const int number = GetText().toInt(&ok, 10);
    if (!ok || number <= 0 || number > lineCount)
        return -1;
    return number;
}

void GoToWidget::UpdateLineNumberHelpText(int lineNumber)
{
    if (lineNumber > 0)
        SetHelpText(QStringLiteral("Go to line %1").arg(lineNumber));
    else
        SetHelpText(QStringLiteral("Type a line between %1 and %2 to navigate to").arg(1).arg(lineCount));
}

bool GoToWidget::IsLineMode() const
{
    return lineNumbersLoaded;
}

bool GoToWidget::IsSymbolMode() const
{
    return symbolsLoaded;
}

void GoToWidget::ApplySelection()
{
    if (IsLineMode())
    {
        const int lineNumber = GetLineNumber();
        if (lineNumber > 0)
            emit SeekLineNumberRequested(lineNumber);
        close();
        return;
    }
    const QModelIndexList selected = listView->selectionModel()->selectedIndexes();
    const QModelIndex index = selected.isEmpty() ? QModelIndex() : selected.first();
    if (index.isValid())
    {
        if (editorsLoaded)
        {
            emit CodeEditorRequested(index.data(Qt::UserRole).toString());
        }
        else if (filesLoaded)
        {
            const QString path = index.data(Qt::UserRole).toString();
            if (!path.isEmpty())
                emit OpenFileRequested(path);
        }
        else if (IsSymbolMode())
        {
            emit SeekPositionRequested(index.data(Qt::UserRole).toInt(), true);
        }
    }
    close();
}

// ---------------------------------------------------------------------------------------------
// Content

bool GoToWidget::IsDisplayedSymbolType(ParserItemType type)
{
    // Procs, methods and classes; not imports, variables or __main__.
    switch (type)
    {
    case ParserItemGlobalProc:
    case ParserItemProc:
    case ParserItemMethod:
    case ParserItemStaticMethod:
    case ParserItemClassMethod:
    case ParserItemClass:
        return true;
    default:
        return false;
    }
}

void GoToWidget::SetSymbolIcon(QStandardItem* item, ParserItemType type) const
{
    switch (type)
    {
    case ParserItemGlobalProc:
        item->setIcon(melGlobalProcIcon);
        break;
    case ParserItemProc:
        item->setIcon(melProcIcon);
        break;
    case ParserItemMethod:
        item->setIcon(pythonMethodIcon);
        break;
    case ParserItemClass:
        item->setIcon(pythonClassIcon);
        break;
    case ParserItemStaticMethod:
        item->setIcon(pythonStaticMethodIcon);
        break;
    default:
        item->setIcon(pythonClassMethodIcon);
        break;
    }
}

const QIcon& GoToWidget::LanguageIcon(CodeEditorLanguage language) const
{
    if (language == CodeEditorLanguage::MEL)
        return melIcon;
    if (language == CodeEditorLanguage::PYTHON)
        return pythonIcon;
    return textIcon;
}

void GoToWidget::InitializeSymbolsInFile(const QList<ParserItem>& symbols)
{
    itemModel->clear();
    symbolsLoaded = false;
    for (const ParserItem& symbol : symbols)
    {
        if (!IsDisplayedSymbolType(symbol.type))
            continue;
        // Names such as "operator<" are text, not markup.
        auto* item = new QStandardItem(symbol.name.toHtmlEscaped());
        item->setData(symbol.name, FilterRole);
        item->setData(symbol.position, Qt::UserRole);
        SetSymbolIcon(item, symbol.type);
        itemModel->appendRow(item);
    }
}

void GoToWidget::InitializeFiles()
{
    fileModel->clear();
    filesLoaded = false;
    QList<QStandardItem*> rows;
    for (const QString& folder : Settings::workspaceFolders)
    {
        const QDir dir(folder);
        const QString label = dir.dirName();
        QDirIterator it(folder, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (it.hasNext())
        {
            const QString path = it.next();
            const QFileInfo info = it.fileInfo();
            const QString suffix = info.suffix().toLower();
            if (Settings::pythonHideCompiledFiles && suffix == QLatin1String("pyc"))
                continue;
            const QString name = info.fileName();
            const QString relative = dir.relativeFilePath(path);
            auto* item = new QStandardItem(
                FILE_ROW_FORMAT.arg(name.toHtmlEscaped(), label.toHtmlEscaped(), relative.toHtmlEscaped()));
            item->setData(FILE_ROW_FORMAT.arg(name, label, relative), FilterRole);
            item->setData(info.absoluteFilePath(), Qt::UserRole);
            if (suffix == QLatin1String("mel"))
                item->setIcon(melIcon);
            else if (suffix == QLatin1String("py") || suffix == QLatin1String("pyw") ||
                     suffix == QLatin1String("pyi"))
                item->setIcon(pythonIcon);
            else
                item->setIcon(textIcon);
            rows.append(item);
        }
    }
    // One insertion for all rows: the proxy sorts and filters once, not once per file.
    QStandardItem* root = fileModel->invisibleRootItem();
    root->appendRows(rows);
    filesUpdateRequired = false;
}

void GoToWidget::InitializeCodeEditorProperties(const QList<CodeEditorProperties>& editors)
{
    itemModel->clear();
    for (const CodeEditorProperties& properties : editors)
    {
        QString text = properties.label.toHtmlEscaped();
        if (properties.type == CodeEditorType::FILE)
            text += QStringLiteral(" <font color=\"#808080\"><small>%1</small></font>")
                        .arg(QDir::toNativeSeparators(properties.filePath).toHtmlEscaped());
        auto* item = new QStandardItem(text);
        item->setData(properties.label, FilterRole);
        item->setData(properties.filePath, Qt::UserRole);
        item->setIcon(LanguageIcon(properties.language));
        itemModel->appendRow(item);
    }
}

void GoToWidget::UnloadAll()
{
    filesLoaded = false;
    symbolsLoaded = false;
    lineNumbersLoaded = false;
    editorsLoaded = false;
}

void GoToWidget::LoadFiles()
{
    UnloadAll();
    proxyModel->setSourceModel(fileModel);
    filesLoaded = true;
}

void GoToWidget::LoadSymbolsInFile()
{
    UnloadAll();
    proxyModel->setSourceModel(itemModel);
    symbolsLoaded = true;
}

void GoToWidget::LoadLineNumbers()
{
    UnloadAll();
    lineNumbersLoaded = true;
}

void GoToWidget::LoadCodeEditorProperties()
{
    UnloadAll();
    proxyModel->setSourceModel(itemModel);
    editorsLoaded = true;
    selectedRow = 0;
    RefreshSelected();
}

// ---------------------------------------------------------------------------------------------
// Look and keys

void GoToWidget::SetResultsVisible(bool visible)
{
    resultsVisible = visible;
    helpVisible = !visible;
    listView->setVisible(visible);
    helpLabel->setVisible(!visible);
}

void GoToWidget::SetHelpText(const QString& text)
{
    helpLabel->setText(text);
}

void GoToWidget::UpdateRect()
{
    UpdateRect(geometry());
}

void GoToWidget::UpdateRect(QRect rect)
{
    const QMargins margins = layout()->contentsMargins();
    const int spacing = layout()->spacing();
    int height = margins.top() + margins.bottom();
    if (lineEdit->isVisibleTo(this))
        height += lineEdit->sizeHint().height();
    if (resultsVisible)
    {
        const int rows = qMin(proxyModel->rowCount(), MaxVisibleRows);
        const int rowHeight = proxyModel->rowCount() > 0 ? listView->sizeHintForRow(0) : 0;
        // The list's own height follows only at the next layout pass: count with the new one.
        const int listHeight = rowHeight * rows + 2 * listView->frameWidth();
        listView->setFixedHeight(listHeight);
        height += listHeight + spacing;
    }
    if (helpVisible)
        height += helpLabel->sizeHint().height() + spacing;

    // The window keeps the minimum size of the last layout pass until the next one; without a pass
    // now it would not shrink to fewer rows.
    layout()->activate();
    QRect result(rect.topLeft(), QSize(width(), height));
    if (const QScreen* screen = QGuiApplication::screenAt(rect.topLeft()))
    {
        const QRect available = screen->availableGeometry();
        if (result.bottom() > available.bottom())
            result.setBottom(available.bottom());
        if (result.right() > available.right())
            result.moveRight(available.right());
    }
    setGeometry(result);
}

void GoToWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    UpdateRect();
}

bool GoToWidget::HandleKey(QKeyEvent* event)
{
    switch (event->key())
    {
    case Qt::Key_Escape:
        Cancel();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        ApplySelection();
        return true;
    case Qt::Key_Up:
        SelectPrevious();
        return true;
    case Qt::Key_Down:
        SelectNext();
        return true;
    case Qt::Key_Tab:
        if (editorsLoaded)
            SelectNext();
        return true;
    case Qt::Key_Backtab:
        if (editorsLoaded)
            SelectPrevious();
        return true;
    default:
        return false;
    }
}

bool GoToWidget::eventFilter(QObject* object, QEvent* event)
{
    if (object == lineEdit || object == listView)
    {
        if (event->type() == QEvent::KeyPress && HandleKey(static_cast<QKeyEvent*>(event)))
            return true;
        if (event->type() == QEvent::KeyRelease && HandleKeyRelease(static_cast<QKeyEvent*>(event)))
            return true;
    }
    return QWidget::eventFilter(object, event);
}

void GoToWidget::keyPressEvent(QKeyEvent* event)
{
    if (!HandleKey(event))
        QWidget::keyPressEvent(event);
}

bool GoToWidget::HandleKeyRelease(QKeyEvent* event)
{
    // Held Ctrl steps through the recent editors with Tab; letting go switches, as a window
    // switcher does.
    if (!editorsLoaded || !isVisible() || event->key() != Qt::Key_Control)
        return false;
    ApplySelection();
    return true;
}

void GoToWidget::keyReleaseEvent(QKeyEvent* event)
{
    if (!HandleKeyRelease(event))
        QWidget::keyReleaseEvent(event);
}
