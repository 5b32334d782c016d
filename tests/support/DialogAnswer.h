#pragma once

#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtWidgets/QMessageBox>

// Answers every modal message box that comes up while it lives with the given button, and every
// input dialog with `input`; records the title and the text (an input dialog's label) of each and
// a box's offered button labels, so that a test sees what the user was told and asked.
class DialogAnswer
{
public:
    explicit DialogAnswer(QMessageBox::StandardButton answer);

    bool Told(const QString& fragment) const { return texts.join(QLatin1Char('\n')).contains(fragment); }

    QStringList texts;
    QStringList titles;
    QStringList labels;
    QMessageBox::StandardButton button;
    QString input;

private:
    void AnswerModalBox();

    QTimer timer;
};
