#include "sidebar/WorkspaceView.h"

#include "plugin/Logger.h"
#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"
#include "sidebar/WorkspaceTreeWidget.h"
#include "widgets/FlatButton.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

WorkspaceView::WorkspaceView(KeyBindings* keyBindings, QWidget* parent) : SubView(keyBindings, parent)
{
    setObjectName(QStringLiteral("WorkspaceView"));
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    SetViewName(QStringLiteral("WORKSPACE"), true);
    UpdateColors();
    SetExpanded(Settings::workspaceExpanded);
    OpenStartWorkspace();
    // Connected after the start-up choice, so that a first start writes no file until the
    // user changes the roots.
    connect(treeWidget, SIGNAL(WorkspaceModified()), this, SLOT(OnWorkspaceModified()));
}

FlatButton* WorkspaceView::CreateTitleBarButton(const QString& resource, const QString& toolTip)
{
    auto* button = new FlatButton(this);
    button->SetSize(GetTitleBarButtonSize());
    button->SetImage(QImage(resource), 6);
    button->setToolTip(toolTip);
    return button;
}

void WorkspaceView::CreateWidgets()
{
    treeWidget = new WorkspaceTreeWidget(this);
    newFileBtn = CreateTitleBarButton(QStringLiteral(":/bq2_icons/new_file.png"), QStringLiteral("New File"));
    newFolderBtn =
        CreateTitleBarButton(QStringLiteral(":/bq2_icons/new_folder.png"), QStringLiteral("New Folder"));
    refreshBtn = CreateTitleBarButton(QStringLiteral(":/bq2_icons/refresh.png"), QStringLiteral("Refresh"));
    collapseAllBtn =
        CreateTitleBarButton(QStringLiteral(":/bq2_icons/collapse.png"), QStringLiteral("Collapse All"));
}

void WorkspaceView::CreateLayout()
{
    AppendTitleBarButton(newFileBtn);
    AppendTitleBarButton(newFolderBtn);
    AppendTitleBarButton(refreshBtn);
    AppendTitleBarButton(collapseAllBtn);
    GetMainLayout()->addWidget(treeWidget);
}

void WorkspaceView::CreateConnections()
{
    connect(newFileBtn, SIGNAL(clicked()), treeWidget, SLOT(NewFile()));
    connect(newFolderBtn, SIGNAL(clicked()), treeWidget, SLOT(NewFolder()));
    connect(refreshBtn, SIGNAL(clicked()), treeWidget, SLOT(Refresh()));
    connect(collapseAllBtn, SIGNAL(clicked()), treeWidget, SLOT(collapseAll()));
    connect(treeWidget, SIGNAL(FileOpenRequested(QString, bool)), this, SLOT(OnFileOpenRequested(QString, bool)));
    connect(treeWidget, SIGNAL(FilePathChanged(QString, QString)), this,
            SLOT(OnFilePathChanged(QString, QString)));
    connect(treeWidget, SIGNAL(FindInSelected(QString, QString)), this, SLOT(OnFindInSelected(QString, QString)));
    connect(treeWidget, SIGNAL(FileAdded()), this, SLOT(OnFileAdded()));
    connect(treeWidget, SIGNAL(ItemDeleted(QString, bool)), this, SLOT(OnItemDeleted(QString, bool)));
}

void WorkspaceView::OpenStartWorkspace()
{
    const QString defaultPath = Settings::GetDefaultWorkspacePath();
    const bool defaultExists = QFileInfo::exists(defaultPath);
    if (!Settings::workspacePath.isEmpty())
    {
        const QString path = QFileInfo(Settings::workspacePath).absoluteFilePath();
        if (path != defaultPath || defaultExists)
        {
            OpenWorkspace(path);
            return;
        }
    }
    if (defaultExists)
    {
        OpenWorkspace(defaultPath);
        return;
    }
    // First start: the user's scripts folder, and the default file from the first change on.
    AddFolderToWorkspace(MayaUtil::GetUserScriptsDirectory());
    Settings::workspacePath = defaultPath;
}

void WorkspaceView::SetViewName(const QString& name, bool /*bold*/)
{
    viewName = name.isEmpty() || name.toLower() == QLatin1String("default") ? QStringLiteral("WORKSPACE") : name;
    const QString prefix = showTitlePrefix ? QStringLiteral("EXPLORER: ") : QString();
    SubView::SetViewName(QStringLiteral("%1%2").arg(prefix, viewName), prefix.isEmpty());
}

void WorkspaceView::ShowTitlePrefix(bool show)
{
    showTitlePrefix = show;
    SetViewName(viewName, true);
}

void WorkspaceView::UpdateVisibility()
{
    SubView::UpdateVisibility();
    if (!treeWidget)
        return;
    treeWidget->setVisible(IsExpanded());
    Settings::workspaceExpanded = IsExpanded();
}

bool WorkspaceView::TitleBarGeomentryContains(const QPoint& p) const
{
    QRect rect = GetTitleLabel()->geometry();
    rect.setLeft(GetArrowLabel()->geometry().left());
    return rect.contains(p);
}

void WorkspaceView::UpdateColors()
{
    QPalette palette = treeWidget->palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
    {
        palette.setColor(group, QPalette::Base, ColorSettings::sideBarBaseColor);
        palette.setColor(group, QPalette::Highlight, ColorSettings::sideBarHighlightColor);
    }
    treeWidget->setPalette(palette);
}

// ---------------------------------------------------------------------------------------------
// The workspace file

void WorkspaceView::OpenWorkspace(const QString& path)
{
    if (path.isEmpty())
        return;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
    {
        if (path != Settings::GetDefaultWorkspacePath())
            Logger::Error(QStringLiteral("Failed to open workspace file: %1").arg(path));
        return;
    }
    disconnect(treeWidget, SIGNAL(WorkspaceModified()), this, SLOT(SaveWorkspace()));
    treeWidget->clear();
    Settings::workspacePath = path;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    file.close();
    const QJsonArray folders = document.object().value(QStringLiteral("folders")).toArray();
    for (const QJsonValue& folder : folders)
    {
        if (folder.isString())
            treeWidget->AddTopLevelFolder(folder.toString());
    }
    connect(treeWidget, SIGNAL(WorkspaceModified()), this, SLOT(SaveWorkspace()));
    SetViewName(QFileInfo(path).baseName(), true);
}

void WorkspaceView::SaveWorkspaceAs(const QString& path)
{
    if (path.isEmpty())
        return;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
    {
        Logger::Error(QStringLiteral("Failed to open workspace file for write: %1").arg(path));
        return;
    }
    QJsonObject root;
    root.insert(QStringLiteral("folders"), QJsonArray::fromStringList(treeWidget->GetTopLevelFolders()));
    file.write(QJsonDocument(root).toJson(QJsonDocument::Indented));
    file.close();
    Settings::workspacePath = path;
    SetViewName(QFileInfo(path).baseName(), true);
}

void WorkspaceView::SaveWorkspace()
{
    if (Settings::workspacePath.isEmpty())
        Settings::workspacePath = Settings::GetDefaultWorkspacePath();
    SaveWorkspaceAs(Settings::workspacePath);
}

void WorkspaceView::AddFolderToWorkspace(const QString& path)
{
    if (path.isEmpty())
        treeWidget->AddFolderToWorkspace();
    else
        treeWidget->AddTopLevelFolder(path);
}

void WorkspaceView::Reveal(const QString& path)
{
    treeWidget->Reveal(path);
}

void WorkspaceView::Refresh()
{
    treeWidget->Refresh();
}

QStringList WorkspaceView::GetWorkspaceFiles() const
{
    QStringList files;
    for (const QString& folder : treeWidget->GetTopLevelFolders())
    {
        QDirIterator it(folder, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (it.hasNext())
        {
            const QFileInfo info = it.nextFileInfo();
            if (Settings::pythonHideCompiledFiles && info.suffix().toLower() == QLatin1String("pyc"))
                continue;
            files.append(info.absoluteFilePath());
        }
    }
    return files;
}

// ---------------------------------------------------------------------------------------------
// Relays

void WorkspaceView::OnWorkspaceModified()
{
    SaveWorkspace();
    emit WorkspaceModified();
}

void WorkspaceView::OnFileOpenRequested(const QString& filePath, bool temp)
{
    emit FileOpenRequested(filePath, temp);
}

void WorkspaceView::OnFilePathChanged(const QString& oldFilePath, const QString& newFilePath)
{
    emit FilePathChanged(oldFilePath, newFilePath);
}

void WorkspaceView::OnFindInSelected(const QString& includeStr, const QString& excludeStr)
{
    emit FindInSelected(includeStr, excludeStr);
}

void WorkspaceView::OnFileAdded()
{
    emit WorkspaceModified();
}

void WorkspaceView::OnItemDeleted(const QString& path, bool isFolder)
{
    emit ItemDeleted(path, isFolder);
}
