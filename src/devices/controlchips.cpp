// SPDX-License-Identifier: MIT
#include "controlchips.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr int chipSize = 20;
constexpr int chipGap = 8;
constexpr int chipPitch = chipSize + chipGap;

int kindOf(const QString &url)
{
    if (url.startsWith("axis://"_L1, Qt::CaseInsensitive))
        return 0;
    if (url.startsWith("btn://"_L1, Qt::CaseInsensitive))
        return 1;
    return 2;
}

ControlChip chipFor(const QString &entry, const QRect &rect)
{
    const qsizetype bar = entry.indexOf(u'|');
    const bool labelled = bar > 0;
    const QString url = labelled ? entry.sliced(bar + 1) : entry;
    return {.rect = rect, .label = labelled ? entry.first(bar) : QString(), .url = url, .kind = kindOf(url)};
}
} // namespace

QList<ControlChip> layoutChips(const QRect &row, const QStringList &entries)
{
    QList<ControlChip> chips;
    if (row.width() < 1)
        return chips;

    const qsizetype fit = (row.width() + chipGap) / chipPitch;
    const int count = static_cast<int>(std::min(fit, entries.size()));
    if (count == 0)
        return chips;

    const int total = count * chipPitch - chipGap;
    QRect rect(row.center().x() - total / 2, row.center().y() - chipSize / 2, chipSize, chipSize);
    chips.reserve(count + 1);
    const QStringList shown = entries.first(count);
    for (const QString &entry : shown) {
        chips.append(chipFor(entry, rect));
        rect.translate(chipPitch, 0);
    }
    if (entries.size() > count) {
        const QString rest = u'+' + QString::number(entries.size() - count);
        chips.append({.rect = rect, .label = rest, .url = rest, .kind = 2});
    }
    return chips;
}

const ControlChip *chipAt(const QList<ControlChip> &chips, const QPoint &position)
{
    const auto found =
        std::ranges::find_if(chips, [&](const ControlChip &chip) { return chip.rect.contains(position); });
    return found == chips.cend() ? nullptr : &*found;
}

QString chipToolTip(const ControlChip &chip)
{
    if (chip.kind != 0 && chip.kind != 1)
        return chip.label;
    const int number = chip.url.section(u':', 2, 2).toInt();
    return u"%1: %2"_s.arg(chip.label, QString::number(number));
}
