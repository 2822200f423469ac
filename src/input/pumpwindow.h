// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace sf
{
class Window;
class WindowBase;
} // namespace sf

/// A window that is never shown, through which SFML delivers joysticks that come and go. Null where SFML
/// can make no window: it would end the process, and joysticks are found by polling as well.
[[nodiscard]] std::unique_ptr<sf::Window> makePumpWindow();

/// Consumes every waiting event; true if any told of a joystick that came or went.
[[nodiscard]] bool drainJoystickEvents(sf::WindowBase &window);
