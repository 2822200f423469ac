// SPDX-License-Identifier: MIT
#include "endtoend.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QObject>

using namespace Qt::StringLiterals;

namespace
{
const QString gp0 = u"gp:0"_s;
const QString gp1 = u"gp:1"_s;
constexpr int axisX = 0;
} // namespace

/// What outlives the host: selections, names, and what becomes of them when pads are there or not.
class TestHostMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aHostThatWasKilledRemembersTheSelection();
    void aRememberedPadThatIsAwayIsHeldByAPlaceholder();
    void aSelectionOfAnotherSlotSurvivesToo();
    void aGivenNameInUtf8IsKept();
    void aDeviceNameInUtf8IsShownAsFarAsSfmlReadsIt();
    void aForgottenPadComesBackAsANewRow();
    void anotherContextRemembersForItself();
    void aBrokenFileIsAFirstRun();
    void theFileOnDiskTellsTheRows();

private:
    [[nodiscard]] QString fileOf(const QString &context) const;

    VirtualBench m_bench;
    std::optional<HostRuns> m_host;
};

void TestHostMemory::init()
{
    failOnUnexpectedWarnings();
    m_host.emplace();
}

void TestHostMemory::cleanup()
{
    m_host.reset();
    m_bench.pad(0).unplug();
    m_bench.pad(1).unplug();
}

QString TestHostMemory::fileOf(const QString &context) const
{
    return m_host->data() + u"/data/velor/gamepad-host/%1/VelorCom/gamepads.json"_s.arg(context);
}

void TestHostMemory::aHostThatWasKilledRemembersTheSelection()
{
    m_bench.pad(0).plug(testPad());
    QVERIFY(m_host->start());
    QVERIFY(m_host->select(gp0) != 0);
    (*m_host)->kill();
    QVERIFY(m_host->start());
    const auto selection = (*m_host)->waitFor(reported::selection({gp0}, u"connected"_s));
    QVERIFY(selection);
    const int device = reported::onlyDevice(*selection);
    QVERIFY(m_host->learns(device, axisX, 2));
    m_bench.pad(0).setButton(2, true);
    QVERIFY((*m_host)->waitFor(reported::button(device, u"but_2"_s, true)));
}

void TestHostMemory::aRememberedPadThatIsAwayIsHeldByAPlaceholder()
{
    m_bench.pad(0).plug(testPad("Away soon"));
    QVERIFY(m_host->start());
    QVERIFY(m_host->select(gp0) != 0);
    QVERIFY((*m_host)->quit());
    m_bench.pad(0).unplug();

    QVERIFY(m_host->start());
    const auto selection = (*m_host)->waitFor(reported::selection({gp0}, u"noCom"_s));
    QVERIFY(selection);
    const QJsonValue placeholder = (*selection)["devices"_L1].toArray().at(0);
    QCOMPARE(placeholder["json"_L1]["deviceId"_L1].toInt(), -1);
    QCOMPARE(placeholder["type"_L1].toString(), u"gamepade"_s);
    QVERIFY((*m_host)->waitFor(
        reported::row(gp0, {{"name"_L1, "Away soon"_L1}, {"isConnected"_L1, false}, {"linkState"_L1, 0}})));

    m_bench.pad(0).plug(testPad("Away soon"));
    const auto returned = (*m_host)->waitFor(reported::selection({gp0}, u"connected"_s));
    QVERIFY(returned);
    QVERIFY((*m_host)->waitFor(reported::of("gone"_L1, placeholder["device"_L1].toInt())));
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"linkState"_L1, 2}})));
}

void TestHostMemory::aSelectionOfAnotherSlotSurvivesToo()
{
    m_bench.pad(0).plug(testPad("First"));
    m_bench.pad(1).plug(testPad("Second"));
    QVERIFY(m_host->start());
    QVERIFY(m_host->select(gp1) != 0);
    QVERIFY((*m_host)->quit());
    QVERIFY(m_host->start());
    QVERIFY((*m_host)->waitFor(reported::selection({gp1}, u"connected"_s)));
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"selected"_L1, false}, {"isConnected"_L1, true}})));
}

void TestHostMemory::aGivenNameInUtf8IsKept()
{
    const QString name =
        QString::fromUtf8("Manette d'\xc3\xa9t\xc3\xa9 \xe6\x89\x8b\xe6\x9f\x84 \xf0\x9f\x8e\xae");
    m_bench.pad(0).plug(testPad());
    QVERIFY(m_host->start());
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"isConnected"_L1, true}})));
    QVERIFY((*m_host)->command(u"rename gp:0 "_s + name).isEmpty());
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"name"_L1, name}})));
    QVERIFY((*m_host)->quit());
    m_bench.pad(0).unplug();
    QVERIFY(m_host->start());
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"name"_L1, name}, {"isConnected"_L1, false}})));
}

// SFML 3.1 turns what the kernel says into characters one byte at a time, and bytes beyond ASCII have none
// then. What it does read arrives; an SFML that reads UTF-8 makes it the whole name.
void TestHostMemory::aDeviceNameInUtf8IsShownAsFarAsSfmlReadsIt()
{
    m_bench.pad(0).plug(testPad("Manette d'\xc3\xa9t\xc3\xa9 2"));
    QVERIFY(m_host->start());
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"isConnected"_L1, true}})));
    const QString name = (*m_host)->last("rows"_L1)["rows"_L1][0]["name"_L1].toString();
    QVERIFY2(name == QString::fromUtf8("Manette d'\xc3\xa9t\xc3\xa9 2") || name == "Manette d't 2"_L1,
             qPrintable(name));
    QVERIFY(m_host->select(gp0) != 0);
}

void TestHostMemory::aForgottenPadComesBackAsANewRow()
{
    m_bench.pad(0).plug(testPad());
    QVERIFY(m_host->start());
    QVERIFY(m_host->select(gp0) != 0);
    QVERIFY((*m_host)->command(u"rename gp:0 Mine"_s).isEmpty());
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"name"_L1, "Mine"_L1}})));
    const qsizetype from = (*m_host)->mark();
    QVERIFY((*m_host)->command(u"forget gp:0"_s).isEmpty());
    QVERIFY((*m_host)->waitFor(reported::noRow(gp0), from));
    QVERIFY((*m_host)->waitFor(reported::selection({}, u"noCom"_s), from));
    m_bench.pad(1).plug(testPad("Second"));
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"name"_L1, "Pad"_L1}, {"selected"_L1, false}}), from));
}

void TestHostMemory::anotherContextRemembersForItself()
{
    m_bench.pad(0).plug(testPad());
    QVERIFY(m_host->start({u"--context"_s, u"studio"_s}));
    QVERIFY(m_host->select(gp0) != 0);
    QVERIFY((*m_host)->quit());
    QVERIFY(m_host->start({u"--context"_s, u"field"_s}));
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"isConnected"_L1, true}, {"selected"_L1, false}})));
    QVERIFY((*m_host)->quit());
    QVERIFY(m_host->start({u"--context"_s, u"studio"_s}));
    QVERIFY((*m_host)->waitFor(reported::selection({gp0}, u"connected"_s)));
    QVERIFY(QFile::exists(fileOf(u"studio"_s)));
    QVERIFY(QFile::exists(fileOf(u"field"_s)));
}

void TestHostMemory::aBrokenFileIsAFirstRun()
{
    m_bench.pad(0).plug(testPad());
    QVERIFY(m_host->start());
    QVERIFY(m_host->select(gp0) != 0);
    QVERIFY((*m_host)->quit());
    QFile file(fileOf(u"stand-in"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("{\"devices\": {\"gp:0\"");
    file.close();
    QVERIFY(m_host->start());
    QVERIFY((*m_host)->waitFor(reported::row(gp0, {{"isConnected"_L1, true}, {"selected"_L1, false}})));
    QVERIFY((*m_host)->quit());
}

void TestHostMemory::theFileOnDiskTellsTheRows()
{
    m_bench.pad(0).plug(testPad());
    QVERIFY(m_host->start());
    QVERIFY(m_host->select(gp0) != 0);
    QVERIFY((*m_host)->quit());
    QFile file(fileOf(u"stand-in"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    QCOMPARE(root["lastCount"_L1].toInt(), 1);
    const QJsonObject device = root["devices"_L1]["gp:0"_L1].toObject();
    QCOMPARE(device["deviceId"_L1].toString(), u"0"_s);
    QCOMPARE(device["vendorIdHex"_L1].toString(), u"1209"_s);
    QCOMPARE(device["productIdHex"_L1].toString(), u"1"_s);
    QCOMPARE(device["name"_L1].toString(), u"Pad"_s);
    QCOMPARE(device["kv"_L1]["selected"_L1], QJsonValue(true));
}

GAMEPAD_TEST_MAIN(TestHostMemory)
#include "tst_hostmemory.moc"
