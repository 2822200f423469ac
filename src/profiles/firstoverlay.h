// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QSize>

/// The overlay document of a new profile, as an editor of this size makes it: one pastille to start from.
[[nodiscard]] QJsonObject firstOverlay(const QSize &size);
