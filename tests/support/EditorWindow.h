#pragma once

#include <QtCore/QSize>

class BrindletEditor;
class CodeEditorGroup;
class HostFixture;

// The main widget as a user has it: opened through the command, its window sized and on screen.
namespace EditorWindow
{
// Null if the window never comes up (or, with `active`, never gets the keyboard).
BrindletEditor* Open(HostFixture& fixture, const QSize& size = QSize(1000, 700), bool active = false);
// The editor's active group, where a new tab opens; null without an editor.
CodeEditorGroup* Active(const HostFixture& fixture);
} // namespace EditorWindow
