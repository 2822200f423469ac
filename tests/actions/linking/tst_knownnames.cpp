// SPDX-License-Identifier: MIT
#include "jsontext.h"
#include "knownnames.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

class TestKnownNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aName_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("in another case") << "'TIRER'"_ba << "'Tirer'"_ba;
        QTest::newRow("in another case, with blanks") << "' tirer '"_ba << "'Tirer'"_ba;
        QTest::newRow("known") << "'Tirer'"_ba << "'Tirer'"_ba;
        QTest::newRow("known, with blanks") << "' Tirer '"_ba << "' Tirer '"_ba;
        QTest::newRow("known as a later one of that name") << "'tIRER'"_ba << "'tIRER'"_ba;
        QTest::newRow("unknown") << "'Autre'"_ba << "'Autre'"_ba;
        QTest::newRow("blank") << "' '"_ba << "' '"_ba;
        QTest::newRow("no text") << "['TIRER']"_ba << "['TIRER']"_ba;
    }

    void aName()
    {
        QFETCH(const QByteArray, before);
        QFETCH(const QByteArray, after);
        const QJsonArray actions = array("[1,{},{'name':'Tirer'},{'name':'tIRER'},{'name':''}]");
        const auto mapping = [](const QByteArray &name) {
            return object("{'mine':1,'bridges':[null,{'action':" + name +
                          ",'args':{'a':1}},{'dst':[]},'TIRER']}");
        };
        QCOMPARE(withKnownNames(mapping(before), actions), mapping(after));
    }

    void aNameThatOnlyATaskTells_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("as a ref, in another case")
            << "'args':{'a':1},'dst':[{'ref':'TIRER','args':{'a':2}}]"_ba
            << "'action':'Tirer','args':{'a':1}"_ba;
        QTest::newRow("behind tasks without one")
            << "'args':{'a':1},'dst':[7,{'ref':' '},{'action':'x'},{'ref':' TIRER '}]"_ba
            << "'action':'Tirer','args':{'a':1}"_ba;
        QTest::newRow("beside a blank action") << "'action':' ','args':{'a':1},'dst':[{'ref':'TIRER'}]"_ba
                                               << "'action':'Tirer','args':{'a':1}"_ba;
        QTest::newRow("without arguments") << "'dst':[{'ref':'TIRER'}]"_ba << "'action':'Tirer'"_ba;
        QTest::newRow("as an action, with arguments of its own")
            << "'dst':[{'when':false},{'action':'TIRER','args':{'a':2}}]"_ba
            << "'action':'Tirer','args':{'a':2}"_ba;
        QTest::newRow("known") << "'args':{'a':1},'dst':[{'ref':'Tirer'}]"_ba << ""_ba;
        QTest::newRow("unknown") << "'args':{'a':1},'dst':[{'ref':'Autre'},{'ref':'TIRER'}]"_ba << ""_ba;
        QTest::newRow("beside an action") << "'action':'Autre','dst':[{'ref':'TIRER'}]"_ba << ""_ba;
    }

    void aNameThatOnlyATaskTells()
    {
        QFETCH(const QByteArray, before);
        QFETCH(const QByteArray, after);
        const QJsonObject mapping = object("{'bridges':[{" + before + "}]}");
        QJsonObject bridge = mapping["bridges"_L1][0].toObject();
        const QJsonObject spelled = object('{' + after + '}');
        for (auto it = spelled.begin(); it != spelled.end(); ++it)
            bridge[it.key()] = it.value();
        QCOMPARE(withKnownNames(mapping, array("[{'name':'Tirer'}]")),
                 QJsonObject({{u"bridges"_s, QJsonArray{bridge}}}));
    }

    void namesAreTrimmed_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("none") << "[]"_ba << "[]"_ba;
        QTest::newRow("blanks around it") << "[{'name':' Tirer\t','params':[1],'mine':2},{'name':'B'}]"_ba
                                          << "[{'name':'Tirer','params':[1],'mine':2},{'name':'B'}]"_ba;
        QTest::newRow("blanks in it") << "[{'name':'Tirer fort'}]"_ba << "[{'name':'Tirer fort'}]"_ba;
        QTest::newRow("all blank") << "[{'name':'  '}]"_ba << "[{'name':'  '}]"_ba;
        QTest::newRow("another has it") << "[{'name':' Tirer '},{'name':'Tirer'}]"_ba
                                        << "[{'name':' Tirer '},{'name':'Tirer'}]"_ba;
        QTest::newRow("another has it in another case") << "[{'name':' Tirer '},{'name':'TIRER'}]"_ba
                                                        << "[{'name':'Tirer'},{'name':'TIRER'}]"_ba;
        QTest::newRow("no action") << "[1,null,' x ',[],{},{'name':[' x ']}]"_ba
                                   << "[1,null,' x ',[],{},{'name':[' x ']}]"_ba;
    }

    void namesAreTrimmed()
    {
        QFETCH(const QByteArray, before);
        QFETCH(const QByteArray, after);
        QCOMPARE(withTrimmedNames(array(before)), array(after));
    }

    void aMappingWithoutBridgesStays()
    {
        for (const QByteArray &text : {"{}"_ba, "{'bridges':{'action':'TIRER'}}"_ba, "{'bridges':[]}"_ba})
            QCOMPARE(withKnownNames(object(text), array("[{'name':'Tirer'}]")), object(text));
    }
};

GAMEPAD_TEST_MAIN(TestKnownNames)
#include "tst_knownnames.moc"
