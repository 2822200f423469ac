// SPDX-License-Identifier: MIT
#include "cardpainter.h"

#include "cardcontent.h"
#include "cardelements.h"
#include "cardlayout.h"
#include "controlchips.h"

#include <QtGui/QPainter>

void paintCard(QPainter *painter, const QRect &item, const CardContent &content, const CardLook &look,
               const CardIcons &icons)
{
    const CardLayout layout = layoutCard(item);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    paintFrame(painter, layout.card, look.hover);
    if (content.selected || look.focus)
        paintHighlightBorder(painter, layout.card);
    paintStatusDot(painter, layout.statusDot, content.isConnected);
    paintPicture(painter, layout.picture, content.image);
    paintTexts(painter, layout.textBlock, content, look.font);
    painter->setFont(look.font);
    paintControls(painter, layout.chipRow, layoutChips(layout.chipRow, content.controls), icons);
    paintCloseButton(painter, layout.closeButton, icons.closeIcon);
    if (content.selected)
        paintCheckMark(painter, layout.checkMark);
    painter->restore();
}
