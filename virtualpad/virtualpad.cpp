// SPDX-License-Identifier: MIT
#include "virtualpad.h"

#include <umockdev.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <format>

namespace
{
constexpr const char *readerKey = "reader";

Joydev::Reader *readerOf(UMockdevIoctlClient *client)
{
    return static_cast<Joydev::Reader *>(g_object_get_data(reinterpret_cast<GObject *>(client), readerKey));
}

void deleteReader(void *reader)
{
    delete static_cast<Joydev::Reader *>(reader);
}

// Puts the answer's bytes into `target`, the caller's buffer, and lets the caller go on.
void complete(UMockdevIoctlClient *client, UMockdevIoctlData *target, Joydev::Answer answer)
{
    if (!answer.bytes.empty()) {
        umockdev_ioctl_data_update(target, 0, reinterpret_cast<guint8 *>(answer.bytes.data()),
                                   static_cast<gint>(answer.bytes.size()));
    }
    umockdev_ioctl_client_complete(client, answer.result, answer.error);
}

[[noreturn]] void fail(const std::string &node, const GError *error)
{
    std::fprintf(stderr, "virtual pad %s: %s\n", node.c_str(), error ? error->message : "refused");
    std::abort();
}
} // namespace

VirtualPad::VirtualPad(UMockdevTestbed *testbed, int number)
    : m_testbed(testbed)
    , m_handler(umockdev_ioctl_base_new())
    , m_node(std::format("input/js{}", number))
    , m_systemPath(std::format("/sys/devices/virtual/input/js{}", number))
{
    g_signal_connect_data(m_handler, "handle-ioctl", reinterpret_cast<GCallback>(onControl), this, nullptr,
                          GConnectFlags{});
    g_signal_connect_data(m_handler, "handle-read", reinterpret_cast<GCallback>(onRead), this, nullptr,
                          GConnectFlags{});
    g_signal_connect_data(m_handler, "client-connected", reinterpret_cast<GCallback>(onOpened), this, nullptr,
                          GConnectFlags{});
    // For good: a reader whose connection is cut aborts, so an unplugged pad must go on answering.
    GError *error = nullptr;
    if (!umockdev_testbed_attach_ioctl(m_testbed, ("/dev/" + m_node).c_str(), m_handler, &error))
        fail(m_node, error);
}

VirtualPad::~VirtualPad()
{
    g_object_unref(m_handler);
}

void VirtualPad::plug(const PadShape &shape)
{
    unplug();
    {
        const std::lock_guard lock(m_mutex);
        m_joydev.plug(shape);
    }
    // The test bed makes the node and then tells listeners. Contents make the node a plain file, which can be
    // made again when the pad returns; the minor number of the joystick nodes equals their own.
    const std::string description =
        std::format("P: {}\n"
                    "N: {}=00\n"
                    "E: DEVNAME=/dev/{}\n"
                    "E: MAJOR=13\n"
                    "E: MINOR={}\n"
                    "E: SUBSYSTEM=input\n"
                    "E: ID_INPUT=1\n"
                    "E: ID_INPUT_JOYSTICK=1\n"
                    "E: ID_VENDOR_ID={:04x}\n"
                    "E: ID_MODEL_ID={:04x}\n"
                    "A: dev=13:{}\n",
                    m_systemPath.substr(std::string("/sys").size()), m_node, m_node, m_node.substr(8),
                    shape.vendorId, shape.productId, m_node.substr(8));
    GError *error = nullptr;
    if (!umockdev_testbed_add_from_string(m_testbed, description.c_str(), &error))
        fail(m_node, error);
}

// The test bed tells listeners of the removal before reading fails, so that nobody opens the node once more.
void VirtualPad::unplug()
{
    if (!isPlugged())
        return;
    umockdev_testbed_remove_device(m_testbed, m_systemPath.c_str());
    const std::lock_guard lock(m_mutex);
    m_joydev.unplug();
}

bool VirtualPad::isPlugged() const
{
    const std::lock_guard lock(m_mutex);
    return m_joydev.isPlugged();
}

PadShape VirtualPad::shape() const
{
    const std::lock_guard lock(m_mutex);
    return m_joydev.shape();
}

void VirtualPad::setAxis(int axis, double position)
{
    const std::lock_guard lock(m_mutex);
    m_joydev.setAxis(static_cast<std::size_t>(axis), position);
}

void VirtualPad::setAxis(PadAxis axis, double position)
{
    setAxis(static_cast<int>(axis), position);
}

void VirtualPad::setButton(int button, bool pressed)
{
    const std::lock_guard lock(m_mutex);
    m_joydev.setButton(static_cast<std::size_t>(button), pressed);
}

void VirtualPad::onOpened(UMockdevIoctlBase *, UMockdevIoctlClient *client, VirtualPad *pad)
{
    const std::lock_guard lock(pad->m_mutex);
    g_object_set_data_full(reinterpret_cast<GObject *>(client), readerKey,
                           new Joydev::Reader(pad->m_joydev.open()), deleteReader);
}

int VirtualPad::onControl(UMockdevIoctlBase *, UMockdevIoctlClient *client, VirtualPad *pad)
{
    const unsigned long request = umockdev_ioctl_client_get_request(client);
    UMockdevIoctlData *buffer =
        umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, _IOC_SIZE(request), nullptr);
    if (!buffer) {
        umockdev_ioctl_client_complete(client, -1, EFAULT);
        return 1;
    }
    Joydev::Answer answer;
    {
        const std::lock_guard lock(pad->m_mutex);
        answer = pad->m_joydev.control(*readerOf(client), request);
    }
    complete(client, buffer, std::move(answer));
    g_object_unref(buffer);
    return 1;
}

int VirtualPad::onRead(UMockdevIoctlBase *, UMockdevIoctlClient *client, VirtualPad *pad)
{
    UMockdevIoctlData *buffer = umockdev_ioctl_client_get_arg(client);
    Joydev::Answer answer;
    {
        const std::lock_guard lock(pad->m_mutex);
        answer = pad->m_joydev.read(*readerOf(client), static_cast<std::size_t>(buffer->data_len));
    }
    complete(client, buffer, std::move(answer));
    return 1;
}
