// SPDX-License-Identifier: MIT
#pragma once

#include "joydev.h"
#include "padshape.h"

#include <memory>
#include <mutex>
#include <string>

// The library's own names for what it hands out.
// NOLINTBEGIN(readability-identifier-naming)
using UMockdevIoctlBase = struct _UMockdevIoctlBase;
using UMockdevIoctlClient = struct _UMockdevIoctlClient;
using UMockdevTestbed = struct _UMockdevTestbed;
// NOLINTEND(readability-identifier-naming)

/// One joystick node of the mocked machine, with or without a pad in it. Made by `VirtualBench::pad`.
/// Its functions are called from one thread; readers in other processes are served from a second one.
class VirtualPad
{
public:
    VirtualPad(UMockdevTestbed *testbed, int number);
    ~VirtualPad();
    VirtualPad(const VirtualPad &) = delete;
    VirtualPad &operator=(const VirtualPad &) = delete;

    /// Plugs in a pad whose controls are at rest, in place of one that is there.
    void plug(const PadShape &shape);
    void unplug();
    [[nodiscard]] bool isPlugged() const;
    [[nodiscard]] PadShape shape() const;

    /// `position` is -100 to 100. Axes and buttons that the pad does not have are ignored.
    void setAxis(int axis, double position);
    void setAxis(PadAxis axis, double position);
    void setButton(int button, bool pressed);

private:
    static int onControl(UMockdevIoctlBase *, UMockdevIoctlClient *client, VirtualPad *pad);
    static int onRead(UMockdevIoctlBase *, UMockdevIoctlClient *client, VirtualPad *pad);
    static void onOpened(UMockdevIoctlBase *, UMockdevIoctlClient *client, VirtualPad *pad);

    UMockdevTestbed *m_testbed;
    UMockdevIoctlBase *m_handler;
    std::string m_node;
    std::string m_systemPath;
    mutable std::mutex m_mutex;
    Joydev m_joydev; ///< shared with the thread that serves readers
};
