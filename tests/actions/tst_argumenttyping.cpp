// SPDX-License-Identifier: MIT
#include "argumenttyping.h"

#include "testmain.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

#include <limits>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(std::optional<QString>)

namespace
{
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
} // namespace

class TestArgumentTyping : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void wordsStandForTypes_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("type");
        QTest::newRow("integer") << u"integer"_s << u"int"_s;
        QTest::newRow("int32") << u"int32"_s << u"int"_s;
        QTest::newRow("int64") << u"int64"_s << u"int"_s;
        QTest::newRow("int") << u"int"_s << u"int"_s;
        QTest::newRow("double") << u"double"_s << u"double"_s;
        QTest::newRow("float") << u"float"_s << u"double"_s;
        QTest::newRow("number") << u"number"_s << u"double"_s;
        QTest::newRow("boolean") << u"boolean"_s << u"bool"_s;
        QTest::newRow("bool") << u"bool"_s << u"bool"_s;
        QTest::newRow("empty") << QString() << u"string"_s;
        QTest::newRow("blank") << u" \t"_s << u"string"_s;
        QTest::newRow("string") << u"string"_s << u"string"_s;
        QTest::newRow("any other word") << u"colour"_s << u"colour"_s;
        QTest::newRow("any other word, in lower case") << u"QVector3D"_s << u"qvector3d"_s;
        QTest::newRow("trimmed and lower-cased first") << u"  INT64 "_s << u"int"_s;
        QTest::newRow("any other word, trimmed") << u" Enum "_s << u"enum"_s;
        QTest::newRow("a word that only begins like one") << u"int16"_s << u"int16"_s;
    }

    void wordsStandForTypes()
    {
        QFETCH(QString, word);
        QTEST(normalizeType(word), "type");
    }

    void escapedQuotesOfExpressionsAreMadePlain_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("clean");
        QTest::newRow("escaped once") << uR"(state(\"mode\") == 1)"_s << uR"(state("mode") == 1)"_s;
        QTest::newRow("escaped twice") << uR"(state(\\"mode\\"))"_s << uR"(state("mode"))"_s;
        QTest::newRow("left over by the first step") << uR"(state(\\\"mode\\\"))"_s << uR"(state("mode"))"_s;
        QTest::newRow("both in one") << uR"(transform(\"a\", \\"b\\"))"_s << uR"(transform("a", "b"))"_s;
        QTest::newRow("transform anywhere") << uR"(1 + transform(\"a\"))"_s << uR"(1 + transform("a"))"_s;
        QTest::newRow("plain") << uR"(state("mode"))"_s << uR"(state("mode"))"_s;
        QTest::newRow("other text keeps its escapes") << uR"(say \"hello\")"_s << uR"(say \"hello\")"_s;
        QTest::newRow("capitals are other text") << uR"(State(\"mode\"))"_s << uR"(State(\"mode\"))"_s;
        QTest::newRow("without parenthesis") << uR"(state \"mode\")"_s << uR"(state \"mode\")"_s;
        QTest::newRow("blanks stay") << uR"( state(\"m\") )"_s << uR"( state("m") )"_s;
        QTest::newRow("empty") << QString() << QString();
    }

    void escapedQuotesOfExpressionsAreMadePlain()
    {
        QFETCH(QString, text);
        QTEST(normalizeExpression(text), "clean");
    }

    void threeFormsOfTextAreExpressions_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("expected");
        QTest::newRow("arg_0") << u"arg_0"_s << true;
        QTest::newRow("arg_0 and more") << u"arg_0 + 1"_s << false;
        QTest::newRow("arg_1") << u"arg_1"_s << false;
        QTest::newRow("arg_0 in capitals") << u"ARG_0"_s << false;
        QTest::newRow("transform first") << u"transform(arg_0, 2)"_s << true;
        QTest::newRow("transform later") << u"2 * transform(arg_0)"_s << false;
        QTest::newRow("transform in capitals") << u"Transform(arg_0)"_s << false;
        QTest::newRow("state first") << u"state(a)"_s << true;
        QTest::newRow("state anywhere") << u"not state(a)"_s << true;
        QTest::newRow("state in capitals") << u"STATE(a)"_s << false;
        QTest::newRow("empty") << QString() << false;
    }

    void threeFormsOfTextAreExpressions()
    {
        QFETCH(QString, text);
        QTEST(isExpression(text), "expected");
    }

    void defaultsBecomeText_data()
    {
        QTest::addColumn<QJsonValue>("value");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *what, const QJsonValue &value, const QStringList &texts) {
            const QStringList types{u"bool"_s, u"int"_s, u"double"_s, u"string"_s, u"colour"_s};
            for (qsizetype i = 0; i < types.size(); ++i)
                QTest::addRow("%s, %s", what, qPrintable(types.at(i))) << value << types.at(i) << texts.at(i);
        };
        const auto same = [](const QString &text) { return QStringList(5, text); };
        const QStringList missing{u"false"_s, u"0"_s, u"0.0"_s, QString(), QString()};
        row("missing", QJsonValue::Undefined, missing);
        row("null", QJsonValue::Null, missing);
        row("true", true, same(u"true"_s));
        row("false", false, same(u"false"_s));
        row("whole number", 3, same(u"3"_s));
        row("number", 3.75, {u"3.75"_s, u"3"_s, u"3.75"_s, u"3.75"_s, u"3.75"_s});
        row("negative number", -3.75, {u"-3.75"_s, u"-3"_s, u"-3.75"_s, u"-3.75"_s, u"-3.75"_s});
        row("six digits", 1234567.0,
            {u"1.23457e+06"_s, u"1234567"_s, u"1.23457e+06"_s, u"1.23457e+06"_s, u"1.23457e+06"_s});
        row("string", u" Auto 1 "_s, same(u" Auto 1 "_s));
        row("empty string", QString(), same(QString()));
        row("array", QJsonArray{1}, same(QString()));
        row("object", QJsonObject{{u"a"_s, 1}}, same(QString()));
    }

    void defaultsBecomeText()
    {
        QFETCH(QJsonValue, value);
        QFETCH(QString, type);
        QTEST(defaultValueText(value, type), "text");
    }

    void textBecomesAValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QJsonValue>("value");
        const auto row = [](const char *what, const QString &text, const QString &type,
                            const QJsonValue &value) { QTest::newRow(what) << text << type << value; };
        row("bool true", u"true"_s, u"bool"_s, true);
        row("bool true in capitals", u"TRUE"_s, u"bool"_s, true);
        row("bool 1", u"1"_s, u"bool"_s, true);
        row("bool false", u"False"_s, u"bool"_s, false);
        row("bool 0", u"0"_s, u"bool"_s, false);
        row("bool with blanks", u"  true\t"_s, u"bool"_s, true);
        row("bool of another word", u"yes"_s, u"bool"_s, u"yes"_s);
        row("bool of another number", u"2"_s, u"bool"_s, u"2"_s);
        row("bool of 1.0", u"1.0"_s, u"bool"_s, u"1.0"_s);

        row("int", u"42"_s, u"int"_s, 42.0);
        row("int with sign", u"-42"_s, u"int"_s, -42.0);
        row("int with blanks", u" 42 "_s, u"int"_s, 42.0);
        row("int beyond 32 bits", u"4294967296"_s, u"int"_s, 4294967296.0);
        row("int beyond 64 bits", u"9223372036854775808"_s, u"int"_s, u"9223372036854775808"_s);
        row("int of letters", u"abc"_s, u"int"_s, u"abc"_s);
        row("int with a fraction", u"1.5"_s, u"int"_s, u"1.5"_s);
        row("int with an exponent", u"1e3"_s, u"int"_s, u"1e3"_s);
        row("int in base 16", u"0x10"_s, u"int"_s, u"0x10"_s);

        row("double", u"1.5"_s, u"double"_s, 1.5);
        row("double without fraction", u"2"_s, u"double"_s, 2.0);
        row("double with an exponent", u"-1.5e3"_s, u"double"_s, -1500.0);
        row("double of letters", u"abc"_s, u"double"_s, u"abc"_s);
        row("double with a comma", u"1,5"_s, u"double"_s, u"1,5"_s);
        row("double infinite", u"inf"_s, u"double"_s, u"inf"_s);
        row("double negative infinite", u"-inf"_s, u"double"_s, u"-inf"_s);
        row("double not a number", u"nan"_s, u"double"_s, u"nan"_s);
        row("double too large", u"1e999"_s, u"double"_s, u"1e999"_s);

        row("string of a number", u"1.5"_s, u"string"_s, u"1.5"_s);
        row("string trimmed", u" a b "_s, u"string"_s, u"a b"_s);
        row("string of a word for bool", u"true"_s, u"string"_s, u"true"_s);
        row("unknown type", u"12"_s, u"colour"_s, u"12"_s);
        row("type compared exactly", u"12"_s, u"Int"_s, u"12"_s);
        row("placeholder of a task", u"param: Speed"_s, u"int"_s, u"param: Speed"_s);

        for (const char *type : {"bool", "int", "double", "string", "colour"}) {
            const QString word = QString::fromLatin1(type);
            QTest::addRow("empty, %s", type) << QString() << word << QJsonValue(QString());
            QTest::addRow("blank, %s", type) << u"  "_s << word << QJsonValue(QString());
            QTest::addRow("arg_0, %s", type) << u" arg_0 "_s << word << QJsonValue(u"arg_0"_s);
            QTest::addRow("transform, %s", type)
                << uR"(transform(\"a\"))"_s << word << QJsonValue(uR"(transform("a"))"_s);
            QTest::addRow("state, %s", type)
                << uR"(not state(\\"a\\"))"_s << word << QJsonValue(uR"(not state("a"))"_s);
        }
        row("capital transform under int", u"Transform(1)"_s, u"int"_s, u"Transform(1)"_s);
    }

    void textBecomesAValue()
    {
        QFETCH(QString, text);
        QFETCH(QString, type);
        QFETCH(QJsonValue, value);
        const QJsonValue parsed = parseArgumentValue(text, type);
        QCOMPARE(parsed.type(), value.type());
        QCOMPARE(parsed, value);
    }

    void valuesBecomeText_data()
    {
        QTest::addColumn<QJsonValue>("value");
        QTest::addColumn<QString>("type");
        QTest::addColumn<std::optional<QString>>("text");
        const auto row = [](const char *what, const QJsonValue &value, const QString &type,
                            const std::optional<QString> &text) {
            QTest::newRow(what) << value << type << text;
        };
        row("absent", QJsonValue::Undefined, u"int"_s, std::nullopt);
        row("string", u" as it is "_s, u"int"_s, u" as it is "_s);
        row("escaped expression", uR"(state(\"a\"))"_s, u"string"_s, uR"(state("a"))"_s);
        row("escaped other string", uR"(\"a\")"_s, u"string"_s, uR"(\"a\")"_s);
        row("true", true, u"string"_s, u"true"_s);
        row("false", false, u"bool"_s, u"false"_s);
        row("whole number under int", 42, u"int"_s, u"42"_s);
        row("fraction under int", 42.9, u"int"_s, u"42"_s);
        row("negative fraction under int", -42.9, u"int"_s, u"-42"_s);
        row("above int", 1e300, u"int"_s, u"2147483647"_s);
        row("below int", -1e300, u"int"_s, u"-2147483648"_s);
        row("infinite under int", infinity, u"int"_s, u"2147483647"_s);
        row("not a number under int", notANumber, u"int"_s, u"0"_s);
        row("fraction under double", 0.125, u"double"_s, u"0.125"_s);
        row("six digits under double", 1234567.0, u"double"_s, u"1.23457e+06"_s);
        row("six digits under string", 1234567.0, u"string"_s, u"1.23457e+06"_s);
        row("number under bool", 1, u"bool"_s, u"1"_s);
        row("null", QJsonValue::Null, u"int"_s, QString());
        row("array", QJsonArray{1}, u"int"_s, QString());
        row("object", QJsonObject{{u"a"_s, 1}}, u"int"_s, QString());
    }

    void valuesBecomeText()
    {
        QFETCH(QJsonValue, value);
        QFETCH(QString, type);
        QFETCH(std::optional<QString>, text);
        QCOMPARE(argumentText(value, type), text);
    }

    void aRoundTripKeepsSixSignificantDigits()
    {
        const auto text = argumentText(1234567.0, u"double"_s);
        QVERIFY(text);
        QCOMPARE(parseArgumentValue(*text, u"double"_s), QJsonValue(1234570.0));
    }

    void inputsFeedTheTypesThatSuitThem_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<bool>("fromAxis");
        QTest::addColumn<bool>("fromButton");
        QTest::newRow("double") << u"double"_s << true << false;
        QTest::newRow("int") << u"int"_s << true << false;
        QTest::newRow("bool") << u"bool"_s << false << true;
        QTest::newRow("string") << u"string"_s << false << false;
        QTest::newRow("unknown") << u"float3"_s << false << false;
    }

    void inputsFeedTheTypesThatSuitThem()
    {
        QFETCH(QString, type);
        QTEST(takesInput(type, 0), "fromAxis");
        QTEST(takesInput(type, 1), "fromButton");
        QVERIFY(!takesInput(type, -1));
        QVERIFY(!takesInput(type, 2));
    }
};

GAMEPAD_TEST_MAIN(TestArgumentTyping)
#include "tst_argumenttyping.moc"
