// SPDX-License-Identifier: MIT
#include "deviceitemdelegate.h"

#include "cardcontent.h"
#include "cardlayout.h"
#include "controlchips.h"
#include "deletionhold.h"

#include <QtCore/QPointer>
#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolTip>

using namespace Qt::StringLiterals;

DeviceItemDelegate::DeviceItemDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
    , m_icons{
          .axisIcon = u":/icones/ressources/gp_axis.png"_s,
          .buttonIcon = u":/icones/ressources/gp_button.png"_s,
          .warningIcon = u":/new_icons/Ressources/new_icons/warning.png"_s,
          .closeIcon = u":/new_icons/Ressources/new_icons/close.png"_s,
          .linkConnectedIcon = u":/icones/ressources/gimbalConnected.png"_s,
          .linkBusyIcon = u":/icones/ressources/gimbalBusy.png"_s,
          .linkDisconnectedIcon = u":/icones/ressources/gimbalDisconnected.png"_s,
      }
{}

void DeviceItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                               const QModelIndex &index) const
{
    resolveRoles(index.model());
    const CardLook look{
        .font = option.font,
        .hover = option.state.testFlag(QStyle::State_MouseOver),
        .focus = option.state.testFlag(QStyle::State_HasFocus),
    };
    paintCard(painter, option.rect, readCard(index, m_roles), look, m_icons);
}

QSize DeviceItemDelegate::sizeHint(const QStyleOptionViewItem & /*option*/,
                                   const QModelIndex & /*index*/) const
{
    return cardSizeHint;
}

bool DeviceItemDelegate::editorEvent(QEvent *event, QAbstractItemModel *model,
                                     const QStyleOptionViewItem &option, const QModelIndex &index)
{
    resolveRoles(model);
    if (!index.isValid() || !model)
        return false;
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto *mouse = static_cast<const QMouseEvent *>(event);
        if (mouse->button() == Qt::RightButton)
            return openMenu(mouse->globalPosition().toPoint(), model, index, option.widget);
        if (mouse->button() == Qt::LeftButton &&
            leftReleased(mouse->position().toPoint(), model, option.rect, index, option.widget))
            return true;
    }
    return QStyledItemDelegate::editorEvent(event, model, option, index);
}

bool DeviceItemDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                                   const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event && view && event->type() == QEvent::ToolTip && index.isValid()) {
        resolveRoles(index.model());
        if (const auto text = toolTipAt(event->pos(), option.rect, index)) {
            QToolTip::showText(event->globalPos(), *text, view->viewport());
            return true;
        }
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}

void DeviceItemDelegate::resolveRoles(const QAbstractItemModel *model) const
{
    if (m_rolesResolved || !model)
        return;
    m_roles = findCardRoles(model->roleNames());
    m_rolesResolved = true;
}

bool DeviceItemDelegate::leftReleased(const QPoint &position, QAbstractItemModel *model, const QRect &item,
                                      const QModelIndex &index, const QWidget *view)
{
    // Whoever hears of the click may open a dialog, in which the view must not go below its own handler.
    const DeletionHold hold(view);
    const QString usn = roleValue(index, m_roles.usn).toString();
    if (closeButtonRect(item).contains(position)) {
        Q_EMIT requestDelete(usn);
        return true;
    }
    if (m_roles.selected < 0)
        return false;

    const bool wanted = !roleValue(index, m_roles.selected).toBool();
    // A model may ask its user before it answers, and the delegate may be gone by then.
    const QPointer<DeviceItemDelegate> self(this);
    if (!model->setData(index, wanted, m_roles.selected) && self)
        Q_EMIT toggledSelect(usn, wanted);
    return true;
}

bool DeviceItemDelegate::openMenu(const QPoint &globalPosition, const QAbstractItemModel *model,
                                  const QModelIndex &index, const QWidget *view)
{
    const QString usn = roleValue(index, m_roles.usn).toString();
    const bool selected = roleValue(index, m_roles.selected).toBool();

    QMenu menu;
    const QAction *toggle = menu.addAction(selected ? u"Désélectionner"_s : u"Sélectionner"_s);
    const QAction *configure = menu.addAction(u"Configurer"_s);
    menu.addSeparator();
    const QAction *remove = menu.addAction(u"Supprimer"_s);

    // The menu runs an event loop, in which the row, the model, the delegate and the view may go. A menu that
    // nobody can answer for any more closes; nothing but what was read before is used after it. The view
    // stays until its own event handler, which called this, has come back.
    const QPointer<DeviceItemDelegate> self(this);
    const DeletionHold hold(view);
    connect(&hold, &DeletionHold::deletionHeld, &menu, &QWidget::close);
    connect(this, &QObject::destroyed, &menu, &QWidget::close);
    connect(model, &QObject::destroyed, &menu, &QWidget::close);

    const QAction *chosen = menu.exec(globalPosition);
    if (!self || !chosen)
        return true;
    if (chosen == toggle)
        Q_EMIT toggledSelect(usn, !selected);
    else if (chosen == configure)
        Q_EMIT requestConfig(usn);
    else if (chosen == remove)
        Q_EMIT requestDelete(usn);
    return true;
}

std::optional<QString> DeviceItemDelegate::toolTipAt(const QPoint &position, const QRect &item,
                                                     const QModelIndex &index) const
{
    const CardLayout layout = layoutCard(item);
    const QList<ControlChip> chips = layoutChips(layout.chipRow, readControls(index, m_roles));
    if (const ControlChip *chip = chipAt(chips, position))
        return chipToolTip(*chip);

    if (!layout.linkZone.contains(position) || !roleValue(index, m_roles.selected).toBool())
        return std::nullopt;
    switch (roleValue(index, m_roles.linkState).toInt()) {
    case 2:
        return u"Interface: connecté"_s;
    case 1:
        return u"Interface: connexion en cours"_s;
    default:
        return u"Interface: déconnecté"_s;
    }
}
