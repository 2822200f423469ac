// SPDX-License-Identifier: MIT
#include "actionsdocument.h"

#include "entries.h"
#include "testmain.h"

#include <QtCore/QJsonDocument>

using namespace Qt::StringLiterals;

class TestActionsDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aListIsTakenInThreeForms_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QJsonArray>("list");
        const QJsonArray one{u"a"_s};
        QTest::newRow("the document is the list") << R"(["a"])"_ba << one;
        QTest::newRow("under ref") << R"({"ref": ["a"]})"_ba << one;
        QTest::newRow("under refs") << R"({"refs": ["a"]})"_ba << one;
        QTest::newRow("ref before refs") << R"({"refs": ["b"], "ref": ["a"]})"_ba << one;
        QTest::newRow("an empty ref before refs") << R"({"refs": ["b"], "ref": []})"_ba << QJsonArray();
        QTest::newRow("ref that is no array") << R"({"refs": ["a"], "ref": {"x": []}})"_ba << one;
        QTest::newRow("neither") << R"({"actions": ["a"], "REF": ["a"]})"_ba << QJsonArray();
        QTest::newRow("both of other types") << R"({"ref": 3, "refs": "a"})"_ba << QJsonArray();
        QTest::newRow("empty object") << "{}"_ba << QJsonArray();
        QTest::newRow("empty array") << "[]"_ba << QJsonArray();
        QTest::newRow("with a mark of its encoding") << "\xEF\xBB\xBF[\"a\"]"_ba << one;
    }

    void aListIsTakenInThreeForms()
    {
        QFETCH(QByteArray, json);
        QFETCH(QJsonArray, list);
        QVERIFY(readActions(json).has_value());
        QCOMPARE(*readActions(json), list);
    }

    void whatDoesNotParseIsNoDocument_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("blank") << " \n"_ba;
        QTest::newRow("cut short") << R"({"ref": [)"_ba;
        QTest::newRow("no JSON") << "name = LockOn"_ba;
        QTest::newRow("invalid UTF-8") << "[\"\xFF\xFE\"]"_ba;
        QTest::newRow("zeros") << QByteArray(64, '\0');
        QTest::newRow("nested beyond measure") << QByteArray(100000, '[') + QByteArray(100000, ']');
    }

    void whatDoesNotParseIsNoDocument()
    {
        QFETCH(QByteArray, json);
        QVERIFY(!readActions(json));
    }

    void theListIsWrittenUnderRefAndIndented()
    {
        QCOMPARE(actionsJson({QJsonObject{{u"name"_s, u"A"_s}}}), R"({
    "ref": [
        {
            "name": "A"
        }
    ]
}
)"_ba);
        QCOMPARE(QJsonDocument::fromJson(actionsJson({})).object(), (QJsonObject{{u"ref"_s, QJsonArray()}}));
    }

    void aNameIsTrimmedAndABlankOneNumbered()
    {
        QCOMPARE(displayName(u" \tLockOn \n"_s, 4), u"LockOn"_s);
        QCOMPARE(displayName(u"A  B"_s, 0), u"A  B"_s);
        QCOMPARE(displayName(QString(), 0), u"Action 1"_s);
        QCOMPARE(displayName(u"  "_s, 11), u"Action 12"_s);
        QCOMPARE(displayName(u"%1"_s, 1), u"%1"_s);
    }

    void aStoredNameIsATextOrNothing()
    {
        const QJsonArray actions{QJsonObject{{u"name"_s, u" A "_s}}, QJsonObject{{u"name"_s, 3}},
                                 QJsonObject{}, u"A"_s, QJsonValue()};
        QCOMPARE(storedName(actions, 0), u" A "_s);
        for (int i = 1; i < actions.size(); ++i)
            QCOMPARE(storedName(actions, i), QString());
    }

    void aNewActionHasANameAndNoSteps()
    {
        QCOMPARE(newAction(), (QJsonObject{{u"name"_s, u"Nouvelle action"_s}, {u"tasks"_s, QJsonArray()}}));
    }

    void tasksAreStoredWithoutActionAndWithoutEmptyOnes()
    {
        QJsonObject named = task(u"Tir"_s);
        named.insert(u"action"_s, u"x"_s);
        QCOMPARE(storedTasks({task(u"A"_s), {}, named, {{u"action"_s, u"only"_s}}, task(u"A"_s)}),
                 (QJsonArray{task(u"A"_s), task(u"Tir"_s), task(u"A"_s)}));
        QCOMPARE(storedTasks({}), QJsonArray());
    }
};

GAMEPAD_TEST_MAIN(TestActionsDocument)
#include "tst_actionsdocument.moc"
