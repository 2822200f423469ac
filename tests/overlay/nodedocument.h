// SPDX-License-Identifier: MIT
#pragma once

#include "jsontext.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

inline QJsonObject documentOf(const QJsonArray &nodes)
{
    using namespace Qt::StringLiterals;
    return {{u"type"_s, u"InteractiveOverlay"_s}, {u"version"_s, 2}, {u"nodes"_s, nodes}};
}

/// The same from text, with double quotes written as single ones.
inline QJsonObject documentWith(const QByteArray &nodes, const QByteArray &more = "'version':2")
{
    return object("{'type':'InteractiveOverlay'," + more + ",'nodes':" + nodes + "}");
}

/// The node at position `i` in rows of a hundred.
inline QJsonObject nodeAt(int i, const QString &title)
{
    using namespace Qt::StringLiterals;
    const QJsonObject place{
        {u"x"_s, (i % 100) / 100.0}, {u"y"_s, (i / 100) / 100.0}, {u"w"_s, 0.02}, {u"h"_s, 0.02}};
    return {{u"title"_s, title}, {u"pastille"_s, place}, {u"toolbox"_s, place}};
}
