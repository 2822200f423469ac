// SPDX-License-Identifier: MIT
#pragma once

#include "actiontoolbox.h"
#include "inputsource.h"
#include "toucharea.h"

#include <QtCore/QPointer>
#include <QtCore/QRectF>

/// A pastille, the tool box beside it and the connector between them. The widgets are children of the
/// overlay, which owns them.
struct OverlayNode
{
    QPointer<TouchArea> area;
    QPointer<ActionToolBox> box;
    int lineId = -1; ///< of the connector; -1 before it has one
    QRectF areaNorm; ///< in fractions of the picture; invalid until it could be computed
    QRectF boxNorm;  ///< likewise
    NodeInput input;
    bool autoTitle = false; ///< created without a title, so that the title follows the tool box's function
};

/// The kind of input that a tool box is told: 0 for an axis, 1 for a button.
[[nodiscard]] constexpr int inputKind(bool isJoy)
{
    return isJoy ? 0 : 1;
}
