// SPDX-License-Identifier: MIT
#include "toolboxstage.h"

#include "entries.h"
#include "testmain.h"

#include <QtTest/QSignalSpy>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QHBoxLayout>

using namespace Qt::StringLiterals;

namespace
{
const QColor orange(255, 165, 0);

QJsonArray catalogue()
{
    return {function(u"Tir"_s), function(u"LockOn"_s, {param(u"cible"_s, u"string"_s)}),
            function(u"Vol"_s, {param(u"vitesse"_s, u"double"_s)})};
}

int indexOf(const QComboBox &combo)
{
    return combo.currentData().toInt();
}
} // namespace

class TestActionToolBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }
    void cleanup() { runDeferred(); }

    void theMetaObjectHasTwoSignalsAndNothingElse()
    {
        const QMetaObject &meta = ActionToolBox::staticMetaObject;
        QCOMPARE(meta.className(), "ActionToolBox");
        QCOMPARE(meta.superClass(), &QFrame::staticMetaObject);
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
        QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), "moved()");
        QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(), "durty()");
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    }

    void theFrameHoldsALabelAndACombo()
    {
        ToolBoxStage stage;
        const auto *layout = qobject_cast<QHBoxLayout *>(stage.box().layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(8, 4, 8, 4));
        QCOMPARE(layout->spacing(), 6);
        QCOMPARE(layout->count(), 2);
        QCOMPARE(layout->itemAt(0)->widget(), &stage.header());
        QCOMPARE(layout->stretch(0), 0);
        QCOMPARE(layout->itemAt(1)->widget(), &stage.combo());
        QCOMPARE(layout->stretch(1), 1);
        QCOMPARE(stage.header().text(), u"Action"_s);
        QCOMPARE(stage.combo().minimumWidth(), 200);
        QCOMPARE(stage.combo().sizeAdjustPolicy(), QComboBox::AdjustToContentsOnFirstShow);
        QCOMPARE(stage.box().minimumHeight(), 36);
        QCOMPARE(stage.box().maximumHeight(), 36);
        QCOMPARE(stage.box().size(), stage.box().sizeHint().expandedTo({0, 36}));
    }

    void aNewToolBoxIsEmptyAndEditable()
    {
        ToolBoxStage stage;
        QCOMPARE(stage.combo().count(), 0);
        QCOMPARE(stage.box().config(), QJsonObject());
        QVERIFY(!ToolBoxStage::panel());
        QCOMPARE(stage.box().cursor().shape(), Qt::OpenHandCursor);
    }

    void editableShowsInTheCursor()
    {
        ToolBoxStage stage;
        stage.box().setEditable(false);
        QCOMPARE(stage.box().cursor().shape(), Qt::ArrowCursor);
        stage.box().setEditable(true);
        QCOMPARE(stage.box().cursor().shape(), Qt::OpenHandCursor);
        QCOMPARE(stage.combo().cursor().shape(), Qt::ArrowCursor);
    }

    void theHeaderShowsItsTextAsItIs()
    {
        ToolBoxStage stage;
        stage.box().setHeaderText(u"<b>joy_1</b> & co"_s);
        QCOMPARE(stage.header().text(), u"<b>joy_1</b> & co"_s);
        QCOMPARE(stage.header().textFormat(), Qt::PlainText);
    }

    void aCatalogueIsListedBehindTheEmptyEntry()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        QCOMPARE(stage.entries(), (QStringList{QString(), u"Tir"_s, u"LockOn(string cible)"_s,
                                               u"Vol(double vitesse = 0.0)"_s}));
        for (int row = 0; row < 4; ++row)
            QCOMPARE(stage.combo().itemData(row), QVariant(row - 1));
        QCOMPARE(stage.combo().currentIndex(), 0);
        QCOMPARE(stage.box().config(), QJsonObject());
        QVERIFY(ToolBoxStage::panel());
        QVERIFY(!ToolBoxStage::panel()->isVisible());
    }

    void anEmptyCatalogueLeavesTheEmptyEntry()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices({});
        QCOMPARE(stage.entries(), QStringList{QString()});
        QCOMPARE(indexOf(stage.combo()), -1);
        QCOMPARE(stage.box().config(), QJsonObject());
    }

    void namelessEntriesAndNonObjectsAreNotListed()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices({1, function(QString()), function(u"Tir"_s), u"x"_s});
        QCOMPARE(stage.entries(), (QStringList{QString(), u"Tir"_s}));
    }

    void aFirstCatalogueSelectsItsNone()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices({function(u"Tir"_s), function(u"NONE"_s), function(u"none"_s)});
        QCOMPARE(indexOf(stage.combo()), 1);
        QCOMPARE(stage.box().config(),
                 (QJsonObject{{u"ref"_s, u"NONE"_s}, {u"action"_s, u"NONE"_s}, {u"args"_s, QJsonObject()}}));
    }

    void aChosenEmptyEntryStaysAlthoughTheNextCatalogueHasNone()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().setExternalServices({function(u"None"_s)});
        QCOMPARE(indexOf(stage.combo()), -1);
        QCOMPARE(stage.box().config(), QJsonObject());
    }

    void aRefreshKeepsTheSelectionAndEmptiesTheFields()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}));
        QCOMPARE(ToolBoxStage::texts(), QStringList{u"nord"_s});

        QJsonArray longer = catalogue();
        longer.prepend(function(u"Premier"_s));
        stage.box().setExternalServices(longer);
        QCOMPARE(stage.combo().currentText(), u"LockOn(string cible)"_s);
        QCOMPARE(indexOf(stage.combo()), 2);
        QCOMPARE(ToolBoxStage::texts(), QStringList{QString()});
        QCOMPARE(stage.box().config().value("args"_L1).toObject(), (QJsonObject{{u"cible"_s, QString()}}));
    }

    void theSameCatalogueAgainEmptiesTheFieldsToo()
    {
        ToolBoxStage stage;
        const QJsonArray same = catalogue();
        stage.box().setExternalServices(same);
        stage.box().applyConfig(task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}));
        stage.box().setExternalServices(same);
        QCOMPARE(stage.combo().currentText(), u"LockOn(string cible)"_s);
        QCOMPARE(ToolBoxStage::texts(), QStringList{QString()});
    }

    void aRefreshWithoutTheFunctionKeepsItInOrange()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}));
        stage.box().setExternalServices({function(u"Tir"_s), function(u"lockon"_s)});
        QCOMPARE(stage.entries(), (QStringList{QString(), u"Tir"_s, u"lockon"_s, u"LockOn"_s}));
        QCOMPARE(stage.combo().currentIndex(), 3);
        QCOMPARE(indexOf(stage.combo()), 2);
        QCOMPARE(stage.combo().currentData(Qt::ForegroundRole).value<QColor>(), orange);
        QVERIFY(!stage.combo().itemData(1, Qt::ForegroundRole).isValid());
        QCOMPARE(
            stage.box().config(),
            (QJsonObject{{u"ref"_s, u"LockOn"_s}, {u"action"_s, u"LockOn"_s}, {u"args"_s, QJsonObject()}}));
        QVERIFY(ToolBoxStage::texts().isEmpty());
    }

    void aSelectedNoneIsKeptInOrangeLikeAnyFunction()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices({function(u"none"_s)});
        stage.box().applyConfig(task(u"none"_s));
        stage.box().setExternalServices({function(u"None"_s)});
        QCOMPARE(stage.entries(), (QStringList{QString(), u"None"_s, u"none"_s}));
        QCOMPARE(stage.combo().currentIndex(), 2);
        QCOMPARE(stage.combo().currentData(Qt::ForegroundRole).value<QColor>(), orange);
        QCOMPARE(stage.box().config().value("ref"_L1), u"none"_s);
    }

    void anUnknownFunctionLivesThroughCataloguesUntilOneHasItAgain()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"Disparue"_s));
        stage.box().setExternalServices({function(u"Tir"_s)});
        stage.box().setExternalServices(QJsonArray());
        QCOMPARE(stage.entries(), (QStringList{QString(), u"Disparue"_s}));
        QCOMPARE(stage.combo().currentData(Qt::ForegroundRole).value<QColor>(), orange);
        stage.box().setExternalServices({function(u"Tir"_s), function(u"Disparue"_s)});
        QCOMPARE(stage.entries(), (QStringList{QString(), u"Tir"_s, u"Disparue"_s}));
        QCOMPARE(stage.combo().currentIndex(), 2);
        QVERIFY(!stage.combo().currentData(Qt::ForegroundRole).isValid());
    }

    void theFirstOfTwoLikeNamedFunctionsStaysSelected()
    {
        ToolBoxStage stage;
        const QJsonArray twice{function(u"Tir"_s), function(u"Tir"_s, {param(u"a"_s, u"string"_s)})};
        stage.box().setExternalServices(twice);
        stage.combo().setCurrentIndex(2);
        QCOMPARE(ToolBoxStage::texts().size(), 1);
        stage.box().setExternalServices(twice);
        QCOMPARE(indexOf(stage.combo()), 0);
    }

    void aCatalogueEmitsNoDurty()
    {
        ToolBoxStage stage;
        const QSignalSpy durty(&stage.box(), &ActionToolBox::durty);
        stage.box().setExternalServices(catalogue());
        stage.box().setExternalServices({function(u"none"_s)});
        QCOMPARE(durty.count(), 0);
    }

    void aCatalogueEmitsNoDurtyWhateverWasSelectedAndTyped()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}));
        const QSignalSpy durty(&stage.box(), &ActionToolBox::durty);
        stage.box().setExternalServices(catalogue());
        stage.box().setExternalServices({function(u"Tir"_s)});
        stage.box().setExternalServices({});
        QCOMPARE(durty.count(), 0);
    }

    void onlyTheFieldThatTakesTheInputSpeaksUp()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"Vol"_s, {{u"vitesse"_s, 2}}));
        const QSignalSpy durty(&stage.box(), &ActionToolBox::durty);
        stage.box().setExternalServices(catalogue());
        QCOMPARE(ToolBoxStage::texts(), QStringList{u"arg_0"_s});
        QCOMPARE(durty.count(), 1);
    }

    void choosingByKeyboardRebuildsTheFormAndEmitsOnce()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.show();
        stage.combo().setFocus();
        QSignalSpy durty(&stage.box(), &ActionToolBox::durty);
        QTest::keyClick(&stage.combo(), Qt::Key_Down);
        QCOMPARE(stage.combo().currentText(), u"Tir"_s);
        QCOMPARE(durty.count(), 1);
        QTest::keyClick(&stage.combo(), Qt::Key_Down);
        QCOMPARE(stage.box().config().value("ref"_L1), u"LockOn"_s);
        QCOMPARE(ToolBoxStage::texts(), QStringList{QString()});
        QCOMPARE(durty.count(), 2);
        QTest::keyClick(&stage.combo(), Qt::Key_Down);
        QCOMPARE(ToolBoxStage::texts(), QStringList{u"arg_0"_s});
        QCOMPARE(durty.count(), 4); // the field's own, then the selection's
        QTest::keyClick(&stage.combo(), Qt::Key_Home);
        QCOMPARE(stage.box().config(), QJsonObject());
        QVERIFY(ToolBoxStage::texts().isEmpty());
        QCOMPARE(durty.count(), 5);
    }

    void aChoiceIsToldOnceItsFormIsThereAndTheInputIsFilledIn()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"LockOn"_s, {{u"cible"_s, u"nord"_s}}));
        stage.show();
        QList<QJsonObject> told;
        connect(&stage.box(), &ActionToolBox::durty, &stage.box(),
                [&] { told.append(stage.box().config()); });
        stage.combo().setFocus();
        QTest::keyClick(&stage.combo(), Qt::Key_Down);
        const QJsonObject chosen{{u"ref"_s, u"Vol"_s},
                                 {u"action"_s, u"Vol"_s},
                                 {u"args"_s, QJsonObject{{u"vitesse"_s, u"arg_0"_s}}}};
        QCOMPARE(told, (QList{chosen, chosen})); // by the field, by the selection
    }

    void choosingFromTheListByMouseSelects()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.show();
        QTest::keyClick(&stage.combo(), Qt::Key_F4);
        QAbstractItemView *list = stage.combo().view();
        QTRY_VERIFY(list->isVisible());
        const QRect entry = list->visualRect(list->model()->index(2, 0));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, entry.center());
        QCOMPARE(stage.box().config().value("ref"_L1), u"LockOn"_s);
        QTRY_VERIFY(!list->isVisible());
    }

    void anyChangeOfFunctionDropsWhatWasTyped()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.combo().setCurrentIndex(2);
        ToolBoxStage::edit(0)->setText(u"nord"_s);
        stage.combo().setCurrentIndex(1);
        stage.combo().setCurrentIndex(2);
        QCOMPARE(ToolBoxStage::texts(), QStringList{QString()});
    }
};

GAMEPAD_TEST_MAIN(TestActionToolBox)
#include "tst_actiontoolbox.moc"
