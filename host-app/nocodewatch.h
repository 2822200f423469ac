// SPDX-License-Identifier: MIT
#pragma once

#include "nocodedocument.h"

#include <QtCore/QObject>

class HostSession;

/// The no-code documents that the selected devices name, read again whenever a device says so, and which of
/// their bridges an input would fire. Nothing is ever run.
class NoCodeWatch : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        int device = 0;
        QString deviceName;
        NoCodeDocument document;
    };

    explicit NoCodeWatch(HostSession &session, QObject *parent = nullptr);

    [[nodiscard]] const QList<Entry> &entries() const { return m_entries; }

Q_SIGNALS:
    void documentsChanged();
    /// Bridge `bridge` of entry `entry` would run now.
    void fires(qsizetype entry, qsizetype bridge);

private:
    void readAll();
    void read(int device, const QStringList &paths);
    void match(const ValueBatch &batch);

    HostSession &m_session;
    QList<Entry> m_entries;
};
