// SPDX-License-Identifier: MIT
#include "cardview.h"
#include "testmain.h"

#include <QtGui/QHelpEvent>
#include <QtWidgets/QToolTip>

using namespace Qt::StringLiterals;

namespace
{
// Rests the mouse on a point of a card; true when somebody answered.
bool rest(CardView &list, int row, const QPoint &point)
{
    const QPoint position = list.at(row, point);
    QHelpEvent event(QEvent::ToolTip, position, list.view.viewport()->mapToGlobal(position));
    return QApplication::sendEvent(list.view.viewport(), &event) && event.isAccepted();
}

/// The label on the screen, or null.
QWidget *shownToolTip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        if (window->windowType() == Qt::ToolTip && window->isVisible())
            return window;
    return nullptr;
}

bool hideToolTip()
{
    QToolTip::hideText();
    return QTest::qWaitFor([] { return !QToolTip::isVisible(); });
}

QList<CardRow> rowsWith(const QByteArray &role, const QVariant &value)
{
    CardRow row = CardModel::fullRow(u"gp:1"_s);
    row.insert(role, value);
    return {CardModel::fullRow(u"gp:0"_s), row};
}
} // namespace

class TestCardToolTips : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        QVERIFY(hideToolTip());
    }

    void aChipTellsWhatItStandsFor_data()
    {
        QTest::addColumn<QStringList>("controls");
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<QString>("text");
        const QStringList usual{u"Axes|axis://6"_s, u"Buttons|btn://11"_s};
        QTest::newRow("axes, whose number cannot be seen") << usual << QPoint(135, 206) << u"Axes: 0"_s;
        QTest::newRow("buttons") << usual << QPoint(163, 206) << u"Buttons: 0"_s;
        QTest::newRow("first pixel of a chip") << usual << QPoint(125, 196) << u"Axes: 0"_s;
        QTest::newRow("last pixel of a chip") << usual << QPoint(144, 215) << u"Axes: 0"_s;
        QTest::newRow("a third section")
            << QStringList{u"Axes|axis://pad:4"_s} << QPoint(149, 206) << u"Axes: 4"_s;
        QTest::newRow("a text") << QStringList{u"Video|rtsp://x"_s} << QPoint(149, 206) << u"Video"_s;
        QTest::newRow("the rest") << QStringList(11, u"a|b"_s) << QPoint(149 - 122 + 9 * 28 + 5, 206)
                                  << u"+2"_s;
    }

    void aChipTellsWhatItStandsFor()
    {
        QFETCH(const QStringList, controls);
        QFETCH(const QPoint, point);
        CardView list(rowsWith("videoInterfaces", controls));
        QVERIFY(list.isReady());
        QVERIFY(rest(list, 1, point));
        QTEST(QToolTip::text(), "text");
    }

    void aTextChipWithoutLabelShowsNothing()
    {
        CardView list(rowsWith("videoInterfaces", QStringList{u"plain"_s}));
        list.model.toolTip = u"of the model"_s;
        QVERIFY(list.isReady());
        QVERIFY(rest(list, 1, {149, 206}));
        QCOMPARE(QToolTip::text(), QString());
    }

    void aPlateIsNotItsChip_data()
    {
        QTest::addColumn<QPoint>("point");
        QTest::newRow("left") << QPoint(124, 206);
        QTest::newRow("above") << QPoint(135, 195);
        QTest::newRow("below") << QPoint(135, 216);
        QTest::newRow("between") << QPoint(145, 206);
        QTest::newRow("bare card") << bareSpot;
    }

    void aPlateIsNotItsChip()
    {
        QFETCH(const QPoint, point);
        CardView list;
        list.model.toolTip = u"of the model"_s;
        QVERIFY(list.isReady());
        // The base class answers, as it does for every list.
        QVERIFY(rest(list, 1, point));
        QCOMPARE(QToolTip::text(), u"of the model"_s);
    }

    void theLinkTellsItsState_data()
    {
        QTest::addColumn<QVariant>("state");
        QTest::addColumn<QString>("text");
        const QString gone = u"Interface: d\u00e9connect\u00e9"_s;
        QTest::newRow("connected") << QVariant(2) << u"Interface: connect\u00e9"_s;
        QTest::newRow("busy") << QVariant(1) << u"Interface: connexion en cours"_s;
        QTest::newRow("disconnected") << QVariant(0) << gone;
        QTest::newRow("beyond") << QVariant(3) << gone;
        QTest::newRow("below") << QVariant(-1) << gone;
        QTest::newRow("none") << QVariant() << gone;
        QTest::newRow("no number") << QVariant(u"two"_s) << gone;
    }

    void theLinkTellsItsState()
    {
        QFETCH(const QVariant, state);
        CardView list(rowsWith("linkState", state));
        list.model.put(1, "selected", true);
        QVERIFY(list.isReady());
        QVERIFY(rest(list, 1, {183, 35}));
        QTEST(QToolTip::text(), "text");
    }

    void theLinksZone_data()
    {
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<bool>("inside");
        QTest::newRow("first pixel") << QPoint(168, 20) << true;
        QTest::newRow("last pixel") << QPoint(197, 49) << true;
        QTest::newRow("left") << QPoint(167, 20) << false;
        QTest::newRow("above") << QPoint(168, 19) << false;
        QTest::newRow("right") << QPoint(198, 49) << false;
        QTest::newRow("below") << QPoint(197, 50) << false;
    }

    void theLinksZone()
    {
        QFETCH(const QPoint, point);
        QFETCH(const bool, inside);
        CardView list(rowsWith("selected", true));
        list.model.toolTip = u"of the model"_s;
        QVERIFY(list.isReady());
        QVERIFY(rest(list, 1, point));
        QCOMPARE(QToolTip::text(), inside ? u"Interface: connecté"_s : u"of the model"_s);
    }

    void theLinkOfACardThatIsNotSelectedIsSilent()
    {
        CardView list;
        QVERIFY(list.isReady());
        QVERIFY(!rest(list, 1, {183, 35}));
        QCOMPARE(QToolTip::text(), QString());
    }

    void withoutTheSelectedRoleTheLinkIsSilent()
    {
        CardView list(rowsWith("selected", true));
        list.model.dropRole("selected");
        QVERIFY(list.isReady());
        QVERIFY(!rest(list, 1, {183, 35}));
    }

    void aChipComesBeforeTheLink()
    {
        // An item so low that the chips stand within the link's zone.
        CardModel model({CardModel::fullRow(u"gp:0"_s)});
        model.put(0, "selected", true);
        model.put(0, "videoInterfaces", QStringList(9, u"Video|x"_s));
        QListView view;
        view.setModel(&model);
        DeviceItemDelegate delegate;
        QStyleOptionViewItem option;
        option.rect = QRect(0, 0, 300, 80);
        QHelpEvent event(QEvent::ToolTip, {180, 46}, {180, 46});
        QVERIFY(delegate.helpEvent(&event, &view, option, model.index(0)));
        QCOMPARE(QToolTip::text(), u"Video"_s);
    }

    void theToolTipStandsWhereTheMouseRests()
    {
        CardView list(rowsWith("selected", true));
        QVERIFY(list.isReady());
        // From the rest of the mouse to the label is the same way everywhere, whatever the style makes of it.
        const auto wayToLabel = [&list](int row, const QPoint &point) -> std::optional<QPoint> {
            if (!hideToolTip() || !rest(list, row, point) || !shownToolTip())
                return std::nullopt;
            return shownToolTip()->pos() - list.view.viewport()->mapToGlobal(list.at(row, point));
        };
        const auto way = wayToLabel(1, {125, 196});
        QVERIFY(way);
        QVERIFY(QRect(-40, -40, 80, 80).contains(*way));
        QCOMPARE(shownToolTip()->parentWidget(), list.view.viewport());
        QCOMPARE(wayToLabel(1, {144, 215}), way);
        QCOMPARE(wayToLabel(0, {130, 200}), way);
        QCOMPARE(wayToLabel(1, {183, 35}), way); // the link's
    }

    void noIndexNoToolTip()
    {
        CardView list(rowsWith("selected", true));
        QVERIFY(list.isReady());
        QStyleOptionViewItem option;
        option.rect = QRect(0, 0, 300, 240);
        QHelpEvent event(QEvent::ToolTip, {135, 206}, {135, 206});
        list.delegate.helpEvent(&event, &list.view, option, {});
        QCOMPARE(QToolTip::text(), QString());
        QVERIFY(!list.delegate.helpEvent(&event, nullptr, option, list.model.index(1)));
        QVERIFY(!list.delegate.helpEvent(nullptr, &list.view, option, list.model.index(1)));
        QCOMPARE(QToolTip::text(), QString());
    }

    void onlyToolTipsAreAnswered()
    {
        CardView list;
        QVERIFY(list.isReady());
        QStyleOptionViewItem option;
        option.rect = QRect(0, 0, 300, 240);
        QHelpEvent event(QEvent::WhatsThis, {135, 206}, {135, 206});
        list.delegate.helpEvent(&event, &list.view, option, list.model.index(1));
        QCOMPARE(QToolTip::text(), QString());
    }
};

GAMEPAD_TEST_MAIN(TestCardToolTips)
#include "tst_cardtooltips.moc"
