// SPDX-License-Identifier: MIT
#pragma once

#include "received.h"

#include <QtCore/QJsonArray>

/// One bridge of a no-code document: the input it watches and the tasks a host would run.
struct Bridge
{
    QString deviceType; ///< empty stands for any
    int deviceId = 0;
    int packetId = 0;
    QString key;
    QString action; ///< name of the action that the tasks come from; may be empty
    QJsonArray tasks;
};

/// A no-code document as far as this host reads it. A document that is not there has no bridges and says so.
struct NoCodeDocument
{
    QString path;
    QString problem; ///< why there are no bridges; empty when the document was read
    QList<Bridge> bridges;
};

[[nodiscard]] NoCodeDocument readNoCodeDocument(const QString &path);

/// The keys of `batch` that this bridge watches and that count as an input: each value of an axis, and a
/// button that goes down. The document's `packetId` is what `catId` is called in the signal.
[[nodiscard]] bool firesOn(const Bridge &bridge, const ValueBatch &batch);

/// The tasks in one line: "fly(speed=5) when W; stop()". A task that is switched off says so.
[[nodiscard]] QString tasksText(const QJsonArray &tasks);
