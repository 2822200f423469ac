// SPDX-License-Identifier: MIT
// An overlay takes a catalogue, a document or a mapping at once, so that thousands of nodes take seconds. It
// has to end where it would have ended node by node and bridge by bridge.
#include "nodedocument.h"
#include "overlaystage.h"

#include "bridge.h"
#include "casekey.h"
#include "inputkey.h"
#include "testmain.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QScopedValueRollback>

#include <algorithm>
#include <list>

using namespace Qt::StringLiterals;

namespace
{
/// Nodes that do each thing by itself, in its order.
class OneByOne : public QObject
{
public:
    struct Node
    {
        ActionToolBox *box = nullptr;
        QString title;
        bool autoTitle = false;
        NodeInput input;
    };

    [[nodiscard]] const std::list<Node> &nodes() const { return m_nodes; }
    Node &node(qsizetype i) { return *std::next(m_nodes.begin(), i); }

    void setCatalogue(const QJsonArray &catalogue)
    {
        m_catalogue = catalogue;
        for (const Node &node : m_nodes)
            node.box->setExternalServices(m_catalogue);
    }

    void load(const QStringList &titles)
    {
        for (const Node &node : std::exchange(m_nodes, {}))
            delete node.box;
        for (const QString &title : titles) {
            Node &node = add(title);
            int index = -1;
            if (parseInputKey(title, &node.input.isJoy, &index))
                node.input.stringKey = inputKey(node.input.isJoy, index);
            if (index >= 0 && node.input.isJoy)
                m_nextAxis = std::max(m_nextAxis, index + 1);
            node.box->setInputKind(node.input.isJoy ? 0 : 1);
        }
    }

    void bindTitle(const QString &action, const QString &title)
    {
        const QScopedValueRollback propagating(m_propagating, true);
        for (Node &node : m_nodes) {
            if (!equalWithoutCase(node.title, title.trimmed()))
                continue;
            node.autoTitle = false;
            node.box->applyConfig({{u"ref"_s, action}, {u"action"_s, action}});
        }
    }

    void map(const QJsonArray &bridges)
    {
        if (bridges.isEmpty())
            return;
        const QScopedValueRollback propagating(m_propagating, true);
        for (const Node &node : m_nodes)
            node.box->applyConfig({{u"action"_s, u"none"_s}});
        for (const QJsonValue &bridge : bridges) {
            const Bridge read = readBridge(bridge.toObject());
            const QString key = read.src.stringKey.trimmed().toLower();
            if (key.isEmpty())
                continue;
            bool reached = false;
            for (Node &node : m_nodes) {
                if (node.title.trimmed().toLower() == key) {
                    take(node, read);
                    reached = true;
                }
            }
            const auto first = std::ranges::find_if(m_nodes, [&read](const Node &node) {
                return equalWithoutCase(node.title, read.src.stringKey);
            });
            if (!reached && first != m_nodes.end())
                take(*first, read);
        }
    }

private:
    Node &add(const QString &title)
    {
        Node &node = m_nodes.emplace_back();
        node.box = new ActionToolBox(&m_parent);
        if (!m_catalogue.isEmpty())
            node.box->setExternalServices(m_catalogue);
        node.autoTitle = title.isEmpty();
        node.title = title;
        if (node.title.isEmpty())
            node.title = node.box->config()["ref"_L1].toString();
        if (node.title.isEmpty())
            node.title = u"Bouton %1"_s.arg(m_nextTitle++);
        node.input.stringKey = inputKey(true, m_nextAxis++);
        connect(node.box, &ActionToolBox::durty, this, [this, &node] { onChanged(node); });
        return node;
    }

    void onChanged(Node &changed)
    {
        if (m_propagating)
            return;
        const QJsonObject config = changed.box->config();
        const QString ref = config["ref"_L1].toString();
        if (changed.autoTitle && !ref.isEmpty())
            changed.title = ref;
        const QString title = changed.title.trimmed();
        if (title.isEmpty())
            return;
        const QScopedValueRollback propagating(m_propagating, true);
        for (const Node &node : m_nodes) {
            if (node.box != changed.box && equalWithoutCase(node.title, title))
                node.box->applyConfig(config.isEmpty() ? QJsonObject{{u"action"_s, u"none"_s}} : config);
        }
    }

    void take(Node &node, const Bridge &bridge)
    {
        takeSource(node.input, bridge.src);
        int index = -1;
        bool isJoy = true;
        if (parseInputKey(bridge.src.stringKey, &isJoy, &index) && isJoy)
            m_nextAxis = std::max(m_nextAxis, index + 1);
        node.box->setInputKind(node.input.isJoy ? 0 : 1);
        if (bridge.config)
            node.box->applyConfig(*bridge.config);
    }

    QWidget m_parent;
    std::list<Node> m_nodes; // whose elements stay where they are
    QJsonArray m_catalogue;
    int m_nextTitle = 1;
    int m_nextAxis = 0;
    bool m_propagating = false;
};

/// Throws the dice for the next thing that is done.
class Dice
{
public:
    explicit Dice(quint32 seed)
        : m_random(seed)
    {}

    int upTo(int end) { return m_random.bounded(end); }

    template <typename List>
    auto oneOf(const List &list)
    {
        return list.at(m_random.bounded(list.size()));
    }

    QString title()
    {
        return oneOf(QStringList{u"joy_1"_s, u"JOY_1"_s, u" joy_1"_s, u"but_2"_s, u"But_2"_s, u"but_x"_s,
                                 u"Tir"_s, u"σας"_s, u" σας"_s, u"ΣΑΣ"_s, u"numbers"_s, u""_s});
    }

    QStringList titles()
    {
        QStringList titles;
        for (int left = upTo(7); left > 0; --left)
            titles.append(title());
        return titles;
    }

    QString action()
    {
        return oneOf(QStringList{u"Numbers"_s, u"Switches"_s, u"Both"_s, u"Bare"_s, u"none"_s, u"Gone"_s});
    }

    QJsonObject args()
    {
        return oneOf(QList<QJsonObject>{{}, object("{'a':7}"), object("{'b':3,'on':true}")});
    }

    QJsonArray catalogue()
    {
        QJsonArray functions = array(R"([
            {'name':'Numbers','params':[{'name':'a','preferredType':'int'},{'name':'b','preferredType':'int'},
                                        {'name':'c','preferredType':'double','default':2}]},
            {'name':'Switches','params':[{'name':'on','preferredType':'bool'},
                                         {'name':'off','preferredType':'bool'}]},
            {'name':'Both','params':[{'name':'a','preferredType':'int','default':'arg_0'},
                                     {'name':'b','preferredType':'int'},{'name':'on','preferredType':'bool'}]},
            {'name':'Bare'},
            {'name':'none','params':[{'name':'a','preferredType':'int'},{'name':'b','preferredType':'int'}]}])");
        for (int left = upTo(3); left > 0; --left)
            functions.removeAt(upTo(static_cast<int>(functions.size())));
        return functions;
    }

    QJsonArray bridges()
    {
        QJsonArray bridges;
        for (int left = upTo(6); left > 0; --left) {
            QJsonObject src{{u"stringKey"_s, title()}};
            if (upTo(3) == 0)
                src[u"deviceId"_s] = upTo(9);
            if (upTo(3) == 0)
                src[u"deviceType"_s] = u"volant"_s;
            if (upTo(3) == 0)
                src[u"isJoy"_s] = upTo(2) == 0;
            QJsonObject bridge{{u"src"_s, src}};
            if (upTo(2) == 0)
                bridge[u"action"_s] = action();
            if (upTo(2) == 0)
                bridge[u"args"_s] = args();
            bridges.append(bridge);
        }
        return bridges;
    }

private:
    QRandomGenerator m_random;
};

/// Both of them, told the same.
class Pair
{
public:
    explicit Pair(quint32 seed)
        : m_dice(seed)
    {
        m_overlay.resize(640, 480);
    }

    QString act()
    {
        const qsizetype count = std::ssize(m_slow.nodes());
        switch (m_dice.upTo(count > 0 ? 6 : 2)) {
        case 0:
            load(m_dice.titles());
            return u"load"_s;
        case 1: {
            const QJsonArray catalogue = m_dice.catalogue();
            m_overlay.setExternalServices(catalogue);
            m_slow.setCatalogue(catalogue);
            return u"catalogue"_s;
        }
        case 2: {
            const QJsonArray bridges = m_dice.bridges();
            m_overlay.applyMapping({{u"bridges"_s, bridges}});
            m_slow.map(bridges);
            return u"mapping"_s;
        }
        case 3: {
            const QString action = m_dice.action();
            const QString title = m_dice.oneOf(QStringList{u"joy_1"_s, u"BUT_2"_s, u"tir"_s});
            m_overlay.applyActionToTitle(action, title);
            m_slow.bindTitle(action, title);
            return u"binding"_s;
        }
        case 4: {
            const int at = m_dice.upTo(static_cast<int>(count));
            const QString title = m_dice.title();
            m_overlay.findChildren<TouchArea *>().at(at)->setTitle(title);
            m_slow.node(at).title = title;
            return u"title"_s;
        }
        default: {
            const int at = m_dice.upTo(static_cast<int>(count));
            QJsonObject config{{u"action"_s, m_dice.action()}, {u"args"_s, m_dice.args()}};
            if (m_dice.upTo(4) == 0)
                config = {};
            boxes().at(at)->applyConfig(config);
            m_slow.node(at).box->applyConfig(config);
            return u"configuration"_s;
        }
        }
    }

    QJsonArray fast() const
    {
        QJsonArray nodes;
        const QJsonArray stored = m_overlay.toJson()["nodes"_L1].toArray();
        for (qsizetype i = 0; i < stored.size(); ++i)
            nodes.append(described(stored[i]["title"_L1].toString(), stored[i]["src"_L1].toObject(),
                                   boxes().at(i)->config()));
        return nodes;
    }

    QJsonArray slow() const
    {
        QJsonArray nodes;
        for (const OneByOne::Node &node : m_slow.nodes()) {
            QJsonObject src = inputSourceJson(node.input);
            src[u"isJoy"_s] = node.input.isJoy;
            nodes.append(described(node.title, src, node.box->config()));
        }
        return nodes;
    }

private:
    static QJsonObject described(const QString &title, const QJsonObject &src, const QJsonObject &config)
    {
        return {{u"title"_s, title}, {u"src"_s, src}, {u"config"_s, config}};
    }

    QList<ActionToolBox *> boxes() const { return m_overlay.findChildren<ActionToolBox *>(); }

    void load(const QStringList &titles)
    {
        QJsonArray nodes;
        for (int i = 0; i < titles.size(); ++i)
            nodes.append(nodeAt(i, titles[i]));
        QVERIFY(m_overlay.fromJson(documentOf(nodes)));
        OverlayStage::deleteRetired();
        m_slow.load(titles);
    }

    Dice m_dice;
    InteractiveOverlay m_overlay;
    OneByOne m_slow;
};
} // namespace

class TestInteractiveOverlayOneByOne : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void whateverIsDoneEndsAsOneByOne()
    {
        for (quint32 seed = 0; seed < 30; ++seed) {
            Pair pair(seed);
            QStringList done;
            for (int i = 0; i < 25; ++i) {
                done.append(pair.act());
                const auto text = [](const QJsonArray &nodes) { return QJsonDocument(nodes).toJson(); };
                QVERIFY2(pair.fast() == pair.slow(),
                         (QByteArray::number(seed) + ": " + done.join(u", "_s).toUtf8() + '\n' +
                          text(pair.fast()) + text(pair.slow()))
                             .constData());
            }
        }
    }
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayOneByOne)
#include "tst_interactiveoverlayonebyone.moc"
