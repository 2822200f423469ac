// SPDX-License-Identifier: MIT
#include "designerstage.h"

#include "testmain.h"

#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;

namespace
{
QJsonArray functions()
{
    return {function(u"Tir"_s), function(u"LockOn"_s, {param(u"cible"_s, u"string"_s)}),
            function(u"Vol"_s, {param(u"vitesse"_s, u"double"_s)})};
}

QJsonArray three()
{
    return {action(u"A"_s, {task(u"Tir"_s)}), action(u"B"_s, {task(u"Vol"_s, {{u"vitesse"_s, 2.5}})}),
            action(u"C"_s)};
}
} // namespace

class TestActionDesigner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
    }

    void theMetaObjectDeclaresOneSignalAndSevenPrivateSlots()
    {
        const QMetaObject &meta = ActionDesignerWidget::staticMetaObject;
        QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
        QStringList signalsFound;
        QStringList slotsFound;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QMetaMethod method = meta.method(i);
            if (method.methodType() == QMetaMethod::Signal) {
                signalsFound.append(QString::fromLatin1(method.methodSignature()));
                QCOMPARE(method.parameterNames(), QByteArrayList{"actions"});
            } else {
                QCOMPARE(method.access(), QMetaMethod::Private);
                slotsFound.append(QString::fromLatin1(method.methodSignature()));
            }
        }
        QCOMPARE(signalsFound, QStringList{u"actionsChanged(QJsonArray)"_s});
        QCOMPARE(slotsFound, (QStringList{u"onAddAction()"_s, u"onDuplicateAction()"_s, u"onDeleteAction()"_s,
                                          u"onActionSelectionChanged()"_s, u"onActionNameEdited(QString)"_s,
                                          u"onAddStep()"_s, u"onSaveTimeout()"_s}));
    }

    void theFirstActionIsOnShowAtFirst()
    {
        DesignerStage stage(three());
        QCOMPARE(stage.actions(), three());
        QCOMPARE(stage.listed(), (QStringList{u"A"_s, u"B"_s, u"C"_s}));
        QCOMPARE(stage.list().currentRow(), 0);
        QCOMPARE(stage.name().text(), u"A"_s);
        QCOMPARE(stage.rows().size(), 1);
        QVERIFY(!stage.timer().isActive());
    }

    void withoutActionsNothingIsOnShow()
    {
        DesignerStage stage;
        QCOMPARE(stage.actions(), QJsonArray());
        QCOMPARE(stage.listed(), QStringList());
        QCOMPARE(stage.list().currentRow(), -1);
        QCOMPARE(stage.name().text(), QString());
        QCOMPARE(stage.rows().size(), 0);
    }

    void aBlankNameShowsAsItsNumberAndIsStoredAtTheNextCommit()
    {
        DesignerStage stage({action(u"A"_s), action(u"  "_s), QJsonObject()});
        stage.show();
        QCOMPARE(stage.listed(), (QStringList{u"A"_s, u"Action 2"_s, u"Action 3"_s}));
        stage.pick(1);
        QCOMPARE(stage.name().text(), u"  "_s); // as stored
        QCOMPARE(stage.nameOf(1), u"  "_s);
        stage.pick(2);
        QCOMPARE(stage.nameOf(1), u"Action 2"_s);
        QCOMPARE(stage.name().text(), QString());
        DesignerStage::click(stage.addStepButton());
        QCOMPARE(stage.nameOf(2), u"Action 3"_s);
        stage.saveNow();
        QCOMPARE(DesignerStage::savedActions().at(2)[u"name"].toString(), u"Action 3"_s);
    }

    void anotherRowShowsItsActionAndStartsNoTimer()
    {
        DesignerStage stage(three());
        stage.designer().setFunctions(functions());
        stage.show();
        const QSignalSpy changed(&stage.designer(), &ActionDesignerWidget::actionsChanged);
        stage.pick(1);
        QCOMPARE(stage.name().text(), u"B"_s);
        QCOMPARE(stage.card(0).config(), task(u"Vol"_s, {{u"vitesse"_s, 2.5}}));
        QTest::keyClick(&stage.list(), Qt::Key_Down);
        QCOMPARE(stage.name().text(), u"C"_s);
        QCOMPARE(stage.rows().size(), 0);
        QVERIFY(!stage.timer().isActive());
        QCOMPARE(changed.count(), 0);
        QCOMPARE(stage.actions(), three());
    }

    void leavingAnActionCommitsIt()
    {
        const QJsonArray tasks{task(u"Tir"_s), 3, QJsonObject(), u"x"_s, task(u"Tir"_s)};
        DesignerStage stage({action(u" A "_s, tasks), action(u"B"_s)});
        stage.designer().setFunctions(functions());
        stage.show();
        QCOMPARE(stage.rows().size(), 3); // what is no object is skipped, an empty object is not
        stage.pick(1);
        QCOMPARE(stage.actions().at(0).toObject(), action(u"A"_s, {task(u"Tir"_s), task(u"Tir"_s)}));
    }

    void withoutFunctionsLeavingAnActionEmptiesIt()
    {
        DesignerStage stage(three());
        stage.show();
        stage.pick(1);
        QCOMPARE(stage.actions().at(0).toObject(), action(u"A"_s));
        QCOMPARE(stage.tasks(1).size(), 1);
    }

    void addingShowsANewActionAtTheEnd()
    {
        DesignerStage stage(three());
        stage.designer().setFunctions(functions());
        stage.show();
        DesignerStage::click(stage.addButton());
        QCOMPARE(stage.listed(), (QStringList{u"A"_s, u"B"_s, u"C"_s, u"Nouvelle action"_s}));
        QCOMPARE(stage.list().currentRow(), 3);
        QCOMPARE(stage.name().text(), u"Nouvelle action"_s);
        QCOMPARE(stage.rows().size(), 0);
        QJsonArray expected = three();
        expected.append(action(u"Nouvelle action"_s));
        QCOMPARE(stage.actions(), expected);
        QVERIFY(stage.timer().isActive());
    }

    void addingCommitsTheActionThatWasOnShow()
    {
        DesignerStage stage({action(u" A "_s, {3})});
        stage.show();
        DesignerStage::click(stage.addButton());
        QCOMPARE(stage.actions(), (QJsonArray{action(u"A"_s), action(u"Nouvelle action"_s)}));
    }

    void deletingCommitsTheActionThatComesOnShow()
    {
        DesignerStage stage({action(u"A"_s), action(u" "_s, {3})});
        stage.show();
        DesignerStage::click(stage.deleteButton());
        QCOMPARE(stage.listed(), QStringList{u"Action 1"_s});
        QCOMPARE(stage.actions(), QJsonArray{action(u"Action 1"_s)});
    }

    void addingToNothingShowsTheNewAction()
    {
        DesignerStage stage;
        stage.show();
        DesignerStage::click(stage.addButton());
        QCOMPARE(stage.list().currentRow(), 0);
        QCOMPARE(stage.name().text(), u"Nouvelle action"_s);
        QCOMPARE(stage.actions(), QJsonArray{action(u"Nouvelle action"_s)});
    }

    void aCopyKeepsEveryKeyAndSaysThatItIsOne()
    {
        QJsonObject rich = action(u" LockOn "_s, {task(u"Tir"_s)});
        rich.insert(u"params"_s, QJsonArray{param(u"speed"_s, u"int"_s)});
        rich.insert(u"mine"_s, true);
        DesignerStage stage({rich, action(u"B"_s)});
        stage.designer().setFunctions(functions());
        stage.show();
        DesignerStage::click(stage.duplicateButton());
        QCOMPARE(stage.listed(), (QStringList{u"LockOn"_s, u"B"_s, u"LockOn (copy)"_s}));
        QCOMPARE(stage.list().currentRow(), 2);
        rich.insert(u"name"_s, u"LockOn (copy)"_s);
        QCOMPARE(stage.actions().at(2).toObject(), rich);
        DesignerStage::click(stage.duplicateButton());
        QCOMPARE(stage.nameOf(3), u"LockOn (copy) (copy)"_s);
        QVERIFY(stage.timer().isActive());
    }

    void aCopyOfABlankNameTakesItsNumber()
    {
        DesignerStage stage({action(u"A"_s), action(u" "_s)});
        stage.show();
        stage.pick(1);
        DesignerStage::click(stage.duplicateButton());
        QCOMPARE(stage.nameOf(2), u"Action 2 (copy)"_s);
    }

    void withoutActionsThereIsNothingToCopyOrDelete()
    {
        DesignerStage stage;
        stage.show();
        DesignerStage::click(stage.duplicateButton());
        DesignerStage::click(stage.deleteButton());
        QCOMPARE(stage.actions(), QJsonArray());
        QVERIFY(!stage.timer().isActive());
    }

    void deletingShowsTheActionThatTakesThePlace()
    {
        DesignerStage stage(three());
        stage.designer().setFunctions(functions());
        stage.show();
        DesignerStage::click(stage.deleteButton());
        QCOMPARE(stage.listed(), (QStringList{u"B"_s, u"C"_s}));
        QCOMPARE(stage.list().currentRow(), 0);
        QCOMPARE(stage.name().text(), u"B"_s);
        QCOMPARE(stage.refs(0), QStringList{u"Vol"_s});
        QVERIFY(stage.timer().isActive());
    }

    void deletingTheLastRowShowsTheNewLastRow()
    {
        DesignerStage stage(three());
        stage.show();
        stage.pick(2);
        DesignerStage::click(stage.deleteButton());
        QCOMPARE(stage.list().currentRow(), 1);
        QCOMPARE(stage.name().text(), u"B"_s);
    }

    void deletingTheOnlyActionLeavesAnEmptyList()
    {
        DesignerStage stage({action(u"A"_s, {task(u"Tir"_s)})});
        stage.show();
        DesignerStage::click(stage.deleteButton());
        QCOMPARE(stage.list().count(), 0);
        QCOMPARE(stage.name().text(), QString());
        QCOMPARE(stage.rows().size(), 0);
        DesignerStage::type(stage.name(), u"x"_s); // of no action
        QCOMPARE(stage.actions(), QJsonArray());
        QTRY_COMPARE(DesignerStage::saved(), (QJsonObject{{u"ref"_s, QJsonArray()}}));
    }

    void aTypedNameIsListedAndStoredAtOnce()
    {
        DesignerStage stage(three());
        stage.show();
        stage.pick(1);
        DesignerStage::type(stage.name(), u"is "_s);
        QCOMPARE(stage.name().text(), u"Bis "_s); // what is typed is not touched
        QCOMPARE(stage.list().item(1)->text(), u"Bis"_s);
        QCOMPARE(stage.nameOf(1), u"Bis"_s);
        QVERIFY(stage.timer().isActive());
        stage.name().selectAll();
        QTest::keyClick(&stage.name(), Qt::Key_Delete);
        QCOMPARE(stage.name().text(), QString());
        QCOMPARE(stage.list().item(1)->text(), u"Action 2"_s);
        QCOMPARE(stage.nameOf(1), u"Action 2"_s);
        QVERIFY(stage.name().hasFocus());
    }

    void textsThatAreTooLongForTheirFieldsStayWhole()
    {
        const QString endless(40'000, u'w');
        QJsonObject step = task(u"LockOn"_s, {{u"cible"_s, endless}});
        step.insert(u"when"_s, endless);
        DesignerStage stage({action(endless, {step, task(u"Vol"_s, {{u"vitesse"_s, 2}})}), action(u"B"_s)});
        stage.designer().setFunctions(functions());
        stage.show();
        const QJsonArray stored = stage.actions();
        stage.pick(1);
        QVERIFY(stage.actions() == stored);
        stage.pick(0);
        stage.saveNow();
        QVERIFY(DesignerStage::savedActions() == stored);

        DesignerStage::type(stage.field(1, 0), u"5"_s);
        stage.saveNow();
        const QJsonArray edited{action(endless, {step, task(u"Vol"_s, {{u"vitesse"_s, 25}})}),
                                action(u"B"_s)};
        QVERIFY(DesignerStage::savedActions() == edited);
    }

    void aNameThatIsTooLongForItsFieldIsThatOfTheFieldOnceItIsEdited()
    {
        const QString endless(40'000, u'w');
        DesignerStage stage({action(endless)});
        stage.show();
        stage.name().setFocus();
        QTest::keyClick(&stage.name(), Qt::Key_Backspace);
        QVERIFY(stage.nameOf(0) == endless.first(stage.name().maxLength() - 1));
    }

    void namesNeedNotBeUnique()
    {
        DesignerStage stage({action(u"A"_s), action(u"A"_s)});
        stage.show();
        stage.pick(1);
        DesignerStage::type(stage.name(), u"b"_s);
        QCOMPARE(stage.listed(), (QStringList{u"A"_s, u"Ab"_s}));
    }

    void otherKeysOfAnActionSurviveItsEdits()
    {
        QJsonObject rich = action(u"A"_s, {task(u"Tir"_s)});
        rich.insert(u"params"_s, QJsonArray{param(u"speed"_s, u"int"_s)});
        rich.insert(u"items"_s, QJsonObject{{u"deep"_s, QJsonArray{1, QJsonValue()}}});
        DesignerStage stage({rich});
        stage.designer().setFunctions(functions());
        stage.show();
        DesignerStage::type(stage.name(), u"!"_s);
        stage.saveNow();
        rich.insert(u"name"_s, u"A!"_s);
        QCOMPARE(DesignerStage::savedActions(), QJsonArray{rich});
    }
};

GAMEPAD_TEST_MAIN(TestActionDesigner)
#include "tst_actiondesigner.moc"
