// SPDX-License-Identifier: MIT
#pragma once

#include "gamepadentry.h"

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>

#include <optional>

/// The steps of the store's operations that can fail. What the steps before wrote stays.
enum class StoreStep {
    CreatePicture,
    CreateOverlay,
    CreateMeta,
    CreateMapping,
    SaveOverlay,
    SaveMapping,
    SaveMeta,
    DuplicatePicture,
    DuplicateOverlay,
    DuplicateMappingCopy,
    DuplicateDefaultMapping,
    DuplicateMeta,
    RenameMeta,
    ImagePicture,
    ImageMeta,
};

/// Where an operation ended, and why.
struct StoreFailure
{
    StoreStep step = StoreStep::CreatePicture;
    QString error; ///< of the file operation; the source's path where a mapping could not be copied

    bool operator==(const StoreFailure &) const = default;
};

/// Nothing where all steps were done.
using StoreResult = std::optional<StoreFailure>;

/// What a new profile is made of.
struct NewProfile
{
    QString name;
    QString picture; ///< path of the file chosen
    QString deviceName;
    QJsonObject overlay;
};

/// Writes a new profile below `root`. `*folder` is its path, also after a failure.
[[nodiscard]] StoreResult createProfileFiles(const QString &root, const NewProfile &profile, QString *folder);

/// Writes the overlay's bytes, a missing mapping and "meta.json", in this order.
[[nodiscard]] StoreResult saveProfileFiles(const GamepadEntry &entry, const QByteArray &overlay);

/// Copies what of a profile lies on disk to a new one below `root`, unlinked and named as a copy. `*folder`
/// is its path, also after a failure.
[[nodiscard]] StoreResult duplicateProfileFiles(const QString &root, const GamepadEntry &source,
                                                QString *folder);

/// Writes "meta.json" after the entry's name was changed.
[[nodiscard]] StoreResult saveRenamedProfile(const GamepadEntry &entry);

/// Puts the picture `source` into the profile's folder; `*imagePath` is then its path there, and stays as it
/// was on a failure. The entry's former picture stays on disk under another suffix.
[[nodiscard]] StoreResult copyProfilePicture(const GamepadEntry &entry, const QString &source,
                                             QString *imagePath);

/// Writes "meta.json" after the entry's picture was changed.
[[nodiscard]] StoreResult saveChangedPicture(const GamepadEntry &entry);
