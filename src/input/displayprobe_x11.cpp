// SPDX-License-Identifier: MIT
#include "displayprobe.h"

#include <QtCore/QScopeGuard>

#include <GL/glx.h>
#include <X11/Xlib.h>

#include <array>
#include <memory>

namespace
{
bool errorSeen = false;

/// Stands in for Xlib's own handler, which ends the process.
int noteError(Display * /*display*/, XErrorEvent * /*error*/)
{
    errorSeen = true;
    return 0;
}

/// SFML asks for 32 bits a pixel and takes the nearest visual that a window of the screen's depth can have
/// only on screens of true colour.
bool hasTrueColour(Display *display)
{
    constexpr int trueColourDepth = 24;
    return DefaultDepth(display, DefaultScreen(display)) >= trueColourDepth;
}

/// SFML follows a null visual or a null context where there is none to be had.
bool hasOpenGl(Display *display)
{
    if (!glXQueryExtension(display, nullptr, nullptr))
        return false;
    std::array<int, 3> wanted{GLX_RGBA, GLX_DOUBLEBUFFER, None};
    const std::unique_ptr<XVisualInfo, int (*)(void *)> visual(
        glXChooseVisual(display, DefaultScreen(display), wanted.data()), XFree);
    if (!visual)
        return false;
    const GLXContext context = glXCreateContext(display, visual.get(), nullptr, True);
    XSync(display, False);
    if (!context || errorSeen)
        return false;
    glXDestroyContext(display, context);
    return true;
}
} // namespace

DisplayProbe::DisplayProbe()
{
    Display *display = XOpenDisplay(nullptr);
    if (!display)
        return;
    m_connection = std::shared_ptr<Display>(display, XCloseDisplay);
    errorSeen = false;
    const auto restore =
        qScopeGuard([previous = XSetErrorHandler(noteError)] { XSetErrorHandler(previous); });
    m_canMakeWindows = hasTrueColour(display) && hasOpenGl(display);
}
