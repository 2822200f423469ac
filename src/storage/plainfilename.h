// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// Whether `name` names a file in the folder that it is looked up in: not empty, neither "." nor "..", no
/// separator of any platform, not absolute. Documents travel, so a name out of one is asked this first.
[[nodiscard]] bool isPlainFileName(const QString &name);
