// SPDX-License-Identifier: MIT
#include "interactiveoverlay.h"

#include "bridgeplan.h"
#include "mappingdocument.h"

#include <QtCore/QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace
{
/// Tells a box its kind of input once more for each bridge that configures nothing. Each time it fills in one
/// more field, and emits for that too; once it emits for the kind alone, no field is left.
void repeatKind(ActionToolBox *box, bool isJoy, int times)
{
    bool filled = true;
    for (int i = 0; i < times && filled; ++i) {
        int emissions = 0;
        const QObject counter;
        QObject::connect(box, &ActionToolBox::durty, &counter, [&emissions] { ++emissions; });
        box->setInputKind(inputKind(isJoy));
        filled = emissions > 1;
    }
}
} // namespace

QJsonObject InteractiveOverlay::exportBridges() const
{
    QJsonArray bridges;
    for (const OverlayNode &node : m_nodes) {
        if (!node.area || !node.box)
            continue;
        const BoundPastille pastille{node.area->title(), node.input, node.box->config()};
        if (const auto bridge = bridgeOf(pastille, m_functions))
            bridges.append(*bridge);
    }
    return {{u"bridges"_s, bridges}};
}

bool InteractiveOverlay::applyMapping(const QJsonObject &mapping)
{
    if (mapping.isEmpty())
        return false;
    if (const QJsonValue ref = mapping["ref"_L1]; ref.isArray() && !m_servicesLocked)
        setExternalServices(mergedCatalogue(m_externalServices, ref.toArray()));

    const QJsonArray bridges = mapping["bridges"_L1].toArray();
    if (bridges.isEmpty())
        return false;

    const QScopedValueRollback propagating(m_propagating, true);
    const QList<OverlayNode> nodes = m_nodes;
    QStringList titles;
    titles.reserve(nodes.size());
    for (const OverlayNode &node : nodes) {
        // What no bridge names ends up unbound.
        if (node.box)
            node.box->applyConfig({{u"action"_s, u"none"_s}});
        titles.append(node.area ? node.area->title() : QString());
    }

    const QList<Binding> bindings = bindingsOf(bridges, titles);
    for (const Binding &binding : bindings) {
        for (const qsizetype at : binding.nodes)
            bind(at, binding);
    }
    return !bindings.isEmpty();
}

void InteractiveOverlay::bind(qsizetype at, const Binding &binding)
{
    if (at >= m_nodes.size())
        return;
    takeSource(m_nodes[at].input, binding.src);
    const NodeInput input = m_nodes[at].input;
    raiseInputCounter(input.stringKey);

    ActionToolBox *box = m_nodes[at].box;
    if (!box)
        return;
    if (binding.config) {
        box->setInputKind(inputKind(binding.configForAxis));
        box->applyConfig(*binding.config);
    }
    // The kind that was told last is the one that the box ends up with.
    const auto repeats = [&binding](bool isJoy) {
        return isJoy ? binding.axisRepeats : binding.buttonRepeats;
    };
    repeatKind(box, !input.isJoy, repeats(!input.isJoy));
    repeatKind(box, input.isJoy, repeats(input.isJoy));
}
