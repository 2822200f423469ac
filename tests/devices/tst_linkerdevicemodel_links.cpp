// SPDX-License-Identifier: MIT
// What becomes of a running device's link when its row is deselected, deleted or read from another file.
#include "gamepadmanager.h"
#include "modelfixture.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;
using namespace fixture;
using Model = LinkerDeviceModel;

namespace
{
bool runs(const ControlManette *device)
{
    return timerOf(*device).isActive();
}

int linkState(const TestedModel &model, int row)
{
    return model.at(row, Model::LinkStateRole).toInt();
}

bool storedAsSelected(const QString &usn)
{
    return storedDevice(usn).value(u"kv"_s)[u"selected"_s].toBool();
}
} // namespace

class TestLinkerDeviceModelLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }
    void cleanup() { QCOMPARE(scripted::calls().outsideSlots, 0); }

    void aStartingLinkOfAPresentPadEndsWithItsSelection()
    {
        plug(0);
        TestedModel model;
        settle();
        model.setSelected(u"gp:0"_s, true);
        stopManager();
        plug(1);
        discover();
        QCOMPARE(linkState(model, 0), 1);
        ModelLog log(&model);
        model.setSelected(u"gp:0"_s, false);
        QCOMPARE(log.take(), (QStringList{link(0), u"selected"_s, choice(0), u"save"_s, u"selected"_s}));
        QCOMPARE(linkState(model, 0), 0);
        QVERIFY(!runs(liveDevice(0)));
    }

    void aStartingLinkOfAPadThatIsAwayEndsWithItsSelection()
    {
        plug(0);
        TestedModel model;
        settle();
        stopManager();
        unplug(0);
        model.setSelected(u"gp:0"_s, true);
        QCOMPARE(linkState(model, 0), 1);
        ModelLog log(&model);
        model.setSelected(u"gp:0"_s, false);
        QCOMPARE(log.take(), (QStringList{choice(0), u"save"_s, u"selected"_s}));
        QCOMPARE(linkState(model, 0), 0);
    }

    void aStartingLinkEndsWhenAnotherRowIsSelected()
    {
        plug(0);
        plug(1);
        TestedModel model;
        settle();
        stopManager();
        unplug(0);
        model.setSelected(u"gp:0"_s, true);
        QCOMPARE(linkState(model, 0), 1);
        model.setSelected(u"gp:1"_s, true);
        QCOMPARE(linkState(model, 0), 0);
        QCOMPARE(linkState(model, 1), 2);
    }

    // The host answers a device's report that it is connected by letting go of it.
    void aDeviceThatIsDeselectedWhileItConnectsStaysStopped()
    {
        plug(0);
        TestedModel model;
        settle();
        stopManager();
        connect(&model, &QAbstractItemModel::dataChanged, &model, [&model] {
            if (linkState(model, 0) == 2)
                model.setSelected(u"gp:0"_s, false);
        });
        model.setSelected(u"gp:0"_s, true);
        QVERIFY(!model.isSelected(u"gp:0"_s));
        QVERIFY(!runs(liveDevice(0)));
        QCOMPARE(liveDevice(0)->status(), int(IComInterface::noCom));
        QCOMPARE(linkState(model, 0), 0);
    }

    // The host answers a row that starts by selecting another one in its place.
    void aDeviceThatAnotherReplacesBeforeItStartsStaysStopped()
    {
        plug(0);
        plug(1);
        TestedModel model;
        settle();
        stopManager();
        connect(&model, &QAbstractItemModel::dataChanged, &model, [&model] {
            if (linkState(model, 0) == 1)
                model.setSelected(u"gp:1"_s, true);
        });
        model.setSelected(u"gp:0"_s, true);
        QVERIFY(!model.isSelected(u"gp:0"_s));
        QVERIFY(!runs(liveDevice(0)));
        QCOMPARE(liveDevice(0)->status(), int(IComInterface::noCom));
        QCOMPARE(linkState(model, 0), 0);
        QCOMPARE(model.selection(), QList<IComInterface *>{liveDevice(1)});
        QVERIFY(runs(liveDevice(1)));
    }

    void selectingOneOfTwoSelectedRowsAgainDeselectsTheOtherAndSavesNothing()
    {
        plug(0);
        plug(1);
        {
            TestedModel model;
            settle();
            stopManager();
            model.setUniqSelection(false);
            model.setSelected(u"gp:0"_s, true);
            model.setSelected(u"gp:1"_s, true);
            model.setUniqSelection(true);
            ModelLog log(&model);
            model.setSelected(u"gp:1"_s, true);
            const QStringList expected{
                link(0),
                u"selected 1"_s, // the device has let go
                choice(0),
                u"selected 1"_s,
            };
            QCOMPARE(log.take(), expected);
            QVERIFY(!runs(liveDevice(0)));
            QVERIFY(runs(liveDevice(1)));
            QCOMPARE(linkState(model, 0), 0);
            QCOMPARE(linkState(model, 1), 2);
            QVERIFY(storedAsSelected(u"gp:0"_s));
        }
        // The end of the model writes it.
        QVERIFY(!storedAsSelected(u"gp:0"_s));
        QVERIFY(storedAsSelected(u"gp:1"_s));
    }

    void aDeletedRowsDeviceChangesNothingAnyMore()
    {
        plug(0);
        plug(1);
        TestedModel model;
        settle();
        stopManager();
        model.setSelected(u"gp:0"_s, true);
        const QPointer<ControlManette> device = liveDevice(0);
        QVERIFY(model.deleteDevice(u"gp:0"_s));
        const QByteArray other = model.at(0, Model::JsonRole).toByteArray();
        ModelLog log(&model);
        // The selection is told at each, as for every device that was bound; nothing else is.
        device->start({});
        QCOMPARE(log.take(), QStringList{u"selected"_s});
        unplug(0);
        tick(*device);
        QCOMPARE(log.take(), QStringList{u"selected"_s});
        delete device;
        QCOMPARE(log.take(), QStringList{u"selected"_s});
        QCOMPARE(model.count(), 1);
        QCOMPARE(model.usnForRow(0), u"gp:1"_s);
        QCOMPARE(model.at(0, Model::JsonRole), QVariant(other));
        QCOMPARE(model.placeholders(), 0);
    }

    void anotherContextLeavesARunningDeviceRunningWhereItsRowIsNotSelected()
    {
        plug(0);
        remember({{u"gp:0"_s, rememberedDevice(0, {{u"nameOverride"_s, u"Yours"_s}})}}, u"two"_s);
        TestedModel model;
        settle();
        stopManager();
        model.setSelected(u"gp:0"_s, true);
        ControlManette *device = liveDevice(0);
        const QSignalSpy connected(device, &ControlManette::connectedChanged);
        ModelLog log(&model, u"two"_s);
        model.setContext(u"two"_s);
        const QStringList expected{u"context"_s,       u"reset"_s,         u"count"_s,
                                   u"previousCount"_s, u"previousCount"_s, u"selected"_s};
        QCOMPARE(log.take(), expected);
        QVERIFY(runs(device));
        QCOMPARE(connected.size(), 0);
        QVERIFY(!model.isSelected(u"gp:0"_s));
        QVERIFY(!model.interfaceForRow(0));
        QVERIFY(model.selection().isEmpty());
        QCOMPARE(model.at(0, Model::NameRole), QVariant(u"Yours"_s));
        QCOMPARE(model.at(0, Model::ConnectedRole), QVariant(true));
        QCOMPARE(linkState(model, 0), 0);
        settle();
        QCOMPARE(log.take(), QStringList{u"selected"_s});

        // Values flow on, and the new row shows what becomes of the link.
        QSignalSpy pressed(device, &ControlManette::buttonChanged);
        tick(*device, 30);
        scripted::pad(0).buttons.set(2);
        tick(*device);
        QCOMPARE(pressed.size(), 1);
        unplug(0);
        tick(*device);
        QCOMPARE(log.take(), (QStringList{link(0), u"selected"_s}));
        plug(0);
        tick(*device);
        QCOMPARE(linkState(model, 0), 2);

        // The other file still has it selected, and a merge does not start what this one does not select.
        QVERIFY(storedAsSelected(u"gp:0"_s));
        tick(*device, 30);
        QVERIFY(device->deviceJson().contains(u"\"connected\":true"_s));
        pressed.clear();
        plug(1);
        discover();
        scripted::pad(0).buttons.set(3);
        tick(*device);
        QVERIFY2(pressed.size() > 0, "calibration began anew");
    }
};

GAMEPAD_TEST_MAIN(TestLinkerDeviceModelLinks)
#include "tst_linkerdevicemodel_links.moc"
