// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

/// A look at the display before SFML makes a window on it. Where SFML finds no display, or no OpenGL on it,
/// it takes the process down instead of failing.
///
/// Keep it until the window is there: an X server that its last client leaves starts anew, and turns away who
/// knocks in that moment.
class DisplayProbe
{
public:
    DisplayProbe();

    /// Whether SFML can make a window here.
    [[nodiscard]] bool canMakeWindows() const { return m_canMakeWindows; }

private:
    std::shared_ptr<void> m_connection; // an X display, closed with its last owner
    bool m_canMakeWindows = false;
};
