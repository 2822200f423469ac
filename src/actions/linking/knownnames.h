// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

/// `mapping` with the actions of its bridges spelled as in `actions`. Everything finds an action without
/// regard to case but a tool box, which would take another spelling for an unknown action and drop its
/// arguments.
[[nodiscard]] QJsonObject withKnownNames(const QJsonObject &mapping, const QJsonArray &actions);
