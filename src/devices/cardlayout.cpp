// SPDX-License-Identifier: MIT
#include "cardlayout.h"

#include <algorithm>

QRect closeButtonRect(const QRect &item)
{
    return {item.left() + 6, item.top() + 6, 24, 24};
}

CardLayout layoutCard(const QRect &item)
{
    CardLayout layout;
    const QRect card = item.adjusted(6, 6, -6, -6);
    layout.card = card;
    layout.closeButton = closeButtonRect(item);
    layout.statusDot = {card.right() - 26, card.top() + 12, 14, 14};
    layout.picture = {card.center().x() - 48, card.top() + 16, 96, 96};
    layout.chipRow = {card.left() + 12, card.bottom() - 40, card.width() - 24, 28};

    const int textTop = layout.picture.bottom() + 10;
    const int textHeight = std::max(0, layout.chipRow.top() - 6 - textTop);
    layout.textBlock = {card.left() + 12, textTop, card.width() - 24, textHeight};

    layout.checkMark = {card.right() - 38, card.bottom() - 38, 26, 26};
    layout.linkZone = {layout.picture.right() - 28, layout.picture.top() - 2, 30, 30};
    return layout;
}
