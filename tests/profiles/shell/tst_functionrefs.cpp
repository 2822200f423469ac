// SPDX-License-Identifier: MIT
#include "functionrefs.h"

#include "jsontext.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

class TestFunctionRefs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theListIsTheFirstPlaceThatIsAnArray_data()
    {
        QTest::addColumn<QJsonDocument>("document");
        QTest::addColumn<QJsonArray>("refs");
        const auto row = [](const char *name, const char *document, const char *refs) {
            QTest::newRow(name) << parsed(document) << array(refs);
        };
        row("a bare array stands as it is", "['a', 1, null]", "['a', 1, null]");
        row("ref", "{'ref': ['a']}", "['a']");
        row("refs", "{'refs': ['a']}", "['a']");
        row("services", "{'services': {'ref': ['a']}}", "['a']");
        row("ref goes before refs", "{'refs': ['b'], 'ref': ['a']}", "['a']");
        row("refs goes before services", "{'services': {'ref': ['b']}, 'refs': ['a']}", "['a']");
        row("an empty ref is an array", "{'ref': [], 'refs': ['a']}", "[]");
        row("ref of another type", "{'ref': {'a': 1}, 'refs': ['a']}", "['a']");
        row("ref and refs of another type", "{'ref': 1, 'refs': 'x', 'services': {'ref': ['a']}}", "['a']");
        row("services without a list", "{'services': {'refs': ['a']}}", "[]");
        row("services of another type", "{'services': ['a']}", "[]");
        row("nothing", "{}", "[]");
        QTest::newRow("no document") << QJsonDocument() << QJsonArray();
    }
    void theListIsTheFirstPlaceThatIsAnArray()
    {
        QFETCH(const QJsonDocument, document);
        QTEST(extractRefs(document), "refs");
    }

    void anEntryIsKnownByItsTrimmedNameInLowerCase_data()
    {
        QTest::addColumn<QJsonValue>("entry");
        QTest::addColumn<QString>("key");
        const auto row = [](const char *name, const QJsonValue &entry, const QString &key) {
            QTest::newRow(name) << entry << key;
        };
        row("object", QJsonObject{{u"name"_s, u" \tCamera.Zoom "_s}}, u"camera.zoom"_s);
        row("text", u" Ébène "_s, u"ébène"_s);
        row("blank name", QJsonObject{{u"name"_s, u"  "_s}}, {});
        row("name of another type", QJsonObject{{u"name"_s, 3}}, {});
        row("object without a name", QJsonObject{{u"ref"_s, u"x"_s}}, {});
        row("number", 3, {});
        row("true", true, {});
        row("null", QJsonValue::Null, {});
        row("array", QJsonArray{u"x"_s}, {});
    }
    void anEntryIsKnownByItsTrimmedNameInLowerCase()
    {
        QFETCH(const QJsonValue, entry);
        QTEST(refKey(entry), "key");
    }

    void theHostsEntriesWin_data()
    {
        QTest::addColumn<QJsonArray>("host");
        QTest::addColumn<QJsonArray>("system");
        QTest::addColumn<QJsonArray>("merged");
        const auto row = [](const char *name, const char *host, const char *system, const char *merged) {
            QTest::newRow(name) << array(host) << array(system) << array(merged);
        };
        row("others follow in order", "['b', 'a']", "['d', 'c']", "['b', 'a', 'd', 'c']");
        row("letter case and outer blanks tell no difference", "[{'name': 'Go', 'x': 1}]",
            "[{'name': ' gO '}, 'GO', 'come']", "[{'name': 'Go', 'x': 1}, 'come']");
        row("the first of the system's own duplicates", "[]",
            "[{'name': 'a', 'x': 1}, {'name': 'A', 'x': 2}]", "[{'name': 'a', 'x': 1}]");
        row("what has no name is always taken", "[{}, 1]", "[{}, {}, 1, 1, null, [], '']",
            "[{}, 1, {}, {}, 1, 1, null, [], '']");
        row("the host's own duplicates stand", "['a', 'A']", "['b', 'a']", "['a', 'A', 'b']");
        row("no host entries", "[]", "['a']", "['a']");
        row("no system entries", "['a', 'a', {}, null]", "[]", "['a', 'a', {}, null]");
    }
    void theHostsEntriesWin()
    {
        QFETCH(const QJsonArray, host);
        QFETCH(const QJsonArray, system);
        QTEST(mergeRefs(host, system), "merged");
    }
};

GAMEPAD_TEST_MAIN(TestFunctionRefs)
#include "tst_functionrefs.moc"
