// SPDX-License-Identifier: MIT
#include "deviceitemdelegate.h"

#include "cardlayout.h"
#include "cardrendering.h"
#include "testmain.h"

#include <QtCore/QMetaMethod>
#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QListView>
#include <QtWidgets/QToolTip>

using namespace Qt::StringLiterals;

namespace
{
QMouseEvent mouse(QEvent::Type type, const QPointF &position, Qt::MouseButton button)
{
    return {type, position, position, button, button, Qt::NoModifier};
}
} // namespace

class TestDeviceItemDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void itsSignalsStandInOrder()
    {
        const QMetaObject &meta = DeviceItemDelegate::staticMetaObject;
        QCOMPARE(QByteArray(meta.superClass()->className()), "QStyledItemDelegate"_ba);
        QByteArrayList found;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            found.append(meta.method(i).methodSignature());
        QCOMPARE(found, (QByteArrayList{"toggledSelect(QString,bool)", "requestConfig(QString)",
                                        "requestDelete(QString)"}));
    }

    void everyCardAsksForTheSameSize()
    {
        const CardModel model({CardModel::fullRow(u"gp:0"_s)});
        const DeviceItemDelegate delegate;
        QCOMPARE(delegate.sizeHint({}, {}), QSize(300, 240));
        QStyleOptionViewItem option;
        option.rect = QRect(0, 0, 10, 1000);
        QCOMPARE(delegate.sizeHint(option, model.index(0)), QSize(300, 240));
    }

    void rolesAreFoundByTheirExactNames()
    {
        CardModel model({CardModel::fullRow(u"gp:0"_s)}, 900);
        const CardRoles roles = findCardRoles(model.roleNames());
        QVERIFY((roles == CardRoles{.usn = 910,
                                    .name = 909,
                                    .ip = 908,
                                    .selected = 907,
                                    .isConnected = 906,
                                    .videoInterfaces = 905,
                                    .json = 904,
                                    .product = 903,
                                    .image = 902,
                                    .modelString = 901,
                                    .linkState = 900}));

        model.renameRole("usn", "Usn");
        model.renameRole("ip", "ip ");
        model.dropRole("linkState");
        const CardRoles fewer = findCardRoles(model.roleNames());
        QCOMPARE(fewer.usn, -1);
        QCOMPARE(fewer.ip, -1);
        QCOMPARE(fewer.linkState, -1);
        QCOMPARE(fewer.name, 909);
        QVERIFY(findCardRoles({}) == CardRoles{});
    }

    void aRoleIsReadOnlyWhereThereIsOne()
    {
        const CardModel model({CardModel::fullRow(u"gp:0"_s)}, 900);
        QCOMPARE(roleValue(model.index(0), 910), QVariant(u"gp:0"_s));
        QVERIFY(!roleValue(model.index(0), -1).isValid());
        QVERIFY(!roleValue({}, 910).isValid());
        QVERIFY(!roleValue(model.index(0), 911).isValid());
    }

    void rolesAreResolvedOnceFromTheFirstModel()
    {
        const CardModel first({CardModel::fullRow(u"gp:0"_s)}, 900);
        const CardModel other({CardModel::fullRow(u"gp:1"_s)}, 800);
        const DeviceItemDelegate delegate;
        const auto paint = [&](const QModelIndex &index) {
            QImage page = whitePage({300, 240});
            QPainter painter(&page);
            delegate.paint(&painter, optionFor({}), index);
            return page;
        };
        // Without a model nothing is resolved, so that the first real one still counts.
        const QImage empty = paint({});
        QCOMPARE(first.roleNamesCalls, 0);

        const QImage filled = paint(first.index(0));
        QVERIFY(filled != empty);
        QCOMPARE(paint(first.index(0)), filled);
        QCOMPARE(first.roleNamesCalls, 1);

        // The other model has other numbers, which stay unknown.
        QCOMPARE(paint(other.index(0)), empty);
        QCOMPARE(other.roleNamesCalls, 0);
    }

    void anEntryOfAnyKindResolvesTheRoles()
    {
        CardModel model({CardModel::fullRow(u"gp:0"_s)});
        DeviceItemDelegate delegate;
        auto press = mouse(QEvent::MouseButtonPress, {100, 100}, Qt::LeftButton);
        // Even when the index is of no use.
        QVERIFY(!delegate.editorEvent(&press, &model, optionFor({}), {}));
        QCOMPARE(model.roleNamesCalls, 1);
        delegate.editorEvent(&press, &model, optionFor({}), model.index(0));
        QCOMPARE(model.roleNamesCalls, 1);
    }

    void aCardWithoutModelIsPaintedEmpty()
    {
        const DeviceItemDelegate delegate;
        QImage page = whitePage({300, 240});
        QPainter painter(&page);
        delegate.paint(&painter, optionFor({}), {});
        painter.end();
        QCOMPARE(page, render({}));
        COMPARE_COLOUR(page, 274, 25, QColor(200, 70, 70));
        COMPARE_COLOUR(page, 149, 206, QColor(220, 160, 0));
    }

    void aModelWithoutAnyRoleGivesAnEmptyCard()
    {
        CardModel model({CardModel::fullRow(u"gp:0"_s)});
        const auto names = model.roleNames();
        for (const QByteArray &name : names)
            model.dropRole(name);
        const DeviceItemDelegate delegate;
        QImage page = whitePage({300, 240});
        QPainter painter(&page);
        delegate.paint(&painter, optionFor({}), model.index(0));
        painter.end();
        QCOMPARE(page, render({}));
    }

    void thePainterIsLeftAsItWas()
    {
        const CardModel model({CardModel::fullRow(u"gp:0"_s)});
        const DeviceItemDelegate delegate;
        QImage page = whitePage({300, 240});
        QPainter painter(&page);
        const QPen pen(Qt::magenta, 7);
        const QBrush brush(Qt::cyan, Qt::Dense3Pattern);
        QFont font = painter.font();
        font.setPointSizeF(23);
        painter.setPen(pen);
        painter.setBrush(brush);
        painter.setFont(font);
        painter.setOpacity(0.5);
        delegate.paint(&painter, optionFor({}), model.index(0));
        QCOMPARE(painter.pen(), pen);
        QCOMPARE(painter.brush(), brush);
        QCOMPARE(painter.font(), font);
        QCOMPARE(painter.opacity(), 0.5);
        QVERIFY(!painter.testRenderHint(QPainter::Antialiasing));
    }

    void itemsOfAnySizeArePainted_data()
    {
        QTest::addColumn<QSize>("item");
        for (const QSize &size : {QSize(0, 0), QSize(1, 1), QSize(12, 12), QSize(13, 13), QSize(-5, -5),
                                  QSize(40, 400), QSize(400, 40), QSize(3000, 20)})
            QTest::addRow("%d by %d", size.width(), size.height()) << size;
    }

    void itemsOfAnySizeArePainted()
    {
        QFETCH(const QSize, item);
        const QImage image = render(CardModel::fullRow(u"gp:0"_s), {.item = item});
        // The close button follows the item and not the card, so that it is always there.
        QVERIFY(similar(image.pixelColor(18, 10), {24, 35, 45}, 60));
    }

    void aRowCostsTheSameAmongMany()
    {
        QList<CardRow> rows;
        for (int i = 0; i < 1000; ++i)
            rows.append(CardModel::fullRow(u"gp:%1"_s.arg(i)));
        const CardModel one({rows.first()});
        const CardModel many(rows);
        const DeviceItemDelegate forOne;
        const DeviceItemDelegate forMany;
        QImage page = whitePage({300, 240});
        QPainter painter(&page);

        forOne.paint(&painter, optionFor({}), one.index(0));
        for (int row = 0; row < 1000; ++row)
            forMany.paint(&painter, optionFor({}), many.index(row));
        QCOMPARE(many.dataCalls, one.dataCalls * 1000);
        QCOMPARE(many.roleNamesCalls, 1);
        for (int row = 0; row < 1000; ++row)
            QCOMPARE(many.rowsRead.value(row), one.dataCalls);
    }

    void theJsonIsNeverRead()
    {
        class JsonModel : public CardModel
        {
        public:
            using CardModel::CardModel;
            QVariant data(const QModelIndex &index, int role) const override
            {
                jsonRead = jsonRead || roleNames().value(role) == "json";
                return CardModel::data(index, role);
            }
            mutable bool jsonRead = false;
        };
        CardRow row = CardModel::fullRow(u"gp:0"_s);
        row.insert("selected", true);
        JsonModel model({row});
        const QModelIndex index = model.index(0);
        const QStyleOptionViewItem option = optionFor({});
        DeviceItemDelegate delegate;

        QImage page = whitePage({300, 240});
        QPainter painter(&page);
        delegate.paint(&painter, option, index);
        QVERIFY(model.dataCalls > 0);
        QVERIFY(!model.jsonRead);

        QListView view;
        const QPoint chip(135, 206);
        for (const QPoint &spot : {chip, layoutCard(option.rect).linkZone.center()}) {
            QHelpEvent rest(QEvent::ToolTip, spot, spot);
            QVERIFY(delegate.helpEvent(&rest, &view, option, index));
            QVERIFY(!model.jsonRead);
        }
        QToolTip::hideText();

        auto release = mouse(QEvent::MouseButtonRelease, {100, 100}, Qt::LeftButton);
        QVERIFY(delegate.editorEvent(&release, &model, option, index));
        QCOMPARE(model.writes.size(), 1);
        QVERIFY(!model.jsonRead);
    }
};

GAMEPAD_TEST_MAIN(TestDeviceItemDelegate)
#include "tst_deviceitemdelegate.moc"
