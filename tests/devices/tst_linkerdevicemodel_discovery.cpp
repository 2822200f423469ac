// SPDX-License-Identifier: MIT
// Pads that come and go inside the model's own signals, and who owns the manager that finds them.
#include "actingatsignal.h"
#include "gamepadmanager.h"
#include "modelfixture.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QTimer>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;
using namespace fixture;
using Model = LinkerDeviceModel;

using Deed = std::function<void(TestedModel &)>;
Q_DECLARE_METATYPE(Deed)

namespace
{
QList<bool> timersActive()
{
    QList<bool> active;
    const auto timers = GamepadManager::instance()->findChildren<QTimer *>(Qt::FindDirectChildrenOnly);
    for (const QTimer *timer : timers)
        active << timer->isActive();
    return active;
}

bool isShownAsLive(const TestedModel &model, int row)
{
    return QJsonDocument::fromJson(model.at(row, Model::JsonRole).toByteArray())
        .object()
        .contains("vendorId"_L1);
}

/// Each row is what the manager's list says of its slot, and each device of that list has its row.
void compareWithTheManager(TestedModel &model)
{
    const GamepadManager::Gamepads devices = GamepadManager::instance()->gamepads();
    for (const auto &device : devices) {
        QVERIFY(device);
        QVERIFY(model.indexOfUsn(u"gp:%1"_s.arg(device->deviceId())) >= 0);
    }
    for (int row = 0; row < model.count(); ++row) {
        const QString usn = model.usnForRow(row);
        const auto found = std::ranges::find_if(
            devices, [&usn](const auto &device) { return usn == u"gp:%1"_s.arg(device->deviceId()); });
        QObject *iface = model.interfaceForRow(row);
        if (found == devices.end()) {
            QCOMPARE(model.at(row, Model::ConnectedRole), QVariant(false));
            QCOMPARE(model.at(row, Model::LinkStateRole), QVariant(0));
            QVERIFY(!isShownAsLive(model, row));
            QCOMPARE(iface != nullptr, model.isSelected(usn));
            QVERIFY(!iface || iface->parent() == &model);
            continue;
        }
        QCOMPARE(model.at(row, Model::ConnectedRole), QVariant(true));
        QVERIFY(isShownAsLive(model, row));
        QCOMPARE(model.at(row, Model::NameRole), QVariant((*found)->name()));
        QVERIFY(!iface || iface == found->data());
        QVERIFY(iface || !model.isSelected(usn));
    }
}
} // namespace

class TestLinkerDeviceModelDiscovery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareForHundredsOfManagers(); }
    void init() { startAfresh(); }
    void cleanup() { QCOMPARE(scripted::calls().outsideSlots, 0); }

    void discoveryInsideTheMergeLeavesTheRowsTrue_data()
    {
        QTest::addColumn<bool>("firstMerge");
        QTest::addColumn<Deed>("deed");
        QTest::newRow("the first merge") << true << Deed([](TestedModel &) { settle(); });
        QTest::newRow("detection on") << false << Deed([](TestedModel &model) {
            model.setAutoDetect(false);
            model.setAutoDetect(true);
            stopManager();
        });
        QTest::newRow("a pad comes") << false << Deed([](TestedModel &) {
            plug(4);
            discover();
        });
        QTest::newRow("a pad goes") << false << Deed([](TestedModel &) {
            unplug(0);
            discover();
        });
        // Told once, where the manager's own announcements repeat themselves and so mend much.
        QTest::newRow("the list is emptied")
            << false << Deed([](TestedModel &) { GamepadManager::instance()->setGamepads({}); });
    }
    void discoveryInsideTheMergeLeavesTheRowsTrue()
    {
        QFETCH(const bool, firstMerge);
        QFETCH(const Deed, deed);
        const QList<std::function<void()>> changes{
            [] { unplug(1); },
            [] {
                unplug(0);
                discover();
                plug(0, u"Another"_s);
            },
            [] {
                unplug(1);
                discover();
                plug(1, u"Another"_s);
            },
            [] { plug(5); },
            [] { plug(2); },
            [] { plug(3); },
            [] {
                for (int slot = 0; slot < 8; ++slot)
                    unplug(slot);
            },
        };
        for (qsizetype change = 0; change < changes.size(); ++change) {
            int number = 0;
            while (mergeWith(changes.at(change), number, firstMerge, deed)) {
                if (QTest::currentTestFailed()) {
                    qInfo("change %d inside signal %d", int(change), number);
                    return;
                }
                ++number;
            }
            QVERIFY(number > 0);
        }
    }

    void detectionTurnedOffInsideTheDiscoveryThatTurnsItOnStaysOff()
    {
        TestedModel model;
        settle();
        model.setAutoDetect(false);
        plug(4);
        connect(&model, &Model::rowsInserted, &model, [&model] { model.setAutoDetect(false); });
        model.setAutoDetect(true);
        QCOMPARE(model.count(), 1);
        QVERIFY(!model.autoDetect());
        QCOMPARE(timersActive(), (QList<bool>{false, false}));
    }

    void detectionTurnedOffAndOnInsideTheDiscoveryThatTurnsItOnIsOn()
    {
        TestedModel model;
        settle();
        model.setAutoDetect(false);
        plug(4);
        connect(&model, &Model::rowsInserted, &model, [&model] {
            model.setAutoDetect(false);
            QCOMPARE(timersActive(), (QList<bool>{false, false}));
            model.setAutoDetect(true);
        });
        model.setAutoDetect(true);
        QCOMPARE(model.count(), 1);
        QVERIFY(model.autoDetect());
        QCOMPARE(timersActive(), (QList<bool>{true, true}));
    }

    void detectionTurnedOffInsideTheMergeThatTurnsItOnStaysOff()
    {
        plug(4);
        TestedModel model;
        settle();
        model.setAutoDetect(false);
        // No device comes, so that the model's own merge alone speaks of this row.
        connect(&model, &Model::dataChanged, &model, [&model] { model.setAutoDetect(false); });
        model.setAutoDetect(true);
        QVERIFY(!model.autoDetect());
        QCOMPARE(timersActive(), (QList<bool>{false, false}));
    }

    // As the configuration does, which may be opened before there is a list.
    void aManagerThatWasAskedForWithoutAParentOutlivesTheModel()
    {
        plug(1);
        const QPointer<GamepadManager> manager = GamepadManager::instance(nullptr);
        QVERIFY(!manager->parent());
        QCOMPARE(timersActive(), (QList<bool>{true, true}));
        const QPointer<ControlManette> device = liveDevice(1);
        QVERIFY(device);
        {
            TestedModel model;
            settle();
            QCOMPARE(GamepadManager::instance(&model), manager);
            QVERIFY(!manager->parent());
            QCOMPARE(model.count(), 1);
            model.setSelected(u"gp:1"_s, true);
            QCOMPARE(model.interfaceForRow(0), device);
        }
        QVERIFY(manager);
        QVERIFY(device);
        // It runs on, and serves the next model.
        QCOMPARE(device->status(), int(IComInterface::connected));
        {
            TestedModel model;
            settle();
            QCOMPARE(model.interfaceForRow(0), device);
        }
        delete manager;
        QVERIFY(!device);
    }

private:
    /// True when there was a signal of that number to make the change in.
    static bool mergeWith(const std::function<void()> &change, int number, bool firstMerge, const Deed &deed)
    {
        scripted::reset();
        clearTemporaryHome();
        plug(0, u"First"_s);
        plug(1, u"Second"_s);
        remember({{u"gp:0"_s, rememberedDevice(0, selectedKv())},
                  {u"gp:2"_s, rememberedDevice(2)},
                  {u"gp:3"_s, rememberedDevice(3, selectedKv())}});
        TestedModel model;
        if (!firstMerge)
            settle();
        stopManager();
        const ActingAtSignal listener(&model, number, [&change] {
            change();
            discover();
        });
        deed(model);
        settle();
        compareWithTheManager(model);
        return listener.hasActed();
    }
};

GAMEPAD_TEST_MAIN(TestLinkerDeviceModelDiscovery)
#include "tst_linkerdevicemodel_discovery.moc"
