// SPDX-License-Identifier: MIT
#pragma once

#include "padshape.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include <linux/joystick.h>

/// The kernel's side of one joystick node, without the kernel: positions, the events that reading yields,
/// and the answers to the joystick requests. Plain state; whoever shares it between threads locks it.
class Joydev
{
public:
    /// One opened file: what it has read so far.
    struct Reader
    {
        std::size_t startup = 0; ///< how many of the events that tell the present state
        std::uint64_t next = 0;  ///< number of the next event of the log
    };

    /// What a system call gives back: bytes for the caller's buffer with the call's result, or an errno.
    struct Answer
    {
        std::vector<std::byte> bytes;
        long result = 0;
        int error = 0;
    };

    /// Makes this the node of a pad whose controls are at rest.
    void plug(const PadShape &shape);
    /// From now on every file that is open answers ENODEV, also when a pad is plugged in again.
    void unplug();
    [[nodiscard]] bool isPlugged() const { return m_plugged; }
    [[nodiscard]] const PadShape &shape() const { return m_shape; }

    /// `position` is -100 to 100; beyond that it stops at the end. Unknown axes and buttons do nothing, and
    /// neither does a position that the control already has.
    void setAxis(std::size_t axis, double position);
    void setButton(std::size_t button, bool pressed);

    [[nodiscard]] Reader open() const { return {.startup = 0, .next = end()}; }
    /// First the present state, then what happened since: as many events as fit into `size` bytes. EAGAIN
    /// when there are none, EINVAL when not one fits.
    [[nodiscard]] Answer read(Reader &reader, std::size_t size) const;
    /// Answers version, name, counts and the axis map; other requests are EINVAL.
    [[nodiscard]] Answer control(const Reader &reader, unsigned long request) const;

private:
    [[nodiscard]] bool isDead(const Reader &reader) const;
    void append(std::uint8_t type, std::size_t number, std::int16_t value);
    [[nodiscard]] js_event startupEvent(std::size_t index) const;
    [[nodiscard]] std::uint64_t end() const { return m_firstLogged + m_log.size(); }

    PadShape m_shape;
    std::vector<std::int16_t> m_axes;
    std::vector<bool> m_buttons;
    std::deque<js_event> m_log; ///< the last events, of which the first has the number `m_firstLogged`
    std::uint64_t m_firstLogged = 0;
    std::uint64_t m_pluggedAt = 0; ///< number that the first event of this plugging has or will have
    bool m_plugged = false;
};

/// The kernel's value for a position of -100 to 100, which it scales to -32767 to 32767.
[[nodiscard]] std::int16_t kernelValue(double position);
