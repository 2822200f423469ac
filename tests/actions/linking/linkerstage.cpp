// SPDX-License-Identifier: MIT
#include "linkerstage.h"

#include "profilesroot.h"

#include <QtCore/QFile>
#include <QtGui/QWindow>

using namespace Qt::StringLiterals;

const QUuid oneProfile(u"{11111111-2222-4333-8444-555555555555}"_s);
const QUuid otherProfile(u"{99999999-2222-4333-8444-555555555555}"_s);

LinkerStage::LinkerStage()
    : m_family(new QObject)
{
    clearTemporaryHome();
    scripted::reset();
    GamepadManager *manager = GamepadManager::instance(m_family);
    // Found when the test says so.
    manager->setAutoDetectGamePad(false);
    m_linker = new ActionLinker(&m_window);
    m_window.resize(900, 600);
    m_linker->setGeometry(0, 0, 900, 600);
    m_window.show();
    m_exposed = QTest::qWaitForWindowExposed(&m_window);
}

LinkerStage::~LinkerStage()
{
    delete m_linker;
    delete m_family;
}

void LinkerStage::click(const QWidget &widget, const QPoint &pos)
{
    // A click soon after another would be a double click.
    QApplication::setDoubleClickInterval(0);
    QTest::mouseClick(m_window.windowHandle(), Qt::LeftButton, Qt::NoModifier, widget.mapTo(&m_window, pos));
}

void LinkerStage::clickAction(const QString &name)
{
    const QList<QListWidgetItem *> items = list().findItems(name, Qt::MatchExactly);
    QCOMPARE(items.size(), 1);
    list().scrollToItem(items.constFirst());
    QVERIFY(panel().isVisible());
    // Not in the middle, which lies outside where a name is longer than the list is wide.
    const QRect rect = list().visualItemRect(items.constFirst());
    click(*list().viewport(), QPoint(rect.left() + 20, rect.center().y()));
}

QJsonArray LinkerStage::configs()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QJsonArray configs;
    const auto boxes = overlay().findChildren<ActionToolBox *>(Qt::FindDirectChildrenOnly);
    for (const ActionToolBox *box : boxes)
        configs.append(box->config());
    return configs;
}

QStringList LinkerStage::refs()
{
    QStringList refs;
    const QJsonArray all = configs();
    for (const QJsonValue &config : all)
        refs.append(config["ref"_L1].toString());
    return refs;
}

void LinkerStage::discover()
{
    QMetaObject::invokeMethod(GamepadManager::instance(m_family), "discoverDevices");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

ControlManette &LinkerStage::plug(const QString &name, unsigned slot)
{
    scripted::plug(slot, scripted::restingPad(name.toStdString()));
    discover();
    device(slot)->start({});
    tick(*device(slot), 30);
    return *device(slot);
}

void LinkerStage::unplug(unsigned slot)
{
    scripted::unplug(slot);
    discover();
}

ControlManette *LinkerStage::device(unsigned slot)
{
    const auto devices = GamepadManager::instance(m_family)->gamepads();
    for (const QPointer<ControlManette> &device : devices) {
        if (device && device->deviceId() == static_cast<int>(slot))
            return device;
    }
    return nullptr;
}

void LinkerStage::press(int button, unsigned slot)
{
    scripted::pad(slot).buttons.set(static_cast<std::size_t>(button));
    tick(*device(slot));
}

void LinkerStage::release(int button, unsigned slot)
{
    scripted::pad(slot).buttons.reset(static_cast<std::size_t>(button));
    tick(*device(slot));
}

void LinkerStage::push(int axis, double value, unsigned slot)
{
    scripted::pad(slot).axes.at(static_cast<std::size_t>(axis)) = static_cast<float>(value);
    tick(*device(slot));
}

void LinkerStage::show(const QUuid &id, const QString &deviceName, const QStringList &titles)
{
    m_linker->loadGamepadSnapshot(id, u"any name"_s, deviceName, overlayOf(titles), QString());
}

QJsonObject overlayOf(const QStringList &titles)
{
    QJsonArray nodes;
    double x = 0.02;
    double y = 0.4;
    for (const QString &title : titles) {
        nodes.append(QJsonObject{
            {u"title"_s, title},
            {u"pastille"_s, QJsonObject{{u"x"_s, x}, {u"y"_s, 0.1}, {u"w"_s, 0.1}, {u"h"_s, 0.1}}},
            {u"toolbox"_s, QJsonObject{{u"x"_s, x}, {u"y"_s, y}, {u"w"_s, 0.4}, {u"h"_s, 0.1}}},
        });
        x += 0.15;
        y += 0.15;
    }
    return {{u"type"_s, u"InteractiveOverlay"_s}, {u"version"_s, 2}, {u"nodes"_s, nodes}};
}

QString mappingPath(const QUuid &id)
{
    return profilesRootPath() + u'/' + id.toString(QUuid::WithoutBraces) + "/configActionGamepad.json"_L1;
}

void writeMapping(const QByteArray &json, const QUuid &id)
{
    const QByteArray text = QJsonDocument(object(json)).toJson();
    writeBelowRoot(id.toString(QUuid::WithoutBraces) + "/configActionGamepad.json"_L1, text);
}

QByteArray fileContent(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonObject storedMapping(const QUuid &id)
{
    return QJsonDocument::fromJson(fileContent(mappingPath(id))).object();
}

QJsonArray storedBridges(const QUuid &id)
{
    return storedMapping(id)["bridges"_L1].toArray();
}

QJsonArray someActions()
{
    return array(R"([
        {'name':'A','params':[{'name':'speed','preferredType':'int'}],
         'tasks':[{'ref':'F','args':{'p':'param:speed'},'when':'W'}]},
        {'name':'B','params':[{'name':'text','preferredType':'string'},
                              {'name':'level','preferredType':'double','default':1.5},
                              {'name':'on','preferredType':'bool'}],
         'tasks':[{'ref':'G','args':{'t':'param:text','l':'param:level','o':'param:on'}}]},
        {'name':'C','tasks':[{'ref':'H'}]},
        {'name':'Vide','tasks':[]}])");
}
