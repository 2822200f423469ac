// SPDX-License-Identifier: MIT
#pragma once

#include "virtualpad.h"

#include <map>

/// The mocked machine that virtual pads are plugged into. One at a time, in a program that has passed
/// `enterMockedMachine`; programs that it starts see the same machine. They must have ended before the bench
/// goes, since reading from a pad whose machine is gone aborts.
class VirtualBench
{
public:
    VirtualBench();
    ~VirtualBench();
    VirtualBench(const VirtualBench &) = delete;
    VirtualBench &operator=(const VirtualBench &) = delete;

    /// The node /dev/input/js`number`, empty at first.
    VirtualPad &pad(int number = 0);

private:
    UMockdevTestbed *m_testbed;
    std::map<int, std::unique_ptr<VirtualPad>> m_pads;
};
