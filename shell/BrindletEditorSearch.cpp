// Find in a buffer or in the output, and the search in files: the walk over the folders, the
// live refresh of one buffer's results, and replacing through the editors.
#include "shell/BrindletEditor.h"

#include "editor/CodeEditor.h"
#include "editor/FindReplaceWidget.h"
#include "output/OutputTextEdit.h"
#include "settings/Settings.h"
#include "sidebar/SearchFunctions.h"
#include "sidebar/SideBar.h"
#include "tabs/CodeEditorGroup.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QApplication>

namespace
{
FindReplaceWidget* FindReplaceOf(QWidget* widget)
{
    for (QWidget* parent = widget ? widget->parentWidget() : nullptr; parent; parent = parent->parentWidget())
    {
        if (auto* findReplace = qobject_cast<FindReplaceWidget*>(parent))
            return findReplace;
    }
    return nullptr;
}

bool StartsWithAny(const QString& path, const QStringList& prefixes)
{
    for (const QString& prefix : prefixes)
    {
        if (path.startsWith(prefix))
            return true;
    }
    return false;
}
} // namespace

void BrindletEditor::ConnectSearch()
{
    for (CodeEditorGroup* group : codeEditorGroups)
        connect(group, SIGNAL(TextChanged(QString, QString)), this, SLOT(UpdateSearch(QString, QString)));
    connect(sideBar, SIGNAL(SearchRequested(QString, QStringList, QStringList, bool, bool, bool)), this,
            SLOT(Search(QString, QStringList, QStringList, bool, bool, bool)));
    connect(sideBar, SIGNAL(SearchCleared()), this, SLOT(OnSearchCleared()));
    connect(sideBar, SIGNAL(SearchFocusChanged(QString, int)), this, SLOT(OnSearchFocusChanged(QString, int)));
    connect(sideBar, SIGNAL(FindAndReplace(QString, int)), this, SLOT(OnFindAndReplace(QString, int)));
}

// ---------------------------------------------------------------------------------------------
// Find in the widget with the focus

void BrindletEditor::Find(bool replace, bool updateFindText, bool dialogHasFocus, bool maintainReplaceVisibility)
{
    QWidget* focus = QApplication::focusWidget();
    if (qobject_cast<CodeEditor*>(focus))
    {
        if (CodeEditorGroup* group = GetActiveCodeEditorGroup())
            group->ShowFindReplace(replace, updateFindText, dialogHasFocus, maintainReplaceVisibility);
    }
    else if (auto* output = qobject_cast<OutputTextEdit*>(focus))
    {
        if (!replace)
            output->ShowFindReplace(updateFindText, dialogHasFocus);
    }
    else if (FindReplaceWidget* findReplace = FindReplaceOf(focus))
    {
        findReplace->Show(replace);
    }
}

void BrindletEditor::Replace()
{
    Find(true, true, true, false);
}

void BrindletEditor::FindNext(bool backwards)
{
    QWidget* focus = QApplication::focusWidget();
    if (qobject_cast<CodeEditor*>(focus))
    {
        if (CodeEditorGroup* group = GetActiveCodeEditorGroup())
            backwards ? group->FindPrevious() : group->FindNext();
    }
    else if (auto* output = qobject_cast<OutputTextEdit*>(focus))
    {
        backwards ? output->FindPrevious() : output->FindNext();
    }
    else if (FindReplaceWidget* findReplace = FindReplaceOf(focus))
    {
        backwards ? findReplace->FindPrevious() : findReplace->FindNext();
    }
}

void BrindletEditor::FindPrevious()
{
    FindNext(true);
}

void BrindletEditor::SelectAndFindNext()
{
    SelectAndFind(false);
}

void BrindletEditor::SelectAndFindPrevious()
{
    SelectAndFind(true);
}

void BrindletEditor::SelectAndFind(bool backwards)
{
    // The selection, or the word under the cursor, becomes the search without moving the focus.
    QWidget* focus = QApplication::focusWidget();
    if (qobject_cast<CodeEditor*>(focus))
    {
        if (CodeEditorGroup* group = GetActiveCodeEditorGroup())
        {
            group->ShowFindReplace(false, true, false, true);
            backwards ? group->FindPrevious() : group->FindNext();
        }
    }
    else if (auto* output = qobject_cast<OutputTextEdit*>(focus))
    {
        output->ShowFindReplace(true, false);
        backwards ? output->FindPrevious() : output->FindNext();
    }
    else if (FindReplaceWidget* findReplace = FindReplaceOf(focus))
    {
        backwards ? findReplace->FindPrevious() : findReplace->FindNext();
    }
}

void BrindletEditor::ReplaceNext()
{
    QWidget* focus = QApplication::focusWidget();
    if (qobject_cast<CodeEditor*>(focus))
    {
        if (CodeEditorGroup* group = GetActiveCodeEditorGroup())
            group->Replace();
    }
    else if (FindReplaceWidget* findReplace = FindReplaceOf(focus))
    {
        findReplace->Replace();
    }
}

void BrindletEditor::ReplaceAll()
{
    QWidget* focus = QApplication::focusWidget();
    if (qobject_cast<CodeEditor*>(focus))
    {
        if (CodeEditorGroup* group = GetActiveCodeEditorGroup())
            group->ReplaceAll();
    }
    else if (FindReplaceWidget* findReplace = FindReplaceOf(focus))
    {
        findReplace->ReplaceAll();
    }
}

// ---------------------------------------------------------------------------------------------
// The search view

void BrindletEditor::FindInFiles(bool replace)
{
    if (CodeEditor* codeEditor = GetActiveCodeEditor())
    {
        const QString selected = codeEditor->GetSelectedText();
        if (!selected.isEmpty())
            sideBar->SetSearchText(selected);
    }
    sideBar->SelectAllSearchText();
    sideBar->SetReplaceVisible(replace);
    SetSideBarView(SideBarViewSearch);
    SetSideBarVisible(true);
    sideBar->FocusSearch();
}

void BrindletEditor::ReplaceInFiles()
{
    FindInFiles(true);
}

void BrindletEditor::ShowSearch()
{
    FindInFiles(false);
}

void BrindletEditor::FindInFilesNext()
{
    sideBar->NextSearchResult();
}

void BrindletEditor::FindInFilesPrevious()
{
    sideBar->PreviousSearchResult();
}

// ---------------------------------------------------------------------------------------------
// The search in files

void BrindletEditor::Search(const QString& text, const QStringList& includeList, const QStringList& excludeList,
                            bool matchCase, bool matchWholeWords, bool useRegularExpression)
{
    if (text.isEmpty())
        return;
    sideBar->ClearSearchResults();
    Settings::globalSearchRegEx = CreateSearchRegEx(text, matchCase, matchWholeWords, useRegularExpression);
    Settings::globalSearchIncludePatterns = CreateSearchFilter(includeList, Settings::globalSearchIncludePaths);
    Settings::globalSearchExcludePatterns = CreateSearchFilter(excludeList, Settings::globalSearchExcludePaths);

    // A bad expression matches nothing: there is no need to walk the folders to learn that.
    if (Settings::globalSearchRegEx.isValid())
    {
        if (!Settings::globalSearchIncludePaths.isEmpty())
        {
            for (const QString& path : Settings::globalSearchIncludePaths)
            {
                const QFileInfo info(path);
                if (info.isFile())
                {
                    const QList<SearchResult> results = FindMatchingInFile(path, Settings::globalSearchRegEx);
                    if (!results.isEmpty())
                        sideBar->AppendSearchResults(info.absolutePath(), QString(), results);
                }
                else
                {
                    SearchFolder(path, QString());
                }
            }
        }
        else
        {
            if (Settings::globalSearchIncludePatterns.isEmpty())
                SearchInternalBuffers();
            for (const QString& folder : Settings::workspaceFolders)
                SearchFolder(folder, QString());
        }
    }
    UpdateCodeEditorExtraSelections();
}

void BrindletEditor::SearchInternalBuffers()
{
    QList<SearchResult> results;
    for (CodeEditorGroup* group : codeEditorGroups)
    {
        for (CodeEditor* codeEditor : group->GetCodeEditors())
        {
            if (codeEditor->GetType() != CodeEditorType::INTERNAL_BUFFER)
                continue;
            results += FindMatchingInText(QFileInfo(codeEditor->GetFilePath()).fileName(), codeEditor->GetLabel(),
                                          codeEditor->GetText(), Settings::globalSearchRegEx);
        }
    }
    if (!results.isEmpty())
        sideBar->AppendSearchResults(Settings::GetInternalBufferDirectoryPath(), QString(), results);
}

void BrindletEditor::SearchFolder(const QString& topPath, const QString& relativePath)
{
    const QString path = QDir(QStringLiteral("%1/%2").arg(topPath, relativePath)).absolutePath();
    if (StartsWithAny(path, Settings::globalSearchExcludePaths))
        return;
    // Links are not followed, so a link that points back up cannot make the walk endless.
    const QFileInfoList entries =
        QDir(path).entryInfoList(QDir::AllEntries | QDir::NoSymLinks | QDir::NoDotAndDotDot,
                                 QDir::Name | QDir::IgnoreCase | QDir::LocaleAware);
    QList<SearchResult> pending;
    for (const QFileInfo& entry : entries)
    {
        if (entry.isDir())
        {
            // What was found so far goes to the tree before descending, so it grows folder by folder.
            if (!pending.isEmpty())
                sideBar->AppendSearchResults(topPath, relativePath, pending);
            pending.clear();
            SearchFolder(topPath, relativePath.isEmpty()
                                      ? entry.fileName()
                                      : QStringLiteral("%1/%2").arg(relativePath, entry.fileName()));
            continue;
        }
        const QString filePath = entry.absoluteFilePath();
        if (!IncludePathInSearch(filePath))
            continue;
        const CodeEditor* codeEditor = GetCodeEditor(filePath, false);
        if (codeEditor && codeEditor->GetType() == CodeEditorType::FILE)
        {
            // An open file is searched as it stands in its editor, unsaved changes included.
            const QString fileName = entry.fileName();
            pending += FindMatchingInText(fileName, fileName, codeEditor->GetText(), Settings::globalSearchRegEx);
        }
        else
        {
            pending.append(FindMatchingInFile(filePath, Settings::globalSearchRegEx));
        }
    }
    if (!pending.isEmpty())
        sideBar->AppendSearchResults(topPath, relativePath, pending);
}

bool BrindletEditor::IncludePathInSearch(const QString& path) const
{
    const QList<QRegularExpression>& includes = Settings::globalSearchIncludePatterns;
    if (!includes.isEmpty())
    {
        const bool included =
            std::any_of(includes.cbegin(), includes.cend(),
                        [&path](const QRegularExpression& regEx) { return regEx.match(path).hasMatch(); });
        if (!included)
            return false;
    }
    const QList<QRegularExpression>& excludes = Settings::globalSearchExcludePatterns;
    return std::none_of(excludes.cbegin(), excludes.cend(),
                        [&path](const QRegularExpression& regEx) { return regEx.match(path).hasMatch(); });
}

void BrindletEditor::UpdateSearch(const QString& path, const QString& text)
{
    if (!Settings::globalSearchIncludePaths.isEmpty() && !StartsWithAny(path, Settings::globalSearchIncludePaths))
        return;
    if (StartsWithAny(path, Settings::globalSearchExcludePaths) || !IncludePathInSearch(path))
        return;
    const CodeEditor* codeEditor = GetCodeEditor(path, false);
    if (!codeEditor)
        return;
    sideBar->UpdateSearchResults(path, FindMatchingInText(QFileInfo(path).fileName(), codeEditor->GetLabel(), text,
                                                          Settings::globalSearchRegEx));
}

void BrindletEditor::OnSearchCleared()
{
    UpdateCodeEditorExtraSelections();
}

CodeEditor* BrindletEditor::GetSearchCodeEditor(const QString& path, bool open)
{
    // An internal buffer that is gone is not opened again as a file.
    const bool internal = QFileInfo(path).absolutePath() == Settings::GetInternalBufferDirectoryPath();
    return GetCodeEditor(path, open && !internal);
}

void BrindletEditor::OnSearchFocusChanged(const QString& path, int position)
{
    CodeEditor* codeEditor = GetSearchCodeEditor(path, true);
    CodeEditorGroup* group = GetCodeEditorGroupByPath(path);
    if (!codeEditor || !group)
        return;
    SetActiveCodeEditor(GetCodeEditorGroupIndex(group), group->GetCodeEditorIndex(path), false);
    codeEditor->FindGlobal(position);
}

void BrindletEditor::OnFindAndReplace(const QString& path, int position)
{
    CodeEditor* codeEditor = GetSearchCodeEditor(path, true);
    CodeEditorGroup* group = GetCodeEditorGroupByPath(path);
    if (!codeEditor || !group)
        return;
    SetActiveCodeEditor(GetCodeEditorGroupIndex(group), group->GetCodeEditorIndex(path), true);
    // The edit goes through the ordinary path: the buffer is left modified and is not saved.
    if (position < 0)
        codeEditor->FindAndReplaceAllGlobal();
    else
        codeEditor->FindAndReplaceGlobal(position);
}
