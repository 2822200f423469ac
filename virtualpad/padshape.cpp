// SPDX-License-Identifier: MIT
#include "padshape.h"

#include <linux/input-event-codes.h>

PadShape twoStickPad(const std::string &name)
{
    constexpr double triggerRest = -100.0;
    return {
        .name = name,
        .vendorId = 0x1209, // the block of ids that is free for open hardware
        .productId = 0x0001,
        .axes = {{.code = ABS_X},
                 {.code = ABS_Y},
                 {.code = ABS_Z, .rest = triggerRest},
                 {.code = ABS_RX},
                 {.code = ABS_RY},
                 {.code = ABS_RZ, .rest = triggerRest},
                 {.code = ABS_HAT0X},
                 {.code = ABS_HAT0Y}},
        .buttonCount = 11,
    };
}
