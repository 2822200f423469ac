// SPDX-License-Identifier: MIT
#include "scriptedjoystick.h"

#include <SFML/Window/Joystick.hpp>

#include <cassert>

namespace
{
struct Script
{
    std::array<std::optional<scripted::Pad>, sf::Joystick::Count> slots;
    scripted::Calls calls;
};

Script &script()
{
    static Script instance;
    return instance;
}

const scripted::Pad *padIn(unsigned slot)
{
    if (slot >= sf::Joystick::Count) {
        ++script().calls.outsideSlots;
        return nullptr;
    }
    const auto &pad = script().slots.at(slot);
    return pad ? &*pad : nullptr;
}
} // namespace

namespace scripted
{
void reset()
{
    script() = {};
}

void plug(unsigned slot, const Pad &pad)
{
    script().slots.at(slot) = pad;
}

void unplug(unsigned slot)
{
    script().slots.at(slot).reset();
}

Pad &pad(unsigned slot)
{
    auto &found = script().slots.at(slot);
    assert(found);
    return *found;
}

Calls &calls()
{
    return script().calls;
}

Pad restingPad(const std::string &name)
{
    Pad pad;
    pad.name = name;
    pad.axes.fill(0.0F);
    pad.buttonCount = 11;
    return pad;
}
} // namespace scripted

namespace sf::Joystick
{
void update()
{
    ++script().calls.update;
}

bool isConnected(unsigned int joystick)
{
    ++script().calls.isConnected;
    return padIn(joystick) != nullptr;
}

unsigned int getButtonCount(unsigned int joystick)
{
    ++script().calls.getButtonCount;
    const auto *pad = padIn(joystick);
    return pad ? pad->buttonCount : 0;
}

bool hasAxis(unsigned int joystick, Axis axis)
{
    ++script().calls.hasAxis;
    const auto *pad = padIn(joystick);
    return pad && pad->axes.at(static_cast<std::size_t>(axis)).has_value();
}

bool isButtonPressed(unsigned int joystick, unsigned int button)
{
    ++script().calls.isButtonPressed;
    const auto *pad = padIn(joystick);
    return pad && pad->buttons.test(button);
}

float getAxisPosition(unsigned int joystick, Axis axis)
{
    ++script().calls.getAxisPosition;
    const auto *pad = padIn(joystick);
    return pad ? pad->axes.at(static_cast<std::size_t>(axis)).value_or(0.0F) : 0.0F;
}

Identification getIdentification(unsigned int joystick)
{
    ++script().calls.getIdentification;
    Identification identification;
    if (const auto *pad = padIn(joystick)) {
        identification.name = sf::String::fromUtf8(pad->name.begin(), pad->name.end());
        identification.vendorId = pad->vendorId;
        identification.productId = pad->productId;
    }
    return identification;
}
} // namespace sf::Joystick
