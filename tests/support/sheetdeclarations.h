// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <algorithm>

/// What a style sheet declares for exactly this selector, as "name: value; name: value;".
inline QString declarationsFor(const QString &sheet, const QString &selector)
{
    QString declarations;
    const QStringList rules = sheet.simplified().split(u'}', Qt::SkipEmptyParts);
    for (const QString &rule : rules) {
        const QStringList selectors = rule.section(u'{', 0, 0).split(u',');
        const auto isMeant = [&](const QString &candidate) { return candidate.trimmed() == selector; };
        if (std::ranges::any_of(selectors, isMeant))
            declarations += rule.section(u'{', 1).trimmed();
    }
    return declarations;
}
