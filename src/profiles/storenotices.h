// SPDX-License-Identifier: MIT
#pragma once

#include "profilechanges.h"

#include <QtWidgets/QMessageBox>

/// A box with one Ok button.
struct StoreNotice
{
    QMessageBox::Icon icon = QMessageBox::Warning;
    QString title;
    QString text;

    bool operator==(const StoreNotice &) const = default;
};

/// What the user is told of a failure.
[[nodiscard]] StoreNotice noticeOf(const StoreFailure &failure);

/// What the user is told when a new profile is made for a gamepad that another one is linked to.
[[nodiscard]] StoreNotice deviceTakenNotice();
