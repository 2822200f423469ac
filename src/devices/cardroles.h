// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QVariant>

class QModelIndex;

/// The numbers that a model gives to the roles a card is made of; -1 where the model has no such role.
struct CardRoles
{
    int usn = -1;
    int name = -1;
    int ip = -1;
    int selected = -1;
    int isConnected = -1;
    int videoInterfaces = -1;
    int json = -1;
    int product = -1;
    int image = -1;
    int modelString = -1;
    int linkState = -1;

    bool operator==(const CardRoles &) const = default;
};

/// Finds the roles in what a model's `roleNames` gave, each by its exact name.
[[nodiscard]] CardRoles findCardRoles(const QHash<int, QByteArray> &names);

/// What the model holds for `role`; invalid for a negative role and for an index without model.
[[nodiscard]] QVariant roleValue(const QModelIndex &index, int role);
