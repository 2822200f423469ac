// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QRect>
#include <QtCore/QSize>

/// Where the elements of a device's card stand, in the coordinates of the item's rectangle.
struct CardLayout
{
    QRect card;
    QRect closeButton; ///< on the card's corner: it follows the item and not the card
    QRect statusDot;
    QRect picture;
    QRect chipRow;
    QRect textBlock; ///< between picture and chip row; height 0 where they leave no room
    QRect checkMark;
    QRect linkZone; ///< where the link's tooltip shows; nothing is drawn there

    bool operator==(const CardLayout &) const = default;
};

/// The size that every card asks for, in pixels.
inline constexpr QSize cardSizeHint{300, 240};

/// The layout of the card in an item's rectangle. Any rectangle will do, one that is too small too.
[[nodiscard]] CardLayout layoutCard(const QRect &item);

/// The 24 by 24 pixels of the close button alone, for a click.
[[nodiscard]] QRect closeButtonRect(const QRect &item);
