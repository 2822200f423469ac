// SPDX-License-Identifier: MIT
// A model that changes from one context's list to another's, and two models with lists of their own.
#include "gamepadmanager.h"
#include "modelfixture.h"
#include "scriptedjoystick.h"
#include "testmain.h"

using namespace Qt::StringLiterals;
using namespace fixture;
using Model = LinkerDeviceModel;

class TestLinkerDeviceModelContexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }
    void cleanup() { QCOMPARE(scripted::calls().outsideSlots, 0); }

    void contextsAreSeparate()
    {
        remember({{u"gp:2"_s, rememberedDevice(2)}}, u"one"_s);
        remember({{u"gp:3"_s, rememberedDevice(3)}, {u"gp:4"_s, rememberedDevice(4)}}, u"two"_s);
        TestedModel model(u"one"_s);
        settle();
        ModelLog log(&model, u"two"_s);
        model.setContext(u"two"_s);
        const QStringList expected{
            u"context"_s, u"reset"_s, u"count"_s, u"previousCount"_s, u"previousCount"_s, u"selected"_s,
        };
        QCOMPARE(log.take(), expected);
        QCOMPARE(model.context(), u"two"_s);
        QCOMPARE(model.previousCount(), 2);
        QCOMPARE(order(model), (QStringList{u"gp:3"_s, u"gp:4"_s}));
        settle();
        QCOMPARE(log.take(), QStringList{u"selected"_s});
        QVERIFY(model.setData(model.index(0), u"Mine"_s, Model::NameRole));
        QCOMPARE(storedDevice(u"gp:2"_s, u"one"_s), rememberedDevice(2));
        QVERIFY(storedDevice(u"gp:3"_s, u"two"_s) != rememberedDevice(3));
    }

    void theSameContextSaysNothing()
    {
        TestedModel model;
        settle();
        ModelLog log(&model);
        model.setContext(u"host"_s);
        settle();
        QCOMPARE(log.take(), QStringList());
    }

    void aContextStartsWhatItSelectsAndStopsNothing()
    {
        plug(0);
        plug(1);
        remember({{u"gp:1"_s, rememberedDevice(1, selectedKv())}}, u"two"_s);
        TestedModel model;
        settle();
        stopManager();
        model.setSelected(u"gp:0"_s, true);
        ModelLog log(&model, u"two"_s);
        model.setContext(u"two"_s);
        const QStringList expected{
            u"context"_s,       u"reset"_s,      u"count"_s, u"previousCount"_s, link(1), link(1),
            u"selected 1"_s, // started
            u"previousCount"_s, u"selected 1"_s,
        };
        QCOMPARE(log.take(), expected);
        QCOMPARE(liveDevice(0)->status(), int(IComInterface::connected));
        QCOMPARE(order(model), QStringList{u"gp:1"_s});
        // The other live device joins with the next sync.
        plug(6);
        discover();
        QCOMPARE(order(model), (QStringList{u"gp:1"_s, u"gp:0"_s, u"gp:6"_s}));
    }

    void aSecondModelSharesTheDevicesAndWritesItsOwnFile()
    {
        plug(0);
        TestedModel first(u"one"_s);
        TestedModel second(u"two"_s);
        settle();
        QCOMPARE(GamepadManager::instance()->parent(), &first);
        QVERIFY(second.setData(second.index(0), u"Mine"_s, Model::NameRole));
        first.setSelected(u"gp:0"_s, true);
        QCOMPARE(storedDevice(u"gp:0"_s, u"one"_s), freshDevice(0, u"Pad"_s, selectedKv()));
        QCOMPARE(storedDevice(u"gp:0"_s, u"two"_s),
                 freshDevice(0, u"Pad"_s, {{u"nameOverride"_s, u"Mine"_s}}));
        QCOMPARE(first.interfaceForRow(0), liveDevice(0));
    }
};

GAMEPAD_TEST_MAIN(TestLinkerDeviceModelContexts)
#include "tst_linkerdevicemodel_contexts.moc"
