// SPDX-License-Identifier: MIT
#include "longtext.h"

QString beginningOf(const QString &text)
{
    constexpr qsizetype shown = 500; // characters
    return text.left(shown);
}

QString BeginningDelegate::displayText(const QVariant &value, const QLocale &) const
{
    return beginningOf(value.toString());
}
