// SPDX-License-Identifier: MIT
#include "profileicon.h"

#include "imagefile.h"

#include <QtCore/QFileInfo>
#include <QtGui/QBrush>
#include <QtGui/QPainter>
#include <QtGui/QPen>

using namespace Qt::StringLiterals;

namespace
{
QPixmap placeholder(const QSize &size)
{
    QPixmap icon(size);
    icon.fill(Qt::darkGray);
    QPainter painter(&icon);
    painter.setPen(Qt::white);
    painter.drawText(icon.rect(), Qt::AlignCenter, u"Image\nabsente"_s);
    return icon;
}

void drawLiveFrame(QPainter &painter, const QRect &rect)
{
    const QPen pen(QColor(0, 180, 0), 5, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
    const QBrush noBrush(Qt::NoBrush);
    painter.setPen(pen);
    painter.setBrush(noBrush);
    // The pen is as wide to the inside as to the outside, and all of it has to lie on the icon.
    painter.drawRect(rect.adjusted(2, 2, -3, -3));
}

/// The same in a selected row, too: a tint of the selection would take the meaning from the frame's green.
QIcon untinted(const QPixmap &pixmap)
{
    QIcon icon(pixmap);
    icon.addPixmap(pixmap, QIcon::Selected);
    return icon;
}

/// The picture on white; null where it cannot be read.
QPixmap unframed(const QString &picturePath, const QSize &size)
{
    const QPixmap picture = readPicture(picturePath);
    if (picture.isNull())
        return {};
    QPixmap icon(size);
    icon.fill(Qt::white);
    QPainter painter(&icon);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QPixmap scaled = picture.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    painter.drawPixmap((size.width() - scaled.width()) / 2, (size.height() - scaled.height()) / 2, scaled);
    return icon;
}

QIcon finished(QPixmap icon, const QSize &size, bool live)
{
    if (icon.isNull())
        return untinted(placeholder(size));
    if (live) {
        QPainter painter(&icon);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        drawLiveFrame(painter, icon.rect());
    }
    return untinted(icon);
}
} // namespace

QPixmap readPicture(const QString &path)
{
    // Not by the pixmap's own loading: that fills the cache that the whole host shares, and takes a picture
    // that was replaced within one second for the old one.
    return QPixmap::fromImage(readImageFile(path));
}

QIcon makeItemIcon(const QString &picturePath, const QSize &size, bool live)
{
    return finished(unframed(picturePath, size), size, live);
}

QIcon ProfileIcons::iconOf(const QString &picturePath, bool live)
{
    const QFileInfo file(picturePath);
    const QDateTime changed = file.lastModified();
    const auto known = m_drawn.constFind(picturePath);
    if (known != m_drawn.cend() && changed.isValid() && known->changed == changed &&
        known->size == file.size())
        return finished(known->unframed, m_size, live);
    const QPixmap drawn = unframed(picturePath, m_size);
    m_drawn.insert(picturePath, {.changed = changed, .size = file.size(), .unframed = drawn});
    return finished(drawn, m_size, live);
}
