// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QString>

/// Where "systemConfig.json" of the host's installation lies: in the user's location, or else beside the
/// application, up to three folders above it, or in the current folder. Clean; empty where there is none.
[[nodiscard]] QString findSystemConfigPath();

/// The function list of that file; empty without the file, and with a warning where it cannot be read or is
/// no JSON. The last list read is kept for all windows of the process, and the file is not opened again until
/// its path or its modification time changes.
[[nodiscard]] QJsonArray loadSystemConfigRefs();
