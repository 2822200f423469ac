// SPDX-License-Identifier: MIT
#pragma once

#include "exchangedocument.h"
#include "storenotices.h"

#include <optional>

/// The steps of an import that can fail. What the steps before wrote stays.
enum class ImportStep { Picture, Overlay, Meta, Mapping };

/// Where an import ended, and why.
struct ImportFailure
{
    ImportStep step = ImportStep::Picture;
    QString error; ///< of the file operation

    bool operator==(const ImportFailure &) const = default;
};

/// Writes a profile that came by exchange into a new folder below `root`, unlinked and with a mapping that
/// maps nothing. `*folder` is its path, also after a failure. Nothing where all steps were done.
[[nodiscard]] std::optional<ImportFailure>
importProfileFiles(const QString &root, const ExchangedProfile &profile, QString *folder);

/// What the user is told of a failure.
[[nodiscard]] StoreNotice noticeOf(const ImportFailure &failure);
