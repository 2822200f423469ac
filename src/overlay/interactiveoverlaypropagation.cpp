// SPDX-License-Identifier: MIT
// Pastilles with the same title stand for the same input, and so their tool boxes share one configuration.
#include "interactiveoverlay.h"

#include "casekey.h"

#include <QtCore/QScopedValueRollback>

using namespace Qt::StringLiterals;

void InteractiveOverlay::onToolBoxChanged(ActionToolBox *box)
{
    const qsizetype at = m_propagating ? -1 : positionOf(box);
    const QPointer<TouchArea> area = at < 0 ? nullptr : m_nodes[at].area;
    if (area) {
        const QJsonObject config = box->config();
        const QString ref = config["ref"_L1].toString();
        if (m_nodes[at].autoTitle && !ref.isEmpty()) {
            area->setTitle(ref);
            box->setHeaderText(u"Action"_s);
        }
        const QJsonObject unbound{{u"action"_s, u"none"_s}};
        spread(config.isEmpty() ? unbound : config, area->title().trimmed(), at);
    }
    Q_EMIT dirty();
}

void InteractiveOverlay::spread(const QJsonObject &config, const QString &title, qsizetype from)
{
    if (title.isEmpty())
        return;
    if (m_spreads) {
        m_spreads->note(title, from, config);
        return;
    }
    QList<qsizetype> others = likeTitled(title);
    others.removeOne(from);
    configure(others, config);
}

QList<qsizetype> InteractiveOverlay::likeTitled(const QString &title) const
{
    QList<qsizetype> positions;
    for (qsizetype at = 0; at < m_nodes.size(); ++at) {
        const OverlayNode &node = m_nodes[at];
        if (node.area && node.box && equalWithoutCase(node.area->title(), title))
            positions.append(at);
    }
    return positions;
}

void InteractiveOverlay::configure(const QList<qsizetype> &positions, const QJsonObject &config)
{
    const QScopedValueRollback propagating(m_propagating, true);
    // A copy: whoever hears of a change may add and remove nodes.
    const QList<OverlayNode> nodes = m_nodes;
    for (const qsizetype at : positions) {
        if (nodes[at].box)
            nodes[at].box->applyConfig(config);
    }
}

void InteractiveOverlay::applyActionToTitle(const QString &action, const QString &title)
{
    const QString name = action.trimmed();
    const QString sought = title.trimmed();
    if (name.isEmpty() || sought.isEmpty())
        return;

    const QList<qsizetype> bound = likeTitled(sought);
    for (const qsizetype at : bound)
        m_nodes[at].autoTitle = false;
    configure(bound, {{u"ref"_s, name}, {u"action"_s, name}});
    if (!bound.isEmpty())
        Q_EMIT dirty();
}

void InteractiveOverlay::setExternalServices(const QJsonArray &services)
{
    if (services != m_externalServices) {
        m_externalServices = services;
        Q_EMIT externalServicesChanged();
    }
    applyExternalServices(services);
}

void InteractiveOverlay::applyExternalServices(const QJsonArray & /*services*/)
{
    m_servicesCache = m_externalServices;
    m_functions = FunctionIndex(m_servicesCache);

    ConfigSpreads spreads;
    {
        const QScopedValueRollback collecting(m_spreads, &spreads);
        const QList<OverlayNode> nodes = m_nodes;
        for (const OverlayNode &node : nodes) {
            if (!node.box)
                continue;
            takeFunction(node, spreads);
            node.box->setExternalServices(m_servicesCache);
        }
    }
    applySpreads(spreads);
    Q_EMIT dirty();
}

void InteractiveOverlay::takeFunction(const OverlayNode &node, const ConfigSpreads &spreads)
{
    const ConfigSpreads::Spread *last = node.area ? spreads.lastTo(node.area->title()) : nullptr;
    if (!last || last->config["ref"_L1] == node.box->config().value("ref"_L1))
        return;
    // Its arguments will be gone with the new catalogue, but its function stays.
    const QScopedValueRollback propagating(m_propagating, true);
    node.box->applyConfig(last->config);
}

void InteractiveOverlay::applySpreads(const ConfigSpreads &spreads)
{
    const QScopedValueRollback propagating(m_propagating, true);
    const QList<OverlayNode> nodes = m_nodes;
    for (qsizetype at = 0; at < nodes.size(); ++at) {
        const OverlayNode &node = nodes[at];
        const ConfigSpreads::Spread *last = node.area ? spreads.lastTo(node.area->title()) : nullptr;
        // Spread before this box changed itself, it would have been changed after.
        if (node.box && last && last->from > at)
            node.box->applyConfig(last->config);
    }
}
