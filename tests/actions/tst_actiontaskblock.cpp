// SPDX-License-Identifier: MIT
#include "cardstage.h"

#include "entries.h"
#include "testmain.h"

#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;

namespace
{
QJsonArray catalogue()
{
    return {function(u"Tir"_s), function(u"LockOn"_s, {param(u"cible"_s, u"string"_s, u"nord"_s)}),
            function(u"Vol"_s, {param(u"vitesse"_s, u"double"_s), param(QString(), u"int"_s),
                                param(u"tours"_s, u"int"_s)})};
}

QJsonObject taskWhen(const QString &ref, const QJsonObject &args, const QString &when)
{
    QJsonObject object = task(ref, args);
    object.insert(u"when"_s, when);
    return object;
}
} // namespace

class TestActionTaskBlock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theMetaObjectHasOneSignalAndNothingElse()
    {
        const QMetaObject &meta = ActionTaskBlockWidget::staticMetaObject;
        QCOMPARE(meta.className(), "ActionTaskBlockWidget");
        QCOMPARE(meta.superClass(), &QFrame::staticMetaObject);
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
        QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), "changed()");
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    }

    void aNewCardIsEmpty()
    {
        CardStage stage;
        QCOMPARE(stage.combo().count(), 0);
        QCOMPARE(stage.card().config(), QJsonObject());
        QVERIFY(stage.scroll().isHidden());
        QVERIFY(!stage.card().applyConfig(task(u"Tir"_s)));
        QCOMPARE(stage.combo().count(), 0);
    }

    void aCatalogueIsListedBehindTheInvitation()
    {
        CardStage stage;
        QJsonArray entries = catalogue();
        entries.append(function(QString()));
        entries.append(3);
        stage.card().setFunctions(entries);
        const QStringList texts{u"Choisir une action"_s, u"Tir()"_s, u"LockOn(string cible=nord)"_s,
                                u"Vol(double vitesse=0.0, int tours=0)"_s};
        QCOMPARE(stage.combo().count(), texts.size());
        for (int row = 0; row < texts.size(); ++row) {
            QCOMPARE(stage.combo().itemText(row), texts.at(row));
            QCOMPARE(stage.combo().itemData(row), QVariant(row - 1));
        }
        QCOMPARE(stage.combo().currentIndex(), 0);
        QCOMPARE(stage.card().config(), QJsonObject());
    }

    void aTaskIsShownAndGivenBack()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        const QJsonObject shown = taskWhen(u"Vol"_s, {{u"vitesse"_s, 1.5}, {u"tours"_s, 3}}, u"a > 1"_s);
        QVERIFY(stage.card().applyConfig(shown));
        QCOMPARE(stage.combo().currentIndex(), 3);
        QCOMPARE(stage.texts(), (QStringList{u"1.5"_s, u"3"_s}));
        QCOMPARE(stage.when().text(), u"a > 1"_s);
        QCOMPARE(stage.card().config(), shown);
    }

    void aTaskIsRefusedWithoutAnyChange_data()
    {
        QTest::addColumn<QJsonObject>("refused");
        QTest::newRow("empty") << QJsonObject();
        QTest::newRow("empty ref") << task(QString());
        QTest::newRow("ref is no string") << QJsonObject{{u"ref"_s, QJsonArray{u"Tir"_s}}};
        QTest::newRow("action is not read") << QJsonObject{{u"action"_s, u"Tir"_s}, {u"when"_s, u"x"_s}};
        QTest::newRow("action does not help") << QJsonObject{{u"ref"_s, u"Autre"_s}, {u"action"_s, u"Tir"_s}};
        QTest::newRow("unknown") << taskWhen(u"Autre"_s, {{u"cible"_s, u"sud"_s}}, u"x"_s);
        QTest::newRow("another case") << task(u"tir"_s);
    }

    void aTaskIsRefusedWithoutAnyChange()
    {
        QFETCH(QJsonObject, refused);
        CardStage stage;
        stage.card().setFunctions(catalogue());
        const QJsonObject shown = taskWhen(u"LockOn"_s, {{u"cible"_s, u"est"_s}}, u"a"_s);
        QVERIFY(stage.card().applyConfig(shown));
        const QSignalSpy changed(&stage.card(), &ActionTaskBlockWidget::changed);
        QVERIFY(!stage.card().applyConfig(refused));
        QCOMPARE(changed.count(), 0);
        QCOMPARE(stage.card().config(), shown);
    }

    void anEmptyFieldCountsAsItsDefault()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig({{u"ref"_s, u"LockOn"_s}}));
        QCOMPARE(stage.texts(), QStringList{QString()});
        QCOMPARE(stage.card().config(), task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}));
        QVERIFY(stage.card().applyConfig(task(u"Vol"_s)));
        QCOMPARE(stage.card().config(), task(u"Vol"_s, {{u"vitesse"_s, 0.0}, {u"tours"_s, 0}}));
        QVERIFY(stage.card().applyConfig(task(u"Tir"_s)));
        QCOMPARE(stage.card().config(), task(u"Tir"_s));
    }

    void argsThatAreNoObjectCountAsNone()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig({{u"ref"_s, u"LockOn"_s}, {u"args"_s, QJsonArray{u"est"_s}}}));
        QCOMPARE(stage.texts(), QStringList{QString()});
        QCOMPARE(stage.card().config(), task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}));
    }

    void noInputIsFilledInByItself()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(task(u"Vol"_s)));
        QCOMPARE(stage.texts(), QStringList(2, QString()));
    }

    void aPlaceholderOfATaskStaysAString()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        const QJsonObject shown =
            task(u"Vol"_s, {{u"vitesse"_s, u"param:speed"_s}, {u"tours"_s, u"param:n"_s}});
        QVERIFY(stage.card().applyConfig(shown));
        QCOMPARE(stage.card().config(), shown);
    }

    void theConditionComesFromWhenOrFromCondition_data()
    {
        QTest::addColumn<QJsonObject>("keys");
        QTest::addColumn<QString>("text"); // of a field that held "avant"
        const auto row = [](const char *what, const QJsonObject &keys, const QString &text) {
            QTest::newRow(what) << keys << text;
        };
        row("when", {{u"when"_s, u"a"_s}}, u"a"_s);
        row("condition alone", {{u"condition"_s, u"b"_s}}, u"b"_s);
        row("when before condition", {{u"when"_s, u"a"_s}, {u"condition"_s, u"b"_s}}, u"a"_s);
        row("condition when when is empty", {{u"when"_s, QString()}, {u"condition"_s, u"b"_s}}, u"b"_s);
        row("condition when when is false", {{u"when"_s, false}, {u"condition"_s, u"b"_s}}, u"b"_s);
        row("neither", {}, u"avant"_s);
        row("both empty", {{u"when"_s, QString()}, {u"condition"_s, QString()}}, u"avant"_s);
        row("no texts", {{u"when"_s, false}, {u"condition"_s, 3}}, u"avant"_s);
        row("escaped in an expression", {{u"when"_s, uR"(state(\"a\"))"_s}}, uR"(state("a"))"_s);
        row("escaped twice in a condition", {{u"condition"_s, uR"(state(\\"a\\"))"_s}}, uR"(state("a"))"_s);
        row("escaped elsewhere", {{u"when"_s, uR"(say \"a\")"_s}}, uR"(say \"a\")"_s);
    }

    void theConditionComesFromWhenOrFromCondition()
    {
        QFETCH(QJsonObject, keys);
        QFETCH(QString, text);
        CardStage stage;
        stage.card().setFunctions(catalogue());
        stage.when().setText(u"avant"_s);
        keys.insert(u"ref"_s, u"Tir"_s);
        QVERIFY(stage.card().applyConfig(keys));
        QCOMPARE(stage.when().text(), text);
        QCOMPARE(stage.card().config(), taskWhen(u"Tir"_s, {}, text));
    }

    void aBlankWhenGoesBeforeAConditionAndIsNotGiven()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(
            stage.card().applyConfig({{u"ref"_s, u"Tir"_s}, {u"when"_s, u"  "_s}, {u"condition"_s, u"b"_s}}));
        QCOMPARE(stage.when().text(), u"  "_s);
        QCOMPARE(stage.card().config(), task(u"Tir"_s));
    }

    void aConditionThatIsTooLongForItsFieldStaysWholeUntilItIsEdited()
    {
        const QString endless(40'000, u'w');
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(taskWhen(u"Tir"_s, {}, endless)));
        QVERIFY(stage.card().config() == taskWhen(u"Tir"_s, {}, endless));
        stage.card().setFunctions({function(u"Tir"_s)});
        QVERIFY(stage.card().config() == taskWhen(u"Tir"_s, {}, endless));
        stage.show();
        QTest::keyClick(&stage.when(), Qt::Key_Backspace);
        const QString left = endless.first(stage.when().maxLength() - 1);
        QVERIFY(stage.card().config() == taskWhen(u"Tir"_s, {}, left));
    }

    void aTaskThatNeverRunsShowsNoCondition()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig({{u"ref"_s, u"Tir"_s}, {u"when"_s, false}}));
        QCOMPARE(stage.when().text(), QString());
        QCOMPARE(stage.card().config(), task(u"Tir"_s));
    }

    void theConditionIsGivenCleanAndTrimmed_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QJsonValue>("given");
        QTest::newRow("text") << u"  a > 1 "_s << QJsonValue(u"a > 1"_s);
        QTest::newRow("blank") << u"   "_s << QJsonValue(QJsonValue::Undefined);
        QTest::newRow("expression") << uR"(not state(\"a\"))"_s << QJsonValue(uR"(not state("a"))"_s);
        QTest::newRow("other text") << uR"(say \"a\")"_s << QJsonValue(uR"(say \"a\")"_s);
    }

    void theConditionIsGivenCleanAndTrimmed()
    {
        QFETCH(QString, typed);
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(task(u"Tir"_s)));
        stage.when().setText(typed);
        QTEST(stage.card().config().value("when"_L1), "given");
    }

    void aCatalogueThatHasTheFunctionKeepsTheTask()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        const QJsonObject shown = taskWhen(u"LockOn"_s, {{u"cible"_s, u"est"_s}}, u"a"_s);
        QVERIFY(stage.card().applyConfig(shown));
        stage.card().setFunctions(
            {function(u"Premier"_s),
             function(u"LockOn"_s, {param(u"cible"_s, u"string"_s), param(u"mode"_s, u"bool"_s)})});
        QCOMPARE(stage.combo().currentIndex(), 2);
        QCOMPARE(stage.texts(), (QStringList{u"est"_s, QString()}));
        QCOMPARE(stage.card().config(),
                 taskWhen(u"LockOn"_s, {{u"cible"_s, u"est"_s}, {u"mode"_s, false}}, u"a"_s));
    }

    void aCatalogueWithoutTheFunctionDropsTheTask()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(taskWhen(u"LockOn"_s, {{u"cible"_s, u"est"_s}}, u"a"_s)));
        stage.card().setFunctions({function(u"lockon"_s), function(u"Tir"_s)});
        QCOMPARE(stage.combo().currentIndex(), 0);
        QCOMPARE(stage.combo().count(), 3);
        QVERIFY(stage.texts().isEmpty());
        QVERIFY(stage.scroll().isHidden());
        QCOMPARE(stage.when().text(), QString());
        QCOMPARE(stage.card().config(), QJsonObject());
    }

    void aCatalogueClearsTheConditionOfACardWithoutFunction()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        stage.when().setText(u"a"_s);
        stage.card().setFunctions(catalogue());
        QCOMPARE(stage.when().text(), QString());
    }

    void choosingAnotherFunctionDropsTheArgumentsAndKeepsTheCondition()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(taskWhen(u"LockOn"_s, {{u"cible"_s, u"est"_s}}, u"a"_s)));
        stage.show();
        stage.combo().setFocus();
        QTest::keyClick(&stage.combo(), Qt::Key_Up);
        QCOMPARE(stage.card().config(), taskWhen(u"Tir"_s, {}, u"a"_s));
        QTest::keyClick(&stage.combo(), Qt::Key_Down);
        QCOMPARE(stage.texts(), QStringList{QString()});
        QCOMPARE(stage.when().text(), u"a"_s);
        QTest::keyClick(&stage.combo(), Qt::Key_Home);
        QCOMPARE(stage.card().config(), QJsonObject());
        QCOMPARE(stage.when().text(), u"a"_s);
    }

    void anotherFunctionIsToldOnceItsFormIsThere()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(task(u"LockOn"_s, {{u"cible"_s, u"est"_s}})));
        stage.show();
        QList<QJsonObject> told;
        connect(&stage.card(), &ActionTaskBlockWidget::changed, &stage.card(),
                [&] { told.append(stage.card().config()); });
        stage.combo().setFocus();
        QTest::keyClick(&stage.combo(), Qt::Key_Down);
        QCOMPARE(told, QList{task(u"Vol"_s, {{u"vitesse"_s, 0.0}, {u"tours"_s, 0}})});
    }

    void everyChangeIsToldAsOftenAsItHappens()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        stage.show();
        const QSignalSpy changed(&stage.card(), &ActionTaskBlockWidget::changed);
        stage.combo().setFocus();
        QTest::keyClick(&stage.combo(), Qt::Key_Down);
        QCOMPARE(changed.count(), 1);
        QTest::keyClick(&stage.combo(), Qt::Key_Down);
        QCOMPARE(changed.count(), 2);
        QTest::keyClicks(&stage.edit(0), u"est"_s);
        QCOMPARE(changed.count(), 5);
        QTest::keyClicks(&stage.when(), u"ab"_s);
        QCOMPARE(changed.count(), 7);
        QCOMPARE(stage.card().config(), taskWhen(u"LockOn"_s, {{u"cible"_s, u"est"_s}}, u"ab"_s));
    }

    void eachTaskIsToldAsOftenAsItHappens_data()
    {
        QTest::addColumn<QJsonObject>("applied");
        QTest::addColumn<int>("emissions");
        QTest::newRow("another function: the selection, the end") << task(u"Tir"_s) << 2;
        QTest::newRow("the same function: the end") << task(u"LockOn"_s) << 1;
        QTest::newRow("an argument") << task(u"LockOn"_s, {{u"cible"_s, u"est"_s}}) << 2;
        QTest::newRow("arguments") << task(u"Vol"_s, {{u"vitesse"_s, 1}, {u"tours"_s, 2}}) << 4;
        QTest::newRow("a condition") << taskWhen(u"LockOn"_s, {}, u"a"_s) << 2;
        QTest::newRow("all") << taskWhen(u"Vol"_s, {{u"tours"_s, 2}}, u"a"_s) << 4;
    }

    void eachTaskIsToldAsOftenAsItHappens()
    {
        QFETCH(QJsonObject, applied);
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(task(u"LockOn"_s)));
        const QSignalSpy changed(&stage.card(), &ActionTaskBlockWidget::changed);
        QVERIFY(stage.card().applyConfig(applied));
        QTEST(static_cast<int>(changed.count()), "emissions");
    }

    void aCatalogueIsToldWhileItIsTaken()
    {
        CardStage stage;
        const QSignalSpy changed(&stage.card(), &ActionTaskBlockWidget::changed);
        stage.card().setFunctions(catalogue());
        QCOMPARE(changed.count(), 1); // the invitation selected
        stage.card().setFunctions(catalogue());
        QCOMPARE(changed.count(), 3); // the list cleared, the invitation selected
        QVERIFY(stage.card().applyConfig(taskWhen(u"LockOn"_s, {{u"cible"_s, u"est"_s}}, u"a"_s)));
        QCOMPARE(changed.count(), 7);
        stage.card().setFunctions(catalogue());
        QCOMPARE(changed.count(), 12); // cleared, invitation, function, argument, the end
        stage.card().setFunctions({});
        QCOMPARE(changed.count(), 15); // cleared, invitation, condition
    }

    void aCardMidwayThroughACatalogueHasNoTask()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(task(u"LockOn"_s)));
        QList<QJsonObject> seen;
        connect(&stage.card(), &ActionTaskBlockWidget::changed, &stage.card(),
                [&] { seen.append(stage.card().config()); });
        stage.card().setFunctions(catalogue());
        QVERIFY(seen.size() > 2);
        QCOMPARE(seen.at(0), QJsonObject());
        QCOMPARE(seen.at(1), QJsonObject());
        QCOMPARE(seen.at(2), task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}})); // chosen, its form there
        QCOMPARE(seen.last(), task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}));
    }

    void aFieldMayRebuildTheFormThatItIsIn()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(task(u"LockOn"_s)));
        stage.show();
        bool applied = false;
        connect(&stage.card(), &ActionTaskBlockWidget::changed, &stage.card(), [&] {
            const QSignalBlocker once(&stage.card());
            applied = stage.card().applyConfig(task(u"LockOn"_s));
        });
        QTest::keyClicks(&stage.edit(0), u"est"_s);
        QVERIFY(applied);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(stage.texts(), QStringList{QString()});
    }
};

GAMEPAD_TEST_MAIN(TestActionTaskBlock)
#include "tst_actiontaskblock.moc"
