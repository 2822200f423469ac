// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

class ControlManette;

/// The key of the row that belongs to a joystick slot, "gp:%1".
[[nodiscard]] QString usnOfSlot(int slot);

/// An id as records and cards show it: lower-case hexadecimal, no prefix, no padding.
[[nodiscard]] QString hexText(uint id);

/// What is remembered of a device while it is away: `deviceId` as decimal text, `vendorIdHex`,
/// `productIdHex`, `name`, and `imagePath`, which is looked up in the profile folders.
[[nodiscard]] QJsonObject identityOf(const ControlManette &device);

/// The slot of the placeholder for a remembered device. -1 where `deviceId` is no text with a number above
/// 0, so slot 0 has it too; a number beyond `int` becomes the largest `int`.
[[nodiscard]] int placeholderSlot(const QJsonObject &identity);

/// "Axes|axis://%1" and "Buttons|btn://%1" with the counts that SFML has for the device's slot; an entry
/// with a count of 0 is left out.
[[nodiscard]] QStringList capabilitiesOf(const ControlManette &device);
