// SPDX-License-Identifier: MIT
#include "joydev.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <span>

namespace
{
// The kernel's own length of the queue of one opened file.
constexpr std::size_t logLength = 64;
constexpr double fullDeflection = 32767.0;

std::uint32_t milliseconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

Joydev::Answer failure(int error)
{
    return {.bytes = {}, .result = -1, .error = error};
}

template <typename T>
std::vector<std::byte> bytesOf(const std::vector<T> &values)
{
    const auto bytes = std::as_bytes(std::span(values));
    return {bytes.begin(), bytes.end()};
}

template <typename T>
Joydev::Answer number(T value)
{
    return {.bytes = bytesOf(std::vector<T>{value}), .result = 0, .error = 0};
}

// Lists and texts are cut to the caller's buffer, and the call's result is their length.
template <typename T>
Joydev::Answer list(const std::vector<T> &values, unsigned long request)
{
    Joydev::Answer answer{.bytes = bytesOf(values), .result = 0, .error = 0};
    answer.bytes.resize(std::min<std::size_t>(answer.bytes.size(), _IOC_SIZE(request)));
    answer.result = static_cast<long>(answer.bytes.size());
    return answer;
}
} // namespace

std::int16_t kernelValue(double position)
{
    const double scaled = std::round(position / 100.0 * fullDeflection);
    return static_cast<std::int16_t>(std::clamp(scaled, -fullDeflection, fullDeflection));
}

void Joydev::plug(const PadShape &shape)
{
    m_shape = shape;
    m_axes.clear();
    for (const AxisShape &axis : shape.axes)
        m_axes.push_back(kernelValue(axis.rest));
    m_buttons.assign(static_cast<std::size_t>(shape.buttonCount), false);
    m_firstLogged = end() + 1; // the gap tells files that were opened before
    m_log.clear();
    m_pluggedAt = m_firstLogged;
    m_plugged = true;
}

void Joydev::unplug()
{
    m_plugged = false;
}

void Joydev::setAxis(std::size_t axis, double position)
{
    if (!m_plugged || axis >= m_axes.size() || !std::isfinite(position))
        return;
    const std::int16_t value = kernelValue(position);
    if (m_axes[axis] == value)
        return;
    m_axes[axis] = value;
    append(JS_EVENT_AXIS, axis, value);
}

void Joydev::setButton(std::size_t button, bool pressed)
{
    if (!m_plugged || button >= m_buttons.size() || m_buttons[button] == pressed)
        return;
    m_buttons[button] = pressed;
    append(JS_EVENT_BUTTON, button, pressed ? 1 : 0);
}

void Joydev::append(std::uint8_t type, std::size_t number, std::int16_t value)
{
    m_log.push_back(
        {.time = milliseconds(), .value = value, .type = type, .number = static_cast<std::uint8_t>(number)});
    if (m_log.size() > logLength) {
        m_log.pop_front();
        ++m_firstLogged;
    }
}

js_event Joydev::startupEvent(std::size_t index) const
{
    js_event event{.time = milliseconds(), .value = 0, .type = 0, .number = 0};
    if (index < m_buttons.size()) {
        event.type = JS_EVENT_BUTTON | JS_EVENT_INIT;
        event.number = static_cast<std::uint8_t>(index);
        event.value = m_buttons[index] ? 1 : 0;
    } else {
        event.type = JS_EVENT_AXIS | JS_EVENT_INIT;
        event.number = static_cast<std::uint8_t>(index - m_buttons.size());
        event.value = m_axes[index - m_buttons.size()];
    }
    return event;
}

bool Joydev::isDead(const Reader &reader) const
{
    return !m_plugged || reader.next < m_pluggedAt;
}

Joydev::Answer Joydev::read(Reader &reader, std::size_t size) const
{
    if (isDead(reader))
        return failure(ENODEV);
    if (size < sizeof(js_event))
        return failure(EINVAL);
    // A file that has missed events is told the present state anew, as the kernel does.
    if (reader.next < m_firstLogged)
        reader = open();

    std::vector<js_event> events;
    const std::size_t room = size / sizeof(js_event);
    while (events.size() < room && reader.startup < m_buttons.size() + m_axes.size())
        events.push_back(startupEvent(reader.startup++));
    while (events.size() < room && reader.next < end())
        events.push_back(m_log[static_cast<std::size_t>(reader.next++ - m_firstLogged)]);
    if (events.empty())
        return failure(EAGAIN);
    const auto length = static_cast<long>(events.size() * sizeof(js_event));
    return {.bytes = bytesOf(events), .result = length, .error = 0};
}

Joydev::Answer Joydev::control(const Reader &reader, unsigned long request) const
{
    if (isDead(reader))
        return failure(ENODEV);
    switch (request) {
    case JSIOCGVERSION:
        return number<std::uint32_t>(JS_VERSION);
    case JSIOCGAXES:
        return number(static_cast<std::uint8_t>(m_axes.size()));
    case JSIOCGBUTTONS:
        return number(static_cast<std::uint8_t>(m_buttons.size()));
    default:
        break;
    }

    constexpr unsigned long anyLength = _IOC(0U, 0U, 0U, _IOC_SIZEMASK);
    const unsigned long question = request & ~anyLength;
    if (question == (JSIOCGAXMAP & ~anyLength)) {
        std::vector<std::uint8_t> codes(ABS_CNT);
        std::ranges::transform(m_shape.axes, codes.begin(), &AxisShape::code);
        return list(codes, request);
    }
    if (question == (JSIOCGNAME(0) & ~anyLength)) {
        std::vector<char> text(m_shape.name.begin(), m_shape.name.end());
        text.push_back('\0');
        return list(text, request);
    }
    return failure(EINVAL);
}
