// SPDX-License-Identifier: MIT
#include "toucharea.h"

#include <QtCore/QPointer>
#include <QtGui/QContextMenuEvent>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMenu>

using namespace Qt::StringLiterals;

void TouchArea::contextMenuEvent(QContextMenuEvent *event)
{
    if (!m_editMode) {
        event->ignore();
        return;
    }
    // On the heap, since the pastille can go while its menu is open and takes the menu with it.
    const QPointer<QMenu> menu = new QMenu(this);
    const bool listens = m_state == Listening;
    const bool active = m_state == Active;
    const QAction *listening = menu->addAction(listens ? u"Arrêter l'écoute"_s : u"Écouter un nom (vert)"_s);
    const QAction *activity = menu->addAction(active ? u"Désactiver (gris)"_s : u"Activer (unique, gris)"_s);
    menu->addSeparator();
    const QAction *shape = menu->addAction(m_freeAspect ? u"Forme circulaire"_s : u"Forme ovale"_s);
    const QAction *renaming = menu->addAction(u"Renommer…"_s);
    const QAction *deletion = menu->addAction(u"Supprimer"_s);

    const QAction *chosen = menu->exec(event->globalPos());
    if (!menu)
        return;
    menu->deleteLater();
    // An input can be learned while the menu is open: what happens is what the entry said.
    if (!chosen)
        return;
    if (chosen == listening && listens) {
        stopListening();
    } else if (chosen == listening) {
        Q_EMIT requestStartListening(this);
    } else if (chosen == activity) {
        Q_EMIT requestSetActive(this, !active);
    } else if (chosen == shape) {
        setFreeAspect(!m_freeAspect);
    } else if (chosen == renaming) {
        rename();
    } else if (chosen == deletion) {
        Q_EMIT requestDelete(this);
    }
}

void TouchArea::rename()
{
    const QPointer<TouchArea> self = this;
    bool accepted = false;
    const QString name = QInputDialog::getText(this, u"Renommer la pastille"_s, u"Nom :"_s, QLineEdit::Normal,
                                               m_title, &accepted)
                             .trimmed();
    if (self && accepted && !name.isEmpty())
        setTitle(name);
}
