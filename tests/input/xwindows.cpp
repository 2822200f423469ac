// SPDX-License-Identifier: MIT
// Apart from the tests, since Xlib's macros take names that Qt uses.
#include "xwindows.h"

#include <X11/Xlib.h>

#include <memory>

namespace
{
void collect(Display *display, Window window, std::vector<XWindow> &found)
{
    char *title = nullptr;
    XWindowAttributes attributes{};
    if (XFetchName(display, window, &title) && XGetWindowAttributes(display, window, &attributes))
        found.push_back({title, attributes.width, attributes.height, attributes.map_state != IsUnmapped});
    XFree(title);

    Window root = 0;
    Window parent = 0;
    Window *children = nullptr;
    unsigned count = 0;
    if (!XQueryTree(display, window, &root, &parent, &children, &count))
        return;
    for (unsigned i = 0; i < count; ++i)
        collect(display, children[i], found);
    XFree(children);
}
} // namespace

std::vector<XWindow> xWindowsTitled(const std::string &title)
{
    const std::unique_ptr<Display, int (*)(Display *)> display(XOpenDisplay(nullptr), XCloseDisplay);
    std::vector<XWindow> windows;
    if (display)
        collect(display.get(), DefaultRootWindow(display.get()), windows);
    std::erase_if(windows, [&](const XWindow &window) { return window.title != title; });
    return windows;
}
