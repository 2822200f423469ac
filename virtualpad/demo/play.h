// SPDX-License-Identifier: MIT
#pragma once

struct Places;
class VirtualBench;

/// Opens the host's window and a panel that drives two virtual pads, and lets a person play until one of the
/// windows is closed. Needs a `QApplication`. Returns the program's exit code.
int play(VirtualBench &bench, const Places &places);
