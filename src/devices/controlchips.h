// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// One chip of a card's row of controls.
struct ControlChip
{
    QRect rect; ///< 20 by 20; the plate around it is larger
    QString label;
    QString url;
    int kind = 2; ///< 0 axis, 1 button, 2 text

    bool operator==(const ControlChip &) const = default;
};

/// The chips for `entries` of the form `label|url`, centred in `row` as far as they fit. When some do not
/// fit, one more chip after them, outside the centred span, counts the rest. None in an empty row.
[[nodiscard]] QList<ControlChip> layoutChips(const QRect &row, const QStringList &entries);

/// The first chip whose rectangle holds `position`, or null. It points into `chips`.
[[nodiscard]] const ControlChip *chipAt(const QList<ControlChip> &chips, const QPoint &position);

/// What a chip's tooltip says: label and number for an axis or a button, else the label alone. The number
/// is the third part of the url between colons, 0 where there is none.
[[nodiscard]] QString chipToolTip(const ControlChip &chip);
