// SPDX-License-Identifier: MIT
#include "cardrendering.h"
#include "cardview.h"
#include "testmain.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QStyle>

using namespace Qt::StringLiterals;

namespace
{
QMouseEvent mouse(QEvent::Type type, const QPointF &position, Qt::MouseButton button = Qt::LeftButton)
{
    return {type, position, position, button, button, Qt::NoModifier};
}
} // namespace

class TestCardClicks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aClickTogglesTheSelectionInTheModel_data()
    {
        QTest::addColumn<QPoint>("spot");
        QTest::newRow("bare card") << bareSpot;
        QTest::newRow("status dot") << QPoint(274, 25);
        QTest::newRow("check mark") << QPoint(268, 208);
        QTest::newRow("chip") << QPoint(135, 206);
        QTest::newRow("picture") << QPoint(150, 60);
        QTest::newRow("margin of the item") << QPoint(2, 238);
        QTest::newRow("left of the close button") << QPoint(5, 6);
        QTest::newRow("above the close button") << QPoint(6, 5);
        QTest::newRow("right of the close button") << QPoint(30, 29);
        QTest::newRow("below the close button") << QPoint(29, 30);
    }

    void aClickTogglesTheSelectionInTheModel()
    {
        QFETCH(const QPoint, spot);
        CardView list;
        QVERIFY(list.isReady());

        list.click(1, spot);
        QCOMPARE(list.model.writes.size(), 1);
        QCOMPARE(list.model.writes.first().row, 1);
        QCOMPARE(list.model.writes.first().role, "selected"_ba);
        QCOMPARE(list.model.writes.first().value, QVariant(true));
        QCOMPARE(list.model.get(1, "selected"), QVariant(true));

        list.click(1, spot);
        QCOMPARE(list.model.writes.size(), 2);
        QCOMPARE(list.model.writes.last().value, QVariant(false));
        QCOMPARE(list.model.get(0, "selected"), QVariant(false));
        QCOMPARE(list.saidInAll(), 0);
    }

    void nothingHappensBeforeTheRelease()
    {
        CardView list;
        QVERIFY(list.isReady());
        for (const QPoint &spot : {bareSpot, QPoint(18, 18)}) {
            QTest::mousePress(list.view.viewport(), Qt::LeftButton, {}, list.at(0, spot));
            QVERIFY(list.model.writes.isEmpty());
            QCOMPARE(list.saidInAll(), 0);
            // Let go outside of the cards, so that no click comes of it.
            QTest::mouseRelease(list.view.viewport(), Qt::LeftButton, {}, list.at(1, {2, 300}));
        }
        QCOMPARE(list.saidInAll(), 0);
    }

    void aModelThatRefusesLeavesItToTheHost_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::newRow("select") << false;
        QTest::newRow("deselect") << true;
    }

    void aModelThatRefusesLeavesItToTheHost()
    {
        QFETCH(const bool, selected);
        CardView list;
        QVERIFY(list.isReady());
        list.model.put(0, "selected", selected);
        list.model.refuseWrites = true;

        list.click(0, bareSpot);
        QCOMPARE(list.model.writes.size(), 1);
        QCOMPARE(list.saidInAll(), 1);
        QCOMPARE(list.toggled.first(), (QVariantList{u"gp:0"_s, !selected}));
    }

    void theCloseButtonAsksForDeletionAlone_data()
    {
        QTest::addColumn<QPoint>("spot");
        QTest::newRow("middle") << QPoint(18, 18);
        QTest::newRow("first pixel") << QPoint(6, 6);
        QTest::newRow("last pixel") << QPoint(29, 29);
        QTest::newRow("other corners") << QPoint(29, 6);
    }

    void theCloseButtonAsksForDeletionAlone()
    {
        QFETCH(const QPoint, spot);
        CardView list;
        QVERIFY(list.isReady());
        list.click(1, spot);
        QCOMPARE(list.saidInAll(), 1);
        QCOMPARE(list.removed.first(), QVariantList{u"gp:1"_s});
        QVERIFY(list.model.writes.isEmpty());
    }

    void otherButtonsDoNothing()
    {
        CardView list;
        QVERIFY(list.isReady());
        list.click(0, bareSpot, Qt::MiddleButton);
        list.click(0, {18, 18}, Qt::MiddleButton);
        list.click(0, {18, 18}, Qt::BackButton);
        QVERIFY(list.model.writes.isEmpty());
        QCOMPARE(list.saidInAll(), 0);
    }

    void whatIsHandledIsAnsweredWithTrue()
    {
        CardModel model({CardModel::fullRow(u"gp:0"_s)});
        DeviceItemDelegate delegate;
        const auto answer = [&](QMouseEvent event) {
            return delegate.editorEvent(&event, &model, optionFor({}), model.index(0));
        };
        QVERIFY(!answer(mouse(QEvent::MouseButtonPress, {40, 150})));
        QVERIFY(!answer(mouse(QEvent::MouseButtonPress, {18, 18})));
        QVERIFY(!answer(mouse(QEvent::MouseButtonPress, {40, 150}, Qt::RightButton)));
        QVERIFY(!answer(mouse(QEvent::MouseButtonDblClick, {40, 150})));
        QVERIFY(!answer(mouse(QEvent::MouseMove, {40, 150})));
        QVERIFY(model.writes.isEmpty());
        QVERIFY(answer(mouse(QEvent::MouseButtonRelease, {40, 150})));
        QVERIFY(answer(mouse(QEvent::MouseButtonRelease, {18, 18})));
        model.refuseWrites = true;
        QVERIFY(answer(mouse(QEvent::MouseButtonRelease, {40, 150})));
        QCOMPARE(model.writes.size(), 2);
    }

    void noIndexNoAnswer()
    {
        CardModel model({CardModel::fullRow(u"gp:0"_s)});
        DeviceItemDelegate delegate;
        const QSignalSpy removed(&delegate, &DeviceItemDelegate::requestDelete);
        for (const auto button : {Qt::LeftButton, Qt::RightButton}) {
            auto release = mouse(QEvent::MouseButtonRelease, {18, 18}, button);
            QVERIFY(!delegate.editorEvent(&release, &model, optionFor({}), {}));
            QVERIFY(!delegate.editorEvent(&release, nullptr, optionFor({}), {}));
            QVERIFY(!delegate.editorEvent(&release, nullptr, optionFor({}), model.index(0)));
        }
        QCOMPARE(removed.size(), 0);
        QVERIFY(model.writes.isEmpty());
    }

    void withoutTheSelectedRoleAClickIsTheBaseClasss()
    {
        CardView list;
        list.model.dropRole("selected");
        QVERIFY(list.isReady());
        list.click(0, bareSpot);
        QVERIFY(list.model.writes.isEmpty());
        QCOMPARE(list.saidInAll(), 0);

        list.click(0, {18, 18});
        QCOMPARE(list.removed.size(), 1);
    }

    void theBaseClassStillTicksAModelsOwnBoxes()
    {
        QStandardItemModel model;
        auto *item = new QStandardItem(u"box"_s);
        item->setCheckable(true);
        model.appendRow(item);
        DeviceItemDelegate delegate;
        QStyleOptionViewItem option = optionFor({});
        option.features = QStyleOptionViewItem::HasCheckIndicator;
        const QRect box =
            QApplication::style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option);
        auto release = mouse(QEvent::MouseButtonRelease, box.center());
        // Away from the close button, which would come first.
        QVERIFY(!QRect(6, 6, 24, 24).contains(box.center()));
        QVERIFY(delegate.editorEvent(&release, &model, option, model.index(0, 0)));
        QCOMPARE(item->checkState(), Qt::Checked);
    }

    void withoutAKeyTheSignalsAreEmpty()
    {
        CardView list;
        list.model.dropRole("usn");
        QVERIFY(list.isReady());
        list.click(0, {18, 18});
        QCOMPARE(list.removed.first(), QVariantList{QString()});
    }

    void theDelegateMayDieWhileTheModelIsWritten()
    {
        class KillingModel : public CardModel
        {
        public:
            using CardModel::CardModel;
            bool setData(const QModelIndex &, const QVariant &, int) override
            {
                delete victim;
                return false;
            }
            QPointer<DeviceItemDelegate> victim = new DeviceItemDelegate;
        };
        KillingModel model({CardModel::fullRow(u"gp:0"_s)});
        const QSignalSpy toggled(model.victim, &DeviceItemDelegate::toggledSelect);
        auto release = mouse(QEvent::MouseButtonRelease, {40, 150});
        QVERIFY(model.victim->editorEvent(&release, &model, optionFor({}), model.index(0)));
        QVERIFY(!model.victim);
        QCOMPARE(toggled.size(), 0);
    }

    void aRowMayGoWhileItIsWritten()
    {
        class VanishingModel : public CardModel
        {
        public:
            using CardModel::CardModel;
            bool setData(const QModelIndex &, const QVariant &, int) override
            {
                clearRows();
                return false;
            }
        };
        VanishingModel model({CardModel::fullRow(u"gp:0"_s)});
        DeviceItemDelegate delegate;
        const QSignalSpy toggled(&delegate, &DeviceItemDelegate::toggledSelect);
        auto release = mouse(QEvent::MouseButtonRelease, {40, 150});
        QVERIFY(delegate.editorEvent(&release, &model, optionFor({}), model.index(0)));
        QCOMPARE(toggled.first(), (QVariantList{u"gp:0"_s, true}));
    }
};

GAMEPAD_TEST_MAIN(TestCardClicks)
#include "tst_cardclicks.moc"
