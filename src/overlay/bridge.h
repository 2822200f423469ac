// SPDX-License-Identifier: MIT
#pragma once

#include "functionindex.h"
#include "inputsource.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <optional>

/// What an overlay knows of one node when it writes the node's bridge.
struct BoundPastille
{
    QString title;
    NodeInput input;
    QJsonObject config; ///< of the tool box
};

/// The input key that a bridge of the pastille is written with: the title where that is one, since learning
/// an input changes the title alone, else the node's own.
[[nodiscard]] QString exportedKey(const BoundPastille &pastille);

/// The bridge of one node: `src`, `dst`, and `action` and `args` where there are some. Nothing for a tool box
/// that is not bound.
[[nodiscard]] std::optional<QJsonObject> bridgeOf(const BoundPastille &pastille,
                                                  const FunctionIndex &functions);

/// One element of a mapping's `bridges`, as it is read.
struct Bridge
{
    InputSource src;
    QString action;                    ///< trimmed; from `action`, or from the first task with a `ref`
    std::optional<QJsonObject> config; ///< what it gives a tool box, if anything

    bool operator==(const Bridge &) const = default;
};

[[nodiscard]] Bridge readBridge(const QJsonObject &bridge);

/// Gives `input` what a bridge that reached its pastille tells of it.
void takeSource(NodeInput &input, const InputSource &src);
