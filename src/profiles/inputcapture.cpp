// SPDX-License-Identifier: MIT
#include "inputcapture.h"

#include "inputkeys.h"

#include <cmath>

namespace
{
constexpr double meantFrom = 40.0;
}

void PendingInput::takeAxis(int index, double value)
{
    axis = index;
    axisValue = value;
}

void PendingInput::takePress(int index)
{
    button = index;
    buttonPressed = true;
}

QString PendingInput::key(TriggerUse use) const
{
    if (isEmpty())
        return {};
    const bool takesAxis = isAmbiguous() ? use == TriggerUse::Axis : axis >= 0;
    return takesAxis ? axisKey(axis) : buttonKey(button);
}

bool isMeant(double axisValue)
{
    return std::abs(axisValue) >= meantFrom;
}

std::optional<TriggerUse> choiceFor(const TriggerChoices &choices, const QString &device)
{
    const auto choice = choices.constFind(device);
    return choice == choices.cend() ? std::nullopt : std::optional(*choice);
}
