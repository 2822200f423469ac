// SPDX-License-Identifier: MIT
#include "scriptedjoystick.h"

#include <SFML/Window/Event.hpp>
#include <SFML/Window/Joystick.hpp>
#include <SFML/Window/WindowBase.hpp>

#include <cassert>
#include <deque>

namespace
{
struct Script
{
    std::array<std::optional<scripted::Pad>, sf::Joystick::Count> slots;
    scripted::Calls calls;
    std::array<std::string, sf::Joystick::Count> namesAsText; // what `names` were made of
    std::array<sf::String, sf::Joystick::Count> names;
    std::deque<scripted::WindowEvent> events;
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

// SFML keeps the name ready and hands out copies; what is made anew here would be charged to its callers.
const sf::String &nameIn(unsigned slot, const std::string &text)
{
    if (script().namesAsText.at(slot) != text) {
        script().namesAsText.at(slot) = text;
        script().names.at(slot) = sf::String::fromUtf8(text.begin(), text.end());
    }
    return script().names.at(slot);
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

void post(WindowEvent event)
{
    script().events.push_back(event);
}

std::size_t waitingEvents()
{
    return script().events.size();
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
    if (const auto *pad = padIn(joystick))
        return {.name = nameIn(joystick, pad->name), .vendorId = pad->vendorId, .productId = pad->productId};
    return {};
}
} // namespace sf::Joystick

namespace sf
{
std::optional<Event> WindowBase::pollEvent()
{
    auto &events = script().events;
    if (events.empty())
        return std::nullopt;
    const auto next = events.front();
    events.pop_front();
    switch (next) {
    case scripted::WindowEvent::JoystickConnected:
        return Event::JoystickConnected{0};
    case scripted::WindowEvent::JoystickDisconnected:
        return Event::JoystickDisconnected{0};
    case scripted::WindowEvent::Other:
        break;
    }
    return Event::FocusGained{};
}
} // namespace sf
