// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>

class QFont;
class QPainter;
class QRect;
class QString;
class QVariant;
struct CardContent;
struct CardIcons;
struct ControlChip;

// The elements of a card, in the order in which they are painted. Each sets the pen and the brush that it
// needs and leaves them set; the painter is antialiased.

/// Shadow, body, outline, hairline and the light along the upper edge.
void paintFrame(QPainter *painter, const QRect &card, bool hover);
/// The ring around a card that is selected or has the focus.
void paintHighlightBorder(QPainter *painter, const QRect &card);
/// Green when connected, else red.
void paintStatusDot(QPainter *painter, const QRect &dot, bool connected);
/// The picture stretched over `area`; nothing when `image` gives none.
void paintPicture(QPainter *painter, const QRect &area, const QVariant &image);
/// Title, sub-line and address, each elided to the width of `block`. Leaves another font set.
void paintTexts(QPainter *painter, const QRect &block, const CardContent &content, const QFont &font);
/// The chips on their plates, in the painter's font, or in `row` a warning that there are none.
void paintControls(QPainter *painter, const QRect &row, const QList<ControlChip> &chips,
                   const CardIcons &icons);
void paintCloseButton(QPainter *painter, const QRect &button, const QString &icon);
void paintCheckMark(QPainter *painter, const QRect &mark);
