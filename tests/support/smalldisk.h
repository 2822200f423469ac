// SPDX-License-Identifier: MIT
#pragma once

#include "machine.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QString>

#ifdef Q_OS_LINUX
#include <sys/mount.h>
#endif

/// A disk on `folder` that has room for so many files and folders, itself included, and for so many
/// kilobytes, 0 for no limit. Only where the machine lets the test mount one.
class SmallDisk
{
public:
    explicit SmallDisk(const QString &folder, int places, int kilobytes = 0)
        : m_folder(QFile::encodeName(folder))
    {
        QDir().mkpath(folder);
#ifdef Q_OS_LINUX
        const QByteArray options =
            "nr_inodes=" + QByteArray::number(places) + ",size=" + QByteArray::number(kilobytes) + 'k';
        m_mounted = ::mount("disk", m_folder.constData(), "tmpfs", 0, options.constData()) == 0;
#else
        Q_UNUSED(places)
        Q_UNUSED(kilobytes)
#endif
    }

    ~SmallDisk()
    {
#ifdef Q_OS_LINUX
        if (m_mounted)
            ::umount2(m_folder.constData(), MNT_DETACH);
#endif
    }
    Q_DISABLE_COPY_MOVE(SmallDisk)

    [[nodiscard]] bool mounted() const { return m_mounted; }

private:
    QByteArray m_folder;
    bool m_mounted = false;
};

#define GAMEPAD_NEED_MOUNTED(disk) GAMEPAD_NEED((disk).mounted(), "the right to mount a disk")
