// SPDX-License-Identifier: MIT
#include "fakefamily.h"
#include "hostsession.h"
#include "signallog.h"
#include "testmain.h"

#include <QtCore/QObject>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QTest>

using namespace Qt::StringLiterals;

class TestSignalLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void signalsBecomeLinesInOrder();
    void aRepeatedSignalCounts();
    void interleavedValuesCountEachForItself();
    void anEventParts();
    void oldLinesGo();

private:
    static QString text(const SignalLog &log, int row) { return log.index(row).data().toString().sliced(15); }
};

void TestSignalLog::signalsBecomeLinesInOrder()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    SignalLog log(session);
    const QAbstractItemModelTester tester(&log);
    FakeDevice *device = provider.list->add(u"gp:0"_s, u"Pad"_s);
    provider.select({device});
    Q_EMIT device->statusChanged(IComInterface::connected);
    Q_EMIT device->dataChanged(0, 1, {u"joy_0"_s, u"but_3"_s}, {35.72, true});
    Q_EMIT device->noCodeAppChanged({u"/x/y.json"_s});
    QCOMPARE(log.rowCount(), 4);
    QCOMPARE(text(log, 0), u"selectedInterfacesChanged  #1 gp:0"_s);
    QCOMPARE(text(log, 1), u"#1 statusChanged  connected"_s);
    QCOMPARE(text(log, 2), u"#1 dataChanged  joy_0 35.7  but_3 pressed"_s);
    QCOMPARE(text(log, 3), u"#1 noCodeAppChanged  /x/y.json"_s);
}

void TestSignalLog::aRepeatedSignalCounts()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    SignalLog log(session);
    const QAbstractItemModelTester tester(&log);
    FakeDevice *device = provider.list->add(u"gp:0"_s, u"Pad"_s);
    provider.select({device});
    for (int i = 0; i < 100; ++i)
        Q_EMIT device->dataChanged(0, 1, {u"joy_0"_s}, {double(i)});
    QCOMPARE(log.rowCount(), 2);
    QCOMPARE(text(log, 1), u"#1 dataChanged  joy_0 99.0"_s);
    QVERIFY(log.index(1).data().toString().contains(u"100×"_s));
}

void TestSignalLog::interleavedValuesCountEachForItself()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    SignalLog log(session);
    const QAbstractItemModelTester tester(&log);
    FakeDevice *first = provider.list->add(u"gp:0"_s, u"One"_s);
    FakeDevice *second = provider.list->add(u"gp:1"_s, u"Two"_s);
    provider.select({first, second});
    for (int i = 0; i < 10; ++i) {
        Q_EMIT first->dataChanged(0, 1, {u"joy_0"_s}, {1.0});
        Q_EMIT second->dataChanged(0, 1, {u"joy_0"_s}, {2.0});
        Q_EMIT second->dataChanged(0, 1, {u"joy_0"_s, u"but_1"_s}, {2.0, true});
    }
    QCOMPARE(log.rowCount(), 4);
    for (int row = 1; row < 4; ++row)
        QVERIFY(log.index(row).data().toString().contains(u"10×"_s));
}

void TestSignalLog::anEventParts()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    SignalLog log(session);
    FakeDevice *device = provider.list->add(u"gp:0"_s, u"Pad"_s);
    provider.select({device});
    Q_EMIT device->dataChanged(0, 1, {u"joy_0"_s}, {1.0});
    provider.select({});
    provider.select({});
    Q_EMIT device->dataChanged(0, 1, {u"joy_0"_s}, {1.0});
    provider.select({device});
    provider.select({});
    QCOMPARE(log.rowCount(), 6);
}

void TestSignalLog::oldLinesGo()
{
    FakeProvider provider;
    HostSession session(&provider, u"c"_s);
    SignalLog log(session);
    const QAbstractItemModelTester tester(&log);
    for (int i = 0; i < 600; ++i)
        log.append(SignalLog::Kind::Event, {}, u"line %1"_s.arg(i));
    QCOMPARE(log.rowCount(), 500);
    QCOMPARE(text(log, 0), u"line 100"_s);
    QCOMPARE(text(log, 499), u"line 599"_s);
}

GAMEPAD_TEST_MAIN(TestSignalLog)
#include "tst_signallog.moc"
