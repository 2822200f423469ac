// SPDX-License-Identifier: MIT
#include "displayprobe.h"

DisplayProbe::DisplayProbe()
    : m_canMakeWindows(true)
{}
