// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// One axis of a pad: the kernel's code for it (`ABS_X`, ...) and where it rests, -100 to 100.
struct AxisShape
{
    std::uint8_t code = 0;
    double rest = 0.0;
};

/// What a pad is, apart from where its controls stand.
struct PadShape
{
    std::string name; ///< UTF-8
    std::uint16_t vendorId = 0;
    std::uint16_t productId = 0;
    std::vector<AxisShape> axes; ///< in the order in which the driver numbers them
    int buttonCount = 0;         ///< 0 to 255
};

/// A common pad: two sticks, two triggers that rest at -100, a hat, eleven buttons.
PadShape twoStickPad(const std::string &name);

/// The axes of `twoStickPad`, as indices of its list.
enum class PadAxis : std::uint8_t {
    LeftX,
    LeftY,
    LeftTrigger,
    RightX,
    RightY,
    RightTrigger,
    HatX,
    HatY,
};
