// SPDX-License-Identifier: MIT
#include "profileitemdelegate.h"

#include <QtWidgets/QAbstractItemView>

namespace
{
constexpr int margin = 6;

/// What the view shows of the rows' width, without regard to how far it is scrolled down.
int visibleWidth(const QStyleOptionViewItem &option)
{
    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    return view ? view->viewport()->width() : option.rect.width();
}
} // namespace

void ProfileItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                const QModelIndex &index) const
{
    QStyleOptionViewItem visible = option;
    visible.rect.setRight(qMin(option.rect.right(), visibleWidth(option) - 1));
    const QSize room(visible.rect.width() - 2 * margin, option.decorationSize.height());
    if (room.width() > 0 && room.width() < option.decorationSize.width())
        visible.decorationSize = option.decorationSize.scaled(room, Qt::KeepAspectRatio);
    QStyledItemDelegate::paint(painter, visible, index);
}
