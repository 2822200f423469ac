// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// The first word of `text`, which is cut off with the blanks behind it.
[[nodiscard]] inline QString takeWord(QString &text)
{
    const QString word = text.section(u' ', 0, 0);
    text = text.section(u' ', 1).trimmed();
    return word;
}
