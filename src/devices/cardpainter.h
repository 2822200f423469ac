// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtGui/QFont>

class QPainter;
class QRect;
struct CardContent;

/// Where the host keeps the pictures of a card. Each has a drawn stand-in, for a host that has none.
struct CardIcons
{
    QString axisIcon;
    QString buttonIcon;
    QString warningIcon;
    QString closeIcon;
    QString linkConnectedIcon; ///< this one and the two after it are kept, not drawn
    QString linkBusyIcon;
    QString linkDisconnectedIcon;
};

/// How the view wants a card to look at the moment.
struct CardLook
{
    QFont font;
    bool hover = false;
    bool focus = false;
};

/// Paints one card into an item's rectangle. The painter is left as it was.
void paintCard(QPainter *painter, const QRect &item, const CardContent &content, const CardLook &look,
               const CardIcons &icons);
