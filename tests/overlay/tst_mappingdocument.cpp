// SPDX-License-Identifier: MIT
#include "mappingdocument.h"

#include "functionindex.h"
#include "jsontext.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

namespace
{
const QByteArray catalogueText = R"([7, 'tir', null, {}, {'name':''}, {'name':'  '}, {'name':3},
    {'name':' Tir ','is':'first'}, {'name':'TIR','is':'second'}, {'name':'Zoom +','is':'zoom'},
    {'name':'Σας','is':'sigma'}, {'name':'straße','is':'street'}])";

/// The value that a task of one key has after substitution.
QJsonValue substituted(const QByteArray &value, const QByteArray &args)
{
    return substituteParams(array("[" + value + "]").first(), object(args));
}
} // namespace

class TestMappingDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aFunctionIsFoundByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("is");
        QTest::newRow("the first of a name") << u"Tir"_s << u"first"_s;
        QTest::newRow("another case") << u"tIR"_s << u"first"_s;
        QTest::newRow("the name is not trimmed") << u" Tir "_s << QString();
        QTest::newRow("blank at the end") << u"Tir "_s << QString();
        QTest::newRow("blank inside") << u"zoom +"_s << u"zoom"_s;
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("blank") << u"  "_s << QString();
        QTest::newRow("unknown") << u"Feu"_s << QString();
        QTest::newRow("final sigma") << u"ΣΑΣ"_s << u"sigma"_s;
        QTest::newRow("sharp s") << u"STRASSE"_s << QString();
        QTest::newRow("number") << u"3"_s << QString();
    }

    void aFunctionIsFoundByName()
    {
        QFETCH(const QString, name);
        const QJsonArray catalogue = array(catalogueText);
        QTEST(findFunction(catalogue, name)["is"_L1].toString(), "is");
        QTEST(FunctionIndex(catalogue).find(name)["is"_L1].toString(), "is");
    }

    void anEmptyCatalogueHoldsNoFunction()
    {
        QVERIFY(findFunction({}, u"Tir"_s).isEmpty());
        QVERIFY(FunctionIndex().find(u"Tir"_s).isEmpty());
        QVERIFY(FunctionIndex(QJsonArray()).find(u"Tir"_s).isEmpty());
    }

    void theIndexAnswersAsTheSearchDoes()
    {
        QJsonArray catalogue;
        for (int i = 0; i < 300; ++i)
            catalogue.append(
                QJsonObject{{u"name"_s, u"%1%2"_s.arg(i % 3 ? u"F"_s : u"f"_s).arg(i % 150)}, {u"n"_s, i}});
        const FunctionIndex index(catalogue);
        for (int i = -2; i < 160; ++i) {
            const QString name = u"f%1"_s.arg(i);
            QCOMPARE(index.find(name), findFunction(catalogue, name));
        }
    }

    void tasksComeFromTasksOrElseFromItems_data()
    {
        QTest::addColumn<QByteArray>("function");
        QTest::addColumn<QByteArray>("tasks");
        QTest::newRow("tasks") << QByteArray("{'tasks':[{'ref':'a'}],'items':[{'ref':'b'}]}")
                               << QByteArray("[{'ref':'a'}]");
        QTest::newRow("items") << QByteArray("{'items':[{'ref':'b'}]}") << QByteArray("[{'ref':'b'}]");
        QTest::newRow("no tasks left")
            << QByteArray("{'tasks':[],'items':[{'ref':'b'}]}") << QByteArray("[{'ref':'b'}]");
        QTest::newRow("tasks of a wrong type")
            << QByteArray("{'tasks':{},'items':[{'ref':'b'}]}") << QByteArray("[{'ref':'b'}]");
        QTest::newRow("tasks that are none keep the items out")
            << QByteArray("{'tasks':[1,'x',null,[{'ref':'a'}]],'items':[{'ref':'b'}]}") << QByteArray("[]");
        QTest::newRow("what is no object is dropped")
            << QByteArray("{'tasks':[1,{'ref':'a'},'x',{'ref':'b'}]}")
            << QByteArray("[{'ref':'a'},{'ref':'b'}]");
        QTest::newRow("neither") << QByteArray("{'name':'x'}") << QByteArray("[]");
        QTest::newRow("placeholders")
            << QByteArray("{'tasks':[{'ref':'a','args':{'p':'param:v'},'when':'param:v'}]}")
            << QByteArray("[{'ref':'a','args':{'p':5},'when':5}]");
    }

    void tasksComeFromTasksOrElseFromItems()
    {
        QFETCH(const QByteArray, function);
        QFETCH(const QByteArray, tasks);
        QCOMPARE(buildTaskList(object(function), object("{'v':5}")), array(tasks));
    }

    void aPlaceholderTakesItsArgument_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("args");
        QTest::addColumn<QByteArray>("result");
        const auto row = [](const char *name, const char *value, const char *args, const char *result) {
            QTest::newRow(name) << QByteArray(value) << QByteArray(args) << QByteArray(result);
        };

        row("number", "'param:speed'", "{'speed':5}", "5");
        row("bool", "'param:speed'", "{'speed':true}", "true");
        row("text", "'param:speed'", "{'speed':'fast'}", "'fast'");
        row("object", "'param:speed'", "{'speed':{'a':1}}", "{'a':1}");
        row("array", "'param:speed'", "{'speed':[1,2]}", "[1,2]");
        row("null", "'param:speed'", "{'speed':null}", "null");
        row("blanks around the name", "'param:  speed '", "{'speed':5}", "5");
        row("blanks behind", "'param:speed  '", "{'speed':5}", "5");
        row("another case", "'PARAM:Speed'", "{'speed':5}", "5");
        row("the exact name comes first", "'param:speed'", "{'SPEED':1,'Speed':2,'speed':3}", "3");
        row("else the first in key order", "'param:sPeed'", "{'speed':3,'SPEED':1,'Speed':2}", "1");
        row("a leading blank loses the name", "' param:Speed'", "{'speed':5}", "' param:Speed'");
        row("unknown name", "'param:speed'", "{'power':5}", "'param:speed'");
        row("no arguments", "'param:speed'", "{}", "'param:speed'");
        row("empty name", "'param:'", "{'':4}", "4");
        row("empty name, not there", "'param:'", "{'a':4}", "'param:'");
        row("no prefix", "'speed'", "{'speed':5}", "'speed'");
        row("prefix inside", "'xparam:speed'", "{'speed':5}", "'xparam:speed'");
        row("not filled in twice", "'param:a'", "{'a':'param:b','b':5}", "'param:b'");
        row("in an object", "{'x':{'y':'param:a'},'z':'w'}", "{'a':1}", "{'x':{'y':1},'z':'w'}");
        row("keys are no placeholders", "{'param:a':'param:a'}", "{'a':1}", "{'param:a':1}");
        row("in an array", "['param:a',['param:b',true],{'c':'param:a'}]", "{'a':1,'b':2}",
            "[1,[2,true],{'c':1}]");
        row("number stays", "1.5", "{'a':1}", "1.5");
        row("bool stays", "false", "{'a':1}", "false");
        row("null stays", "null", "{'a':1}", "null");
    }

    void aPlaceholderTakesItsArgument()
    {
        QFETCH(const QByteArray, value);
        QFETCH(const QByteArray, args);
        QFETCH(const QByteArray, result);
        QCOMPARE(substituted(value, args), array("[" + result + "]").first());
    }

    void aLeadingBlankShiftsTheName()
    {
        // The cut takes the blank and five letters, and leaves ":Speed".
        QCOMPARE(substituted("' param:Speed'", "{':speed':1,'speed':2}"), QJsonValue(1));
    }

    void placeholdersAreFilledInFiveHundredLevelsDown()
    {
        QByteArray value = "'param:a'";
        QByteArray expected = "7";
        for (int i = 0; i < 250; ++i) {
            value = "{'x':[" + value + "]}";
            expected = "{'x':[" + expected + "]}";
        }
        QCOMPARE(substituteParams(object(value), object("{'a':7}")), QJsonValue(object(expected)));
    }

    void anEntryHasAKey_data()
    {
        QTest::addColumn<QByteArray>("entry");
        QTest::addColumn<QString>("key");
        QTest::newRow("object") << QByteArray("{'name':' Tir Rapide '}") << u"tir rapide"_s;
        QTest::newRow("text") << QByteArray("' Tir'") << u"tir"_s;
        QTest::newRow("blank name") << QByteArray("{'name':'  '}") << QString();
        QTest::newRow("name of a wrong type") << QByteArray("{'name':5}") << QString();
        QTest::newRow("no name") << QByteArray("{'ref':'x'}") << QString();
        QTest::newRow("number") << QByteArray("5") << QString();
        QTest::newRow("array") << QByteArray("['x']") << QString();
        QTest::newRow("null") << QByteArray("null") << QString();
    }

    void anEntryHasAKey()
    {
        QFETCH(const QByteArray, entry);
        QTEST(functionKey(array("[" + entry + "]").first()), "key");
    }

    void aCatalogueIsFoundInADocument_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QByteArray>("catalogue");
        QTest::newRow("array") << QByteArray("[1,{'name':'a'}]") << QByteArray("[1,{'name':'a'}]");
        QTest::newRow("ref") << QByteArray("{'ref':[1],'services':{'ref':[2]}}") << QByteArray("[1]");
        QTest::newRow("empty ref") << QByteArray("{'ref':[],'services':{'ref':[2]}}") << QByteArray("[]");
        QTest::newRow("services") << QByteArray("{'services':{'ref':[2]}}") << QByteArray("[2]");
        QTest::newRow("ref of a wrong type")
            << QByteArray("{'ref':{},'services':{'ref':[2]}}") << QByteArray("[2]");
        QTest::newRow("services of a wrong type")
            << QByteArray("{'services':[{'ref':[2]}]}") << QByteArray("[]");
        QTest::newRow("services.ref of a wrong type")
            << QByteArray("{'services':{'ref':'x'}}") << QByteArray("[]");
        QTest::newRow("neither") << QByteArray("{'bridges':[1]}") << QByteArray("[]");
    }

    void aCatalogueIsFoundInADocument()
    {
        QFETCH(const QByteArray, document);
        QFETCH(const QByteArray, catalogue);
        QCOMPARE(refArrayOf(parsed(document)), array(catalogue));
    }

    void noDocumentHoldsNoCatalogue() { QCOMPARE(refArrayOf(QJsonDocument()), QJsonArray()); }

    void aCatalogueIsMerged_data()
    {
        QTest::addColumn<QByteArray>("catalogue");
        QTest::addColumn<QByteArray>("added");
        QTest::addColumn<QByteArray>("merged");
        QTest::newRow("new ones go behind") << QByteArray("[{'name':'a'}]") << QByteArray("[{'name':'b'}]")
                                            << QByteArray("[{'name':'a'},{'name':'b'}]");
        QTest::newRow("known ones stay as they are")
            << QByteArray("[{'name':'a','v':1}]") << QByteArray("[{'name':' A ','v':2}]")
            << QByteArray("[{'name':'a','v':1}]");
        QTest::newRow("an object and a text of one name")
            << QByteArray("[{'name':'a'}]") << QByteArray("['A']") << QByteArray("[{'name':'a'}]");
        QTest::newRow("twice in what is added")
            << QByteArray("[]") << QByteArray("[{'name':'a'},'a']") << QByteArray("[{'name':'a'}]");
        QTest::newRow("without a key, always")
            << QByteArray("[7,{}]") << QByteArray("[7,7,{},{'name':' '},null]")
            << QByteArray("[7,{},7,7,{},{'name':' '},null]");
        QTest::newRow("nothing") << QByteArray("[1,'a']") << QByteArray("[]") << QByteArray("[1,'a']");
    }

    void aCatalogueIsMerged()
    {
        QFETCH(const QByteArray, catalogue);
        QFETCH(const QByteArray, added);
        QFETCH(const QByteArray, merged);
        QCOMPARE(mergedCatalogue(array(catalogue), array(added)), array(merged));
    }

    void aConfigurationBecomesATask_data()
    {
        QTest::addColumn<QByteArray>("config");
        QTest::addColumn<QByteArray>("task");
        const auto row = [](const char *name, const char *config, const char *task) {
            QTest::newRow(name) << QByteArray(config) << QByteArray(task);
        };
        row("whole", "{'ref':'a','action':'b','args':{'p':1}}", "{'ref':'a','action':'b','args':{'p':1}}");
        row("ref from the action", "{'action':'b'}", "{'ref':'b','action':'b','args':{}}");
        row("empty ref", "{'ref':'','action':'b'}", "{'ref':'b','action':'b','args':{}}");
        row("blank ref stays", "{'ref':' ','action':'b'}", "{'ref':' ','action':'b','args':{}}");
        row("ref of a wrong type", "{'ref':5,'action':'b'}", "{'ref':'b','action':'b','args':{}}");
        row("action of another type", "{'ref':'a','action':{'x':1}}",
            "{'ref':'a','action':{'x':1},'args':{}}");
        row("action of another type alone", "{'action':[1]}", "{'action':[1],'args':{}}");
        row("null action", "{'ref':'a','action':null}", "{'ref':'a','args':{}}");
        row("args of a wrong type", "{'ref':'a','args':[1]}", "{'ref':'a','args':{}}");
        row("other keys go", "{'ref':'a','when':'x'}", "{'ref':'a','args':{}}");
        row("empty", "{}", "{'args':{}}");
    }

    void aConfigurationBecomesATask()
    {
        QFETCH(const QByteArray, config);
        QFETCH(const QByteArray, task);
        QCOMPARE(normalizedToolConfig(object(config)), object(task));
    }

    void aMappingHasFourEmptyPartsBesideItsBridges()
    {
        QCOMPARE(mappingDocument(array("[{'dst':[]}]")),
                 object("{'signals':[],'onStartup':[],'onClose':[],'timers':[],'bridges':[{'dst':[]}]}"));
    }
};

GAMEPAD_TEST_MAIN(TestMappingDocument)
#include "tst_mappingdocument.moc"
