// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// The palette of `ActionToolBox` and of its settings popup. Its rules reach nothing else, so that a surface
/// of many tool boxes can carry it.
[[nodiscard]] QString toolBoxSheet();

/// The palette of `ActionTaskBlockWidget`, on object names. A surface of many cards can carry it.
[[nodiscard]] QString taskBlockSheet();
