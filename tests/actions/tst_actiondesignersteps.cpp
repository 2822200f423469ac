// SPDX-License-Identifier: MIT
#include "designerstage.h"

#include "testmain.h"

#include <QtTest/QSignalSpy>
#include <QtWidgets/QScrollBar>

using namespace Qt::StringLiterals;

namespace
{
QJsonArray functions()
{
    return {function(u"Tir"_s), function(u"LockOn"_s, {param(u"cible"_s, u"string"_s)}),
            function(u"Vol"_s, {param(u"vitesse"_s, u"double"_s), param(u"tours"_s, u"int"_s)})};
}

QJsonArray fourSteps()
{
    return {task(u"Tir"_s), task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}),
            task(u"Vol"_s, {{u"vitesse"_s, 1.5}, {u"tours"_s, 2}}), task(u"Tir"_s)};
}

QJsonObject with(QJsonObject task, const QString &key, const QJsonValue &value)
{
    task.insert(key, value);
    return task;
}

/// One action of four steps, with a catalogue, on show.
class FourStepsStage : public DesignerStage
{
public:
    FourStepsStage()
        : DesignerStage({action(u"A"_s, fourSteps()), action(u"B"_s)})
    {
        designer().setFunctions(functions());
        show();
    }
};
} // namespace

class TestActionDesignerSteps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
    }

    void cleanup() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    void eachTaskHasACard()
    {
        FourStepsStage stage;
        QCOMPARE(stage.rows().size(), 4);
        for (qsizetype i = 0; i < 4; ++i)
            QCOMPARE(stage.card(i).config(), fourSteps().at(i).toObject());
        QVERIFY(!stage.timer().isActive());
    }

    void withoutFunctionsACardHasNoCatalogue()
    {
        DesignerStage stage({action(u"A"_s, fourSteps())});
        QCOMPARE(stage.rows().size(), 4);
        QCOMPARE(stage.combo(0).count(), 0);
        DesignerStage::click(stage.addStepButton());
        QCOMPARE(stage.combo(4).count(), 0);
    }

    void anAddedStepIsStoredOnceItNamesAFunction()
    {
        FourStepsStage stage;
        DesignerStage::click(stage.addStepButton());
        QCOMPARE(stage.rows().size(), 5);
        QCOMPARE(stage.combo(4).currentText(), u"Choisir une action"_s);
        QVERIFY(stage.timer().isActive());
        QCOMPARE(stage.tasks(0), fourSteps());

        stage.combo(4).setFocus();
        QTest::keyClick(&stage.combo(4), Qt::Key_Down);
        QTest::keyClick(&stage.combo(4), Qt::Key_Down);
        DesignerStage::type(stage.field(4, 0), u"sud"_s);
        DesignerStage::type(stage.when(4), u"a > 1"_s);
        QJsonArray expected = fourSteps();
        expected.append(with(task(u"LockOn"_s, {{u"cible"_s, u"sud"_s}}), u"when"_s, u"a > 1"_s));
        QCOMPARE(stage.tasks(0), expected);
        QVERIFY(stage.when(4).hasFocus());
    }

    void anAddedStepComesIntoView()
    {
        FourStepsStage stage;
        QVERIFY(stage.scroll().verticalScrollBar()->maximum() > 0);
        QCOMPARE(stage.scroll().verticalScrollBar()->value(), 0);
        DesignerStage::click(stage.addStepButton());
        const QWidget *row = stage.rows().last();
        QTRY_VERIFY(row->isVisible());
        QTRY_VERIFY(stage.scroll().viewport()->rect().contains(
            QRect(row->mapTo(stage.scroll().viewport(), QPoint(0, 0)), row->size())));
    }

    void anEmptyStepIsDroppedByAReload()
    {
        FourStepsStage stage;
        DesignerStage::click(stage.addStepButton());
        stage.pick(1);
        stage.pick(0);
        QCOMPARE(stage.rows().size(), 4);
        QCOMPARE(stage.tasks(0), fourSteps());
    }

    void aStepOfNoActionIsNeverStored()
    {
        DesignerStage stage;
        stage.designer().setFunctions(functions());
        stage.show();
        const QSignalSpy changed(&stage.designer(), &ActionDesignerWidget::actionsChanged);
        DesignerStage::click(stage.addStepButton());
        QCOMPARE(stage.rows().size(), 1);
        stage.combo(0).setFocus();
        QTest::keyClick(&stage.combo(0), Qt::Key_Down);
        QCOMPARE(stage.card(0).config(), task(u"Tir"_s));
        QTRY_COMPARE(changed.count(), 1);
        QCOMPARE(changed.first().first().toJsonArray(), QJsonArray());
        QCOMPARE(stage.actions(), QJsonArray());
    }

    void everyEditOfACardIsStoredAtOnce()
    {
        FourStepsStage stage;
        DesignerStage::type(stage.field(1, 0), u"-est"_s);
        QCOMPARE(stage.tasks(0).at(1).toObject(), task(u"LockOn"_s, {{u"cible"_s, u"nord-est"_s}}));
        QVERIFY(stage.field(1, 0).hasFocus());
        QVERIFY(stage.timer().isActive());
        DesignerStage::type(stage.when(0), u"x"_s);
        QCOMPARE(stage.tasks(0).at(0).toObject(), with(task(u"Tir"_s), u"when"_s, u"x"_s));
        stage.combo(3).setFocus();
        QTest::keyClick(&stage.combo(3), Qt::Key_Up); // no function: the step is left out
        QCOMPARE(stage.refs(0), (QStringList{u"Tir"_s, u"LockOn"_s, u"Vol"_s}));
        QCOMPARE(stage.rows().size(), 4);
    }

    void anotherFunctionIsStoredWithItsOwnArguments()
    {
        FourStepsStage stage;
        stage.combo(1).setFocus();
        QTest::keyClick(&stage.combo(1), Qt::Key_Down); // from LockOn to Vol
        QJsonArray expected = fourSteps();
        expected[1] = task(u"Vol"_s, {{u"vitesse"_s, 0.0}, {u"tours"_s, 0}});
        QCOMPARE(stage.tasks(0), expected);
    }

    void theActionKeyOfATaskIsNotStored()
    {
        DesignerStage stage({action(u"A"_s, {with(task(u"Tir"_s), u"action"_s, u"Tir"_s)})});
        stage.designer().setFunctions(functions());
        stage.show();
        DesignerStage::type(stage.when(0), u"x"_s);
        QCOMPARE(stage.tasks(0), QJsonArray{with(task(u"Tir"_s), u"when"_s, u"x"_s)});
    }

    void anOlderConditionComesBackAsWhen()
    {
        DesignerStage stage({action(u"A"_s, {with(task(u"Tir"_s), u"condition"_s, u"c"_s)}), action(u"B"_s)});
        stage.designer().setFunctions(functions());
        stage.show();
        QCOMPARE(stage.when(0).text(), u"c"_s);
        stage.pick(1);
        QCOMPARE(stage.tasks(0), QJsonArray{with(task(u"Tir"_s), u"when"_s, u"c"_s)});
    }

    void aStepMovesUpAndDown()
    {
        FourStepsStage stage;
        const QWidget *vol = stage.rows().at(2);
        DesignerStage::click(stage.up(2));
        QCOMPARE(stage.rows().at(1), vol);
        QCOMPARE(stage.refs(0), (QStringList{u"Tir"_s, u"Vol"_s, u"LockOn"_s, u"Tir"_s}));
        QVERIFY(stage.timer().isActive());
        stage.timer().stop();
        DesignerStage::click(stage.down(1));
        DesignerStage::click(stage.down(2));
        QCOMPARE(stage.rows().at(3), vol);
        QCOMPARE(stage.refs(0), (QStringList{u"Tir"_s, u"LockOn"_s, u"Tir"_s, u"Vol"_s}));
        QVERIFY(stage.timer().isActive());
        QTRY_VERIFY(stage.rows().at(3)->y() > stage.rows().at(2)->y());
    }

    void theFirstStepGoesNoHigherAndTheLastNoLower()
    {
        FourStepsStage stage;
        const QWidgetList before = stage.rows();
        DesignerStage::click(stage.up(0));
        DesignerStage::click(stage.down(3));
        QCOMPARE(stage.rows(), before);
        QCOMPARE(stage.tasks(0), fourSteps());
        QVERIFY(!stage.timer().isActive());
    }

    void aStepIsDeletedInItsOwnClick()
    {
        FourStepsStage stage;
        const QPointer<QWidget> row(stage.rows().at(1));
        DesignerStage::click(stage.remove(1));
        QCOMPARE(stage.rows().size(), 3);
        QCOMPARE(stage.refs(0), (QStringList{u"Tir"_s, u"Vol"_s, u"Tir"_s}));
        QVERIFY(stage.timer().isActive());
        QVERIFY(row);
        QVERIFY(row->isHidden());
        QTRY_VERIFY(!row);
    }

    void aRowThatIsGoingHasNoSayAnyMore()
    {
        FourStepsStage stage;
        ActionTaskBlockWidget &card = stage.card(1);
        QToolButton &up = stage.up(1);
        QToolButton &remove = stage.remove(1);
        DesignerStage::click(stage.remove(1));
        const QJsonArray after = stage.actions();
        stage.timer().stop();
        QVERIFY(card.applyConfig(task(u"LockOn"_s, {{u"cible"_s, u"ouest"_s}})));
        up.click();
        remove.click();
        QCOMPARE(stage.actions(), after);
        QVERIFY(!stage.timer().isActive());
    }

    void theFocusOfADeletedStepGoesToItsNeighbour()
    {
        FourStepsStage stage;
        stage.remove(2).setFocus();
        QTest::keyClick(&stage.remove(2), Qt::Key_Space);
        QVERIFY(stage.remove(2).hasFocus());
        QTest::keyClick(&stage.remove(2), Qt::Key_Space);
        QVERIFY(stage.remove(1).hasFocus());
        DesignerStage::click(stage.remove(0)); // the mouse gives no button the focus
        QVERIFY(stage.scroll().hasFocus());
        stage.remove(0).setFocus();
        QTest::keyClick(&stage.remove(0), Qt::Key_Space);
        QVERIFY(stage.addStepButton().hasFocus());
        QCOMPARE(stage.tasks(0), QJsonArray());
    }

    void aMovedStepKeepsTheFocus()
    {
        FourStepsStage stage;
        QToolButton &down = stage.down(0);
        down.setFocus();
        QTest::keyClick(&down, Qt::Key_Space);
        QTest::keyClick(&down, Qt::Key_Space);
        QVERIFY(down.hasFocus());
        QCOMPARE(&stage.down(2), &down);
    }

    void theFocusOfClearedStepsStaysOutOfTheFields()
    {
        FourStepsStage stage;
        stage.when(0).setFocus();
        stage.designer().setFunctions(functions());
        QVERIFY(stage.scroll().hasFocus());
        stage.name().setFocus();
        stage.designer().setFunctions(functions());
        QVERIFY(stage.name().hasFocus());
    }

    void theTabKeyFollowsTheEye()
    {
        FourStepsStage stage;
        DesignerStage::click(stage.up(2)); // Tir, Vol, LockOn, Tir
        stage.combo(0).setFocus();
        QTest::keyClick(&stage.combo(0), Qt::Key_Down); // LockOn: a younger field
        QCoreApplication::processEvents();
        stage.name().setFocus();
        QWidgetList expected{&stage.scroll()};
        for (qsizetype i = 0; i < 4; ++i) {
            expected.append(&stage.combo(i));
            const auto fields = stage.card(i).findChild<ArgumentForm *>()->fields();
            for (const ParamField &field : fields)
                expected.append(field.edit);
            expected << &stage.when(i) << &stage.up(i) << &stage.down(i) << &stage.remove(i);
        }
        expected.append(&stage.addStepButton());
        for (QWidget *stop : std::as_const(expected)) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), stop);
        }
    }

    void newFunctionsCommitWhatTheOldOnesHeld()
    {
        FourStepsStage stage;
        DesignerStage::type(stage.field(1, 0), u"x"_s);
        stage.timer().stop();
        QJsonArray fewer = functions();
        fewer.removeAt(0); // Tir
        const QSignalSpy changed(&stage.designer(), &ActionDesignerWidget::actionsChanged);
        stage.designer().setFunctions(fewer);
        QCOMPARE(stage.refs(0), (QStringList{u"Tir"_s, u"LockOn"_s, u"Vol"_s, u"Tir"_s}));
        QCOMPARE(stage.combo(0).currentText(), u"Choisir une action"_s);
        QCOMPARE(stage.field(1, 0).text(), u"nordx"_s);
        QVERIFY(!stage.timer().isActive());
        QCOMPARE(changed.count(), 0);

        stage.pick(1); // the next commit: what left the catalogue is gone
        QCOMPARE(stage.refs(0), (QStringList{u"LockOn"_s, u"Vol"_s}));
    }

    void firstFunctionsCommitNothing()
    {
        DesignerStage stage({action(u" "_s, fourSteps())});
        stage.designer().setFunctions(functions());
        QCOMPARE(stage.actions(), QJsonArray{action(u" "_s, fourSteps())});
        QCOMPARE(stage.card(2).config(), fourSteps().at(2).toObject());
    }

    void functionsThatGoAwayEmptyNothingByThemselves()
    {
        FourStepsStage stage;
        stage.designer().setFunctions({});
        QCOMPARE(stage.tasks(0), fourSteps());
        QCOMPARE(stage.combo(0).count(), 0);
        stage.designer().setFunctions(functions());
        QCOMPARE(stage.tasks(0), fourSteps());
        QCOMPARE(stage.card(1).config(), fourSteps().at(1).toObject());
    }

    void functionsDropAnEmptyStep()
    {
        FourStepsStage stage;
        DesignerStage::click(stage.addStepButton());
        stage.designer().setFunctions(functions());
        QCOMPARE(stage.rows().size(), 4);
    }

    void anOpenListOfFunctionsMayLoseItsCard()
    {
        FourStepsStage stage;
        stage.combo(0).showPopup();
        const QPointer<QWidget> list(stage.combo(0).view());
        stage.designer().setFunctions(functions());
        QTRY_VERIFY(!list);
        QCOMPARE(stage.tasks(0), fourSteps());
    }

    void fiveHundredChangesLeaveNoPile()
    {
        FourStepsStage stage;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const qsizetype before = stage.designer().findChildren<QWidget *>().size();
        for (int i = 0; i < 500; ++i) {
            stage.list().setCurrentRow(i % 2 == 0 ? 1 : 0);
            if (i % 10 == 9)
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(stage.designer().findChildren<QWidget *>().size(), before);
        QCOMPARE(stage.tasks(0), fourSteps());
    }
};

GAMEPAD_TEST_MAIN(TestActionDesignerSteps)
#include "tst_actiondesignersteps.moc"
