// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QImage>

class QWidget;

/// What the screen shows where `window` is, popups above it included.
[[nodiscard]] QImage photographOf(const QWidget &window);

[[nodiscard]] qsizetype pixelsOf(const QImage &image, const QColor &colour);

/// How many colours there are; one is a blank picture.
[[nodiscard]] qsizetype coloursIn(const QImage &image);

/// Writes NAME.png to the gallery's folder. False where it was not written, or reads as something else.
[[nodiscard]] bool hang(const QImage &image, const QString &name);
