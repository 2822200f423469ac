// SPDX-License-Identifier: MIT
#include "pumpwindow.h"

#include "displayprobe.h"

#include <SFML/Window/Event.hpp>
#include <SFML/Window/VideoMode.hpp>
#include <SFML/Window/Window.hpp>

std::unique_ptr<sf::Window> makePumpWindow()
{
    const DisplayProbe display;
    if (!display.canMakeWindows())
        return nullptr;
    constexpr unsigned bitsPerPixel = 32;
    constexpr std::uint32_t noStyle = 0;
    auto window = std::make_unique<sf::Window>(sf::VideoMode({1, 1}, bitsPerPixel), "sfml-joy-pump", noStyle,
                                               sf::State::Windowed);
    window->setVisible(false);
    // Only the result that the window's context is current nowhere matters; a context that never was says no.
    (void)window->setActive(false);
    return window;
}

bool drainJoystickEvents(sf::WindowBase &window)
{
    bool found = false;
    while (const auto event = window.pollEvent())
        found |= event->is<sf::Event::JoystickConnected>() || event->is<sf::Event::JoystickDisconnected>();
    return found;
}
