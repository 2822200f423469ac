// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QPixmap>

#include <optional>

/// The pixels of a snapshot: the size that the overlay document was saved at. `fallback` stands in for a side
/// that is missing or below 1, and for both sides of a size beyond 64 megapixels; 800 by 600 stands in for
/// it.
[[nodiscard]] QSize snapshotSize(const QJsonObject &overlay, const QSize &fallback);

/// A profile as a person reads it: picture, pastilles and lines on a transparent ground, in the overlay's
/// mode `Normal`. Null, with the reason in `error` (which can be null), where `overlay` is no overlay
/// document. A picture that cannot be read is left out.
[[nodiscard]] QPixmap renderOverlaySnapshot(const QJsonObject &overlay, const QString &imagePath,
                                            const QSize &fallback, QString *error);

/// `path` with ".png" where its name has no suffix. A path of blanks alone stays as it is.
[[nodiscard]] QString withPngSuffix(const QString &path);

/// Writes `picture` over the file, in PNG. False where not all of it could be written.
[[nodiscard]] bool saveSnapshot(const QPixmap &picture, const QString &path);

/// `folder`/`base`.png, or the first of `base`_1.png, `base`_2.png, ... where nothing stands yet.
[[nodiscard]] QString freeSnapshotPath(const QString &folder, const QString &base);

/// A profile that a snapshot is wanted of.
struct SnapshotSubject
{
    QString name;
    QString imagePath;
    QString overlayPath;
    std::optional<QJsonObject> shownOverlay; ///< of a profile that is being edited, in place of its file
};

/// What came of a run over many profiles.
struct SnapshotRun
{
    int count = 0;      ///< of files written
    QStringList errors; ///< one for each other profile: "name : reason"
};

/// Writes one PNG for each subject into `folder`, in their order, and overwrites nothing.
[[nodiscard]] SnapshotRun writeSnapshots(const QList<SnapshotSubject> &subjects, const QString &folder,
                                         const QSize &fallback);
