// SPDX-License-Identifier: MIT
#include "catalogue.h"

#include "entries.h"
#include "testmain.h"

#include <QtWidgets/QWidget>

using namespace Qt::StringLiterals;

namespace
{
QList<FunctionDef> readByToolBox(const QJsonArray &entries)
{
    return FunctionCatalogue::read(entries, toolBoxTraits).functions();
}
} // namespace

class TestCatalogue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void everyKeyOfAnEntryIsRead()
    {
        const QJsonArray entries{QJsonObject{
            {u"name"_s, u"LockOn"_s},
            {u"deviceType"_s, u"gimbal"_s},
            {u"params"_s,
             QJsonArray{param(u"speed"_s, u"Float"_s, 1.5), param(u"mode"_s, QString(), u"auto"_s)}},
            {u"tasks"_s, QJsonArray{QJsonObject{{u"ref"_s, u"x"_s}}}},
        }};
        const QList<FunctionDef> expected{
            {u"LockOn"_s,
             u"gimbal"_s,
             {{u"speed"_s, u"double"_s, u"1.5"_s}, {u"mode"_s, u"string"_s, u"auto"_s}}}};
        QCOMPARE(readByToolBox(entries), expected);
    }

    void theTypeComesFromEitherKey_data()
    {
        QTest::addColumn<QJsonValue>("preferredType");
        QTest::addColumn<QJsonValue>("preferedType");
        QTest::addColumn<QString>("type");
        const QJsonValue none = QJsonValue::Undefined;
        QTest::newRow("neither") << none << none << u"string"_s;
        QTest::newRow("the first") << QJsonValue(u"int32"_s) << none << u"int"_s;
        QTest::newRow("the second alone") << none << QJsonValue(u"boolean"_s) << u"bool"_s;
        QTest::newRow("the first of both") << QJsonValue(u"int"_s) << QJsonValue(u"bool"_s) << u"int"_s;
        QTest::newRow("the second when the first is empty")
            << QJsonValue(QString()) << QJsonValue(u"bool"_s) << u"bool"_s;
        QTest::newRow("the second when the first is no string")
            << QJsonValue(3) << QJsonValue(u"bool"_s) << u"bool"_s;
        QTest::newRow("the first when it is blank")
            << QJsonValue(u" "_s) << QJsonValue(u"bool"_s) << u"string"_s;
    }

    void theTypeComesFromEitherKey()
    {
        QFETCH(QJsonValue, preferredType);
        QFETCH(QJsonValue, preferedType);
        QJsonObject entry{{u"name"_s, u"a"_s}};
        if (!preferredType.isUndefined())
            entry.insert(u"preferredType"_s, preferredType);
        if (!preferedType.isUndefined())
            entry.insert(u"preferedType"_s, preferedType);
        const QList<FunctionDef> functions = readByToolBox({function(u"f"_s, {entry})});
        QTEST(functions.first().params.first().type, "type");
    }

    void aDefaultIsReadUnderTheNormalisedType()
    {
        const QJsonArray params{param(u"a"_s, u"integer"_s, 2.75), param(u"b"_s, u"number"_s)};
        const QList<ParamDef> read = readByToolBox({function(u"f"_s, params)}).first().params;
        QCOMPARE(read.at(0).defaultText, u"2"_s);
        QCOMPARE(read.at(1).defaultText, u"0.0"_s);
    }

    void whatIsNoObjectIsSkipped()
    {
        const QJsonArray entries{
            1,
            u"a"_s,
            QJsonValue::Null,
            QJsonArray{function(u"inner"_s)},
            true,
            function(u"f"_s, {1, u"a"_s, QJsonArray{}, param(u"p"_s, u"int"_s), QJsonValue::Null})};
        const QList<FunctionDef> functions = readByToolBox(entries);
        QCOMPARE(functions.size(), 1);
        QCOMPARE(functions.first().params, (QList<ParamDef>{{u"p"_s, u"int"_s, u"0"_s}}));
    }

    void namelessFunctionsAreDropped()
    {
        const QJsonArray entries{function(QString()), QJsonObject{{u"name"_s, 3}}, QJsonObject(),
                                 function(u"f"_s)};
        QCOMPARE(readByToolBox(entries).size(), 1);
        QCOMPARE(FunctionCatalogue::read(entries, taskBlockTraits).functions().size(), 1);
    }

    void aBlankNameIsAName() { QCOMPARE(readByToolBox({function(u" "_s)}).size(), 1); }

    void wrongTypesReadAsMissing()
    {
        const QJsonArray entries{
            QJsonObject{{u"name"_s, u"f"_s}, {u"deviceType"_s, 3}, {u"params"_s, u"a"_s}}};
        QCOMPARE(readByToolBox(entries), (QList<FunctionDef>{{u"f"_s, QString(), {}}}));
    }

    void onlyCardsDropNamelessParameters()
    {
        const QJsonArray entries{function(u"f"_s, {param(QString(), u"int"_s), param(u"a"_s, u"int"_s)})};
        const auto inToolBox = FunctionCatalogue::read(entries, toolBoxTraits);
        const auto onCard = FunctionCatalogue::read(entries, taskBlockTraits);
        QCOMPARE(inToolBox.functions().first().params.size(), 2);
        QCOMPARE(inToolBox.signature(0), u"f(int  = 0, int a = 0)"_s);
        QCOMPARE(onCard.functions().first().params, (QList<ParamDef>{{u"a"_s, u"int"_s, u"0"_s}}));
        QCOMPARE(onCard.signature(0), u"f(int a=0)"_s);
    }

    void duplicatesAreListedAndTheFirstIsFound()
    {
        const auto catalogue = FunctionCatalogue::read(
            {function(u"a"_s), function(u"f"_s), function(u"F"_s), function(u"f"_s)}, toolBoxTraits);
        QCOMPARE(catalogue.functions().size(), 4);
        QCOMPARE(catalogue.indexOf(u"f"_s), 1);
        QCOMPARE(catalogue.indexOf(u"F"_s), 2);
        QCOMPARE(catalogue.indexOf(u"g"_s), -1);
        QCOMPARE(catalogue.indexOf(QString()), -1);
    }

    void noneIsFoundInAnyCase()
    {
        const auto catalogue = FunctionCatalogue::read(
            {function(u"a"_s), function(u"NonE"_s), function(u"none"_s)}, toolBoxTraits);
        QCOMPARE(catalogue.indexOfNone(), 1);
        QCOMPARE(FunctionCatalogue::read({function(u"a"_s)}, toolBoxTraits).indexOfNone(), -1);
        QCOMPARE(FunctionCatalogue().indexOfNone(), -1);
    }

    void anArrayIsReadOnceForAllWhoAreGivenIt()
    {
        const QJsonArray entries{function(u"a"_s), function(u"b"_s)};
        const QJsonArray equal{function(u"a"_s), function(u"b"_s)};
        const auto first = FunctionCatalogue::shared(entries, toolBoxTraits);
        QCOMPARE(&FunctionCatalogue::shared(entries, toolBoxTraits).functions(), &first.functions());
        QCOMPARE(&FunctionCatalogue::shared(equal, toolBoxTraits).functions(), &first.functions());
    }

    void anotherArrayIsReadAnew()
    {
        QJsonArray entries{function(u"a"_s), function(u"b"_s)};
        const auto before = FunctionCatalogue::shared(entries, toolBoxTraits);
        entries[1] = function(u"c"_s);
        QCOMPARE(FunctionCatalogue::shared(entries, toolBoxTraits).indexOf(u"c"_s), 1);
        QCOMPARE(before.indexOf(u"b"_s), 1);
        QCOMPARE(FunctionCatalogue::shared({}, toolBoxTraits).functions().size(), 0);
    }

    void theTwoEditorsNeverShareOneReading()
    {
        const QJsonArray entries{function(u"a"_s)};
        QCOMPARE(FunctionCatalogue::shared(entries, toolBoxTraits).signature(0), u"a"_s);
        QCOMPARE(FunctionCatalogue::shared(entries, taskBlockTraits).signature(0), u"a()"_s);
        QCOMPARE(FunctionCatalogue::shared(entries, toolBoxTraits).signature(0), u"a"_s);
    }

    void manyCataloguesTakeTurns()
    {
        for (int round = 0; round < 2; ++round) {
            for (int i = 0; i < 10; ++i) {
                const QString name = QString::number(i);
                const auto catalogue = FunctionCatalogue::shared({function(name)}, toolBoxTraits);
                QCOMPARE(catalogue.functions().first().name, name);
            }
        }
    }

    void theWidestSignatureIsMeasuredUnderEachFont()
    {
        const QWidget widget;
        const auto catalogue = FunctionCatalogue::read(
            {function(u"a"_s), function(u"wwwwww"_s), function(u"b"_s)}, toolBoxTraits);
        for (const int pixels : {12, 24, 12}) {
            QFont font = widget.font();
            font.setPixelSize(pixels);
            QCOMPARE(catalogue.widestSignature(font, &widget),
                     QFontMetrics(font).boundingRect(u"wwwwww"_s).width());
        }
        QCOMPARE(FunctionCatalogue().widestSignature(widget.font(), &widget), 0);
    }
};

GAMEPAD_TEST_MAIN(TestCatalogue)
#include "tst_catalogue.moc"
