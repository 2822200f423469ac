// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// The palette of `ActionToolBox` and of its settings popup. Its rules reach nothing else, so that a surface
/// of many tool boxes can carry it.
[[nodiscard]] QString toolBoxSheet();

/// The palette of `ActionTaskBlockWidget`, on object names. Each card wears its own: the row of a step above
/// it makes all below it transparent, and of two sheets the nearer one wins.
[[nodiscard]] QString taskBlockSheet();

/// The palette of `ActionDesignerWidget`, but for its buttons.
[[nodiscard]] QString designerSheet();

/// The ground that the steps of an action lie on.
[[nodiscard]] QString stepsViewportSheet();

/// One button of the designer, by what it does: the usual next thing, something else, a deletion.
[[nodiscard]] QString primaryButtonSheet();
[[nodiscard]] QString secondaryButtonSheet();
[[nodiscard]] QString dangerButtonSheet();
