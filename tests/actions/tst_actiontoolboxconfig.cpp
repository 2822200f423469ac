// SPDX-License-Identifier: MIT
#include "toolboxstage.h"

#include "entries.h"
#include "testmain.h"

#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;

namespace
{
const QColor orange(255, 165, 0);

QJsonArray catalogue()
{
    return {function(u"Tir"_s),
            function(u"LockOn"_s, {param(u"cible"_s, u"string"_s), param(u"mode"_s, u"string"_s, u"auto"_s)}),
            function(u"Vol"_s, {param(u"vitesse"_s, u"double"_s), param(u"tours"_s, u"int"_s),
                                param(u"actif"_s, u"bool"_s)}),
            function(u"tir"_s)};
}

QJsonObject config(const QString &name, const QJsonObject &args = {})
{
    return {{u"ref"_s, name}, {u"action"_s, name}, {u"args"_s, args}};
}
} // namespace

class TestActionToolBoxConfig : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }
    void cleanup() { runDeferred(); }

    void theNameComesFromRefOrFromAction_data()
    {
        QTest::addColumn<QJsonObject>("applied");
        QTest::addColumn<QString>("name"); // empty for no function
        const auto row = [](const char *what, const QJsonObject &applied, const QString &name) {
            QTest::newRow(what) << applied << name;
        };
        row("ref", {{u"ref"_s, u"Tir"_s}}, u"Tir"_s);
        row("action alone", {{u"action"_s, u"Tir"_s}}, u"Tir"_s);
        row("ref before action", {{u"ref"_s, u"Tir"_s}, {u"action"_s, u"LockOn"_s}}, u"Tir"_s);
        row("action when ref is empty", {{u"ref"_s, QString()}, {u"action"_s, u"Tir"_s}}, u"Tir"_s);
        row("action when ref is no string", {{u"ref"_s, 3}, {u"action"_s, u"Tir"_s}}, u"Tir"_s);
        row("action when ref is unknown", {{u"ref"_s, u"Autre"_s}, {u"action"_s, u"Tir"_s}}, u"Tir"_s);
        row("action when ref is none", {{u"ref"_s, u"none"_s}, {u"action"_s, u"Tir"_s}}, u"Tir"_s);
        row("exactly, case included", {{u"ref"_s, u"tir"_s}}, u"tir"_s);
        row("unknown by case", {{u"ref"_s, u"TIR"_s}}, u"TIR"_s);
        row("unknown by a blank", {{u"ref"_s, u" Tir"_s}}, u" Tir"_s);
        row("both unknown", {{u"ref"_s, u"Autre"_s}, {u"action"_s, u"Encore"_s}}, u"Autre"_s);
        row("empty", {}, QString());
        row("both empty", {{u"ref"_s, QString()}, {u"action"_s, QString()}}, QString());
        row("wrong types", {{u"ref"_s, QJsonArray{u"Tir"_s}}, {u"action"_s, true}}, QString());
        row("none", {{u"action"_s, u"none"_s}}, QString());
        row("none and an unknown action", {{u"ref"_s, u"none"_s}, {u"action"_s, u"Encore"_s}}, QString());
        row("unknown and none", {{u"ref"_s, u"Autre"_s}, {u"action"_s, u"none"_s}}, u"Autre"_s);
        row("none in capitals", {{u"ref"_s, u"NONE"_s}}, QString());
    }

    void theNameComesFromRefOrFromAction()
    {
        QFETCH(QJsonObject, applied);
        QFETCH(QString, name);
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}));
        stage.box().applyConfig(applied);
        QCOMPARE(stage.box().config(), name.isEmpty() ? QJsonObject() : config(name));
        if (name.isEmpty()) {
            QCOMPARE(stage.combo().currentData(), QVariant(-1));
            QVERIFY(ToolBoxStage::texts().isEmpty());
        }
    }

    void noneSelectsAFunctionOfThatNameWhereThereIsOne()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices({function(u"Tir"_s), function(u"none"_s)});
        stage.box().applyConfig({{u"action"_s, u"none"_s}});
        QCOMPARE(stage.box().config(), config(u"none"_s));
        stage.box().applyConfig({{u"action"_s, u"None"_s}});
        QCOMPARE(stage.box().config(), QJsonObject());
    }

    void anUnknownNameIsShownInOrange()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(config(u"Disparue"_s, {{u"a"_s, 1}}));
        QCOMPARE(stage.combo().currentText(), u"Disparue"_s);
        QCOMPARE(stage.combo().currentData(), QVariant(4));
        QCOMPARE(stage.combo().currentData(Qt::ForegroundRole).value<QColor>(), orange);
        QCOMPARE(stage.box().config(), config(u"Disparue"_s));
    }

    void anUnknownNameAgainTakesItsEntryAgain()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(config(u"Disparue"_s));
        stage.box().applyConfig(config(u"Perdue"_s));
        stage.box().applyConfig(config(u"Disparue"_s));
        QCOMPARE(stage.combo().count(), 7);
        QCOMPARE(stage.combo().currentText(), u"Disparue"_s);
    }

    void aConfigurationBeforeTheFirstCatalogueIsKept()
    {
        ToolBoxStage stage;
        const QSignalSpy durty(&stage.box(), &ActionToolBox::durty);
        stage.box().applyConfig(config(u"Tir"_s));
        QCOMPARE(durty.count(), 2);
        QCOMPARE(stage.entries(), QStringList{u"Tir"_s});
        QCOMPARE(stage.box().config(), config(u"Tir"_s));
        stage.box().setExternalServices(catalogue());
        QCOMPARE(stage.combo().currentIndex(), 1);
        QVERIFY(!stage.combo().currentData(Qt::ForegroundRole).isValid());
    }

    void anEmptyConfigurationBeforeTheFirstCatalogueLeavesNothing()
    {
        ToolBoxStage stage;
        const QSignalSpy durty(&stage.box(), &ActionToolBox::durty);
        stage.box().applyConfig({});
        QCOMPARE(durty.count(), 1);
        QCOMPARE(stage.combo().currentIndex(), -1);
        QCOMPARE(stage.combo().count(), 0);
        QVERIFY(!ToolBoxStage::panel());
    }

    void argumentsAreFilledInAndGivenBackTyped()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        const QJsonObject args{{u"vitesse"_s, 1.5}, {u"tours"_s, 3}, {u"actif"_s, true}};
        stage.box().applyConfig(config(u"Vol"_s, args));
        QCOMPARE(ToolBoxStage::texts(), (QStringList{u"1.5"_s, u"3"_s, u"true"_s}));
        QCOMPARE(stage.box().config(), config(u"Vol"_s, args));
    }

    void anEmptyFieldCountsAsItsDefault()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(config(u"Vol"_s, {{u"unknown"_s, 1}}));
        QCOMPARE(ToolBoxStage::texts(), QStringList(3, QString()));
        QCOMPARE(stage.box().config(),
                 config(u"Vol"_s, {{u"vitesse"_s, 0.0}, {u"tours"_s, 0}, {u"actif"_s, false}}));
        stage.box().applyConfig(config(u"LockOn"_s));
        QCOMPARE(stage.box().config(),
                 config(u"LockOn"_s, {{u"cible"_s, QString()}, {u"mode"_s, u"auto"_s}}));
    }

    void aBlankFieldCountsAsItsDefaultToo()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(config(u"LockOn"_s, {{u"mode"_s, u"  "_s}}));
        QCOMPARE(stage.box().config().value("args"_L1).toObject().value("mode"_L1), u"auto"_s);
    }

    void valuesWithoutATextEmptyTheField()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(
            config(u"Vol"_s,
                   {{u"vitesse"_s, QJsonValue::Null}, {u"tours"_s, QJsonArray{1}}, {u"actif"_s, u"oui"_s}}));
        QCOMPARE(ToolBoxStage::texts(), (QStringList{QString(), QString(), u"oui"_s}));
    }

    void hostileNumbersAreTamed()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(config(u"Vol"_s, {{u"vitesse"_s, u"1e999"_s}, {u"tours"_s, 1e300}}));
        QCOMPARE(
            stage.box().config(),
            config(u"Vol"_s, {{u"vitesse"_s, u"1e999"_s}, {u"tours"_s, 2147483647}, {u"actif"_s, false}}));
    }

    void argsThatAreNoObjectCountAsNone()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig({{u"ref"_s, u"Vol"_s}, {u"args"_s, QJsonArray{1}}});
        QCOMPARE(ToolBoxStage::texts(), (QStringList{u"arg_0"_s, QString(), QString()}));
    }

    void expressionsReadCleanAndAreStoredClean()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(config(u"LockOn"_s, {{u"cible"_s, uR"(state(\\"a\\"))"_s}}));
        QCOMPARE(ToolBoxStage::texts().first(), uR"(state("a"))"_s);
        QCOMPARE(stage.box().config().value("args"_L1).toObject().value("cible"_L1), uR"(state("a"))"_s);
    }

    void aTextOfSeveralLinesSurvivesItsField()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        const QJsonObject args{{u"cible"_s, u"transform(a,\n\tb)"_s}, {u"mode"_s, u"x\r\ny\u2028z"_s}};
        stage.box().applyConfig(config(u"LockOn"_s, args));
        QCOMPARE(stage.box().config(), config(u"LockOn"_s, args));
    }

    void aLaterParameterOfTheSameNameWins()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(
            {function(u"f"_s, {param(u"a"_s, u"int"_s, 1), param(u"a"_s, u"int"_s, 2)})});
        stage.box().applyConfig(config(u"f"_s, {{u"b"_s, 1}}));
        QCOMPARE(stage.box().config(), config(u"f"_s, {{u"a"_s, 2}}));
    }

    void namelessParametersAreKept()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices({function(u"f"_s, {param(QString(), u"string"_s, u"x"_s)})});
        stage.box().applyConfig(config(u"f"_s));
        QCOMPARE(stage.box().config(), config(u"f"_s, {{QString(), u"x"_s}}));
    }

    void eachConfigurationEmitsAsOftenAsTold_data()
    {
        QTest::addColumn<QJsonObject>("first");
        QTest::addColumn<QJsonObject>("second");
        QTest::addColumn<int>("emissions");
        const auto row = [](const char *what, const QJsonObject &first, const QJsonObject &second,
                            int emissions) { QTest::newRow(what) << first << second << emissions; };
        row("another function: the selection, the end", {}, config(u"Tir"_s), 2);
        row("the same function: the end", config(u"Tir"_s), config(u"Tir"_s), 1);
        row("no function after one", config(u"Tir"_s), {}, 2);
        row("no function after none", {}, {}, 1);
        row("none after a function", config(u"Tir"_s), {{u"action"_s, u"none"_s}}, 2);
        row("unknown", {}, config(u"Disparue"_s), 2);
        row("unknown again", config(u"Disparue"_s), config(u"Disparue"_s), 1);
        row("one more for each text", {}, config(u"LockOn"_s, {{u"cible"_s, u"a"_s}, {u"mode"_s, u"b"_s}}),
            4);
        row("an empty text is no change", {}, config(u"LockOn"_s, {{u"cible"_s, QString()}}), 2);
        // The selection fills a field and the second form is filled again.
        row("arg_0 twice", {}, config(u"Vol"_s), 4);
        row("arg_0 once", config(u"Vol"_s), config(u"Vol"_s), 2);
        row("arg_0 by the selection alone", {}, config(u"Vol"_s, {{u"tours"_s, 1}}), 4);
    }

    void eachConfigurationEmitsAsOftenAsTold()
    {
        QFETCH(QJsonObject, first);
        QFETCH(QJsonObject, second);
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(first);
        const QSignalSpy durty(&stage.box(), &ActionToolBox::durty);
        stage.box().applyConfig(second);
        QTEST(static_cast<int>(durty.count()), "emissions");
    }

    void typingEmitsOncePerChange()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(config(u"LockOn"_s));
        stage.show();
        stage.box().openSettings();
        const QSignalSpy durty(&stage.box(), &ActionToolBox::durty);
        QTest::keyClicks(ToolBoxStage::edit(0), u"nord"_s);
        QCOMPARE(durty.count(), 4);
        QTest::keyClick(ToolBoxStage::edit(0), Qt::Key_Backspace);
        QCOMPARE(durty.count(), 5);
        QCOMPARE(stage.box().config(), config(u"LockOn"_s, {{u"cible"_s, u"nor"_s}, {u"mode"_s, u"auto"_s}}));
    }

    void theKindOfInputIsTakenEachTime()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        const QSignalSpy durty(&stage.box(), &ActionToolBox::durty);
        stage.box().setInputKind(1);
        stage.box().setInputKind(1);
        QCOMPARE(durty.count(), 2);
    }

    void theInputFillsTheFirstFieldThatSuitsIt_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("axis") << 0 << QStringList{u"arg_0"_s, QString(), QString(), QString()};
        QTest::newRow("button") << 1 << QStringList{QString(), u"arg_0"_s, QString(), QString()};
        QTest::newRow("neither") << 2 << QStringList(4, QString());
    }

    void theInputFillsTheFirstFieldThatSuitsIt()
    {
        QFETCH(int, kind);
        ToolBoxStage stage;
        stage.box().setInputKind(kind);
        stage.box().setExternalServices(
            {function(u"f"_s, {param(u"a"_s, u"int"_s), param(u"b"_s, u"bool"_s), param(u"c"_s, u"string"_s),
                               param(u"d"_s, u"double"_s)})});
        stage.box().applyConfig(config(u"f"_s));
        QTEST(ToolBoxStage::texts(), "texts");
    }

    void eachCallFillsOneMoreField()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices({function(
            u"f"_s, {param(u"a"_s, u"double"_s, 1.5), param(u"b"_s, u"string"_s), param(u"c"_s, u"int"_s)})});
        stage.box().applyConfig(config(u"f"_s, {{u"b"_s, u"x"_s}}));
        QCOMPARE(ToolBoxStage::texts(), (QStringList{QString(), u"x"_s, QString()}));
        QSignalSpy durty(&stage.box(), &ActionToolBox::durty);
        stage.box().setInputKind(0);
        QCOMPARE(ToolBoxStage::texts(), (QStringList{u"arg_0"_s, u"x"_s, QString()}));
        QCOMPARE(durty.count(), 2);
        stage.box().setInputKind(0);
        QCOMPARE(ToolBoxStage::texts(), (QStringList{u"arg_0"_s, u"x"_s, u"arg_0"_s}));
        QCOMPARE(durty.count(), 4);
        stage.box().setInputKind(0);
        QCOMPARE(durty.count(), 5);
    }

    void theKindOfInputIsToldOnceItIsFilledIn()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(
            {function(u"f"_s, {param(u"a"_s, u"double"_s), param(u"b"_s, u"string"_s)})});
        stage.box().applyConfig(config(u"f"_s, {{u"b"_s, u"x"_s}}));
        QList<QJsonObject> told;
        connect(&stage.box(), &ActionToolBox::durty, &stage.box(),
                [&] { told.append(stage.box().config()); });
        stage.box().setInputKind(0);
        const QJsonObject filled = config(u"f"_s, {{u"a"_s, u"arg_0"_s}, {u"b"_s, u"x"_s}});
        QCOMPARE(told, (QList{filled, filled})); // by the field, by the kind
    }

    void aFilledFieldIsPassedOverAndABlankOneIsNot()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(
            {function(u"f"_s, {param(u"a"_s, u"int"_s), param(u"b"_s, u"int"_s), param(u"c"_s, u"int"_s)})});
        stage.box().applyConfig(config(u"f"_s, {{u"a"_s, 7}, {u"b"_s, u"  "_s}}));
        stage.box().setInputKind(0);
        QCOMPARE(ToolBoxStage::texts(), (QStringList{u"7"_s, u"arg_0"_s, QString()}));
        QCOMPARE(stage.box().config(), config(u"f"_s, {{u"a"_s, 7}, {u"b"_s, u"arg_0"_s}, {u"c"_s, 0}}));
    }

    void theInputNeedsAFunction()
    {
        ToolBoxStage stage;
        stage.box().setInputKind(0);
        stage.box().setExternalServices(catalogue());
        stage.box().setInputKind(0);
        QCOMPARE(stage.box().config(), QJsonObject());
    }

    void aSlotMayApplyAnotherConfigurationWhileOneIsApplied()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        bool once = false;
        connect(&stage.box(), &ActionToolBox::durty, &stage.box(), [&] {
            if (!std::exchange(once, true))
                stage.box().applyConfig(config(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}));
        });
        stage.box().applyConfig(config(u"Vol"_s, {{u"vitesse"_s, 1.5}, {u"tours"_s, 2}}));
        QVERIFY(once);
        runDeferred();
        QVERIFY(!stage.box().config().isEmpty());
    }
};

GAMEPAD_TEST_MAIN(TestActionToolBoxConfig)
#include "tst_actiontoolboxconfig.moc"
