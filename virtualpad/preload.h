// SPDX-License-Identifier: MIT
#pragma once

/// Starts this program again with umockdev's library in front of the system's, unless it runs so already.
/// To be called first in `main`: nothing that was done before survives. Programs started from then on
/// inherit the mocked machine. Returns false, with a reason on standard error, where the library is missing.
[[nodiscard]] bool enterMockedMachine(char *argv[]);
