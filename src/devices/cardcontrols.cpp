// SPDX-License-Identifier: MIT
#include "cardelements.h"
#include "cardpainter.h"
#include "cardpixmaps.h"
#include "controlchips.h"

#include <QtGui/QPainter>

using namespace Qt::StringLiterals;

namespace
{
void paintWarning(QPainter *painter, const QRect &row, const QString &icon)
{
    const QRect sign(row.center().x() - 10, row.center().y() - 10, 20, 20);
    const QPixmap pixmap = cachedResourcePixmap(icon, sign.size());
    if (!pixmap.isNull()) {
        painter->drawPixmap(sign, pixmap);
    } else {
        painter->setPen(Qt::NoPen);
        painter->setBrush(QColor(220, 160, 0));
        painter->drawRoundedRect(sign, 4, 4);
    }

    const int left = sign.right() + 6;
    painter->setPen(QColor(110, 130, 150));
    painter->drawText(QRect(left, row.top(), row.right() + 1 - left, row.height()),
                      Qt::AlignLeft | Qt::AlignVCenter, u"No controls"_s);
}

void paintPlate(QPainter *painter, const QRect &plate, const QColor &fill, const QColor &outline)
{
    painter->setPen(outline);
    painter->setBrush(fill);
    painter->drawRoundedRect(plate, 6, 6);
}

void paintTextChip(QPainter *painter, const ControlChip &chip, const QRect &plate)
{
    paintPlate(painter, plate, QColor(20, 32, 42, 210), QColor(110, 200, 215, 140));
    painter->setPen(QColor(180, 210, 220));
    painter->drawText(plate, Qt::AlignCenter, chip.label);
}

void paintInputChip(QPainter *painter, const ControlChip &chip, const QRect &plate, const CardIcons &icons)
{
    paintPlate(painter, plate, QColor(18, 28, 36, 200), QColor(49, 76, 94, 140));

    const bool axis = chip.kind == 0;
    const QPixmap pixmap = cachedResourcePixmap(axis ? icons.axisIcon : icons.buttonIcon, chip.rect.size());
    if (!pixmap.isNull()) {
        painter->drawPixmap(chip.rect, pixmap);
        return;
    }
    painter->setPen(Qt::NoPen);
    painter->setBrush(axis ? QColor(60, 140, 220) : QColor(60, 180, 140));
    painter->drawRoundedRect(chip.rect, 4, 4);
    painter->setPen(QColor(230, 240, 245));
    painter->drawText(chip.rect, Qt::AlignCenter, axis ? u"A"_s : u"B"_s);
}
} // namespace

void paintControls(QPainter *painter, const QRect &row, const QList<ControlChip> &chips,
                   const CardIcons &icons)
{
    if (chips.isEmpty()) {
        paintWarning(painter, row, icons.warningIcon);
        return;
    }
    for (const ControlChip &chip : chips) {
        const QRect plate = chip.rect.adjusted(-3, -3, 3, 3);
        if (chip.kind == 2)
            paintTextChip(painter, chip, plate);
        else
            paintInputChip(painter, chip, plate, icons);
    }
}
