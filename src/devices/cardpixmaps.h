// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtGui/QPixmap>

/// The icon at `path`, at most `size` large; null for an empty path or one that leads nowhere. Kept in
/// `QPixmapCache` under "res:%1:%2x%3" with path, width and height.
[[nodiscard]] QPixmap cachedResourcePixmap(const QString &path, const QSize &size);

/// The picture of an item: an icon's own rendering, uncached, or for a string the icon at that path, kept
/// under "img:%1:%2x%3". Null for any other value.
[[nodiscard]] QPixmap itemPixmap(const QVariant &value, const QSize &size);
