#include "EditorWindow.h"

#include "HostFixture.h"
#include "shell/BrindletEditor.h"

#include <QtTest/QTest>

BrindletEditor* EditorWindow::Open(HostFixture& fixture, const QSize& size, bool active)
{
    BrindletEditor* editor = fixture.OpenEditor();
    if (!editor)
        return nullptr;
    QWidget* window = editor->window();
    window->resize(size);
    window->show();
    if (active)
        window->activateWindow();
    const bool ready = active ? QTest::qWaitForWindowActive(window) : QTest::qWaitForWindowExposed(window);
    return ready ? editor : nullptr;
}

CodeEditorGroup* EditorWindow::Active(const HostFixture& fixture)
{
    return fixture.Editor() ? fixture.Editor()->GetActiveCodeEditorGroup() : nullptr;
}
