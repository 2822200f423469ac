// SPDX-License-Identifier: MIT
#include "cardroles.h"

#include <QtCore/QAbstractItemModel>

using namespace Qt::StringLiterals;

CardRoles findCardRoles(const QHash<int, QByteArray> &names)
{
    return {
        .usn = names.key("usn"_ba, -1),
        .name = names.key("name"_ba, -1),
        .ip = names.key("ip"_ba, -1),
        .selected = names.key("selected"_ba, -1),
        .isConnected = names.key("isConnected"_ba, -1),
        .videoInterfaces = names.key("videoInterfaces"_ba, -1),
        .json = names.key("json"_ba, -1),
        .product = names.key("product"_ba, -1),
        .image = names.key("image"_ba, -1),
        .modelString = names.key("modelString"_ba, -1),
        .linkState = names.key("linkState"_ba, -1),
    };
}

QVariant roleValue(const QModelIndex &index, int role)
{
    return role < 0 || !index.model() ? QVariant() : index.data(role);
}
