// SPDX-License-Identifier: MIT
#include "jsontext.h"
#include "listedactions.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

class TestListedActions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void names_data()
    {
        QTest::addColumn<QByteArray>("catalogue");
        QTest::addColumn<QStringList>("names");

        QTest::newRow("none") << "[]"_ba << QStringList();
        QTest::newRow("in the catalogue's order")
            << "[{'name':'b'},{'name':'a'},{'name':'c'}]"_ba << QStringList{u"b"_s, u"a"_s, u"c"_s};
        QTest::newRow("trimmed") << "[{'name':'  tirer vite\\t'}]"_ba << QStringList{u"tirer vite"_s};
        QTest::newRow("blank ones left out")
            << "[{'name':''},{'name':'  '},{},{'name':'a'}]"_ba << QStringList{u"a"_s};
        QTest::newRow("the first of two that differ by case")
            << "[{'name':'Tir'},{'name':'TIR'},{'name':'x'},{'name':' tir '}]"_ba
            << QStringList{u"Tir"_s, u"x"_s};
        QTest::newRow("accented letters in another case")
            << QByteArray("[{'name':'Élan'},{'name':'éLAN'}]") << QStringList{u"Élan"_s};
        QTest::newRow("what is no object")
            << "['a',1,null,true,['b'],{'name':'c'}]"_ba << QStringList{u"c"_s};
        QTest::newRow("names that are no text")
            << "[{'name':1},{'name':null},{'name':['a']},{'name':'c'}]"_ba << QStringList{u"c"_s};
    }

    void names()
    {
        QFETCH(const QByteArray, catalogue);
        QFETCH(const QStringList, names);
        QCOMPARE(listedActions(array(catalogue)), names);
    }
};

GAMEPAD_TEST_MAIN(TestListedActions)
#include "tst_listedactions.moc"
