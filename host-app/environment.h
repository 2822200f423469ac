// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// What has to be settled before the application object exists. Each returns what is wrong, empty when all
/// is well.

/// Moves every folder that the platform keeps for an application below `folder`, which is made. Where the
/// platform does not look into the environment for them, that is refused.
[[nodiscard]] QString keepDataBelow(const QString &folder);

/// Whether a window can be shown; without one on purpose (`headless`), Qt is told to draw off screen.
[[nodiscard]] QString settleDisplay(bool headless);
