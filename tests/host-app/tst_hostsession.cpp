// SPDX-License-Identifier: MIT
#include "fakefamily.h"
#include "hostsession.h"
#include "testmain.h"

#include <QtCore/QObject>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using namespace Qt::StringLiterals;

class TestHostSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theModelIsAskedForFirst();
    void rolesAreFoundByName();
    void theModelIsDrivenByItsInvokableMethods();
    void selectedDevicesAreNumberedAndNamed();
    void aDeviceKeepsItsNumberWhileItLives();
    void bothFormsOfValuesArePassedOn();
    void aDeviceThatLeftTheSelectionIsStillHeard();
    void aDeviceThatDiedIsNotTouched();
    void restIsToldWhenItChanges();
    void writingUsesTheDevicesOwnId();
    void endingLeavesNoConnections();
};

void TestHostSession::theModelIsAskedForFirst()
{
    FakeProvider provider;
    const HostSession session(&provider, u"ctx"_s);
    QCOMPARE(provider.calls, (QStringList{u"model ctx"_s, u"delegate"_s}));
}

void TestHostSession::rolesAreFoundByName()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    const QSignalSpy changed(&session, &HostSession::rowsChanged);
    provider.list->add(u"gp:4"_s, u"Pad"_s);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(session.rowData(0, "usn").toString(), u"gp:4"_s);
    QVERIFY(!session.rowData(0, "unheard-of").isValid());
    QVERIFY(!session.rowData(5, "usn").isValid());
    QVERIFY(session.setRowData(0, "name", u"Mine"_s));
    QCOMPARE(session.rowData(0, "name").toString(), u"Mine"_s);
    QVERIFY(!session.setRowData(0, "unheard-of", 1));
    QCOMPARE(changed.size(), 2);
}

void TestHostSession::theModelIsDrivenByItsInvokableMethods()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    provider.list->add(u"gp:0"_s, u"Pad"_s);
    QCOMPARE(session.rowOf(u"gp:0"_s), 0);
    QCOMPARE(session.rowOf(u"gp:9"_s), -1);
    session.setSelected(u"gp:0"_s, true);
    QCOMPARE(provider.list->selected, (QVariantList{u"gp:0"_s, true}));
    QVERIFY(session.forget(u"gp:0"_s));
    QVERIFY(!session.forget(u"gp:9"_s));
    session.handServices({{"ref"_L1, 1}});
    QCOMPARE(provider.services, (QJsonObject{{"ref"_L1, 1}}));
}

void TestHostSession::selectedDevicesAreNumberedAndNamed()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    FakeDevice *first = provider.list->add(u"gp:0"_s, u"One"_s);
    FakeDevice *second = provider.list->add(u"gp:1"_s, u"Two"_s);
    FakeDevice rowless;
    provider.select({second, first, &rowless});
    QCOMPARE(session.devices().size(), 3);
    QCOMPARE(session.devices().at(0).number, 1);
    QCOMPARE(session.devices().at(0).usn, u"gp:1"_s);
    QCOMPARE(session.devices().at(1).name, u"One"_s);
    QCOMPARE(session.devices().at(2).usn, QString());
    QCOMPARE(session.device(2)->interface, first);
    QCOMPARE(session.device(4), nullptr);
}

void TestHostSession::aDeviceKeepsItsNumberWhileItLives()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    FakeDevice *first = provider.list->add(u"gp:0"_s, u"One"_s);
    FakeDevice *second = provider.list->add(u"gp:1"_s, u"Two"_s);
    provider.select({first});
    provider.select({second});
    provider.select({first});
    QCOMPARE(session.devices().at(0).number, 1);
    provider.select({second});
    QCOMPARE(session.devices().at(0).number, 2);
}

void TestHostSession::bothFormsOfValuesArePassedOn()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    FakeDevice *device = provider.list->add(u"gp:0"_s, u"One"_s);
    provider.select({device});
    provider.select({device});
    QSignalSpy numeric(&session, &HostSession::valuesReceived);
    QSignalSpy named(&session, &HostSession::namedValuesReceived);
    Q_EMIT device->dataChanged(7, 2, {u"joy_0"_s}, {12.5});
    Q_EMIT device->dataChanged(u"gamepad"_s, u"cat"_s, {u"joy_0"_s}, {12.5});
    QCOMPARE(numeric.size(), 1);
    const auto batch = numeric.at(0).at(0).value<ValueBatch>();
    QCOMPARE(batch.device, 1);
    QCOMPARE(batch.deviceType, u"gamepade"_s);
    QCOMPARE(batch.deviceId, 7);
    QCOMPARE(batch.catId, 2);
    QCOMPARE(batch.keys, QStringList{u"joy_0"_s});
    QCOMPARE(batch.values, QVariantList{12.5});
    QCOMPARE(named.size(), 1);
    QCOMPARE(named.at(0).at(1).toString(), u"gamepad"_s);
}

void TestHostSession::aDeviceThatLeftTheSelectionIsStillHeard()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    FakeDevice *device = provider.list->add(u"gp:0"_s, u"One"_s);
    provider.select({device});
    provider.select({});
    const QSignalSpy status(&session, &HostSession::statusReceived);
    Q_EMIT device->statusChanged(IComInterface::noCom);
    QCOMPARE(status.size(), 1);
}

void TestHostSession::aDeviceThatDiedIsNotTouched()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    FakeDevice *device = provider.list->add(u"gp:0"_s, u"One"_s);
    provider.select({device});
    const QSignalSpy gone(&session, &HostSession::deviceGone);
    delete device;
    QCOMPARE(gone.size(), 1);
    QVERIFY(session.devices().at(0).interface.isNull());
    QVERIFY(!session.write(u"gp:0"_s, u"x"_s, 1));
    FakeDevice *next = provider.list->add(u"gp:1"_s, u"Two"_s);
    provider.select({next});
    QCOMPARE(session.devices().at(0).number, 2);
}

void TestHostSession::restIsToldWhenItChanges()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    FakeDevice *device = provider.list->add(u"gp:0"_s, u"One"_s);
    device->json.insert("bias"_L1, QJsonArray{0, 0});
    provider.select({device});
    QSignalSpy rest(&session, &HostSession::restChanged);
    QTRY_COMPARE(rest.size(), 1);
    device->json.insert("bias"_L1, QJsonArray{3, -100});
    QTRY_COMPARE(rest.size(), 2);
    QCOMPARE(rest.at(1).at(1).value<QJsonArray>(), (QJsonArray{3, -100}));
}

void TestHostSession::writingUsesTheDevicesOwnId()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    FakeDevice *device = provider.list->add(u"gp:4"_s, u"One"_s);
    provider.select({device});
    QVERIFY(session.write(u"gp:4"_s, u"resetBias"_s, true));
    QCOMPARE(device->written, (QVariantList{4, u"resetBias"_s, true}));
    QVERIFY(!session.write(u"gp:5"_s, u"resetBias"_s, true));
}

void TestHostSession::endingLeavesNoConnections()
{
    FakeProvider provider;
    FakeDevice device;
    {
        HostSession session(&provider, u"c"_s);
        provider.select({&device});
    }
    QVERIFY(provider.list.isNull());
    Q_EMIT device.dataChanged(0, 1, {}, {});
    provider.select({&device});
}

GAMEPAD_TEST_MAIN(TestHostSession)
#include "tst_hostsession.moc"
