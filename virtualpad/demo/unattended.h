// SPDX-License-Identifier: MIT
#pragma once

struct Places;
class VirtualBench;

/// Goes the whole road with nobody watching, tells each step on standard output with what the host received,
/// and leaves pictures in the output folder. Returns the program's exit code: 0 when every step happened.
int runUnattended(VirtualBench &bench, const Places &places);
