// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// Puts a profile for `deviceName` into the profiles below `data`, as a host started with "--data" keeps
/// them: a picture, pastilles, and a no-code document with a few bridges. Returns the document's path, empty
/// when it could not be written.
[[nodiscard]] QString writeSampleProfile(const QString &data, const QString &deviceName);
