// SPDX-License-Identifier: MIT
#include "notice.h"

#include <QtCore/QPointer>

void showNotice(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text)
{
    const QPointer<QMessageBox> box = new QMessageBox(icon, title, text, QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box->exec();
    delete box;
}
