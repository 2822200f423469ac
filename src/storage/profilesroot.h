// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// The folder that profiles lie in, "Gamepads" below the application's data location, or below ".velor" in
/// the home folder where the platform has no such location. The path only: nothing is created.
[[nodiscard]] QString profilesRootPath();

/// The folder that `profilesRootPath` stands in.
[[nodiscard]] QString profilesBasePath();
