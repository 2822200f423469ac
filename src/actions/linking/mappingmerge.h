// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

/// `document` with an overlay's `bridges` in place of its own, and with the parts that a host expects. All
/// else that it holds stays. A new bridge without an action takes the tasks from the second on of the old
/// bridge of its input, since an overlay knows only one task of such a bridge.
[[nodiscard]] QJsonObject mergedMapping(const QJsonObject &document, const QJsonArray &bridges);
