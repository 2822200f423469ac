// SPDX-License-Identifier: MIT
#include "notice.h"

#include <QtCore/QPointer>

namespace
{
int answerOf(const QPointer<QMessageBox> &box)
{
    box->setTextFormat(Qt::PlainText);
    const int answer = box->exec();
    delete box;
    return answer;
}
} // namespace

void showNotice(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text)
{
    answerOf(new QMessageBox(icon, title, text, QMessageBox::Ok, parent));
}

bool confirmed(QWidget *parent, const QString &title, const QString &text)
{
    return answerOf(new QMessageBox(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No,
                                    parent)) == QMessageBox::Yes;
}
