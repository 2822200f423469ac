// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// One window as the X server knows it.
struct XWindow
{
    std::string title;
    int width = 0;
    int height = 0;
    bool shown = false;
};

/// Every window of that title on the display that `DISPLAY` names, at whatever depth of the tree.
std::vector<XWindow> xWindowsTitled(const std::string &title);
