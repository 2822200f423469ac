// SPDX-License-Identifier: MIT
#include "modelfixture.h"

#include "gamepadmanager.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>

#include <memory>

using namespace Qt::StringLiterals;
using namespace fixture;
using Model = LinkerDeviceModel;

namespace
{
/// Hundreds of rounds need not be told line by line.
class Quiet
{
public:
    Quiet() { QLoggingCategory::setFilterRules(u"default.debug=false"_s); }
    ~Quiet() { QLoggingCategory::setFilterRules(QString()); }
    Q_DISABLE_COPY_MOVE(Quiet)
};

int listenersOf(const ControlManette *device)
{
    struct Opened : QObject
    {
        static auto counter() { return &Opened::receivers; }
    };
    return (device->*Opened::counter())(SIGNAL(connectedChanged()));
}

ControlManette *placeholderOf(const TestedModel &model, int row)
{
    auto *device = qobject_cast<ControlManette *>(model.interfaceForRow(row));
    return device && device->parent() == &model ? device : nullptr;
}
} // namespace

/// Devices, placeholders and managers that come and go below the rows.
class TestLinkerDeviceModelLifetime : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }
    void cleanup() { QCOMPARE(scripted::calls().outsideSlots, 0); }

    void aSelectedPadVanishesAndReturns()
    {
        plug(1);
        TestedModel model;
        settle();
        stopManager();
        model.setSelected(u"gp:1"_s, true);
        const QPointer<ControlManette> before = liveDevice(1);
        ModelLog log(&model);

        // The tick finds the joystick gone.
        unplug(1);
        QTRY_COMPARE(model.at(0, Model::LinkStateRole), QVariant(0));
        QCOMPARE(log.take(), (QStringList{link(1), u"selected 1"_s}));
        QCOMPARE(model.interfaceForRow(0), before);

        // Discovery finds the slot empty.
        discover();
        QVERIFY(before);
        ControlManette *placeholder = placeholderOf(model, 0);
        QVERIFY(placeholder);
        QCOMPARE(placeholder->deviceId(), 1);
        QCOMPARE(model.at(0, Model::ConnectedRole), QVariant(false));
        QCOMPARE(model.at(0, Model::LinkStateRole), QVariant(0));
        QCOMPARE(model.selection(), QList<IComInterface *>{placeholder});
        const QStringList gone{
            // Told that it goes, the model still has it, and starts it once more.
            merged(1),   link(1),         u"save"_s,       u"selected 1"_s, //
            wentAway(1), u"save"_s,       u"selected 1"_s,                  //
            u"save"_s,   u"selected 1"_s,
        };
        QCOMPARE(log.take(), gone);

        // The old object is destroyed.
        settle();
        QVERIFY(!before);
        QCOMPARE(log.take(), QStringList{u"selected 1"_s});
        QCOMPARE(placeholderOf(model, 0), placeholder);
        QCOMPARE(model.placeholders(), 1);

        // The pad returns.
        plug(1);
        discover();
        const QStringList back{
            // Found: the device takes the placeholder's place, and starts.
            merged(1),
            link(1),
            link(1),
            u"selected 1"_s,
            u"save"_s,
            u"selected 1"_s,
            // Added, and the list once more.
            merged(1),
            link(1),
            u"save"_s,
            u"selected 1"_s, //
            merged(1),
            link(1),
            u"save"_s,
            u"selected 1"_s,
        };
        QCOMPARE(log.take(), back);
        QCOMPARE(model.interfaceForRow(0), liveDevice(1));
        QCOMPARE(model.selection(), QList<IComInterface *>{liveDevice(1)});
        QCOMPARE(liveDevice(1)->status(), int(IComInterface::connected));
        settle();
        QCOMPARE(model.placeholders(), 0);
    }

    void valuesFlowAgainAfterTheReturn()
    {
        plug(1);
        TestedModel model;
        settle();
        model.setSelected(u"gp:1"_s, true);
        unplug(1);
        QTRY_VERIFY(placeholderOf(model, 0));
        plug(1);
        QTRY_VERIFY(liveDevice(1));
        QSignalSpy data(liveDevice(1), qOverload<int, int, const QStringList &, const QVariantList &>(
                                           &IComInterface::dataChanged));
        QTRY_VERIFY_WITH_TIMEOUT(liveDevice(1)->deviceJson().contains(u"\"connected\":true"_s), 5000);
        // Past calibration, a push goes out.
        QTRY_VERIFY_WITH_TIMEOUT(
            [&] {
                scripted::pad(1).buttons.flip(0);
                return !data.isEmpty();
            }(),
            10000);
    }

    void aPadThatReturnsToAnotherSlotIsAnotherRow()
    {
        plug(1);
        TestedModel model;
        settle();
        stopManager();
        model.setSelected(u"gp:1"_s, true);
        unplug(1);
        discover();
        plug(2);
        discover();
        QCOMPARE(model.count(), 2);
        QVERIFY(placeholderOf(model, 0));
        QVERIFY(!model.isSelected(u"gp:2"_s));
    }

    void aDeselectedPadThatVanishesLeavesNoPlaceholder()
    {
        plug(1);
        TestedModel model;
        settle();
        stopManager();
        unplug(1);
        discover();
        settle();
        QCOMPARE(model.placeholders(), 0);
        QVERIFY(!model.interfaceForRow(0));
    }

    void aPlaceholderOfADeselectedRowGoesWhenItsPadCameAndWent()
    {
        plug(2);
        remember({{u"gp:1"_s, rememberedDevice(1, selectedKv())}});
        TestedModel model;
        settle();
        stopManager();
        // Deselected by the choice of another row, it keeps its placeholder.
        model.setSelected(u"gp:2"_s, true);
        settle();
        QCOMPARE(model.placeholders(), 1);
        plug(1);
        discover();
        settle();
        QCOMPARE(model.placeholders(), 0);
        QCOMPARE(model.interfaceForRow(0), liveDevice(1));
        unplug(1);
        discover();
        settle();
        QCOMPARE(model.placeholders(), 0);
        QVERIFY(!model.interfaceForRow(0));
    }

    void aDeviceThatTheHostDestroysIsReplacedByAPlaceholder()
    {
        plug(1);
        TestedModel model;
        settle();
        stopManager();
        model.setSelected(u"gp:1"_s, true);
        ModelLog log(&model);
        delete liveDevice(1);
        QCOMPARE(log.take(), QStringList{u"selected 1"_s});
        QVERIFY(placeholderOf(model, 0));
        QCOMPARE(model.at(0, Model::ConnectedRole), QVariant(false));
        QCOMPARE(model.at(0, Model::LinkStateRole), QVariant(0));
        // The joystick is still there: discovery makes a new device of it.
        discover();
        settle();
        QCOMPARE(model.interfaceForRow(0), liveDevice(1));
        QCOMPARE(model.placeholders(), 0);
    }

    void aPlaceholderThatTheHostDestroysIsMadeAnew()
    {
        remember({{u"gp:1"_s, rememberedDevice(1, selectedKv())}});
        TestedModel model;
        settle();
        delete model.interfaceForRow(0);
        QVERIFY(!model.interfaceForRow(0));
        model.syncSelected();
        QVERIFY(placeholderOf(model, 0));
        delete model.interfaceForRow(0);
        plug(1);
        discover();
        QCOMPARE(model.interfaceForRow(0), liveDevice(1));
    }

    void theEndOfAnOldDeviceDoesNotTouchTheNewOne()
    {
        plug(1);
        TestedModel model;
        settle();
        stopManager();
        model.setSelected(u"gp:1"_s, true);
        const QPointer<ControlManette> before = liveDevice(1);
        unplug(1);
        discover();
        plug(1);
        discover();
        QVERIFY(before);
        QVERIFY(liveDevice(1) != before);
        settle();
        QVERIFY(!before);
        QCOMPARE(model.at(0, Model::ConnectedRole), QVariant(true));
        QCOMPARE(model.interfaceForRow(0), liveDevice(1));
        QCOMPARE(model.placeholders(), 0);
    }

    void aManagerThatDiesWithAnotherParentIsReplaced()
    {
        plug(1);
        plug(2);
        auto owner = std::make_unique<QObject>();
        GamepadManager::instance(owner.get());
        TestedModel model;
        settle();
        model.setSelected(u"gp:1"_s, true);
        owner.reset();
        // The devices died with it.
        QVERIFY(placeholderOf(model, 0));
        QVERIFY(!model.interfaceForRow(1));
        for (int row = 0; row < model.count(); ++row)
            (void)model.at(row, Model::JsonRole);

        settle();
        QCOMPARE(GamepadManager::instance()->parent(), &model);
        QCOMPARE(model.count(), 2);
        QCOMPARE(model.interfaceForRow(0), liveDevice(1));
        QCOMPARE(model.at(0, Model::LinkStateRole), QVariant(2));
        QCOMPARE(model.at(1, Model::ConnectedRole), QVariant(true));

        // The new one is listened to as well.
        stopManager();
        plug(3);
        ModelLog log(&model);
        discover();
        QCOMPARE(log.take().count(u"inserted 2"_s), 1);
        settle();
        QCOMPARE(model.placeholders(), 0);
    }

    void aManagerThatDiesIsReplacedByTheNextCallToo()
    {
        plug(1);
        auto owner = std::make_unique<QObject>();
        GamepadManager::instance(owner.get());
        TestedModel model;
        settle();
        owner.reset();
        model.setContext(u"other"_s);
        QCOMPARE(GamepadManager::instance()->parent(), &model);
        settle();
        QCOMPARE(model.count(), 1);
        QCOMPARE(model.at(0, Model::ConnectedRole), QVariant(true));
    }

    void aNewManagerObeysAutoDetect()
    {
        plug(1);
        auto owner = std::make_unique<QObject>();
        GamepadManager::instance(owner.get());
        TestedModel model;
        settle();
        model.setAutoDetect(false);
        owner.reset();
        settle();
        QCOMPARE(model.at(0, Model::ConnectedRole), QVariant(true));
        const auto timers = GamepadManager::instance()->findChildren<QTimer *>(Qt::FindDirectChildrenOnly);
        QCOMPARE(timers.size(), 2);
        for (const QTimer *timer : timers)
            QVERIFY(!timer->isActive());
    }

    void aModelOutlivesTheModelThatOwnedTheManager()
    {
        plug(1);
        auto first = std::make_unique<TestedModel>(u"one"_s);
        TestedModel second(u"two"_s);
        settle();
        second.setSelected(u"gp:1"_s, true);
        first.reset();
        settle();
        QCOMPARE(GamepadManager::instance()->parent(), &second);
        QCOMPARE(second.interfaceForRow(0), liveDevice(1));
        QCOMPARE(second.at(0, Model::LinkStateRole), QVariant(2));
    }

    void aModelThatDiesTakesPlaceholdersAndManagerAlong()
    {
        plug(1);
        remember({{u"gp:2"_s, rememberedDevice(2, selectedKv())}});
        QPointer<QObject> placeholder;
        QPointer<QObject> manager;
        QPointer<ControlManette> device;
        {
            TestedModel model;
            settle();
            placeholder = model.interfaceForRow(0);
            manager = GamepadManager::instance();
            device = liveDevice(1);
            QVERIFY(placeholder && manager && device);
        }
        QVERIFY(!placeholder);
        QVERIFY(!manager);
        QVERIFY(!device);
        settle();
    }

    void aModelThatDiesBeforeItsFirstMergeIsQuiet()
    {
        plug(1);
        {
            const TestedModel model;
        }
        settle();
        QVERIFY(storedDevice(u"gp:1"_s).isEmpty());
    }

    void fiveHundredContextChangesLeaveNoPile()
    {
        const Quiet quiet;
        plug(1);
        const QJsonObject devices{{u"gp:1"_s, rememberedDevice(1, selectedKv())},
                                  {u"gp:2"_s, rememberedDevice(2, selectedKv())}};
        remember(devices, u"one"_s);
        remember(devices, u"two"_s);
        TestedModel model(u"one"_s);
        settle();
        const qsizetype children = model.findChildren<QObject *>().size();
        for (int round = 0; round < 250; ++round) {
            model.setContext(u"two"_s);
            model.setContext(u"one"_s);
            settle();
        }
        QCOMPARE(model.placeholders(), 1);
        QCOMPARE(model.findChildren<QObject *>().size(), children);
        QCOMPARE(listenersOf(liveDevice(1)), 1);
        QCOMPARE(model.selection().size(), 2);
    }

    void fiveHundredRoundsOfPluggingLeaveNoPile()
    {
        const Quiet quiet;
        plug(2);
        remember({{u"gp:1"_s, rememberedDevice(1, selectedKv())}});
        TestedModel model;
        settle();
        stopManager();
        const qsizetype children = model.findChildren<QObject *>().size();
        for (int round = 0; round < 500; ++round) {
            plug(1);
            discover();
            settle();
            QCOMPARE(model.placeholders(), 0);
            unplug(1);
            discover();
            settle();
            QCOMPARE(model.placeholders(), 1);
        }
        QCOMPARE(model.findChildren<QObject *>().size(), children);
        QCOMPARE(model.count(), 2);
        QCOMPARE(listenersOf(liveDevice(2)), 1);
    }

    void fiftyManagersLeaveNoPile()
    {
        const Quiet quiet;
        plug(1);
        remember({{u"gp:1"_s, rememberedDevice(1, selectedKv())}});
        TestedModel model;
        settle();
        const qsizetype children = model.findChildren<QObject *>().size();
        for (int round = 0; round < 50; ++round) {
            delete GamepadManager::instance();
            settle();
        }
        QCOMPARE(model.placeholders(), 0);
        QCOMPARE(model.findChildren<QObject *>().size(), children);
        QCOMPARE(listenersOf(liveDevice(1)), 1);
    }
};

GAMEPAD_TEST_MAIN(TestLinkerDeviceModelLifetime)
#include "tst_linkerdevicemodel_lifetime.moc"
