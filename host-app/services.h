// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

/// A services object as a host hands it to its plugins, or why a file holds none.
struct ServicesFile
{
    QJsonObject object;
    QString problem;
};

/// Reads `path`; an empty path gives this host's built-in sample, a few functions of an imaginary machine.
[[nodiscard]] ServicesFile readServices(const QString &path);
