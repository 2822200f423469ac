// SPDX-License-Identifier: MIT
#include "endtoend.h"
#include "keptdocuments.h"
#include "road.h"

#include <QtCore/QFile>
#include <QtCore/QObject>

Q_DECLARE_METATYPE(const Road::Step *)

/// The steps of the demonstration, each asserted.
class TestRoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void cleanupTestCase();

    void everyStepHappens_data();
    void everyStepHappens();

private:
    VirtualBench m_bench;
    QTemporaryDir m_data;
    Road m_road{m_bench.pad(),
                {.hostProgram = QStringLiteral(GAMEPAD_HOST),
                 .plugin = QStringLiteral(GAMEPAD_PLUGIN),
                 .data = m_data.path(),
                 .log = m_data.filePath(QStringLiteral("host.log")),
                 .pictures = {}}};
    bool m_ended = false;
};

void TestRoad::cleanupTestCase()
{
    if (!m_ended)
        keepDocuments(m_data.path());
}

void TestRoad::everyStepHappens_data()
{
    QTest::addColumn<const Road::Step *>("step");
    for (const Road::Step &step : Road::steps())
        QTest::newRow(step.title) << &step;
}

void TestRoad::everyStepHappens()
{
    // Each step stands on those before it, and what the absence of one does to the rest would only hide it.
    QVERIFY2(!m_ended, "an earlier step did not happen");
    QFETCH(const Road::Step *, step);
    const StepResult result = m_road.run(*step);
    m_ended = !result.happened;
    QVERIFY2(result.happened, qPrintable(QStringLiteral("waited for ") + result.words));
}

GAMEPAD_TEST_MAIN(TestRoad)
#include "tst_road.moc"
