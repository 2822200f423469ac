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

    void aMappingWithoutBridgesStays()
    {
        for (const QByteArray &text : {"{}"_ba, "{'bridges':{'action':'TIRER'}}"_ba, "{'bridges':[]}"_ba})
            QCOMPARE(withKnownNames(object(text), array("[{'name':'Tirer'}]")), object(text));
    }
};

GAMEPAD_TEST_MAIN(TestKnownNames)
#include "tst_knownnames.moc"
