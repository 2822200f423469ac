// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QIcon>
#include <QtGui/QPixmap>

/// A profile's picture; null where the file is missing or no picture.
[[nodiscard]] QPixmap readPicture(const QString &path);

/// The icon of a profile, of `size`: its picture on white, framed in green where its gamepad is connected; or
/// a dark placeholder, never framed, where the picture cannot be read.
[[nodiscard]] QIcon makeItemIcon(const QString &picturePath, const QSize &size, bool live);
