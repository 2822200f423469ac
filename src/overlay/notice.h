// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtWidgets/QMessageBox>

/// Shows a box with one Ok button and waits until it is closed. `parent` may go meanwhile, which closes it;
/// the boxes that `QMessageBox` offers for this would be deleted twice then. `text` is shown as it stands,
/// without markup.
void showNotice(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text);

/// Asks a question with the buttons Yes and No and waits for the answer. False also where the box is closed
/// otherwise. `parent` may go meanwhile; `text` is shown as it stands.
[[nodiscard]] bool confirmed(QWidget *parent, const QString &title, const QString &text);
