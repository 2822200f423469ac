// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// Whether two texts are equal without regard to case.
[[nodiscard]] bool equalWithoutCase(const QString &a, const QString &b);

/// The same text for all texts that `equalWithoutCase` finds equal, and for no others: what a hash is asked
/// for where comparing one by one would take too long.
[[nodiscard]] QString caseKey(const QString &text);
