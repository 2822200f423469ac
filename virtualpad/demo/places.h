// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// Where the demo finds its programs and leaves its files. All paths are absolute.
struct Places
{
    QString hostProgram;
    QString plugin;
    QString output; ///< made if it is missing

    [[nodiscard]] QString log() const { return output + QStringLiteral("/host.log"); }
    [[nodiscard]] QString data() const { return output + QStringLiteral("/data"); }
};
