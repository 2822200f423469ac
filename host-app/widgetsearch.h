// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

class QWidget;

/// The window that takes clicks now: the open dialog, or the active window, or the one that belongs to the
/// others. Null when none is shown.
[[nodiscard]] QWidget *windowOnTop();

/// The shown widgets that take clicks now, those of the window on top first.
[[nodiscard]] QList<QWidget *> widgetsInReach();

/// One of them by its object name or its class; "NAME#2" is the third, "A/B" a B inside an A. Null without
/// it.
[[nodiscard]] QWidget *findInReach(const QString &name);

/// The open dialog in words, with its title and what it says; empty without one. For whoever misses what is
/// behind it.
[[nodiscard]] QString dialogInFront();
