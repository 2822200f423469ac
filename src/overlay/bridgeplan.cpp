// SPDX-License-Identifier: MIT
#include "bridgeplan.h"

#include "casekey.h"

#include <QtCore/QHash>

using namespace Qt::StringLiterals;

namespace
{
/// Finds the binding of an input key, each in a time that does not grow with the number of pastilles.
class BindingsByTitle
{
public:
    explicit BindingsByTitle(const QStringList &titles)
    {
        for (qsizetype node = 0; node < titles.size(); ++node) {
            const QString key = titleKey(titles[node]);
            if (!key.isEmpty())
                m_groups[key].append(node);
            m_firstOfTitle.tryInsert(caseKey(titles[node]), node);
        }
    }

    Binding *find(const QString &rawKey)
    {
        const QString key = titleKey(rawKey);
        if (key.isEmpty())
            return nullptr;
        if (const auto group = m_groups.constFind(key); group != m_groups.cend())
            return &bindingOf(*group);
        // Some letters have one lower case and several forms: a final sigma, for instance.
        if (const auto node = m_firstOfTitle.constFind(caseKey(rawKey)); node != m_firstOfTitle.cend())
            return &bindingOf({*node});
        return nullptr;
    }

    [[nodiscard]] QList<Binding> take() { return std::move(m_bindings); }

private:
    static QString titleKey(const QString &title) { return title.trimmed().toLower(); }

    Binding &bindingOf(const QList<qsizetype> &nodes)
    {
        const bool alone = nodes.size() == 1;
        const auto known = m_bindingOfFirst.constFind({nodes.first(), alone});
        if (known != m_bindingOfFirst.cend())
            return m_bindings[*known];
        m_bindingOfFirst.insert({nodes.first(), alone}, m_bindings.size());
        m_bindings.emplace_back().nodes = nodes;
        return m_bindings.last();
    }

    QHash<QString, QList<qsizetype>> m_groups;
    QHash<QString, qsizetype> m_firstOfTitle;
    QHash<std::pair<qsizetype, bool>, qsizetype> m_bindingOfFirst;
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
        if (Binding *binding = bindings.find(bridge["src"_L1]["stringKey"_L1].toString()))
            take(*binding, readBridge(bridge));
    }
    return bindings.take();
}
