// SPDX-License-Identifier: MIT
#include "modelfixture.h"

#include "gamepadmanager.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QMetaEnum>
#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;
using namespace fixture;

namespace
{
QTimer *managerTimer(const QString &name)
{
    return GamepadManager::instance()->findChild<QTimer *>(name);
}

bool timersRun()
{
    return managerTimer(u"pollTimer"_s)->isActive() && managerTimer(u"pumpTimer"_s)->isActive();
}

bool aTimerRuns()
{
    return managerTimer(u"pollTimer"_s)->isActive() || managerTimer(u"pumpTimer"_s)->isActive();
}
} // namespace

/// What hosts, delegates and scripts may count on without looking at a device.
class TestLinkerDeviceModelContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }
    void cleanup() { QCOMPARE(scripted::calls().outsideSlots, 0); }

    void rolesHaveTheirNumbersAndNames()
    {
        const TestedModel model;
        const QHash<int, QByteArray> expected{
            {257, "usn"},         {258, "name"},        {259, "ip"},
            {260, "selected"},    {261, "isConnected"}, {262, "videoInterfaces"},
            {263, "json"},        {264, "product"},     {265, "image"},
            {266, "modelString"}, {267, "linkState"},
        };
        QCOMPARE(model.roleNames(), expected);
    }

    void rolesAreKnownToTheMetaObject()
    {
        const QMetaEnum roles = QMetaEnum::fromType<LinkerDeviceModel::Roles>();
        const QList<std::pair<const char *, int>> expected{
            {"UsnRole", 257},      {"NameRole", 258},      {"IpRole", 259},
            {"SelectedRole", 260}, {"ConnectedRole", 261}, {"VideoInterfacesRole", 262},
            {"JsonRole", 263},     {"ProductRole", 264},   {"ImageRole", 265},
            {"ModelRole", 266},    {"LinkStateRole", 267},
        };
        QCOMPARE(roles.keyCount(), 11);
        for (const auto &[name, value] : expected)
            QCOMPARE(roles.keyToValue(name), value);
    }

    void signalsStandInTheirOrder()
    {
        const QMetaObject &meta = LinkerDeviceModel::staticMetaObject;
        QList<QByteArray> found;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() == QMetaMethod::Signal)
                found << meta.method(i).methodSignature();
        }
        const QList<QByteArray> expected{
            "uniqSelectionChanged()", "autoDetectChanged()",
            "previousCountChanged()", "contextChanged()",
            "countChanged()",         "selectedInterfacesChanged(QList<IComInterface*>,QJsonArray)",
        };
        QCOMPARE(found, expected);
    }

    void methodsCanBeInvoked_data()
    {
        QTest::addColumn<QByteArray>("signature");
        QTest::addColumn<int>("access");
        QTest::addColumn<int>("type");
        const auto row = [](const char *signature, QMetaMethod::Access access, QMetaMethod::MethodType type) {
            QTest::newRow(signature) << QByteArray(signature) << int(access) << int(type);
        };
        row("indexOfUsn(QString)", QMetaMethod::Public, QMetaMethod::Method);
        row("usnForRow(int)", QMetaMethod::Public, QMetaMethod::Method);
        row("isSelected(QString)", QMetaMethod::Public, QMetaMethod::Method);
        row("setSelected(QString,bool)", QMetaMethod::Public, QMetaMethod::Method);
        row("deleteDevice(QString)", QMetaMethod::Public, QMetaMethod::Method);
        row("interfaceForRow(int)", QMetaMethod::Public, QMetaMethod::Method);
        row("syncSelected()", QMetaMethod::Public, QMetaMethod::Slot);
        row("onManagerChanged()", QMetaMethod::Private, QMetaMethod::Slot);
        row("onGamepadAdded(ControlManette*)", QMetaMethod::Private, QMetaMethod::Slot);
        row("onGamepadRemoved(int)", QMetaMethod::Private, QMetaMethod::Slot);
    }
    void methodsCanBeInvoked()
    {
        QFETCH(const QByteArray, signature);
        const QMetaObject &meta = LinkerDeviceModel::staticMetaObject;
        const int at = meta.indexOfMethod(signature.constData());
        QVERIFY(at >= meta.methodOffset());
        QTEST(int(meta.method(at).access()), "access");
        QTEST(int(meta.method(at).methodType()), "type");
    }

    void propertiesAreAsTold_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("writable");
        QTest::addColumn<QByteArray>("notifier");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("uniqSelection")
            << int(QMetaType::Bool) << true << QByteArray("uniqSelectionChanged") << QVariant(true);
        QTest::newRow("autoDetect") << int(QMetaType::Bool) << true << QByteArray("autoDetectChanged")
                                    << QVariant(true);
        QTest::newRow("previousCount")
            << int(QMetaType::Int) << false << QByteArray("previousCountChanged") << QVariant(0);
        QTest::newRow("context") << int(QMetaType::QString) << true << QByteArray("contextChanged")
                                 << QVariant(u"host"_s);
        QTest::newRow("count") << int(QMetaType::Int) << false << QByteArray("countChanged") << QVariant(0);
    }
    void propertiesAreAsTold()
    {
        const TestedModel model;
        const QMetaObject &meta = LinkerDeviceModel::staticMetaObject;
        const QMetaProperty property = meta.property(meta.indexOfProperty(QTest::currentDataTag()));
        QVERIFY(property.isValid() && property.isReadable());
        QTEST(property.typeId(), "type");
        QTEST(property.isWritable(), "writable");
        QTEST(property.notifySignal().name(), "notifier");
        QTEST(property.read(&model), "value");
    }

    void aRowHasNoRowsBelowIt()
    {
        plug(0);
        TestedModel model;
        settle();
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(model.count(), 1);
        QCOMPARE(model.rowCount(model.index(0)), 0);
        QCOMPARE(static_cast<const QAbstractItemModel &>(model).columnCount(), 1);
    }

    void everyRowCanBeSelectedAndEdited()
    {
        plug(0);
        TestedModel model;
        settle();
        QCOMPARE(model.flags(model.index(0)), Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsEnabled);
        QCOMPARE(model.flags({}), Qt::NoItemFlags);
    }

    void rowsAndKeysLeadToEachOther()
    {
        plug(2);
        plug(5);
        TestedModel model;
        settle();
        QCOMPARE(model.indexOfUsn(u"gp:2"_s), 0);
        QCOMPARE(model.indexOfUsn(u"gp:5"_s), 1);
        QCOMPARE(model.indexOfUsn(u"GP:5"_s), -1);
        QCOMPARE(model.indexOfUsn(u""_s), -1);
        QCOMPARE(model.usnForRow(0), u"gp:2"_s);
        QCOMPARE(model.usnForRow(1), u"gp:5"_s);
        QCOMPARE(model.usnForRow(2), QString());
        QCOMPARE(model.usnForRow(-1), QString());
    }

    void unknownKeysAndRowsAreRefusedQuietly()
    {
        plug(0);
        TestedModel model;
        settle();
        ModelLog log(&model);
        QVERIFY(!model.isSelected(u"gp:3"_s));
        model.setSelected(u"gp:3"_s, true);
        QVERIFY(!model.deleteDevice(u"gp:3"_s));
        QVERIFY(!model.interfaceForRow(1));
        QVERIFY(!model.interfaceForRow(-1));
        QCOMPARE(log.take(), QStringList());
    }

    void uniqSelectionTellsOfAChangeOnly()
    {
        TestedModel model;
        ModelLog log(&model);
        model.setUniqSelection(true);
        QCOMPARE(log.take(), QStringList());
        model.setProperty("uniqSelection", false);
        QCOMPARE(log.take(), QStringList{u"uniqSelection"_s});
        QVERIFY(!model.uniqSelection());
    }

    void theModelIsTheManagersParentWhereItIsTheFirstToAsk()
    {
        const TestedModel model;
        QCOMPARE(GamepadManager::instance()->parent(), &model);
        QVERIFY(timersRun());
    }

    void autoDetectOffStopsTheTimersAndLeavesTheRows()
    {
        plug(0);
        TestedModel model;
        settle();
        ModelLog log(&model);
        model.setAutoDetect(false);
        QVERIFY(!aTimerRuns());
        unplug(0);
        settle();
        QCOMPARE(log.take(), QStringList{u"autoDetect"_s});
        QCOMPARE(model.at(0, LinkerDeviceModel::ConnectedRole), QVariant(true));
    }

    void autoDetectOnDiscoversAndMerges()
    {
        TestedModel model;
        settle();
        model.setAutoDetect(false);
        plug(4);
        settle();
        QCOMPARE(model.count(), 0);
        ModelLog log(&model);
        model.setAutoDetect(true);
        QVERIFY(timersRun());
        QCOMPARE(managerTimer(u"pollTimer"_s)->interval(), 100);
        const QString changed = merged(4);
        const QStringList expected{
            u"autoDetect"_s,
            // The manager's discovery: its list, the device, its list once more.
            u"inserted 0"_s,
            u"count"_s,
            u"save"_s,
            u"selected"_s, //
            changed,
            u"save"_s,
            u"selected"_s, //
            changed,
            u"save"_s,
            u"selected"_s, //
            // The model's own merge.
            changed,
            u"save"_s,
            u"selected"_s,
        };
        QCOMPARE(log.take(), expected);
    }

    void autoDetectTellsOfAChangeOnly()
    {
        TestedModel model;
        settle();
        ModelLog log(&model);
        model.setAutoDetect(true);
        QCOMPARE(log.take(), QStringList());
    }

    void aListenerMayTurnAutoDetectBack()
    {
        TestedModel model;
        settle();
        connect(&model, &LinkerDeviceModel::autoDetectChanged, &model,
                [&model] { model.setAutoDetect(true); });
        model.setAutoDetect(false);
        QVERIFY(model.autoDetect());
        QVERIFY(timersRun());
    }

    void theHostGetsItsTypesThroughTheSignal()
    {
        TestedModel model;
        QSignalSpy spy(&model, &LinkerDeviceModel::selectedInterfacesChanged);
        model.syncSelected();
        QCOMPARE(spy.size(), 1);
        QVERIFY(spy.first().at(0).canConvert<QList<IComInterface *>>());
        QCOMPARE(spy.first().at(1).toJsonArray(), QJsonArray());
    }
};

GAMEPAD_TEST_MAIN(TestLinkerDeviceModelContract)
#include "tst_linkerdevicemodel_contract.moc"
