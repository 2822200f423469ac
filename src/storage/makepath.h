// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// Makes the folder `path` with all that lie above it. True when it is there afterwards.
/// In place of `QDir::mkpath`, whose symbol changed in Qt 6.10.
bool makePath(const QString &path);
