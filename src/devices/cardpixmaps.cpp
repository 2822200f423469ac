// SPDX-License-Identifier: MIT
#include "cardpixmaps.h"

#include "iconvalue.h"

#include <QtGui/QIcon>
#include <QtGui/QPixmapCache>

using namespace Qt::StringLiterals;

namespace
{
// A null pixmap is not kept: the host may register its resources after the first painting.
QPixmap cachedPixmap(QLatin1StringView family, const QString &path, const QSize &size)
{
    if (path.isEmpty())
        return {};
    const QString key =
        family + u':' + path + u':' + QString::number(size.width()) + u'x' + QString::number(size.height());
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    pixmap = iconAt(path).pixmap(size, QIcon::Normal, QIcon::Off);
    if (!pixmap.isNull())
        QPixmapCache::insert(key, pixmap);
    return pixmap;
}
} // namespace

QPixmap cachedResourcePixmap(const QString &path, const QSize &size)
{
    return cachedPixmap("res"_L1, path, size);
}

QPixmap itemPixmap(const QVariant &value, const QSize &size)
{
    if (const auto icon = iconOf(value))
        return icon->pixmap(size, QIcon::Normal, QIcon::Off);
    if (value.typeId() == QMetaType::QString)
        return cachedPixmap("img"_L1, value.toString(), size);
    return {};
}
