// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

/// `actions` without the blanks around their names. Everything passes over those but a tool box, which would
/// not find the action that a binding names. A name that is all blank stays, and one whose trimmed form
/// another action has.
[[nodiscard]] QJsonArray withTrimmedNames(const QJsonArray &actions);

/// `mapping` with the actions of its bridges, or where they have none those of their tasks, spelled as in
/// `actions`. Everything finds an action without regard to case but a tool box, which would take another
/// spelling for an unknown action and drop its arguments. For showing, not for storing.
[[nodiscard]] QJsonObject withKnownNames(const QJsonObject &mapping, const QJsonArray &actions);
