// SPDX-License-Identifier: MIT
#include "overlaymaterial.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

using namespace Qt::StringLiterals;

namespace
{
constexpr int perRow = 20;

QString functionName(int i)
{
    return u"Action %1"_s.arg(i);
}

QString inputOf(int i)
{
    return u"joy_%1"_s.arg(i);
}
} // namespace

QJsonArray catalogueOf(int count)
{
    const QJsonArray params{
        QJsonObject{{u"name"_s, u"speed"_s}, {u"preferredType"_s, u"double"_s}, {u"default"_s, 1.5}},
        QJsonObject{{u"name"_s, u"loud"_s}, {u"preferredType"_s, u"bool"_s}},
    };
    const QJsonObject task{{u"ref"_s, u"motor.go"_s}, {u"args"_s, QJsonObject{{u"v"_s, u"param:speed"_s}}}};
    QJsonArray catalogue;
    for (int i = 0; i < count; ++i)
        catalogue.append(
            QJsonObject{{u"name"_s, functionName(i)}, {u"params"_s, params}, {u"tasks"_s, QJsonArray{task}}});
    return catalogue;
}

QJsonObject overlayDocumentOf(int count)
{
    QJsonArray nodes;
    for (int i = 0; i < count; ++i) {
        const double x = (i % perRow) / double{perRow};
        const double y = (i / perRow % perRow) / double{perRow};
        const QJsonObject pastille{{u"x"_s, x}, {u"y"_s, y}, {u"w"_s, 0.04}, {u"h"_s, 0.04}};
        const QJsonObject box{{u"x"_s, x}, {u"y"_s, y + 0.04}, {u"w"_s, 0.2}, {u"h"_s, 0.06}};
        nodes.append(QJsonObject{{u"title"_s, inputOf(i)}, {u"pastille"_s, pastille}, {u"toolbox"_s, box}});
    }
    return {{u"type"_s, u"InteractiveOverlay"_s}, {u"version"_s, 2}, {u"nodes"_s, nodes}};
}

QJsonObject mappingOf(int nodes, int functions)
{
    const QJsonObject args{{u"speed"_s, 2.5}, {u"loud"_s, true}};
    QJsonArray bridges;
    for (int i = 0; i < nodes; ++i) {
        // Spread over the catalogue: a search from its front would have to go half through it.
        const int function = static_cast<int>(qint64{i} * functions / nodes);
        bridges.append(QJsonObject{{u"src"_s, QJsonObject{{u"stringKey"_s, inputOf(i)}}},
                                   {u"action"_s, functionName(function)},
                                   {u"args"_s, args}});
    }
    return {{u"bridges"_s, bridges}};
}

void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}
