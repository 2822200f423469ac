// SPDX-License-Identifier: MIT
#include "bridgeplan.h"

#include "casekey.h"

#include <QtCore/QHash>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
/// Pastilles that the same bridges have reached so far.
struct Group
{
    QList<qsizetype> nodes;
    qsizetype binding = -1; ///< position; -1 while no bridge has reached them
};

/// Finds the bindings of an input key, in a time that does not grow with the number of pastilles.
class BindingsByTitle
{
public:
    explicit BindingsByTitle(const QStringList &titles)
    {
        for (qsizetype node = 0; node < titles.size(); ++node) {
            const QString key = titleKey(titles[node]);
            if (key.isEmpty())
                continue;
            QList<Group> &groups = m_groups[key];
            if (groups.isEmpty())
                groups.emplace_back();
            groups.first().nodes.append(node);
            m_firstOfTitle.tryInsert(caseKey(titles[node]), {node, key});
        }
    }

    /// Calls `act` with each binding that a bridge of this key adds to.
    template <typename Act>
    void reach(const QString &rawKey, const Act &act)
    {
        const QString key = titleKey(rawKey);
        if (key.isEmpty())
            return;
        if (const auto groups = m_groups.find(key); groups != m_groups.end()) {
            for (Group &group : *groups)
                act(bindingOf(group));
            return;
        }
        // Some letters have one lower case and several forms: a final sigma, for instance.
        if (const auto first = m_firstOfTitle.constFind(caseKey(rawKey)); first != m_firstOfTitle.cend())
            act(bindingOf(alone(m_groups[first->key], first->node)));
    }

    [[nodiscard]] QList<Binding> take() { return std::move(m_bindings); }

private:
    struct First
    {
        qsizetype node;
        QString key;
    };

    static QString titleKey(const QString &title) { return title.trimmed().toLower(); }

    Binding &bindingOf(Group &group)
    {
        if (group.binding < 0) {
            group.binding = m_bindings.size();
            m_bindings.emplace_back().nodes = group.nodes;
        }
        return m_bindings[group.binding];
    }

    /// The group that holds `node` and no other; from now on its bridges and those of the others may differ.
    Group &alone(QList<Group> &groups, qsizetype node)
    {
        const auto found =
            std::ranges::find_if(groups, [node](const Group &group) { return group.nodes.contains(node); });
        if (found->nodes.size() == 1)
            return *found;
        found->nodes.removeOne(node);
        Group split{.nodes = {node}};
        if (found->binding >= 0) {
            m_bindings[found->binding].nodes = found->nodes;
            split.binding = m_bindings.size();
            m_bindings.append(m_bindings[found->binding]);
            m_bindings.last().nodes = split.nodes;
        }
        return groups.emplace_back(split);
    }

    QHash<QString, QList<Group>> m_groups; ///< by titles in lower case; one for each, until they are split
    QHash<QString, First> m_firstOfTitle;
    QList<Binding> m_bindings;
};

void take(InputSource &known, const InputSource &later)
{
    const InputSource earlier = std::exchange(known, later);
    if (known.deviceType.isEmpty())
        known.deviceType = earlier.deviceType;
    known.deviceId = later.deviceId ? later.deviceId : earlier.deviceId;
    known.packetId = later.packetId ? later.packetId : earlier.packetId;
}

void take(Binding &binding, const Bridge &bridge)
{
    take(binding.src, bridge.src);
    const bool forAxis = standsForAxis(bridge.src);
    if (bridge.config) {
        binding.config = bridge.config;
        binding.configForAxis = forAxis;
        binding.axisRepeats = 0;
        binding.buttonRepeats = 0;
    } else {
        ++(forAxis ? binding.axisRepeats : binding.buttonRepeats);
    }
}
} // namespace

QList<Binding> bindingsOf(const QJsonArray &bridges, const QStringList &titles)
{
    BindingsByTitle bindings(titles);
    for (const QJsonValue &element : bridges) {
        if (!element.isObject())
            continue;
        const QJsonObject bridge = element.toObject();
        const Bridge read = readBridge(bridge);
        bindings.reach(read.src.stringKey, [&read](Binding &binding) { take(binding, read); });
    }
    return bindings.take();
}
