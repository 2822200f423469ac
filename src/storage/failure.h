// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// Puts the reason of a failure into `*error`, which can be null. False, for the caller to return.
inline bool fails(QString *error, const QString &reason)
{
    if (error)
        *error = reason;
    return false;
}
