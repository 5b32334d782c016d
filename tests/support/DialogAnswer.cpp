#include "DialogAnswer.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>

DialogAnswer::DialogAnswer(QMessageBox::StandardButton answer) : button(answer)
{
    timer.setInterval(20);
    QObject::connect(&timer, &QTimer::timeout, [this] { AnswerModalBox(); });
    timer.start();
}

void DialogAnswer::AnswerModalBox()
{
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
