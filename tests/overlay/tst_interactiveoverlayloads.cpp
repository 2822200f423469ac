// SPDX-License-Identifier: MIT
// Documents that are loaded again and again, as by a person who looks through the profiles all day.
#include "nodedocument.h"
#include "overlaystage.h"
#include "sanitizers.h"

#include "testmain.h"

#include <QtCore/QFile>
#include <QtWidgets/QApplication>

#if defined(Q_OS_LINUX)
#include <malloc.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace
{
/// What this process holds, in KiB, once the allocator has given back what it can.
qint64 residentMemory()
{
#if defined(Q_OS_LINUX)
    malloc_trim(0);
    QFile statm(u"/proc/self/statm"_s);
    if (statm.open(QIODevice::ReadOnly))
        return statm.readAll().split(' ').value(1).toLongLong() * (sysconf(_SC_PAGESIZE) / 1024);
#endif
    return 0;
}
} // namespace

class TestInteractiveOverlayLoads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void fiveHundredLoadsLeaveNothingBehind()
    {
        QJsonArray nodes;
        for (int i = 0; i < 50; ++i)
            nodes.append(nodeAt(i, u"joy_%1"_s.arg(i % 40)));
        const QJsonObject document = documentOf(nodes);
        const QJsonObject mapping = object("{'bridges':[{'src':{'stringKey':'joy_1'},'action':'Avancer'},"
                                           "{'src':{'stringKey':'joy_2'},'action':'Disparue'}]}");
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        const int loads = sanitized ? 50 : 500;
        qsizetype windows = 0;
        qint64 memory = 0;
        for (int i = 0; i < loads; ++i) {
            QVERIFY(stage->fromJson(document));
            QVERIFY(stage->applyMapping(mapping));
            QCoreApplication::processEvents();
            stage.deleteRetired();
            if (i == 9) {
                windows = QApplication::topLevelWidgets().size();
                memory = residentMemory();
            }
        }
        QCOMPARE(QApplication::topLevelWidgets().size(), windows);
        QCOMPARE(stage.pastilles().size(), 50);
        QCOMPARE(stage->findChildren<QObject *>(Qt::FindDirectChildrenOnly).size(), 100);
        // A sanitizer keeps what was freed, and the allocator a page here and there. The 24500 nodes in
        // between would be hundreds of megabytes.
        if constexpr (!sanitized)
            QVERIFY2(residentMemory() <= memory + 2048,
                     qPrintable(u"%1 to %2 KiB"_s.arg(memory).arg(residentMemory())));
    }
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayLoads)
#include "tst_interactiveoverlayloads.moc"
