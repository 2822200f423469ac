// SPDX-License-Identifier: MIT
#pragma once

#include "cardroles.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

/// What one card shows, as the model has it. A role that is absent reads as empty or false.
struct CardContent
{
    QString name;
    QString ip;
    QString product;
    QString modelString;
    QVariant image;       ///< an icon, or the path of one
    QStringList controls; ///< one `label|url` for each chip
    bool selected = false;
    bool isConnected = false;
};

/// Reads one row's card.
[[nodiscard]] CardContent readCard(const QModelIndex &index, const CardRoles &roles);

/// The entries of a row's chips alone.
[[nodiscard]] QStringList readControls(const QModelIndex &index, const CardRoles &roles);

/// The card's first line: the name, with a stand-in for none.
[[nodiscard]] QString cardTitle(const CardContent &content);

/// The card's second line: product and model, or the model alone.
[[nodiscard]] QString cardSubLine(const CardContent &content);
