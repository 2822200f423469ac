// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

class QWidget;

/// Puts `sheet` on `surface`, behind what it has, for all the widgets below it. Qt parses the style sheet of
/// one widget once for all its descendants, but equal sheets of many widgets once each.
void carrySheet(QWidget *surface, const QString &sheet);

/// Puts `sheet` on `widget`, unless a widget above it carries it already.
void wearSheet(QWidget *widget, const QString &sheet);
