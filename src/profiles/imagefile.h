// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtGui/QImage>

/// The picture in a file; null where there is none, or one too large for Qt's allocation limit when painted.
[[nodiscard]] QImage readImageFile(const QString &path);

/// Puts the picture `source` at `destination`, encoded as the destination's suffix says, or in PNG under a
/// suffix of another format. A file that is no readable picture is copied as it is. False, with the reason
/// in `*error`, where that fails; `error` can be null.
[[nodiscard]] bool copyOrConvertImage(const QString &source, const QString &destination, QString *error);

/// Name of a profile's picture with that suffix: "image." and the suffix in lower case, or "image.png" where
/// the suffix is empty or makes no plain file name.
[[nodiscard]] QString pictureFileName(const QString &suffix);
