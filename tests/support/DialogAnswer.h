#pragma once

#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtWidgets/QMessageBox>

// Answers every modal message box that comes up while it lives with the given button, and
// records the title, the text and the offered button labels of each, so that a test sees what
// the user was told and asked.
class DialogAnswer
{
public:
    explicit DialogAnswer(QMessageBox::StandardButton answer);

    bool Told(const QString& fragment) const { return texts.join(QLatin1Char('\n')).contains(fragment); }

    QStringList texts;
    QStringList titles;
    QStringList labels;

private:
    void AnswerModalBox();

    QMessageBox::StandardButton button;
    QTimer timer;
};
