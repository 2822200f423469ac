// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>

#include <optional>

/// Which half of a trigger that sends an axis and a button at once is meant.
enum class TriggerUse { Axis = 1, Button = 2 };

/// The answers to remember, by the gamepad's name.
using TriggerChoices = QMap<QString, TriggerUse>;

/// What a gamepad sent since a pastille began to wait: the last axis and the last button. One movement of a
/// trigger can send both, so whoever collects gives it a moment before it asks for the key.
struct PendingInput
{
    int axis = -1;          ///< -1 for none
    double axisValue = 0.0; ///< -100 to 100
    int button = -1;        ///< -1 for none
    bool buttonPressed = false;

    void takeAxis(int index, double value);
    void takePress(int index);

    [[nodiscard]] bool isEmpty() const { return axis < 0 && button < 0; }
    /// Whether there are both, so that somebody has to choose.
    [[nodiscard]] bool isAmbiguous() const { return axis >= 0 && button >= 0; }
    /// The key of what came alone, or of what `use` takes of both; empty where there is nothing.
    [[nodiscard]] QString key(TriggerUse use) const;

    bool operator==(const PendingInput &) const = default;
};

/// Whether an axis value, -100 to 100, is far enough from rest to be meant: 40 and more, to either side.
[[nodiscard]] bool isMeant(double axisValue);

/// The remembered answer for a gamepad's name.
[[nodiscard]] std::optional<TriggerUse> choiceFor(const TriggerChoices &choices, const QString &device);
