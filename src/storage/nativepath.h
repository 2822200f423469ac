// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

#include <filesystem>

/// `path` for the standard library, in Qt's own bytes: the library's conversion throws on text that is no
/// valid UTF-16.
[[nodiscard]] std::filesystem::path nativePath(const QString &path);
