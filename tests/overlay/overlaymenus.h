// SPDX-License-Identifier: MIT
#pragma once

#include "answer.h"
#include "overlaystage.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

#include <functional>

// An overlay's menu, used as a person does it.

inline const QPoint freeSurface(300, 400);
inline const QString addition = QStringLiteral("Ajouter une pastille ici");
inline const QString loading = QStringLiteral("Charger fonctions (ref)...");
inline const QString exporting = QStringLiteral("Exporter mapping JSON...");

inline QWidget *openPopup()
{
    return QApplication::activePopupWidget();
}

inline QWidget *openDialog()
{
    return QApplication::activeModalWidget();
}

inline QStringList entriesOf(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions())
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    return texts;
}

/// Clicks the entry, or Escape if there is none of that text.
inline void click(QMenu *menu, const QString &text)
{
    for (QAction *action : menu->actions()) {
        if (action->text() == text) {
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
            return;
        }
    }
    QTest::keyClick(menu, Qt::Key_Escape);
}

/// A right click at `pos`, whose menu `answer` gets. Returns the entries that it had; none without a menu.
inline QStringList rightClick(OverlayStage &stage, const QPoint &pos,
                              const std::function<void(QMenu *)> &answer)
{
    QStringList entries;
    bool released = false;
    const auto release = [&] {
        if (!std::exchange(released, true) && stage.overlay())
            stage.release(pos, Qt::RightButton);
    };
    const Answer<QMenu> menu(openPopup, [&](QMenu *open) {
        release();
        entries = entriesOf(open);
        answer(open);
    });
    stage.moveTo(QPoint(0, 0));
    stage.moveTo(pos);
    stage.press(pos, Qt::RightButton);
    release();
    return entries;
}

inline QStringList choose(OverlayStage &stage, const QString &entry, const QPoint &pos = freeSurface)
{
    return rightClick(stage, pos, [&](QMenu *menu) { click(menu, entry); });
}

/// The host takes the overlay away, at once or by way of the event loop.
inline void removeOverlay(const OverlayStage &stage, bool later)
{
    if (!later) {
        delete stage.overlay();
        return;
    }
    stage->deleteLater();
    QTRY_VERIFY(!stage.overlay());
}
