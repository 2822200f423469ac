// SPDX-License-Identifier: MIT
#include "designerstage.h"
#include "pixels.h"

#include "testmain.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

namespace
{
QJsonArray functions()
{
    return {function(u"Tir"_s), function(u"LockOn"_s, {param(u"cible"_s, u"string"_s)})};
}

class TwoStepsStage : public DesignerStage
{
public:
    TwoStepsStage()
        : DesignerStage({action(u"A"_s, {task(u"Tir"_s), task(u"LockOn"_s)}), action(u"B"_s)})
    {
        designer().setFunctions(functions());
        show();
        designer().setFocus();
    }

    template <typename T>
    T &named(const char *name)
    {
        return *designer().findChild<T *>(QLatin1StringView(name));
    }
};

void compareMargins(const QLayout &layout, int measure)
{
    QCOMPARE(layout.contentsMargins(), QMargins(measure, measure, measure, measure));
}

const QColor ground(0x0E1B26);

QColor panelGround()
{
    return over(ground, {15, 26, 36, 210});
}

/// The colours that tell what a button does.
struct ButtonLooks
{
    QColor border;
    QColor text;
    QColor hoverGround;
    QColor hoverText;
};

/// How a button looks on the window that it stands in: its ground and the middle of its upper border.
struct Look
{
    QColor ground;
    QColor border;
};

Look lookOf(QWidget &button)
{
    const QImage image = button.window()->grab().toImage();
    const QPoint corner = button.mapTo(button.window(), QPoint(0, 0));
    return {image.pixelColor(corner + QPoint(4, button.height() / 2)),
            image.pixelColor(corner + QPoint(button.width() / 2, 0))};
}
} // namespace

class TestActionDesignerFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
    }

    void theTwoPanelsShareTheWidth()
    {
        TwoStepsStage stage;
        auto &layout = *qobject_cast<QHBoxLayout *>(stage.designer().layout());
        compareMargins(layout, 0);
        QCOMPARE(layout.spacing(), 12);
        QCOMPARE(layout.count(), 2);
        for (int i = 0; i < 2; ++i)
            QVERIFY(layout.itemAt(i)->widget()->testAttribute(Qt::WA_StyledBackground));
        QCOMPARE(layout.itemAt(0)->widget()->objectName(), u"designerLeftPanel"_s);
        QCOMPARE(layout.itemAt(1)->widget()->objectName(), u"designerRightPanel"_s);
        QCOMPARE(layout.stretch(0), 1);
        QCOMPARE(layout.stretch(1), 3);
    }

    void theLeftPanelHoldsTheListAboveItsButtons()
    {
        TwoStepsStage stage;
        auto &layout = *qobject_cast<QVBoxLayout *>(stage.named<QWidget>("designerLeftPanel").layout());
        compareMargins(layout, 8);
        QCOMPARE(layout.spacing(), 8);
        QCOMPARE(layout.count(), 3);
        const auto *title = qobject_cast<QLabel *>(layout.itemAt(0)->widget());
        QCOMPARE(title->text(), u"Actions"_s);
        QCOMPARE(title->objectName(), u"sectionTitle"_s);
        QCOMPARE(layout.itemAt(1)->widget(), &stage.list());
        QCOMPARE(layout.stretch(1), 1);
        QCOMPARE(stage.list().selectionMode(), QAbstractItemView::SingleSelection);

        auto &buttons = *qobject_cast<QHBoxLayout *>(layout.itemAt(2)->layout());
        QCOMPARE(buttons.spacing(), 6);
        QCOMPARE(buttons.count(), 4);
        const QStringList texts{u"+"_s, u"Dupliquer"_s, u"Supprimer"_s};
        const QStringList names{u"primaryBtn"_s, u"secondaryBtn"_s, u"dangerBtn"_s};
        const QStringList tips{u"Ajouter une action"_s, u"Dupliquer l'action"_s, u"Supprimer l'action"_s};
        for (int i = 0; i < 3; ++i) {
            const auto *button = qobject_cast<QToolButton *>(buttons.itemAt(i)->widget());
            QCOMPARE(button->text(), texts.at(i));
            QCOMPARE(button->objectName(), names.at(i));
            QCOMPARE(button->toolTip(), tips.at(i));
        }
        QVERIFY(buttons.itemAt(3)->spacerItem());
    }

    void theRightPanelHoldsTheNameAboveTheSteps()
    {
        TwoStepsStage stage;
        auto &layout = *qobject_cast<QVBoxLayout *>(stage.named<QWidget>("designerRightPanel").layout());
        compareMargins(layout, 10);
        QCOMPARE(layout.spacing(), 10);
        QCOMPARE(layout.count(), 5);
        const auto *title = qobject_cast<QLabel *>(layout.itemAt(0)->widget());
        QCOMPARE(title->text(), u"Nom de l'action"_s);
        QCOMPARE(title->objectName(), u"sectionTitle"_s);
        QCOMPARE(layout.itemAt(1)->widget(), &stage.name());
        QCOMPARE(stage.name().placeholderText(), u"ex: LockOn"_s);
        const auto *hint = qobject_cast<QLabel *>(layout.itemAt(2)->widget());
        QCOMPARE(hint->text(), u"Definissez les etapes (ref + args + when)."_s);
        QCOMPARE(hint->objectName(), u"hintLabel"_s);
        QCOMPARE(layout.itemAt(3)->widget(), &stage.scroll());
        QCOMPARE(layout.stretch(3), 1);
        QCOMPARE(layout.itemAt(4)->widget(), &stage.addStepButton());
        QCOMPARE(layout.itemAt(4)->alignment(), Qt::AlignLeft);
        QCOMPARE(stage.addStepButton().text(), u"+ Etape"_s);
    }

    void theGroundOfTheStepsIsFilled()
    {
        DesignerStage stage; // not on show: a style sheet then fills in its own way
        QVERIFY(stage.scroll().viewport()->autoFillBackground());
        QVERIFY(!stage.scroll().widget()->autoFillBackground());
    }

    void theStepsScrollOnAGroundOfTheirOwn()
    {
        TwoStepsStage stage;
        QScrollArea &scroll = stage.scroll();
        QVERIFY(scroll.widgetResizable());
        QCOMPARE(scroll.frameShape(), QFrame::NoFrame);
        QCOMPARE(scroll.viewport()->objectName(), u"stepsViewport"_s);
        QVERIFY(!scroll.viewport()->styleSheet().isEmpty());
        QCOMPARE(scroll.widget()->objectName(), u"stepsPanel"_s);
        QVERIFY(!scroll.widget()->autoFillBackground());
        auto &layout = *qobject_cast<QVBoxLayout *>(scroll.widget()->layout());
        compareMargins(layout, 0);
        QCOMPARE(layout.spacing(), 8);
        QCOMPARE(layout.alignment(), Qt::AlignTop);
    }

    void aRowHoldsACardAndItsButtons()
    {
        TwoStepsStage stage;
        QWidget *row = stage.rows().at(1);
        QCOMPARE(row->parentWidget(), stage.scroll().widget());
        QCOMPARE(row->objectName(), u"stepRow"_s);
        QCOMPARE(row->styleSheet(), u"background: transparent;"_s);
        const QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Maximum);
        QCOMPARE(row->sizePolicy(), policy);
        auto &layout = *qobject_cast<QHBoxLayout *>(row->layout());
        compareMargins(layout, 0);
        QCOMPARE(layout.spacing(), 6);
        QCOMPARE(layout.count(), 2);
        QCOMPARE(layout.itemAt(0)->widget(), &stage.card(1));
        QCOMPARE(layout.stretch(0), 1);
        QCOMPARE(stage.card(1).sizePolicy(), policy);

        const QWidget *column = layout.itemAt(1)->widget();
        QCOMPARE(column->objectName(), u"stepButtonsCol"_s);
        QCOMPARE(column->styleSheet(), u"background: transparent;"_s);
        auto &buttons = *qobject_cast<QVBoxLayout *>(column->layout());
        compareMargins(buttons, 0);
        QCOMPARE(buttons.spacing(), 6);
        QCOMPARE(buttons.count(), 5);
        QVERIFY(buttons.itemAt(0)->spacerItem());
        QVERIFY(buttons.itemAt(4)->spacerItem());
        const QStringList names{u"taskMiniBtn"_s, u"taskMiniBtn"_s, u"taskMiniDangerBtn"_s};
        const QStringList tips{u"Monter"_s, u"Descendre"_s, u"Supprimer"_s};
        const QStringList texts{u"^"_s, u"v"_s, u"x"_s}; // no resource lies at the paths of their icons
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(buttons.itemAt(i + 1)->alignment(), Qt::AlignHCenter);
            const auto *button = qobject_cast<QToolButton *>(buttons.itemAt(i + 1)->widget());
            QCOMPARE(button->objectName(), names.at(i));
            QCOMPARE(button->toolTip(), tips.at(i));
            QCOMPARE(button->text(), texts.at(i));
            QVERIFY(button->icon().isNull());
            QCOMPARE(button->size(), QSize(40, 32));
            QCOMPARE(button->iconSize(), QSize(18, 18));
            QVERIFY(button->testAttribute(Qt::WA_StyledBackground));
            QVERIFY(!button->autoFillBackground());
        }
    }

    void thePanelsHaveTheirPalette()
    {
        TwoStepsStage stage;
        const QImage image = stage.designer().grab().toImage();
        const QWidget &left = stage.named<QWidget>("designerLeftPanel");
        const QWidget &right = stage.named<QWidget>("designerRightPanel");
        QCOMPARE(image.pixelColor(left.geometry().right() + 6, 300), ground);
        QVERIFY(isNear(image.pixelColor(left.geometry().bottomLeft() + QPoint(20, -3)), panelGround()));
        QVERIFY(isNear(image.pixelColor(right.geometry().bottomRight() - QPoint(20, 3)), panelGround()));

        for (QLabel *title : stage.designer().findChildren<QLabel *>(u"sectionTitle"_s))
            QVERIFY(pixelsOf(title->grab().toImage(), QColor(0xE8F0F5)) > 0);

        const QWidget *viewport = stage.scroll().viewport();
        const QPoint corner = viewport->mapTo(&stage.designer(), viewport->rect().bottomLeft());
        QVERIFY(isNear(image.pixelColor(corner + QPoint(100, 0)), QColor(0x2A4456)));
        QVERIFY(isNear(image.pixelColor(corner + QPoint(100, -4)), over(panelGround(), {12, 22, 31, 220})));
        QVERIFY(isNear(image.pixelColor(corner), panelGround())); // the corner is round
    }

    void cardsKeepTheirPaletteOnTransparentRows()
    {
        TwoStepsStage stage;
        const ActionTaskBlockWidget &card = stage.card(1);
        QTRY_VERIFY(card.isVisible());
        const QImage image = stage.designer().grab().toImage();
        const QPoint corner = card.mapTo(&stage.designer(), QPoint(0, 0));
        QCOMPARE(image.pixelColor(corner + QPoint(3, card.height() / 2)), QColor(0x5BBFD1));
        const QColor steps = over(panelGround(), {12, 22, 31, 220});
        QVERIFY(isNear(image.pixelColor(corner + QPoint(14, 4)), over(steps, {20, 33, 45, 235})));
        QVERIFY(isNear(image.pixelColor(corner + QPoint(card.width() + 3, 2)), steps));
    }

    void theListShowsTheMouseAndTheSelection()
    {
        TwoStepsStage stage;
        const QRect first = stage.list().visualItemRect(stage.list().item(0));
        const QRect second = stage.list().visualItemRect(stage.list().item(1));
        const auto at = [&stage](const QRect &item, const QPoint &offset) {
            const QPoint spot(item.center().x() + offset.x(), item.top() + offset.y());
            return pixel(stage.designer(), stage.list().viewport()->mapTo(&stage.designer(), spot));
        };
        QCOMPARE(at(first, {0, 4}), QColor(0x244152));
        QCOMPARE(at(first, {0, 0}), QColor(0x35617A));
        const QColor listGround = over(panelGround(), {12, 22, 31, 230});
        QVERIFY(isNear(at(second, {0, 4}), listGround));
        QTest::mouseMove(stage.designer().windowHandle(),
                         stage.list().viewport()->mapTo(&stage.designer(), second.center()));
        QTRY_VERIFY(isNear(at(second, {0, 4}), over(listGround, {47, 79, 99, 160})));
    }

    void buttonsShowWhatTheyDoAndTheMouse_data()
    {
        QTest::addColumn<int>("which");
        QTest::addColumn<ButtonLooks>("looks");
        const QColor text(0xD7E4EC);
        const ButtonLooks primary{0x3E7F96, text, 0x2F5D70, text};
        const ButtonLooks plain{0x2A4456, text, 0x2F4F63, text};
        const ButtonLooks danger{0x7C2A2A, 0xF3C9C9, 0x5B2323, 0xFFE7E7};
        QTest::newRow("+") << 0 << primary;
        QTest::newRow("Dupliquer") << 1 << plain;
        QTest::newRow("Supprimer") << 2 << danger;
        QTest::newRow("+ Etape") << 3 << primary;
        QTest::newRow("up") << 4 << plain;
        QTest::newRow("delete") << 5 << danger;
    }

    void buttonsShowWhatTheyDoAndTheMouse()
    {
        QFETCH(int, which);
        QFETCH(ButtonLooks, looks);
        TwoStepsStage stage;
        QToolButton *buttons[] = {&stage.addButton(),    &stage.duplicateButton(),
                                  &stage.deleteButton(), &stage.addStepButton(),
                                  &stage.up(0),          &stage.remove(0)};
        QToolButton &button = *buttons[which];
        QTRY_VERIFY(button.isVisible());
        // A styled ground and the button itself: the small ones are painted twice.
        const QColor once = over(panelGround(), {26, 42, 54, 230});
        QVERIFY(isNear(lookOf(button).ground, which < 4 ? once : QColor(26, 42, 54)));
        QVERIFY(isNear(lookOf(button).border, looks.border));
        QVERIFY(pixelsOf(button.grab().toImage(), looks.text) > 0);
        hover(button);
        QCOMPARE(lookOf(button).ground, looks.hoverGround);
        QVERIFY(pixelsOf(button.grab().toImage(), looks.hoverText) > 0);
        QTest::mousePress(&button, Qt::LeftButton);
        QCOMPARE(lookOf(button).ground, QColor(0x223847));
        QTest::mouseMove(&button, QPoint(-20, -20));
        QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(-20, -20));
        button.setFocus();
        QCOMPARE(lookOf(button).border, QColor(0x5BBFD1));
    }

    void toolTipsOfAStepAreReadable()
    {
        TwoStepsStage stage;
        QCOMPARE(toolTipGround(stage.up(0)), ground);
    }

    void aLongNameEndsInAnEllipsis()
    {
        DesignerStage stage({action(QString(10000, u'x'))});
        stage.show();
        QCOMPARE(stage.list().horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(stage.list().textElideMode(), Qt::ElideRight);
        QVERIFY(stage.designer().minimumSizeHint().width() < 1000);
    }
};

GAMEPAD_TEST_MAIN(TestActionDesignerFrame)
#include "tst_actiondesignerframe.moc"
