#include "DialogAnswer.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QInputDialog>

DialogAnswer::DialogAnswer(QMessageBox::StandardButton answer) : button(answer)
{
    timer.setInterval(20);
    QObject::connect(&timer, &QTimer::timeout, [this] { AnswerModalBox(); });
    timer.start();
}

void DialogAnswer::AnswerModalBox()
{
    if (auto* dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget()))
    {
        titles.append(dialog->windowTitle());
        texts.append(dialog->labelText());
        dialog->setTextValue(input);
        dialog->accept();
        return;
    }
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box)
        return;
    texts.append(box->text());
    titles.append(box->windowTitle());
    for (QAbstractButton* offered : box->buttons())
        labels.append(offered->text());
    if (QAbstractButton* chosen = box->button(button))
        chosen->click();
    else
        box->reject();
}
