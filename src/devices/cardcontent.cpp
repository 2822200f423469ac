// SPDX-License-Identifier: MIT
#include "cardcontent.h"

using namespace Qt::StringLiterals;

QStringList readControls(const QModelIndex &index, const CardRoles &roles)
{
    return roleValue(index, roles.videoInterfaces).toStringList();
}

CardContent readCard(const QModelIndex &index, const CardRoles &roles)
{
    return {
        .name = roleValue(index, roles.name).toString(),
        .ip = roleValue(index, roles.ip).toString(),
        .product = roleValue(index, roles.product).toString(),
        .modelString = roleValue(index, roles.modelString).toString(),
        .image = roleValue(index, roles.image),
        .controls = readControls(index, roles),
        .selected = roleValue(index, roles.selected).toBool(),
        .isConnected = roleValue(index, roles.isConnected).toBool(),
    };
}

QString cardTitle(const CardContent &content)
{
    return content.name.isEmpty() ? u"<Sans nom>"_s : content.name;
}

QString cardSubLine(const CardContent &content)
{
    return content.product.isEmpty() ? content.modelString : content.product + " - "_L1 + content.modelString;
}
