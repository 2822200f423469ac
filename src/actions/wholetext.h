// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

class QLineEdit;

/// Shows `text` in `edit`, which cuts it at its `maxLength`. No higher limit: to lay out a text that fills a
/// document takes seconds.
void showWhole(QLineEdit *edit, const QString &text);

/// The text of `edit`: all of what `showWhole` gave it, for as long as it shows the beginning of that and
/// nobody edits it.
[[nodiscard]] QString wholeText(const QLineEdit *edit);
