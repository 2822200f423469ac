// SPDX-License-Identifier: MIT
#include "displayprobe.h"

bool windowsCanBeMade()
{
    return true;
}
