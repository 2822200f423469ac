// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// The look of the configuration surface: backdrop, tabs, and the lists, combos and buttons of all tabs that
/// bring no palette of their own.
[[nodiscard]] QString shellSheet();
