// SPDX-License-Identifier: MIT
#include "modelfixture.h"

#include "gamepadmanager.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTimer>

using namespace Qt::StringLiterals;
using namespace fixture;
using Model = LinkerDeviceModel;

/// The model's memory: what is read, merged with what is plugged in, and written.
class TestLinkerDeviceModelRegistry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }
    void cleanup() { QCOMPARE(scripted::calls().outsideSlots, 0); }

    void aFirstRunWithoutPads()
    {
        TestedModel model;
        QCOMPARE(model.count(), 0);
        QCOMPARE(model.previousCount(), 0);
        settle();
        QCOMPARE(stored(), (QJsonObject{{u"devices"_s, QJsonObject()}, {u"lastCount"_s, 0}}));
    }

    void aFirstRunWithOnePad()
    {
        plug(0);
        TestedModel model;
        QCOMPARE(model.count(), 0);
        ModelLog log(&model);
        settle();
        QCOMPARE(log.take(),
                 (QStringList{u"selected"_s, u"inserted 0"_s, u"count"_s, u"save"_s, u"selected"_s}));
        QCOMPARE(model.previousCount(), 0);
        QCOMPARE(model.at(0, Model::ConnectedRole), QVariant(true));
        QCOMPARE(model.at(0, Model::SelectedRole), QVariant(false));
        QVERIFY(!model.interfaceForRow(0));
        const QJsonObject expected{
            {u"devices"_s, QJsonObject{{u"gp:0"_s, freshDevice(0, u"Pad"_s)}}},
            {u"lastCount"_s, 1},
        };
        QCOMPARE(stored(), expected);
    }

    void theFileIsCompact()
    {
        plug(0);
        TestedModel model;
        settle();
        QFile file(folderOf(u"host"_s) + u"/gamepads.json"_s);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(!file.readAll().contains('\n'));
    }

    void nothingIsWrittenBeforeTheEventLoopRuns()
    {
        plug(0);
        TestedModel model;
        QVERIFY(!QFileInfo::exists(folderOf(u"host"_s) + u"/gamepads.json"_s));
    }

    void rememberedRowsComeInTheOrderOfTheirKeys()
    {
        remember({{u"gp:7"_s, rememberedDevice(7)},
                  {u"gp:10"_s, rememberedDevice(10)},
                  {u"gp:2"_s, rememberedDevice(2)}});
        const TestedModel model;
        QCOMPARE(order(model), (QStringList{u"gp:10"_s, u"gp:2"_s, u"gp:7"_s}));
        QCOMPARE(model.previousCount(), 3);
        for (int row = 0; row < 3; ++row)
            QCOMPARE(model.at(row, Model::ConnectedRole), QVariant(false));
    }

    void anEmptyKeyIsSkipped()
    {
        remember({{u""_s, rememberedDevice(1)}, {u"gp:2"_s, rememberedDevice(2)}});
        const TestedModel model;
        QCOMPARE(order(model), QStringList{u"gp:2"_s});
        QCOMPARE(model.previousCount(), 2);
    }

    void previousCountKeepsTheFilesValueForTheRun()
    {
        writeRaw(R"({"devices": {}, "lastCount": 5})");
        plug(0);
        TestedModel model;
        QCOMPARE(model.previousCount(), 5);
        settle();
        QCOMPARE(model.previousCount(), 5);
        QCOMPARE(stored().value(u"lastCount"_s), QJsonValue(1));
    }

    void aPadThatIsPresentAndRememberedKeepsItsSettings()
    {
        plug(1, u"Fresh"_s);
        const QJsonObject kv{{u"nameOverride"_s, u"Mine"_s}, {u"note"_s, 4}};
        QJsonObject device = rememberedDevice(1, kv);
        device[u"unknown"_s] = 1;
        remember({{u"gp:1"_s, device}});
        TestedModel model;
        // At once, before any merge.
        QCOMPARE(model.at(0, Model::ConnectedRole), QVariant(true));
        QCOMPARE(model.at(0, Model::NameRole), QVariant(u"Mine"_s));
        QCOMPARE(model.at(0, Model::ProductRole), QVariant(u"Fresh"_s));
        QCOMPARE(model.at(0, Model::ModelRole), QVariant(u"1234-abcd"_s));
        QCOMPARE(model.at(0, Model::VideoInterfacesRole).toStringList().size(), 2);
        settle();
        QCOMPARE(model.count(), 1);
        QCOMPARE(storedDevice(u"gp:1"_s), freshDevice(1, u"Fresh"_s, kv));
    }

    void padsThatAreNotRememberedComeWithTheMerge()
    {
        plug(0);
        plug(3);
        remember({{u"gp:3"_s, rememberedDevice(3)}});
        TestedModel model;
        QCOMPARE(order(model), QStringList{u"gp:3"_s});
        settle();
        QCOMPARE(order(model), (QStringList{u"gp:3"_s, u"gp:0"_s}));
    }

    void aSelectedPadIsStartedAtOnceAndAgainByTheMerge()
    {
        plug(1);
        remember({{u"gp:1"_s, rememberedDevice(1, selectedKv())}});
        TestedModel model;
        QCOMPARE(model.interfaceForRow(0), liveDevice(1));
        QCOMPARE(liveDevice(1)->status(), int(IComInterface::connected));
        QCOMPARE(model.at(0, Model::LinkStateRole), QVariant(2));
        ModelLog log(&model);
        settle();
        const QStringList expected{
            u"selected 1"_s, // the load's own
            merged(1),       link(1), u"save"_s, u"selected 1"_s,
        };
        QCOMPARE(log.take(), expected);
        // The second start found it connected already.
        QCOMPARE(model.at(0, Model::LinkStateRole), QVariant(1));
    }

    void aSelectedAbsentPadIsHeldByAPlaceholder_data()
    {
        QTest::addColumn<QString>("deviceId");
        QTest::addColumn<int>("slot");
        QTest::newRow("slot 0 has -1") << u"0"_s << -1;
        QTest::newRow("slot 1") << u"1"_s << 1;
        QTest::newRow("slot 7") << u"7"_s << 7;
        QTest::newRow("no slot of SFML's") << u"42"_s << 42;
        QTest::newRow("negative") << u"-7"_s << -1;
        QTest::newRow("beyond int") << u"99999999999"_s << std::numeric_limits<int>::max();
        QTest::newRow("no number") << u"pad"_s << -1;
        QTest::newRow("none") << QString() << -1;
    }
    void aSelectedAbsentPadIsHeldByAPlaceholder()
    {
        QFETCH(const QString, deviceId);
        QFETCH(const int, slot);
        QJsonObject device = rememberedDevice(0, selectedKv());
        device[u"deviceId"_s] = deviceId;
        remember({{u"gp:0"_s, device}});
        TestedModel model;
        settle();
        QCOMPARE(model.at(0, Model::ConnectedRole), QVariant(false));
        QCOMPARE(model.at(0, Model::LinkStateRole), QVariant(0));
        const QList<IComInterface *> selection = model.selection();
        QCOMPARE(selection.size(), 1);
        QCOMPARE(selection.first()->property("deviceId"), QVariant(slot));
        QCOMPARE(selection.first()->property("vendorId"), QVariant(0U));
        QCOMPARE(selection.first()->status(), int(IComInterface::noCom));
        QVERIFY(selection.first()->deviceJson().contains(u"\"deviceId\":%1"_s.arg(slot)));
        QCOMPARE(selection.first()->noCodeApp().size(), 1);
        QCOMPARE(model.placeholders(), 1);
    }

    void aNewPadIsInsertedAtTheEnd()
    {
        plug(3);
        TestedModel model;
        settle();
        stopManager();
        ModelLog log(&model);
        plug(1);
        discover();
        const QStringList expected{
            // The manager's list, the device, its list once more.
            merged(3), u"inserted 1"_s, u"count"_s, u"save"_s,     u"selected"_s, //
            merged(3), merged(1),       u"save"_s,  u"selected"_s,                //
            merged(3), merged(1),       u"save"_s,  u"selected"_s,
        };
        QCOMPARE(log.take(), expected);
        QCOMPARE(order(model), (QStringList{u"gp:3"_s, u"gp:1"_s}));
    }

    void nothingHappensWhereDiscoveryFindsNothingNew()
    {
        plug(3);
        TestedModel model;
        settle();
        ModelLog log(&model);
        discover();
        QCOMPARE(log.take(), QStringList());
    }

    void aPadThatGoesIsRemembered()
    {
        plug(3);
        TestedModel model;
        settle();
        stopManager();
        ModelLog log(&model);
        unplug(3);
        discover();
        const QStringList expected{
            merged(3),   u"save"_s,     u"selected"_s, // told that it goes: it is still in the list
            wentAway(3), u"save"_s,     u"selected"_s, // the list without it
            u"save"_s,   u"selected"_s,                // and once more
        };
        QCOMPARE(log.take(), expected);
        QCOMPARE(model.at(0, Model::ConnectedRole), QVariant(false));
        QCOMPARE(model.at(0, Model::NameRole), QVariant(u"Pad"_s));
        QVERIFY(!model.interfaceForRow(0));
        QCOMPARE(storedDevice(u"gp:3"_s), freshDevice(3, u"Pad"_s));
    }

    void capabilitiesGoWithThePad()
    {
        plug(3);
        TestedModel model;
        settle();
        stopManager();
        unplug(3);
        discover();
        // The merge that is told of the loss still has the device; SFML has nothing of it any more.
        QCOMPARE(model.at(0, Model::VideoInterfacesRole), QVariant(QStringList()));
    }

    void anotherPadInTheSlotInheritsTheRow()
    {
        plug(2, u"First"_s);
        TestedModel model;
        settle();
        stopManager();
        QVERIFY(model.setData(model.index(0), u"Mine"_s, Model::NameRole));
        unplug(2);
        discover();
        settle();
        plug(2, u"Second"_s);
        discover();
        QCOMPARE(model.count(), 1);
        QCOMPARE(model.at(0, Model::NameRole), QVariant(u"Mine"_s));
        QCOMPARE(model.at(0, Model::ConnectedRole), QVariant(true));
        // The product text is the first device's: a merge does not touch it.
        QCOMPARE(model.at(0, Model::ProductRole), QVariant(u"First"_s));
        QVERIFY(model.setData(model.index(0), u""_s, Model::NameRole));
        QCOMPARE(model.at(0, Model::NameRole), QVariant(u"Second"_s));
    }

    void aMergeLeavesTheRememberedIdentityAndTheFileHasTheDevices()
    {
        const QJsonObject device = rememberedDevice(2, selectedKv());
        QJsonObject identity = device;
        identity.remove("kv"_L1);
        remember({{u"gp:2"_s, device}});
        TestedModel model;
        settle();
        stopManager();
        plug(2, u"Fresh"_s);
        discover();
        QCOMPARE(storedDevice(u"gp:2"_s), freshDevice(2, u"Fresh"_s, selectedKv()));
        QList<IComInterface *> ifaces;
        QJsonArray infos;
        model.collectSelected(ifaces, infos);
        QCOMPARE(infos, QJsonArray{identity});
        // Gone again, it is the identity of before that is written.
        unplug(2);
        discover();
        QCOMPARE(storedDevice(u"gp:2"_s), device);
    }

    void keysThatAreNotKnownSurviveInAnAbsentDevice()
    {
        QJsonObject device = rememberedDevice(2, {{u"later"_s, QJsonArray{1}}});
        device[u"firmware"_s] = QJsonObject{{u"version"_s, 3}};
        remember({{u"gp:2"_s, device}});
        {
            TestedModel model;
            settle();
        }
        QCOMPARE(storedDevice(u"gp:2"_s), device);
    }

    void keysOfTheRootSurvive()
    {
        writeRaw(R"({"devices": {}, "lastCount": 0, "format": {"version": 2}})");
        {
            TestedModel model;
            settle();
        }
        QCOMPARE(stored().value(u"format"_s), QJsonValue(QJsonObject{{u"version"_s, 2}}));
    }

    void theDestructorSaves()
    {
        plug(0);
        {
            const TestedModel model(u"host"_s);
            QVERIFY(stored().isEmpty());
        }
        QCOMPARE(stored(), (QJsonObject{{u"devices"_s, QJsonObject()}, {u"lastCount"_s, 0}}));
    }

    void theDestructorStopsNoDevice()
    {
        QObject owner;
        GamepadManager::instance(&owner);
        plug(1);
        discover();
        remember({{u"gp:1"_s, rememberedDevice(1, selectedKv())}});
        {
            const TestedModel model;
        }
        QCOMPARE(liveDevice(1)->status(), int(IComInterface::connected));
        QVERIFY(liveDevice(1)->findChild<QTimer *>()->isActive());
    }

    void aFailedWriteLeavesTheOldFileAndIsSilent()
    {
        remember({{u"gp:2"_s, rememberedDevice(2)}});
        QVERIFY(QDir().mkpath(folderOf(u"host"_s) + u"/gamepads.json.tmp"_s));
        TestedModel model;
        settle();
        QVERIFY(model.setData(model.index(0), u"Mine"_s, Model::NameRole));
        QCOMPARE(model.at(0, Model::NameRole), QVariant(u"Mine"_s));
        QCOMPARE(storedDevice(u"gp:2"_s), rememberedDevice(2));
    }

    void deletingAnUnknownKeySavesNothing()
    {
        remember({{u"gp:2"_s, rememberedDevice(2)}});
        TestedModel model;
        settle();
        ModelLog log(&model);
        QVERIFY(!model.deleteDevice(u"gp:1"_s));
        QVERIFY(!model.deleteDevice(u"GP:2"_s));
        QVERIFY(!model.deleteDevice({}));
        QCOMPARE(log.take(), QStringList());
    }

    void deletingAnAbsentRowForgetsIt()
    {
        remember({{u"gp:2"_s, rememberedDevice(2)}, {u"gp:4"_s, rememberedDevice(4, selectedKv())}});
        TestedModel model;
        settle();
        ModelLog log(&model);
        QVERIFY(model.deleteDevice(u"gp:4"_s));
        QCOMPARE(log.take(),
                 (QStringList{u"about to remove 1"_s, u"removed 1"_s, u"count"_s, u"save"_s, u"selected"_s}));
        QCOMPARE(order(model), QStringList{u"gp:2"_s});
        QVERIFY(!stored().value(u"devices"_s).toObject().contains(u"gp:4"_s));
        QCOMPARE(stored().value(u"lastCount"_s), QJsonValue(1));
        settle();
        QCOMPARE(model.placeholders(), 0);
    }

    void deletingALiveRowStopsItAndForgetsItsSettings()
    {
        plug(0);
        TestedModel model;
        settle();
        stopManager();
        model.setSelected(u"gp:0"_s, true);
        QVERIFY(model.setData(model.index(0), u"Mine"_s, Model::NameRole));
        const QPointer<ControlManette> device = liveDevice(0);
        ModelLog log(&model);
        QVERIFY(model.deleteDevice(u"gp:0"_s));
        const QStringList expected{
            link(0),
            u"selected 0"_s, // the device has let go
            u"about to remove 0"_s,
            u"removed 0"_s,
            u"count"_s,
            u"save"_s,
            u"selected"_s,
        };
        QCOMPARE(log.take(), expected);
        settle();
        QVERIFY(device);
        QCOMPARE(device->status(), int(IComInterface::noCom));
        QCOMPARE(model.count(), 0);

        // Still plugged in, it returns at the next sync as a new row.
        plug(5);
        discover();
        QCOMPARE(order(model), (QStringList{u"gp:0"_s, u"gp:5"_s}));
        QVERIFY(!model.isSelected(u"gp:0"_s));
        QCOMPARE(model.at(0, Model::NameRole), QVariant(u"Pad"_s));
        QCOMPARE(storedDevice(u"gp:0"_s), freshDevice(0, u"Pad"_s));
    }
};

GAMEPAD_TEST_MAIN(TestLinkerDeviceModelRegistry)
#include "tst_linkerdevicemodel_registry.moc"
