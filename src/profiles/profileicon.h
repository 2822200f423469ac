// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QIcon>
#include <QtGui/QPixmap>

/// A profile's picture; null where the file is missing or no picture.
[[nodiscard]] QPixmap readPicture(const QString &path);

/// The icon of a profile, of `size`: its picture on white, framed in green where its gamepad is connected; or
/// a dark placeholder, never framed, where the picture cannot be read.
[[nodiscard]] QIcon makeItemIcon(const QString &picturePath, const QSize &size, bool live);

/// The icons of a list of profiles, of one size. A gamepad that comes or goes changes their frames alone, so
/// a picture is not read again while its file is the same.
class ProfileIcons
{
public:
    explicit ProfileIcons(const QSize &size)
        : m_size(size)
    {}

    /// The same icon as `makeItemIcon` gives.
    [[nodiscard]] QIcon iconOf(const QString &picturePath, bool live);
    /// For a picture that was replaced, or is not in the list any more.
    void forget(const QString &picturePath) { m_drawn.remove(picturePath); }

private:
    struct Drawn
    {
        QDateTime changed;
        qint64 size = 0;
        QPixmap unframed;
    };

    QSize m_size;
    QHash<QString, Drawn> m_drawn;
};
