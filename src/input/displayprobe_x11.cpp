// SPDX-License-Identifier: MIT
#include "displayprobe.h"

#include <X11/Xlib.h>

#include <memory>

bool windowsCanBeMade()
{
    const std::unique_ptr<Display, int (*)(Display *)> display(XOpenDisplay(nullptr), XCloseDisplay);
    if (!display)
        return false;
    int opcode = 0;
    int event = 0;
    int error = 0;
    return XQueryExtension(display.get(), "GLX", &opcode, &event, &error) != 0;
}
