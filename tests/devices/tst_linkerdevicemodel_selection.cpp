// SPDX-License-Identifier: MIT
#include "modelfixture.h"

#include "gamepadmanager.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QTimer>

using namespace Qt::StringLiterals;
using namespace fixture;
using Model = LinkerDeviceModel;

namespace
{
/// What the message handler, a plain function, caught.
QString &diagnosticLine()
{
    static QString line;
    return line;
}

void catchDiagnostic(QtMsgType type, const QMessageLogContext & /*context*/, const QString &message)
{
    if (type == QtDebugMsg && message.startsWith(u'*'))
        diagnosticLine() = message;
}

bool runs(const ControlManette *device)
{
    return device->findChild<QTimer *>()->isActive();
}

int linkState(const TestedModel &model, int row)
{
    return model.at(row, Model::LinkStateRole).toInt();
}
} // namespace

/// The road of a selection to the host.
class TestLinkerDeviceModelSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }
    void cleanup() { QCOMPARE(scripted::calls().outsideSlots, 0); }

    void selectingALiveRowStartsItsDevice()
    {
        plug(0);
        TestedModel model;
        settle();
        QVERIFY(!model.interfaceForRow(0));
        ModelLog log(&model);
        QVERIFY(model.setData(model.index(0), true, Model::SelectedRole));
        const QStringList expected{
            link(0),                    // starting
            link(0),   u"selected 0"_s, // the device has found its joystick
            choice(0), u"save"_s,       u"selected 0"_s,
        };
        QCOMPARE(log.take(), expected);
        QCOMPARE(linkState(model, 0), 2);
        QVERIFY(model.isSelected(u"gp:0"_s));
        QCOMPARE(model.interfaceForRow(0), liveDevice(0));
        QVERIFY(runs(liveDevice(0)));
        QCOMPARE(liveDevice(0)->status(), int(IComInterface::connected));
        QCOMPARE(storedDevice(u"gp:0"_s).value(u"kv"_s), QJsonValue(selectedKv()));
    }

    void linkStateIsStartingUntilTheDeviceSpeaks()
    {
        plug(0);
        TestedModel model;
        settle();
        QList<int> states;
        connect(&model, &QAbstractItemModel::dataChanged, &model, [&] { states << linkState(model, 0); });
        model.setSelected(u"gp:0"_s, true);
        QCOMPARE(states, (QList<int>{1, 2, 2}));
    }

    void deselectingALiveRowStopsItsDevice()
    {
        plug(0);
        TestedModel model;
        settle();
        model.setSelected(u"gp:0"_s, true);
        ModelLog log(&model);
        QVERIFY(model.setData(model.index(0), false, Model::SelectedRole));
        const QStringList expected{
            link(0),   u"selected"_s, // the device has let go
            choice(0), u"save"_s,     u"selected"_s,
        };
        QCOMPARE(log.take(), expected);
        QCOMPARE(linkState(model, 0), 0);
        QVERIFY(!model.interfaceForRow(0));
        QVERIFY(!runs(liveDevice(0)));
        QCOMPARE(liveDevice(0)->status(), int(IComInterface::noCom));
        QCOMPARE(storedDevice(u"gp:0"_s).value(u"kv"_s), QJsonValue(QJsonObject{{u"selected"_s, false}}));
    }

    void selectingAnAbsentRowMakesAPlaceholder()
    {
        remember({{u"gp:3"_s, rememberedDevice(3)}});
        TestedModel model;
        settle();
        ModelLog log(&model);
        model.setSelected(u"gp:3"_s, true);
        QCOMPARE(log.take(), (QStringList{choice(3), u"save"_s, u"selected 3"_s}));
        QCOMPARE(linkState(model, 0), 0);
        QCOMPARE(model.placeholders(), 1);
        auto *placeholder = qobject_cast<ControlManette *>(model.interfaceForRow(0));
        QVERIFY(placeholder);
        QCOMPARE(placeholder->status(), int(IComInterface::noCom));
        QCOMPARE(placeholder->parent(), &model);
        QVERIFY(!runs(placeholder));
    }

    void deselectingARowWithAPlaceholderRemovesIt()
    {
        remember({{u"gp:3"_s, rememberedDevice(3, selectedKv())}});
        TestedModel model;
        settle();
        QCOMPARE(model.placeholders(), 1);
        ModelLog log(&model);
        model.setSelected(u"gp:3"_s, false);
        QCOMPARE(log.take(), (QStringList{choice(3), u"save"_s, u"selected"_s}));
        QVERIFY(!model.interfaceForRow(0));
        // The host may hold it until it has heard of the change.
        QCOMPARE(model.placeholders(), 1);
        settle();
        QCOMPARE(model.placeholders(), 0);
    }

    void selectingASelectedRowOnlyRepeatsTheSelection()
    {
        plug(0);
        remember({{u"gp:0"_s, rememberedDevice(0, selectedKv())}, {u"gp:3"_s, rememberedDevice(3)}});
        TestedModel model;
        settle();
        ModelLog log(&model);
        QVERIFY(model.setData(model.index(0), true, Model::SelectedRole));
        QCOMPARE(log.take(), QStringList{u"selected 0"_s});
        QVERIFY(model.setData(model.index(1), false, Model::SelectedRole));
        QCOMPARE(log.take(), QStringList{u"selected 0"_s});
    }

    void oneSelectionReplacesTheOther()
    {
        plug(0);
        plug(1);
        TestedModel model;
        settle();
        model.setSelected(u"gp:0"_s, true);
        ModelLog log(&model);
        model.setSelected(u"gp:1"_s, true);
        const QStringList expected{
            // gp:0 lets go,
            link(0),
            u"selected"_s,
            choice(0),
            // gp:1 starts.
            link(1),
            link(1),
            u"selected 1"_s,
            choice(1),
            u"save"_s,
            u"selected 1"_s,
        };
        QCOMPARE(log.take(), expected);
        QVERIFY(!model.isSelected(u"gp:0"_s));
        QVERIFY(!runs(liveDevice(0)));
        QCOMPARE(linkState(model, 0), 0);
        QCOMPARE(linkState(model, 1), 2);
        QCOMPARE(model.selection(), QList<IComInterface *>{liveDevice(1)});
        QCOMPARE(storedDevice(u"gp:0"_s).value(u"kv"_s), QJsonValue(QJsonObject{{u"selected"_s, false}}));
    }

    // The host answers a row that is deselected by selecting one above it.
    void aRowThatIsSelectedWhileOthersAreDeselectedGivesWayToo()
    {
        plug(0);
        plug(1);
        plug(2);
        TestedModel model;
        settle();
        stopManager();
        model.setSelected(u"gp:1"_s, true);
        bool answered = false;
        connect(&model, &QAbstractItemModel::dataChanged, &model, [&] {
            if (!model.isSelected(u"gp:1"_s) && !std::exchange(answered, true))
                model.setSelected(u"gp:0"_s, true);
        });
        model.setSelected(u"gp:2"_s, true);
        QVERIFY(answered);
        QCOMPARE(model.selection(), QList<IComInterface *>{liveDevice(2)});
        QVERIFY(!runs(liveDevice(0)));
        QVERIFY(!runs(liveDevice(1)));
        QVERIFY(runs(liveDevice(2)));
        QCOMPARE(linkState(model, 0), 0);
        QCOMPARE(linkState(model, 2), 2);
    }

    // A host that will not have it otherwise gets both rows, but the call comes back.
    void aHostThatSelectsARowAgainAndAgainIsNotFoughtForEver()
    {
        plug(0);
        plug(1);
        TestedModel model;
        settle();
        stopManager();
        model.setSelected(u"gp:0"_s, true);
        connect(&model, &QAbstractItemModel::dataChanged, &model, [&model] {
            if (!model.isSelected(u"gp:0"_s))
                model.setSelected(u"gp:0"_s, true);
        });
        model.setSelected(u"gp:1"_s, true);
        QVERIFY(model.isSelected(u"gp:0"_s));
    }

    void aReplacedRowKeepsItsInterfaceAndItsPlaceholder()
    {
        plug(1);
        remember({{u"gp:3"_s, rememberedDevice(3, selectedKv())}});
        TestedModel model;
        settle();
        QObject *placeholder = model.interfaceForRow(model.indexOfUsn(u"gp:3"_s));
        QVERIFY(placeholder);
        model.setSelected(u"gp:1"_s, true);
        settle();
        QCOMPARE(model.interfaceForRow(model.indexOfUsn(u"gp:3"_s)), placeholder);
        model.setSelected(u"gp:3"_s, true);
        QCOMPARE(model.interfaceForRow(model.indexOfUsn(u"gp:3"_s)), placeholder);
        QCOMPARE(model.interfaceForRow(model.indexOfUsn(u"gp:1"_s)), liveDevice(1));
        QCOMPARE(model.placeholders(), 1);
    }

    void severalSelectionsStandInRowOrder()
    {
        plug(0);
        plug(1);
        remember({{u"gp:5"_s, rememberedDevice(5)}});
        TestedModel model;
        settle();
        model.setUniqSelection(false);
        model.setSelected(u"gp:1"_s, true);
        model.setSelected(u"gp:0"_s, true);
        ModelLog log(&model);
        model.setSelected(u"gp:5"_s, true);
        // gp:5 was remembered, so it is the first row.
        QCOMPARE(log.take().constLast(), u"selected 5 0 1"_s);
        QCOMPARE(linkState(model, model.indexOfUsn(u"gp:1"_s)), 2);
    }

    void uniqSelectionLeavesSelectionsThatAreMadeAsTheyAre()
    {
        plug(0);
        plug(1);
        TestedModel model;
        settle();
        model.setUniqSelection(false);
        model.setSelected(u"gp:0"_s, true);
        model.setSelected(u"gp:1"_s, true);
        model.setUniqSelection(true);
        QCOMPARE(model.selection().size(), 2);
        // Selecting one of them again deselects the other all the same.
        model.setSelected(u"gp:1"_s, true);
        QCOMPARE(model.selection(), QList<IComInterface *>{liveDevice(1)});
    }

    void deselectingTouchesNoOtherRow()
    {
        plug(0);
        plug(1);
        TestedModel model;
        settle();
        model.setUniqSelection(false);
        model.setSelected(u"gp:0"_s, true);
        model.setSelected(u"gp:1"_s, true);
        model.setUniqSelection(true);
        model.setSelected(u"gp:1"_s, false);
        QCOMPARE(model.selection(), QList<IComInterface *>{liveDevice(0)});
        QCOMPARE(linkState(model, 0), 2);
    }

    void setSelectedGoesThroughTheVirtualSetData()
    {
        class Watched : public LinkerDeviceModel
        {
        public:
            using LinkerDeviceModel::LinkerDeviceModel;
            bool setData(const QModelIndex &index, const QVariant &value, int role) override
            {
                seen << u"%1 %2 %3"_s.arg(index.row()).arg(value.toBool()).arg(role);
                return LinkerDeviceModel::setData(index, value, role);
            }
            QStringList seen;
        };
        plug(0);
        plug(1);
        Watched model(u"host"_s, nullptr);
        settle();
        model.setSelected(u"gp:1"_s, true);
        model.setSelected(u"gp:9"_s, true);
        QCOMPARE(model.seen, QStringList{u"1 1 260"_s});
        QVERIFY(model.isSelected(u"gp:1"_s));
    }

    void collectSelectedEmptiesBothListsFirst()
    {
        TestedModel model;
        QList<IComInterface *> ifaces{nullptr};
        QJsonArray infos{1, 2};
        model.collectSelected(ifaces, infos);
        QVERIFY(ifaces.isEmpty());
        QVERIFY(infos.isEmpty());
    }

    void infosAreTheIdentitiesOfTheSameRows()
    {
        scripted::Pad pad = scripted::restingPad("Live pad");
        pad.vendorId = 0x54C;
        pad.productId = 0xCE6;
        scripted::plug(2, pad);
        const QJsonObject absent = rememberedDevice(4, selectedKv());
        remember({{u"gp:2"_s, rememberedDevice(2, selectedKv())}, {u"gp:4"_s, absent}});
        TestedModel model;
        settle();
        QList<IComInterface *> ifaces;
        QJsonArray infos;
        model.collectSelected(ifaces, infos);
        QCOMPARE(ifaces.size(), 2);
        QCOMPARE(ifaces.at(0), liveDevice(2));
        QCOMPARE(ifaces.at(1)->property("deviceId"), QVariant(4));
        const QJsonObject live{
            {u"deviceId"_s, u"2"_s},
            {u"vendorIdHex"_s, u"54c"_s},
            {u"productIdHex"_s, u"ce6"_s},
            {u"name"_s, u"Live pad"_s},
            {u"imagePath"_s, u":/new/prefix1/ressources/menette_id_3302.png"_s},
        };
        QJsonObject remembered = absent;
        remembered.remove("kv"_L1);
        QCOMPARE(infos, (QJsonArray{live, remembered}));
    }

    void syncSelectedRepeatsItself()
    {
        TestedModel model;
        settle();
        ModelLog log(&model);
        model.syncSelected();
        model.syncSelected();
        QCOMPARE(log.take(), (QStringList{u"selected"_s, u"selected"_s}));
    }

    void syncSelectedWritesItsLine()
    {
        plug(0);
        TestedModel model;
        settle();
        model.setSelected(u"gp:0"_s, true);
        diagnosticLine().clear();
        const auto previous = qInstallMessageHandler(catchDiagnostic);
        model.syncSelected();
        qInstallMessageHandler(previous);
        const QString stars =
            u"****************************fffffffffffffffffffffffffff***********************"_s;
        QVERIFY2(diagnosticLine().startsWith(stars + u' '), qPrintable(diagnosticLine()));
        QCOMPARE(diagnosticLine().count(u"ControlManette("_s), 1);
    }

    void noLineIsWrittenWhereDebugOutputIsOff()
    {
        TestedModel model;
        settle();
        QLoggingCategory::setFilterRules(u"default.debug=false"_s);
        diagnosticLine().clear();
        const auto previous = qInstallMessageHandler(catchDiagnostic);
        model.syncSelected();
        qInstallMessageHandler(previous);
        QLoggingCategory::setFilterRules(QString());
        QVERIFY(diagnosticLine().isEmpty());
    }

    void aLostJoystickTakesTheLinkToNothing()
    {
        plug(0);
        TestedModel model;
        settle();
        model.setSelected(u"gp:0"_s, true);
        stopManager();
        ModelLog log(&model);
        unplug(0);
        QTRY_COMPARE(linkState(model, 0), 0);
        QCOMPARE(log.take(), (QStringList{link(0), u"selected 0"_s}));
        // The tick goes on, and finds it again.
        plug(0);
        QTRY_COMPARE(linkState(model, 0), 2);
        QCOMPARE(log.take(), (QStringList{link(0), u"selected 0"_s}));
    }

    void aJoystickThatIsNotThereAtTheStartStaysStarting()
    {
        plug(0);
        TestedModel model;
        settle();
        stopManager();
        unplug(0);
        ModelLog log(&model);
        model.setSelected(u"gp:0"_s, true);
        QCOMPARE(log.take(), (QStringList{link(0), choice(0), u"save"_s, u"selected 0"_s}));
        QCOMPARE(linkState(model, 0), 1);
    }

    void aSyncTakesALinkedDeviceBackToStartingForGood()
    {
        plug(0);
        TestedModel model;
        settle();
        model.setSelected(u"gp:0"_s, true);
        QCOMPARE(linkState(model, 0), 2);
        stopManager();
        plug(1);
        ModelLog log(&model);
        discover();
        QCOMPARE(linkState(model, 0), 1);
        // Three announcements of the manager, each a merge that starts gp:0 again.
        const QStringList first{merged(0), link(0), u"inserted 1"_s, u"count"_s, u"save"_s, u"selected 0"_s};
        const QStringList again{merged(0), link(0), merged(1), u"save"_s, u"selected 0"_s};
        QCOMPARE(log.take(), first + again + again);
        settle();
        QCOMPARE(linkState(model, 0), 1);
        QVERIFY(runs(liveDevice(0)));
    }

    void aStoppedDeviceIsSilentUntilTheNextSync()
    {
        plug(0);
        TestedModel model;
        settle();
        model.setSelected(u"gp:0"_s, true);
        stopManager();
        ModelLog log(&model);
        // As the profile editor does with the device that it holds.
        liveDevice(0)->stop();
        QCOMPARE(log.take(), (QStringList{link(0), u"selected 0"_s}));
        QCOMPARE(linkState(model, 0), 0);
        QVERIFY(!runs(liveDevice(0)));
        QVERIFY(model.isSelected(u"gp:0"_s));

        plug(1);
        discover();
        QVERIFY(runs(liveDevice(0)));
    }

    void deselectingAndSelectingBindsASecondTime()
    {
        plug(0);
        TestedModel model;
        settle();
        model.setSelected(u"gp:0"_s, true);
        model.setSelected(u"gp:0"_s, false);
        model.setSelected(u"gp:0"_s, true);
        ModelLog log(&model);
        liveDevice(0)->stop();
        QCOMPARE(log.take(), (QStringList{link(0), u"selected 0"_s, link(0), u"selected 0"_s}));
        QCOMPARE(linkState(model, 0), 0);

        stopManager();
        delete liveDevice(0);
        QCOMPARE(log.take(), (QStringList{u"selected -1"_s, u"selected -1"_s}));
        QCOMPARE(model.placeholders(), 1);
    }

    void anUnselectedRowIsBoundAtTheSecondSyncAndShowsItsLink()
    {
        plug(0);
        TestedModel model;
        settle();
        stopManager();
        QVERIFY(!model.interfaceForRow(0));
        plug(1);
        discover();
        QCOMPARE(model.interfaceForRow(0), liveDevice(0));
        // Somebody else starts it.
        liveDevice(0)->start({});
        QCOMPARE(linkState(model, 0), 2);
        QVERIFY(model.selection().isEmpty());
    }
};

GAMEPAD_TEST_MAIN(TestLinkerDeviceModelSelection)
#include "tst_linkerdevicemodel_selection.moc"
