// SPDX-License-Identifier: MIT
#pragma once

#include "hostprocess.h"

/// Conditions on lines of the host's report, to wait for.
namespace reported
{
/// A row with that key whose members are as `expected` tells.
[[nodiscard]] HostProcess::Condition row(const QString &usn, const QJsonObject &expected);
/// No row with that key any more.
[[nodiscard]] HostProcess::Condition noRow(const QString &usn);
/// Exactly these rows are selected, in that order, each with its status ("connected" or "noCom").
[[nodiscard]] HostProcess::Condition selection(const QStringList &usns, const QString &status);
/// The device's rest is exactly that, of all eight axes.
[[nodiscard]] HostProcess::Condition rest(int device, const QList<int> &bias);
/// A batch in the numeric form in which `key` has that value; axes may differ by 0.1.
[[nodiscard]] HostProcess::Condition axis(int device, const QString &key, double value);
[[nodiscard]] HostProcess::Condition button(int device, const QString &key, bool pressed);
/// Takes the line at which `condition` holds for the `count`th time. For one wait only: it counts.
[[nodiscard]] HostProcess::Condition times(int count, const HostProcess::Condition &condition);
/// A line of that kind of that device.
[[nodiscard]] HostProcess::Condition of(QLatin1StringView what, int device);
/// A status line.
[[nodiscard]] HostProcess::Condition status(int device, const QString &status);

/// The number of the only selected device in a selection line; 0 when there is not exactly one.
[[nodiscard]] int onlyDevice(const QJsonObject &selection);
/// The value of `key` in a data line; undefined when it is not in it.
[[nodiscard]] QJsonValue valueOf(const QJsonObject &line, const QString &key);
} // namespace reported
