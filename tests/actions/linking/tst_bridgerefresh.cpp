// SPDX-License-Identifier: MIT
// Bridges that are brought up to date with the actions that they name.
#include "bridgerefresh.h"
#include "jsontext.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

class TestBridgeRefresh : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theNameOfABridge_data()
    {
        QTest::addColumn<QByteArray>("bridge");
        QTest::addColumn<QString>("name");

        QTest::newRow("its action, trimmed") << "{'action':' A ','dst':[{'ref':'F'}]}"_ba << u"A"_s;
        QTest::newRow("the ref of its task") << "{'action':' ','dst':[{'ref':' F '}]}"_ba << u"F"_s;
        QTest::newRow("the first task that has one")
            << "{'dst':[{'when':false},{'ref':' '},{'ref':'F'},{'ref':'G'}]}"_ba << u"F"_s;
        QTest::newRow("the action of a task without a ref")
            << "{'dst':[{'ref':'','action':' B '},{'ref':'F'}]}"_ba << u"B"_s;
        QTest::newRow("a task's ref before its action") << "{'dst':[{'ref':'F','action':'B'}]}"_ba << u"F"_s;
        QTest::newRow("tasks that are no objects") << "{'dst':['F',1,null,[{'ref':'G'}]]}"_ba << u""_s;
        QTest::newRow("values that are no text")
            << "{'action':1,'dst':[{'ref':2,'action':null}]}"_ba << u""_s;
        QTest::newRow("tasks that are no array") << "{'dst':{'ref':'F'}}"_ba << u""_s;
        QTest::newRow("nothing") << "{}"_ba << u""_s;
    }

    void theNameOfABridge()
    {
        QFETCH(const QByteArray, bridge);
        QFETCH(const QString, name);
        QCOMPARE(bridgeActionName(object(bridge)), name);
    }

    void aBridgeIsRefreshed_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");

        QTest::newRow("new tasks, with its arguments in them")
            << "{'action':'A','args':{'speed':5},'dst':[{'ref':'old'}],'src':{'stringKey':'but_3'}}"_ba
            << "{'action':'A','args':{'speed':5},'dst':[{'ref':'F','args':{'p':5},'when':'W'}],"
               "'src':{'stringKey':'but_3'}}"_ba;
        QTest::newRow("its name in another case is kept, trimmed")
            << "{'action':' a ','args':{'speed':5},'dst':[]}"_ba
            << "{'action':'a','args':{'speed':5},'dst':[{'ref':'F','args':{'p':5},'when':'W'}]}"_ba;
        QTest::newRow("empty arguments are removed")
            << "{'action':'B','args':{},'dst':[]}"_ba << "{'action':'B','dst':[{'ref':'G'}]}"_ba;
        QTest::newRow("arguments that are no object are removed")
            << "{'action':'B','args':[1],'dst':[]}"_ba << "{'action':'B','dst':[{'ref':'G'}]}"_ba;
        QTest::newRow("an action that only its task names")
            << "{'dst':[{'ref':'B','args':{}}]}"_ba << "{'action':'B','dst':[{'ref':'G'}]}"_ba;
        QTest::newRow("steps under items")
            << "{'action':'Items','dst':[]}"_ba << "{'action':'Items','dst':[{'ref':'H'}]}"_ba;
        QTest::newRow("other keys of the bridge stay")
            << "{'action':'B','dst':[],'note':'mine','args':{'x':null}}"_ba
            << "{'action':'B','dst':[{'ref':'G'}],'note':'mine','args':{'x':null}}"_ba;
        QTest::newRow("what is up to date counts as well")
            << "{'action':'B','dst':[{'ref':'G'}]}"_ba << "{'action':'B','dst':[{'ref':'G'}]}"_ba;
    }

    void aBridgeIsRefreshed()
    {
        QFETCH(const QByteArray, before);
        QFETCH(const QByteArray, after);
        const auto refreshed = refreshedBridges({object(before)}, actions());
        QVERIFY(refreshed);
        QCOMPARE(*refreshed, QJsonArray{object(after)});
        QVERIFY2(refreshedBridges(*refreshed, actions()) == refreshed, "a second time changed it once more");
    }

    void aBridgeStays_data()
    {
        QTest::addColumn<QByteArray>("bridge");

        QTest::newRow("of no action") << "{'dst':[{'when':false}]}"_ba;
        QTest::newRow("of an action that is gone")
            << "{'action':' Gone ','args':{},'dst':[{'ref':'old'}]}"_ba;
        QTest::newRow("of an action without steps")
            << "{'action':'Empty','args':{},'dst':[{'when':false}]}"_ba;
        QTest::newRow("of an action without steps, and without arguments")
            << "{'action':'Empty','dst':[{'when':false}]}"_ba;
        QTest::newRow("a number") << "7"_ba;
        QTest::newRow("a text") << "'B'"_ba;
        QTest::newRow("nothing") << "null"_ba;
        QTest::newRow("a list") << "[{'action':'B'}]"_ba;
    }

    void aBridgeStays()
    {
        QFETCH(const QByteArray, bridge);
        QVERIFY(!refreshedBridges(array("[" + bridge + "]"), actions()));
        // In its place among others, too.
        const auto refreshed =
            refreshedBridges(array("[" + bridge + ",{'action':'B','dst':[]}," + bridge + "]"), actions());
        QVERIFY(refreshed);
        QCOMPARE(*refreshed, array("[" + bridge + ",{'action':'B','dst':[{'ref':'G'}]}," + bridge + "]"));
    }

private:
    static FunctionIndex actions()
    {
        return FunctionIndex(array(R"([
            {'name':'A','params':[{'name':'speed','preferredType':'int'}],
             'tasks':[{'ref':'F','args':{'p':'param:speed'},'when':'W'}]},
            {'name':' B ','tasks':[{'ref':'G'},'no task']},
            {'name':'b','tasks':[{'ref':'never, the first counts'}]},
            {'name':'Items','tasks':[],'items':[{'ref':'H'}]},
            {'name':'Empty','tasks':[]}])"));
    }
};

GAMEPAD_TEST_MAIN(TestBridgeRefresh)
#include "tst_bridgerefresh.moc"
