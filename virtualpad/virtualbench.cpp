// SPDX-License-Identifier: MIT
#include "virtualbench.h"

#include <umockdev.h>

VirtualBench::VirtualBench()
    : m_testbed(umockdev_testbed_new())
{}

// The test bed goes first: it ends the thread that serves the pads.
VirtualBench::~VirtualBench()
{
    g_object_unref(m_testbed);
}

VirtualPad &VirtualBench::pad(int number)
{
    auto &slot = m_pads[number];
    if (!slot)
        slot = std::make_unique<VirtualPad>(m_testbed, number);
    return *slot;
}
