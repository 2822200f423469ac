// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// Path of the no-code application for a gamepad: that of the first profile, by folder name, that serves it
/// and whose file exists; else that of the folder named after the ids; else the one in the profiles root.
/// Empty where none exists. Reads the profiles anew at each call.
[[nodiscard]] QString findConfigFile(const QString &name, uint vendorId, uint productId);

/// Path of the existing picture of the first profile that is linked to `name`; empty where there is none.
[[nodiscard]] QString findProfileImage(const QString &name);

/// Where the no-code application lies that serves gamepads without a profile. It need not exist.
[[nodiscard]] QString commonConfigPath();
