// SPDX-License-Identifier: MIT
// A mapping on an overlay: {"titles": [...], "services": [...], "mapping": {...}}. The overlay plans all
// bridges of a title at once; here they are also applied one by one, which must come to the same. And what is
// saved after a load must not change with each further load.
#include "fuzzing.h"
#include "inputkey.h"
#include "interactiveoverlay.h"
#include "jsonnumbers.h"
#include "mappingdocument.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{
constexpr qsizetype mostPastilles = 6;
constexpr qsizetype mostBridges = 16;
constexpr qsizetype mostFunctions = 24;

/// The nodes of an overlay without the overlay, which takes bridges in the plain way.
class PlainNodes
{
public:
    PlainNodes(const QStringList &titles, const QJsonArray &catalogue)
    {
        for (const QString &title : titles) {
            Node &node = m_nodes.emplace_back();
            node.title = title;
            node.input.stringKey = inputKey(true, static_cast<int>(m_nodes.size()) - 1);
            node.box = std::make_unique<ActionToolBox>(&m_surface);
            node.box->setExternalServices(catalogue);
        }
    }

    bool apply(const QJsonArray &bridges)
    {
        for (const Node &node : m_nodes)
            node.box->applyConfig({{u"action"_s, u"none"_s}});
        bool reached = false;
        for (const QJsonValue &bridge : bridges) {
            if (!bridge.isObject())
                continue;
            for (Node *node : nodesOf(bridge["src"_L1]["stringKey"_L1].toString())) {
                takeSource(*node, bridge["src"_L1].toObject());
                configure(*node->box, bridge.toObject());
                reached = true;
            }
        }
        return reached;
    }

    void mustEqual(const InteractiveOverlay &overlay) const
    {
        const auto boxes = overlay.findChildren<ActionToolBox *>(Qt::FindDirectChildrenOnly);
        const QJsonArray nodes = overlay.toJson().value("nodes"_L1).toArray();
        for (size_t i = 0; i < m_nodes.size(); ++i) {
            const auto at = static_cast<qsizetype>(i);
            mustHold(boxes[at]->config() == m_nodes[i].box->config(), "a tool box got another configuration");
            QJsonObject src = inputSourceJson(m_nodes[i].input);
            src["isJoy"_L1] = m_nodes[i].input.isJoy;
            mustHold(nodes[at]["src"_L1] == src, "a node got another input");
        }
    }

private:
    struct Node
    {
        QString title;
        NodeInput input;
        std::unique_ptr<ActionToolBox> box;
    };

    std::vector<Node *> nodesOf(const QString &rawKey)
    {
        const QString key = rawKey.trimmed().toLower();
        std::vector<Node *> found;
        if (key.isEmpty())
            return found;
        for (Node &node : m_nodes) {
            if (node.title.trimmed().toLower() == key)
                found.push_back(&node);
        }
        for (Node &node : m_nodes) {
            if (found.empty() && node.title.compare(rawKey, Qt::CaseInsensitive) == 0)
                found.push_back(&node);
        }
        return found;
    }

    static void takeSource(Node &node, const QJsonObject &src)
    {
        const QString rawKey = src["stringKey"_L1].toString();
        bool isJoy = true;
        int index = -1;
        QString key = rawKey;
        if (parseInputKey(rawKey, &isJoy, &index))
            key = inputKey(isJoy, index);
        else if (src["isJoy"_L1].isBool())
            isJoy = src["isJoy"_L1].toBool();
        node.input.isJoy = isJoy;
        node.input.stringKey = key;
        if (const QString type = src["deviceType"_L1].toString(); !type.isEmpty())
            node.input.deviceType = type;
        node.input.deviceId = wholeNumberOrText(src["deviceId"_L1]).value_or(node.input.deviceId);
        node.input.packetId = wholeNumberOrText(src["packetId"_L1]).value_or(node.input.packetId);
        node.box->setInputKind(inputKind(isJoy));
    }

    static void configure(ActionToolBox &box, const QJsonObject &bridge)
    {
        const QJsonArray tasks = bridge["dst"_L1].toArray();
        QString action = bridge["action"_L1].toString().trimmed();
        for (const QJsonValue &task : tasks) {
            if (action.isEmpty())
                action = task["ref"_L1].toString().trimmed();
        }
        if (!action.isEmpty()) {
            QJsonObject config{{u"action"_s, action}};
            if (bridge["args"_L1].isObject())
                config["args"_L1] = bridge["args"_L1];
            box.applyConfig(config);
            return;
        }
        for (const QJsonValue &task : tasks) {
            const QJsonObject config = task.toObject();
            if (!config.contains("ref"_L1) && !config.contains("action"_L1))
                continue;
            box.applyConfig(config);
            return;
        }
    }

    QWidget m_surface;
    std::vector<Node> m_nodes;
};

void checkLookup(const QJsonArray &catalogue)
{
    const FunctionIndex index(catalogue);
    for (const QJsonValue &entry : catalogue) {
        const QString names[] = {functionKey(entry), entry["name"_L1].toString()};
        for (const QString &name : names)
            mustHold(index.find(name) == findFunction(catalogue, name), "the index finds another function");
    }
}

void checkBridges(const QJsonObject &exported, qsizetype nodes)
{
    const QJsonArray bridges = exported["bridges"_L1].toArray();
    mustHold(exported.size() == 1 && bridges.size() <= nodes, "there are more bridges than pastilles");
    for (const QJsonValue &bridge : bridges) {
        mustHold(bridge["src"_L1].isObject() && bridge["dst"_L1].isArray(), "a bridge is not whole");
        mustHold(!bridge["src"_L1]["stringKey"_L1].toString().isEmpty(), "a bridge has no input");
    }
    const QByteArray text = QJsonDocument(exported).toJson();
    mustHold(QJsonDocument::fromJson(text).object() == exported, "the file says something else");
}

/// The first load may lose what the pastilles' titles do not reach. After that, loading and saving is the
/// same as leaving alone.
void checkReloads(InteractiveOverlay &overlay)
{
    overlay.applyMapping(overlay.exportBridges());
    const QJsonObject saved = overlay.exportBridges();
    overlay.applyMapping(saved);
    mustHold(overlay.exportBridges() == saved, "bridges drift from load to load");
}

QStringList titlesOf(const QJsonObject &input)
{
    QStringList titles;
    const QJsonArray given = input["titles"_L1].toArray();
    for (const QJsonValue &title : given) {
        // Without a title a pastille would be given one of its own making.
        if (!title.toString().isEmpty() && titles.size() < mostPastilles)
            titles.append(title.toString());
    }
    return titles;
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QJsonObject input = jsonOf(data, size).object();
    const QStringList titles = titlesOf(input);
    const QJsonArray services = input["services"_L1].toArray();
    const QJsonObject mapping = input["mapping"_L1].toObject();
    const QJsonArray added = mapping["ref"_L1].toArray();
    const QJsonArray bridges = mapping["bridges"_L1].toArray();
    if (services.size() + added.size() > mostFunctions || bridges.size() > mostBridges)
        return 0;

    InteractiveOverlay overlay;
    overlay.resize(320, 240);
    for (const QString &title : titles)
        overlay.addPastille(QPoint(0, 0), title);
    overlay.setExternalServices(services);
    checkBridges(overlay.exportBridges(), titles.size());

    const bool reached = overlay.applyMapping(mapping);
    const QJsonArray catalogue = overlay.externalServices();
    mustHold(catalogue == mergedCatalogue(services, added), "the catalogue is not that of both");
    checkLookup(catalogue);
    if (!bridges.isEmpty()) {
        PlainNodes plain(titles, catalogue);
        mustHold(plain.apply(bridges) == reached, "the overlay reports another result");
        plain.mustEqual(overlay);
    }
    checkBridges(overlay.exportBridges(), titles.size());
    checkReloads(overlay);
    settle();
    return 0;
}
