// SPDX-License-Identifier: MIT
#pragma once

#include "functionindex.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <optional>

/// The trimmed name of what a bridge runs: its `action`, failing that `ref` or else `action` of the first of
/// its tasks that has one of them. Empty where nothing tells.
[[nodiscard]] QString bridgeActionName(const QJsonObject &bridge);

/// `bridges` with the tasks that their actions have now. A bridge of an action that is not among `actions`,
/// or has no tasks, stays as it is. Nothing where that is true of all of them.
[[nodiscard]] std::optional<QJsonArray> refreshedBridges(const QJsonArray &bridges,
                                                         const FunctionIndex &actions);
