// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// How a background picture fills its widget. The numbers are those that hosts and properties see.
enum class BackgroundScaleMode { Stretch = 0, Contain = 1, Cover = 2, Center = 3 };

/// "Stretch", "Contain", "Cover" or "Center"; a value outside the enumeration is "Contain".
[[nodiscard]] QString scaleModeName(BackgroundScaleMode mode);

/// The mode of a name, without regard to case and to blanks around it. Any other text is `Contain`.
[[nodiscard]] BackgroundScaleMode parseScaleMode(const QString &text);
