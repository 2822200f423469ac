// SPDX-License-Identifier: MIT
#include "bridgeplan.h"

#include "jsontext.h"
#include "testmain.h"

#include <QtCore/QHash>

using namespace Qt::StringLiterals;

namespace
{
const QStringList titles{u"joy_1"_s, u"Tir"_s, u" JOY_1 "_s, QString(), u"  "_s, u"σας"_s, u"joy_2"_s};

QList<Binding> plan(const QByteArray &bridges)
{
    return bindingsOf(array(bridges), titles);
}

QByteArray to(const char *key, const char *more = "")
{
    return QByteArray("{'src':{'stringKey':'") + key + "'}" + more + "}";
}
} // namespace

class TestBridgePlan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aBridgeReachesPastillesByTitle_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QList<qsizetype>>("nodes");
        const QList<qsizetype> none;
        QTest::newRow("all of a title") << u"joy_1"_s << QList<qsizetype>{0, 2};
        QTest::newRow("case and blanks") << u" Joy_1\t"_s << QList<qsizetype>{0, 2};
        QTest::newRow("word") << u"TIR"_s << QList<qsizetype>{1};
        QTest::newRow("a number written otherwise") << u"joy_01"_s << none;
        QTest::newRow("empty") << QString() << none;
        QTest::newRow("blank") << u"  "_s << none;
        QTest::newRow("unknown") << u"but_1"_s << none;
        QTest::newRow("equal without case, unequal in lower case") << u"ΣΑΣ"_s << QList<qsizetype>{5};
        QTest::newRow("and then blanks count") << u" ΣΑΣ"_s << none;
    }

    void aBridgeReachesPastillesByTitle()
    {
        QFETCH(const QString, key);
        QFETCH(const QList<qsizetype>, nodes);
        const QList<Binding> bindings =
            bindingsOf({QJsonObject{{u"src"_s, QJsonObject{{u"stringKey"_s, key}}}}}, titles);
        QCOMPARE(bindings.isEmpty(), nodes.isEmpty());
        QCOMPARE(bindings.value(0).nodes, nodes);
    }

    void whatReachesNoPastilleIsDropped()
    {
        QVERIFY(plan("[]").isEmpty());
        QVERIFY(
            plan(
                "[1,'joy_1',null,['joy_1'],{},{'src':'joy_1'},{'src':{'stringKey':1}},{'stringKey':'joy_1'}]")
                .isEmpty());
    }

    void bridgesOfOneTitleMakeOneBinding()
    {
        const QList<Binding> bindings =
            plan("[" + to("tir", ",'action':'A'") + "," + to("joy_1", ",'action':'B'") + "," +
                 to("Tir", ",'action':'C','args':{'x':1}") + "]");
        QCOMPARE(bindings.size(), 2);
        QCOMPARE(bindings[0].nodes, QList<qsizetype>{1});
        QCOMPARE(bindings[0].config, object("{'action':'C','args':{'x':1}}"));
        QCOMPARE(bindings[1].nodes, (QList<qsizetype>{0, 2}));
        QCOMPARE(bindings[1].config, object("{'action':'B'}"));
    }

    void whatALaterBridgeDoesNotTellStays()
    {
        const QList<Binding> bindings =
            plan(R"([{'src':{'stringKey':'Tir','deviceType':'a','deviceId':1,'packetId':2,'isJoy':false}},
                     {'src':{'stringKey':'tir','deviceType':'','packetId':'0x10'}}])");
        QCOMPARE(bindings.size(), 1);
        QCOMPARE(bindings[0].src, (InputSource{.deviceType = u"a"_s,
                                               .deviceId = 1,
                                               .packetId = 16,
                                               .stringKey = u"tir"_s,
                                               .isJoy = std::nullopt}));
    }

    void bridgesWithoutConfigurationAreCountedBehindTheLastOneThatHasOne()
    {
        const QByteArray axis = "{'src':{'stringKey':'Tir','isJoy':true},'dst':[{'when':false}]}";
        const QByteArray button = "{'src':{'stringKey':'Tir','isJoy':false}}";
        const QByteArray bound = "{'src':{'stringKey':'Tir','isJoy':false},'action':'A'}";

        const Binding plain = plan("[" + axis + "," + button + "," + axis + "]").value(0);
        QVERIFY(!plain.config);
        QCOMPARE(plain.axisRepeats, 2);
        QCOMPARE(plain.buttonRepeats, 1);

        const Binding last = plan("[" + axis + "," + button + "," + bound + "]").value(0);
        QCOMPARE(last.config, object("{'action':'A'}"));
        QVERIFY(!last.configForAxis);
        QCOMPARE(last.axisRepeats, 0);
        QCOMPARE(last.buttonRepeats, 0);

        const Binding behind = plan("[" + axis + "," + bound + "," + axis + "]").value(0);
        QVERIFY(!behind.configForAxis);
        QCOMPARE(behind.axisRepeats, 1);
        QCOMPARE(behind.buttonRepeats, 0);
        QVERIFY(standsForAxis(behind.src));
    }

    void aPastilleReachedInTwoWaysTakesBridgesInTheirOrder()
    {
        // The first key has the title's lower case, the second one has not.
        const QList<Binding> bindings =
            plan("[" + to("σας", ",'action':'A'") + "," + to("ΣΑΣ", ",'action':'B'") + "," +
                 to("σας", ",'action':'C'") + "]");
        QCOMPARE(bindings.size(), 1);
        QCOMPARE(bindings[0].config, object("{'action':'C'}"));
    }

    void theOneOfATitleThatASecondWayReachesTakesBridgesInTheirOrder_data()
    {
        QTest::addColumn<QByteArrayList>("bridges");
        QTest::addColumn<QByteArray>("first");
        QTest::addColumn<QByteArray>("second"); // empty: not reached
        const QByteArray all = to("σας", ",'action':'All'");
        const QByteArray one = to("ΣΑΣ", ",'action':'One'");
        const QByteArray device = "{'src':{'stringKey':'ΣΑΣ','deviceId':5},'action':'Device'}";
        QTest::newRow("one") << QByteArrayList{one} << QByteArray("One") << QByteArray();
        QTest::newRow("all, one") << QByteArrayList{all, one} << QByteArray("One") << QByteArray("All");
        QTest::newRow("one, all") << QByteArrayList{one, all} << QByteArray("All") << QByteArray("All");
        QTest::newRow("all, one, all")
            << QByteArrayList{all, device, all} << QByteArray("All") << QByteArray("All");
        QTest::newRow("all, one, one")
            << QByteArrayList{all, device, one} << QByteArray("One") << QByteArray("All");
    }

    void theOneOfATitleThatASecondWayReachesTakesBridgesInTheirOrder()
    {
        QFETCH(const QByteArrayList, bridges);
        QFETCH(const QByteArray, first);
        QFETCH(const QByteArray, second);
        const QList<Binding> bindings =
            bindingsOf(array("[" + bridges.join(',') + "]"), {u"σας"_s, u"σας "_s, u"σας"_s});
        QHash<qsizetype, QByteArray> actions;
        QHash<qsizetype, std::optional<int>> devices;
        for (const Binding &binding : bindings) {
            for (const qsizetype node : binding.nodes) {
                QVERIFY(!actions.contains(node));
                actions[node] = binding.config.value()["action"_L1].toString().toUtf8();
                devices[node] = binding.src.deviceId;
            }
        }
        QCOMPARE(actions.value(0), first);
        QCOMPARE(actions.value(1), second);
        QCOMPARE(actions.value(2), second);
        // What only the first one was told stays its own.
        QCOMPARE(devices.value(0).has_value(), bridges.size() == 3);
        QVERIFY(!devices.value(1) && !devices.value(2));
    }
};

GAMEPAD_TEST_MAIN(TestBridgePlan)
#include "tst_bridgeplan.moc"
