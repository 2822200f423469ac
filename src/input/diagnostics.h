// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QLoggingCategory>

/// The category of the plain debug stream, for `qCDebug(diagnostics)`: the line is the one that `qDebug`
/// writes, but `qDebug` formats first and asks afterwards whether anyone wants it.
inline const QLoggingCategory &diagnostics()
{
    return *QLoggingCategory::defaultCategory();
}
