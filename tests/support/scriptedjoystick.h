// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <bitset>
#include <optional>
#include <string>

/// Joysticks that exist only in a test. A program that links this defines the functions of `sf::Joystick`,
/// and `pollEvent` of SFML's windows, itself, so that the code under test, a loaded plugin included, reads
/// what the test has set.
namespace scripted
{
/// One pad as SFML would report it. Axes that hold nothing are not present.
struct Pad
{
    std::string name = "Scripted Pad"; ///< UTF-8
    unsigned vendorId = 0x1234;
    unsigned productId = 0xabcd;
    std::array<std::optional<float>, 8> axes{}; ///< -100 to 100
    std::bitset<32> buttons;
    unsigned buttonCount = 0;
};

/// How often each function was called since `reset`.
struct Calls
{
    int update = 0;
    int isConnected = 0;
    int hasAxis = 0;
    int getAxisPosition = 0;
    int isButtonPressed = 0;
    int getButtonCount = 0;
    int getIdentification = 0;
    int outsideSlots = 0; ///< calls with a slot beyond 0 to 7, which real SFML would read out of bounds
};

/// Unplugs everything and forgets all calls and events.
void reset();
/// Makes `pad` the joystick of `slot` (0 to 7), in place of one that is there.
void plug(unsigned slot, const Pad &pad);
void unplug(unsigned slot);
/// The pad in `slot`, to change its readings. It must be plugged in.
Pad &pad(unsigned slot);
Calls &calls();

/// What a window's event queue holds next; a window with no scripted event has none.
enum class WindowEvent { JoystickConnected, JoystickDisconnected, Other };
void post(WindowEvent event);
/// How many posted events no window has taken yet.
std::size_t waitingEvents();

/// A pad of eight axes at rest at 0 and eleven buttons.
Pad restingPad(const std::string &name = "Scripted Pad");
} // namespace scripted
