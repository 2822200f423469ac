// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QStyledItemDelegate>

/// Paints each profile whole. The cells of the profiles' list are wider than the list, so the picture is made
/// as large as what can be seen of its cell allows.
class ProfileItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};
