// SPDX-License-Identifier: MIT
#pragma once

/// Whether SFML can make a window here. Where it finds no display, or no OpenGL on it, it takes the process
/// down instead of failing.
[[nodiscard]] bool windowsCanBeMade();
