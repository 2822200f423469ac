// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QStyledItemDelegate>

/// The beginning of `text`, longer than any widget shows: to measure or paint a text that fills a document
/// takes seconds.
[[nodiscard]] QString beginningOf(const QString &text);

/// Paints the beginnings of the texts in a list.
class BeginningDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QString displayText(const QVariant &value, const QLocale &locale) const override;
};
