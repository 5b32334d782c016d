#pragma once

#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtWidgets/QMessageBox>

// Answers every modal message box that comes up while it lives with the given button, and
// records the title and text of each, so that a test sees what the user was told.
class DialogAnswer
{
public:
    explicit DialogAnswer(QMessageBox::StandardButton answer);

    QStringList texts;
    QStringList titles;

private:
    void AnswerModalBox();

    QMessageBox::StandardButton button;
    QTimer timer;
};
