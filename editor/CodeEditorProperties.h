#pragma once

#include "editor/CodeEditorLanguage.h"
#include "editor/CodeEditorType.h"

#include <QtCore/QString>

// What describes one buffer: passed around by value between the editor, its group, the main
// widget and the views that list open buffers, and stored with the open tabs.
struct CodeEditorProperties
{
    CodeEditorType type = CodeEditorType::INTERNAL_BUFFER;
    CodeEditorLanguage language = CodeEditorLanguage::TEXT;
    QString filePath; // the file, or the file of the internal buffer
    QString label;    // the text of the tab
};
