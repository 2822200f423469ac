// SPDX-License-Identifier: MIT
#pragma once

/// Whether SFML can make a window here. Where it finds no display it ends the process instead of failing.
[[nodiscard]] bool windowsCanBeMade();
