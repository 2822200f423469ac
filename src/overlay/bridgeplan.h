// SPDX-License-Identifier: MIT
#pragma once

#include "bridge.h"

#include <QtCore/QList>
#include <QtCore/QStringList>

/// What all bridges of a mapping together make of one group of like-titled pastilles. Taken one by one, the
/// bridges of a shared title would each go to every pastille of that title.
struct Binding
{
    QList<qsizetype> nodes; ///< positions of the pastilles
    InputSource src;        ///< what they tell of the input, the last one first
    /// The last configuration, and whether the input was an axis when it came.
    std::optional<QJsonObject> config;
    bool configForAxis = true;
    /// Bridges behind that one that tell the input again and configure nothing.
    int axisRepeats = 0;
    int buttonRepeats = 0;

    bool operator==(const Binding &) const = default;
};

/// The bindings of `bridges` to pastilles with these `titles`, in the order in which they are first reached.
/// A bridge reaches the pastilles whose title is its `stringKey`, without regard to case and to blanks around
/// it; one that reaches none is dropped, and so is what is no object.
[[nodiscard]] QList<Binding> bindingsOf(const QJsonArray &bridges, const QStringList &titles);
