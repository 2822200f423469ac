// SPDX-License-Identifier: MIT
#include "savecounter.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstring>

SaveCounter::SaveCounter(const QString &folder)
    : m_queue(inotify_init1(IN_NONBLOCK))
{
    QDir().mkpath(folder);
    if (inotify_add_watch(m_queue, QFile::encodeName(folder).constData(), IN_MOVED_TO) < 0)
        qFatal("no watch on the folder of the remembered devices");
}

SaveCounter::~SaveCounter()
{
    close(m_queue);
}

int SaveCounter::take()
{
    int count = 0;
    alignas(inotify_event) std::array<char, 4096> buffer{};
    for (ssize_t size = read(m_queue, buffer.data(), buffer.size()); size > 0;
         size = read(m_queue, buffer.data(), buffer.size())) {
        for (ssize_t at = 0; at < size;) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            if (std::strcmp(buffer.data() + at + sizeof event, "gamepads.json") == 0)
                ++count;
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
    }
    return count;
}
