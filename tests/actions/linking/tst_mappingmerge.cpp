// SPDX-License-Identifier: MIT
// What of a stored mapping is still there after an overlay's bridges were put into it.
#include "jsontext.h"
#include "mappingmerge.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

class TestMappingMerge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void anEmptyDocumentGetsTheFourPartsAndNoRef()
    {
        QCOMPARE(mergedMapping({}, {}),
                 object("{'signals':[],'onStartup':[],'onClose':[],'timers':[],'bridges':[]}"));
    }

    void whatTheDocumentHoldsStays()
    {
        const QJsonObject stored = object(R"({'signals':[1],'onStartup':['s'],'onClose':[{}],
            'timers':[{'every':5}],'ref':[{'name':'f'}],'mine':{'deep':[null]},'bridges':[]})");
        QCOMPARE(mergedMapping(stored, {}), stored);
    }

    void aPartOfTheWrongTypeIsThereAndStays()
    {
        const QJsonObject merged =
            mergedMapping(object("{'signals':null,'onStartup':3,'onClose':'x','timers':{}}"), {});
        QCOMPARE(merged, object("{'signals':null,'onStartup':3,'onClose':'x','timers':{},'bridges':[]}"));
    }

    void newBridgesReplaceTheOldOnes()
    {
        const QJsonObject stored =
            object("{'bridges':[{'src':{'stringKey':'but_1'},'dst':[{'ref':'a'}],'action':'A'}]}");
        const QJsonArray bridges = array("[{'src':{'stringKey':'but_2'},'dst':[],'action':'B'}]");
        QCOMPARE(mergedMapping(stored, bridges)["bridges"_L1].toArray(), bridges);
        QCOMPARE(mergedMapping(stored, {})["bridges"_L1].toArray(), QJsonArray());
    }

    void aBridgeIsMerged_data()
    {
        QTest::addColumn<QByteArray>("old");
        QTest::addColumn<QByteArray>("bridge");
        QTest::addColumn<QByteArray>("tasks");

        const QByteArray src = "'src':{'stringKey':'but_3','deviceType':'gamepade'}";
        const QByteArray three = "'dst':[{'ref':'one'},{'ref':'two'},3]";
        const QByteArray blank = "{" + src + ",'dst':[{'ref':' '}],'action':' '}";
        const QByteArray carried = "[{'ref':' '},{'ref':'two'},3]";
        const QByteArray own = "[{'ref':' '}]";

        const auto row = [](const char *name, const QByteArray &old, const QByteArray &bridge,
                            const QByteArray &tasks) { QTest::newRow(name) << old << bridge << tasks; };
        row("a blank action takes the tail", "[{" + src + "," + three + "}]", blank, carried);
        row("no action takes the tail", "[{" + src + "," + three + "}]", "{" + src + ",'dst':[]}",
            "[{'ref':'two'},3]");
        row("an action that is no text takes the tail", "[{" + src + "," + three + "}]",
            "{" + src + ",'dst':[],'action':5}", "[{'ref':'two'},3]");
        row("an action is rebuilt from itself alone", "[{" + src + "," + three + "}]",
            "{" + src + ",'dst':[{'ref':'x'}],'action':'A'}", "[{'ref':'x'}]");
        row("one old task has no tail", "[{" + src + ",'dst':[{'ref':'one'}]}]", blank, own);
        row("old tasks that are none", "[{" + src + ",'dst':{'a':1}}]", blank, own);
        row("a key in another case and with blanks", "[{'src':{'stringKey':' BUT_3 '}," + three + "}]", blank,
            carried);
        row("another key", "[{'src':{'stringKey':'but_4'}," + three + "}]", blank, own);
        row("another type of device", "[{'src':{'stringKey':'but_3','deviceType':'motor'}," + three + "}]",
            blank, own);
        row("the type in another case",
            "[{'src':{'stringKey':'but_3','deviceType':'GAMEPADE'}," + three + "}]", blank, carried);
        row("an old bridge without a type", "[{'src':{'stringKey':'but_3'}," + three + "}]", blank, carried);
        row("a new bridge without a type", "[{" + src + "," + three + "}]",
            "{'src':{'stringKey':'but_3'},'dst':[]}", "[{'ref':'two'},3]");
        row("a new bridge without a key", "[{'src':{'stringKey':''}," + three + "}]",
            "{'src':{'stringKey':' '},'dst':[]}", "[]");
        row("the first of two that match, even where it has no tail",
            "[{" + src + ",'dst':[1]},{" + src + "," + three + "}]", blank, own);
        row("what is no object is passed over", "[1,null,'but_3',{" + src + "," + three + "}]", blank,
            carried);
        row("old bridges that are no array", "{'0':{" + src + "," + three + "}}", blank, own);
        row("a source that is no object", "[{'src':'but_3'," + three + "}]", blank, own);
    }

    void aBridgeIsMerged()
    {
        QFETCH(const QByteArray, old);
        QFETCH(const QByteArray, bridge);
        QFETCH(const QByteArray, tasks);
        const QJsonObject stored = object("{'bridges':" + old + "}");
        QJsonObject expected = object(bridge);
        expected["dst"_L1] = array(tasks);
        QCOMPARE(mergedMapping(stored, {object(bridge)})["bridges"_L1].toArray(), QJsonArray{expected});
    }
};

GAMEPAD_TEST_MAIN(TestMappingMerge)
#include "tst_mappingmerge.moc"
