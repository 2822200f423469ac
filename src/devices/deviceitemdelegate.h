// SPDX-License-Identifier: MIT
#pragma once

#include "cardpainter.h"
#include "cardroles.h"

#include <QtWidgets/QStyledItemDelegate>

#include <optional>

/// Draws the gamepads of a list view as cards and takes the clicks on them. All that it knows of a gamepad
/// it reads from the model by role name, so any model with these names will do. The roles are looked up once,
/// in the first model that it meets.
class DeviceItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit DeviceItemDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    /// 300 by 240 pixels, whatever the item.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// A left release toggles the selection, or on the close button asks for deletion; a right one opens the
    /// card's menu and returns when it is closed.
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;
    /// Shows what a chip stands for, and on a selected card the state of its link.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

Q_SIGNALS:
    /// The user chose this in the menu, or clicked where the model refused to take it.
    void toggledSelect(const QString &usn, bool selected);
    void requestConfig(const QString &usn);
    void requestDelete(const QString &usn);

private:
    void resolveRoles(const QAbstractItemModel *model) const;
    bool leftReleased(const QPoint &position, QAbstractItemModel *model, const QRect &item,
                      const QModelIndex &index, const QWidget *view);
    bool openMenu(const QPoint &globalPosition, const QAbstractItemModel *model, const QModelIndex &index,
                  const QWidget *view);
    std::optional<QString> toolTipAt(const QPoint &position, const QRect &item,
                                     const QModelIndex &index) const;

    mutable bool m_rolesResolved = false;
    mutable CardRoles m_roles;
    const CardIcons m_icons;
};
