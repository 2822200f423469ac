// SPDX-License-Identifier: MIT
#include "fakefamily.h"
#include "hostsession.h"
#include "nocodewatch.h"
#include "report.h"
#include "testmain.h"

#include <QtCore/QFile>
#include <QtCore/QObject>
#include <QtCore/QTemporaryFile>
#include <QtTest/QTest>

#include <optional>

using namespace Qt::StringLiterals;

class TestHostReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void thePluginComesFirstThenTheRows();
    void rowsAreToldOnlyWhenTheyChange();
    void aSelectionTellsItsDevices();
    void valuesAreToldInBothForms();
    void statusDocumentsAndEndsAreTold();
    void aBridgeThatWouldFireIsTold();
    void aDocumentIsReadAgainWhenTheDeviceSaysSo();
    void commandsAreAnswered();

private:
    [[nodiscard]] QList<QJsonObject> lines(const QString &what = {});

    std::optional<FakeProvider> m_provider;
    std::optional<HostSession> m_session;
    std::optional<NoCodeWatch> m_documents;
    std::optional<QTemporaryFile> m_output;
    std::optional<Report> m_report;
};

void TestHostReport::init()
{
    failOnUnexpectedWarnings();
    m_provider.emplace();
    m_session.emplace(&*m_provider, u"c"_s);
    m_documents.emplace(*m_session);
    m_output.emplace();
    QVERIFY(m_output->open());
    m_report.emplace(*m_session, *m_documents, *m_output);
}

void TestHostReport::cleanup()
{
    m_report.reset();
    m_documents.reset();
    m_session.reset();
    m_provider.reset();
    m_output.reset();
}

QList<QJsonObject> TestHostReport::lines(const QString &what)
{
    QFile written(m_output->fileName());
    QList<QJsonObject> found;
    if (!written.open(QIODevice::ReadOnly))
        return found;
    while (!written.atEnd()) {
        const QJsonObject line = QJsonDocument::fromJson(written.readLine()).object();
        if (what.isEmpty() || line["what"_L1] == what)
            found.append(line);
    }
    return found;
}

void TestHostReport::thePluginComesFirstThenTheRows()
{
    m_report->tellPlugin(u"/p.so"_s);
    const auto told = lines();
    QCOMPARE(told.size(), 2);
    QCOMPARE(told.at(0)["what"_L1].toString(), u"plugin"_s);
    QCOMPARE(told.at(0)["file"_L1].toString(), u"/p.so"_s);
    QCOMPARE(told.at(0)["provider"_L1].toString(), u"maker"_s);
    QCOMPARE(told.at(0)["family"_L1].toString(), u"Family"_s);
    QVERIFY(told.at(0)["at"_L1].isDouble());
    QCOMPARE(told.at(1)["what"_L1].toString(), u"rows"_s);
}

void TestHostReport::rowsAreToldOnlyWhenTheyChange()
{
    m_provider->list->add(u"gp:0"_s, u"Pad"_s);
    Q_EMIT m_provider->list->dataChanged(m_provider->list->index(0), m_provider->list->index(0));
    QCOMPARE(lines(u"rows"_s).size(), 1);
    QVERIFY(m_session->setRowData(0, "name", u"Mine"_s));
    const auto told = lines(u"rows"_s);
    QCOMPARE(told.size(), 2);
    QCOMPARE(told.at(1)["rows"_L1][0]["name"_L1].toString(), u"Mine"_s);
}

void TestHostReport::aSelectionTellsItsDevices()
{
    FakeDevice *device = m_provider->list->add(u"gp:4"_s, u"Pad"_s);
    m_provider->select({device});
    const QJsonObject told = lines(u"selection"_s).at(0)["devices"_L1][0].toObject();
    QCOMPARE(told["device"_L1].toInt(), 1);
    QCOMPARE(told["usn"_L1].toString(), u"gp:4"_s);
    QCOMPARE(told["type"_L1].toString(), u"gamepade"_s);
    QCOMPARE(told["status"_L1].toString(), u"connected"_s);
    QCOMPARE(told["json"_L1]["deviceId"_L1].toInt(), 4);
}

void TestHostReport::valuesAreToldInBothForms()
{
    FakeDevice *device = m_provider->list->add(u"gp:0"_s, u"Pad"_s);
    m_provider->select({device});
    Q_EMIT device->dataChanged(0, 1, {u"joy_0"_s, u"but_3"_s}, {35.5, true});
    Q_EMIT device->dataChanged(u"gamepad"_s, u"cat"_s, {u"joy_0"_s}, {35.5});
    const auto told = lines(u"data"_s);
    QCOMPARE(told.size(), 2);
    QCOMPARE(told.at(0)["form"_L1].toString(), u"numeric"_s);
    QCOMPARE(told.at(0)["keys"_L1].toArray(), (QJsonArray{"joy_0"_L1, "but_3"_L1}));
    QCOMPARE(told.at(0)["values"_L1].toArray(), (QJsonArray{35.5, true}));
    QCOMPARE(told.at(0)["catId"_L1].toInt(), 1);
    QCOMPARE(told.at(1)["form"_L1].toString(), u"text"_s);
    QCOMPARE(told.at(1)["deviceName"_L1].toString(), u"gamepad"_s);
    QCOMPARE(told.at(1)["catName"_L1].toString(), u"cat"_s);
}

void TestHostReport::statusDocumentsAndEndsAreTold()
{
    FakeDevice *device = m_provider->list->add(u"gp:0"_s, u"Pad"_s);
    m_provider->select({device});
    Q_EMIT device->statusChanged(IComInterface::noCom);
    Q_EMIT device->noCodeAppChanged({u"/a"_s});
    Q_EMIT device->finished();
    delete device;
    QCOMPARE(lines(u"status"_s).at(0)["status"_L1].toString(), u"noCom"_s);
    QCOMPARE(lines(u"noCodeApp"_s).at(0)["paths"_L1].toArray(), QJsonArray{"/a"_L1});
    QCOMPARE(lines(u"finished"_s).at(0)["device"_L1].toInt(), 1);
    QCOMPARE(lines(u"gone"_s).at(0)["device"_L1].toInt(), 1);
}

void TestHostReport::aBridgeThatWouldFireIsTold()
{
    const QString path = temporaryHome() + "/app.json"_L1;
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(
        R"({"bridges": [{"action": "Go", "src": {"deviceType": "gamepade", "deviceId": 0, "packetId": 1,
                   "stringKey": "but_3"}, "dst": [{"ref": "go"}]}]})");
    file.close();
    FakeDevice *device = m_provider->list->add(u"gp:0"_s, u"Pad"_s);
    device->documents = {path};
    m_provider->select({device});
    Q_EMIT device->dataChanged(0, 1, {u"but_3"_s}, {true});
    Q_EMIT device->dataChanged(0, 1, {u"but_3"_s}, {false});
    const auto told = lines(u"fires"_s);
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0)["action"_L1].toString(), u"Go"_s);
    QCOMPARE(told.at(0)["tasks"_L1].toString(), u"go()"_s);
}

void TestHostReport::aDocumentIsReadAgainWhenTheDeviceSaysSo()
{
    const QString path = temporaryHome() + "/later.json"_L1;
    FakeDevice *device = m_provider->list->add(u"gp:0"_s, u"Pad"_s);
    device->documents = {path};
    m_provider->select({device});
    QCOMPARE(m_documents->entries().at(0).document.problem, u"not written yet"_s);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(R"({"bridges": [{}, {}]})");
    file.close();
    Q_EMIT device->noCodeAppChanged({path});
    QCOMPARE(m_documents->entries().size(), 1);
    QCOMPARE(m_documents->entries().at(0).document.bridges.size(), 2);
}

void TestHostReport::commandsAreAnswered()
{
    m_report->tellDone(u"click gp:0"_s, {});
    m_report->tellDone(u"frobnicate"_s, u"no"_s);
    const auto told = lines(u"done"_s);
    QCOMPARE(told.at(0)["ok"_L1], QJsonValue(true));
    QCOMPARE(told.at(1)["ok"_L1], QJsonValue(false));
    QCOMPARE(told.at(1)["problem"_L1].toString(), u"no"_s);
}

GAMEPAD_TEST_MAIN(TestHostReport)
#include "tst_hostreport.moc"
