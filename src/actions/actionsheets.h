// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// The palette of `ActionToolBox` and of its settings popup. Its rules reach nothing else, so that a surface
/// of many tool boxes can carry it. The font is not in it: see `wearToolFont`.
[[nodiscard]] QString toolBoxSheet();

/// The palette of `ActionTaskBlockWidget`, on object names.
[[nodiscard]] QString taskBlockSheet();
