// SPDX-License-Identifier: MIT
#include "argumenttyping.h"

#include "testmain.h"

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(QList<ParamDef>)

class TestSignatureText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theTwoEditorsWriteSignaturesTheirOwnWay_data()
    {
        QTest::addColumn<QList<ParamDef>>("params");
        QTest::addColumn<QString>("inToolBox");
        QTest::addColumn<QString>("onCard");
        const auto row = [](const char *what, const QList<ParamDef> &params, const QString &inToolBox,
                            const QString &onCard) { QTest::newRow(what) << params << inToolBox << onCard; };
        row("no parameters", {}, u"Tir"_s, u"Tir()"_s);
        row("without default", {{u"a"_s, u"string"_s, QString()}}, u"Tir(string a)"_s, u"Tir(string a)"_s);
        row("with default", {{u"a"_s, u"int"_s, u"3"_s}}, u"Tir(int a = 3)"_s, u"Tir(int a=3)"_s);
        row("string with default", {{u"a"_s, u"string"_s, u"x"_s}}, uR"(Tir(string a = "x"))"_s,
            u"Tir(string a=x)"_s);
        row("unknown type with default", {{u"a"_s, u"colour"_s, u"red"_s}}, u"Tir(colour a = red)"_s,
            u"Tir(colour a=red)"_s);
        row("several",
            {{u"a"_s, u"bool"_s, u"false"_s},
             {u"b"_s, u"string"_s, QString()},
             {u"c"_s, u"double"_s, u"0.0"_s}},
            u"Tir(bool a = false, string b, double c = 0.0)"_s,
            u"Tir(bool a=false, string b, double c=0.0)"_s);
        row("nameless", {{QString(), u"int"_s, u"0"_s}}, u"Tir(int  = 0)"_s, u"Tir(int =0)"_s);
        row("markers inside", {{u"%1"_s, u"%3"_s, u"%2"_s}}, u"Tir(%3 %1 = %2)"_s, u"Tir(%3 %1=%2)"_s);
    }

    void theTwoEditorsWriteSignaturesTheirOwnWay()
    {
        QFETCH(QList<ParamDef>, params);
        const FunctionDef function{u"Tir"_s, u"gamepade"_s, params};
        QTEST(signatureText(function, toolBoxTraits), "inToolBox");
        QTEST(signatureText(function, taskBlockTraits), "onCard");
    }

    void markersInANameStay()
    {
        const FunctionDef function{u"%2 %1"_s, QString(), {{u"a"_s, u"int"_s, QString()}}};
        QCOMPARE(signatureText(function, toolBoxTraits), u"%2 %1(int a)"_s);
    }
};

GAMEPAD_TEST_MAIN(TestSignatureText)
#include "tst_signaturetext.moc"
