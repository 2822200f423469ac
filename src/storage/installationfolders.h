// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QStringList>

/// The folders in which an installation's own documents are looked for, best first: the program's, the three
/// above it, and the current one. Not cleaned.
[[nodiscard]] QStringList installationFolders();
