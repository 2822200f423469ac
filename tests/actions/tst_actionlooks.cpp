// SPDX-License-Identifier: MIT
#include "actionsheets.h"
#include "cardstage.h"
#include "pixels.h"
#include "sharedsheet.h"
#include "toolboxstage.h"

#include "entries.h"
#include "testmain.h"

#include <QtGui/QFontInfo>
#include <QtGui/QWindow>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QToolButton>

using namespace Qt::StringLiterals;

namespace
{
QJsonArray catalogue()
{
    return {function(u"Tir"_s), function(u"LockOn"_s, {param(u"cible"_s, u"string"_s)})};
}

// The middle of the upper edge, where the border is straight.
QColor border(QWidget &widget)
{
    return pixel(widget, {widget.width() / 2, 0});
}

QColor ground(QWidget &widget)
{
    return pixel(widget, {3, widget.height() / 2});
}
} // namespace

class TestActionLooks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }
    void cleanup() { runDeferred(); }

    void theToolBoxHasItsPalette()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.show();
        QCOMPARE(ground(stage.box()), QColor(0x1A2A36));
        QCOMPARE(border(stage.box()), QColor(0x2A4456));
        QVERIFY(pixel(stage.box(), {0, 0}) != QColor(0x2A4456)); // the corner is round
        QCOMPARE(ground(stage.combo()), QColor(0x0F1720));
        QCOMPARE(QFontInfo(stage.header().font()).pixelSize(), 12);
        QCOMPARE(QFontInfo(stage.combo().font()).pixelSize(), 12);
        QVERIFY(pixelsOf(stage.header().grab().toImage(), QColor(0xE8F0F5)) > 0);
    }

    void theComboShowsTheMouseAndTheFocus()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.show();
        stage.window().setFocus();
        const QColor idle = border(stage.combo());
        hover(stage.combo());
        QCOMPARE(border(stage.combo()), QColor(0x3B5A72));
        QVERIFY(idle != QColor(0x3B5A72));
        hover(stage.header());
        stage.combo().setFocus();
        QTRY_COMPARE(border(stage.combo()), QColor(0x5BBFD1));
    }

    void anUnknownFunctionIsOrangeInTheClosedComboToo()
    {
        const QColor orange(255, 165, 0);
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.show();
        stage.box().applyConfig(task(u"Tir"_s));
        QCOMPARE(pixelsOf(stage.combo().grab().toImage(), orange), 0);
        stage.box().applyConfig(task(u"Disparue"_s));
        QVERIFY(pixelsOf(stage.combo().grab().toImage(), orange) > 0);
        QCOMPARE(stage.combo().currentText(), u"Disparue"_s);
    }

    void anUnknownFunctionIsOrangeInTheList()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.show();
        stage.box().applyConfig(task(u"Disparue"_s));
        stage.box().applyConfig(task(u"Tir"_s));
        stage.combo().showPopup();
        QAbstractItemView *list = stage.combo().view();
        QTRY_VERIFY(list->isVisible());
        const QImage image = list->viewport()->grab().toImage();
        QVERIFY(pixelsOf(image, QColor(255, 165, 0)) > 0);
        QVERIFY(pixelsOf(image, QColor(0x0F1720)) > image.width());
        stage.combo().hidePopup();
    }

    void aLongSignatureIsCutWithAnEllipsis()
    {
        const QString start(40, u'w');
        ToolBoxStage stage;
        stage.box().setExternalServices({function(start + u'a'), function(start + u'b')});
        stage.show();
        stage.box().applyConfig(task(start + u'a'));
        const QImage one = stage.combo().grab().toImage();
        stage.box().applyConfig(task(start + u'b'));
        QCOMPARE(stage.combo().grab().toImage(), one);
        QCOMPARE(stage.combo().currentText(), start + u'b');
    }

    void thePopupHasTheSamePalette()
    {
        ToolBoxStage stage;
        stage.box().setExternalServices(catalogue());
        stage.box().applyConfig(task(u"LockOn"_s));
        stage.show();
        stage.box().openSettings();
        QFrame &panel = *ToolBoxStage::panel();
        QLineEdit &edit = *ToolBoxStage::edit(0);
        QCOMPARE(ground(panel), QColor(0x1A2A36));
        QCOMPARE(border(panel), QColor(0x2A4456));
        QVERIFY(!panel.mask().contains(QPoint(0, 0)));
        QVERIFY(panel.mask().contains(panel.rect().center()));
        QCOMPARE(pixel(panel, {20, panel.height() - 14}), QColor(0x1A2A36)); // through the scroll area
        QCOMPARE(ground(edit), QColor(0x0F1720));
        QCOMPARE(QFontInfo(edit.font()).pixelSize(), 12);
        edit.clearFocus();
        hover(edit);
        QCOMPARE(border(edit), QColor(0x3B5A72));
        edit.setFocus();
        QTRY_COMPARE(border(edit), QColor(0x5BBFD1));
    }

    void toolButtonsInAToolBoxHaveItsPalette()
    {
        ToolBoxStage stage;
        QToolButton button(&stage.box());
        button.setGeometry(0, 0, 40, 30);
        stage.show();
        QCOMPARE(ground(button), QColor(0x243544));
        hover(button);
        QCOMPARE(ground(button), QColor(0x2F4F63));
    }

    void toolTipsOfAToolBoxHaveItsPalette()
    {
        ToolBoxStage stage;
        stage.show();
        QCOMPARE(toolTipGround(stage.combo()), QColor(0x111827));
        stage.box().openSettings();
        QCOMPARE(toolTipGround(*ToolBoxStage::panel()), QColor(0x111827));
    }

    void aCarriedPaletteLooksTheSame()
    {
        ToolBoxStage alone;
        alone.box().applyConfig(task(u"Disparue"_s));
        alone.show();
        alone.combo().clearFocus();
        const QImage expected = alone.box().grab().toImage();

        QWidget surface;
        carrySheet(&surface, toolBoxSheet());
        ActionToolBox box(&surface);
        QCOMPARE(box.styleSheet(), QString());
        box.applyConfig(task(u"Disparue"_s));
        surface.show();
        QVERIFY(QTest::qWaitForWindowActive(&surface));
        box.findChild<QComboBox *>()->clearFocus();
        QCOMPARE(box.size(), alone.box().size());
        QCOMPARE(box.grab().toImage(), expected);
    }

    void aCarriedPaletteLeavesItsSurfaceAlone()
    {
        QWidget surface;
        surface.resize(100, 100);
        QLineEdit edit(&surface);
        QLabel label(u"text"_s, &surface);
        label.move(0, 50);
        surface.show();
        QVERIFY(QTest::qWaitForWindowExposed(&surface));
        const QImage before = surface.grab().toImage();
        carrySheet(&surface, toolBoxSheet());
        QCOMPARE(surface.grab().toImage(), before);
    }

    void theCardHasItsPalette()
    {
        const QColor below(0x10, 0x80, 0x10);
        CardStage stage;
        QPalette palette = stage.window().palette();
        palette.setColor(QPalette::Window, below);
        stage.window().setPalette(palette);
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(task(u"LockOn"_s)));
        stage.show();
        ActionTaskBlockWidget &card = stage.card();
        QTRY_VERIFY(stage.edit(0).isVisible());
        const QPoint corner = card.pos();
        const auto onWindow = [&](int x, int y) { return pixel(stage.window(), corner + QPoint(x, y)); };

        QCOMPARE(onWindow(1, card.height() / 2), QColor(0x5BBFD1));
        QCOMPARE(onWindow(5, card.height() / 2), QColor(0x5BBFD1));
        QVERIFY(isNear(onWindow(card.width() / 2, 0), QColor(0x2A4456)));
        QVERIFY(isNear(onWindow(0, 0), below));
        QVERIFY(isNear(onWindow(14, 4), over(below, QColor(20, 33, 45, 235))));
        QVERIFY(isNear(onWindow(card.width() - 6, card.height() - 6), over(below, QColor(16, 26, 36, 240))));
    }

    void theCardShowsTheMouse()
    {
        CardStage stage;
        stage.show();
        ActionTaskBlockWidget &card = stage.card();
        const QPoint edge = card.pos() + QPoint(card.width() / 2, 0);
        QVERIFY(isNear(pixel(stage.window(), edge), QColor(0x2A4456)));
        QTest::mouseMove(stage.window().windowHandle(), card.pos() + QPoint(card.width() / 2, 4));
        QTRY_VERIFY(card.underMouse());
        QVERIFY(isNear(pixel(stage.window(), edge), QColor(0x3B5A72)));
        QCOMPARE(pixel(stage.window(), card.pos() + QPoint(3, card.height() / 2)), QColor(0x5BBFD1));
    }

    void theFieldsOfACardShowTheMouseAndTheFocus()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        stage.show();
        stage.window().setFocus();
        for (QWidget *field :
             {static_cast<QWidget *>(&stage.combo()), static_cast<QWidget *>(&stage.when())}) {
            QVERIFY(field->height() >= 28 + 10 + 2); // the height told, its padding, its border
            hover(*field);
            QVERIFY(isNear(border(*field), QColor(0x3B5A72)));
            field->setFocus();
            QTRY_VERIFY(isNear(border(*field), QColor(0x5BBFD1)));
            stage.window().setFocus();
        }
    }

    void fieldsAndTagsOfACardHaveGroundsOfTheirOwn()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(task(u"LockOn"_s)));
        stage.show();
        QTRY_VERIFY(stage.edit(0).isVisible());
        // The middle of its gradient.
        const QColor cardGround = over(stage.window().palette().color(QPalette::Window), {18, 30, 40, 238});
        const auto at = [&stage](const QWidget &widget, const QPoint &offset) {
            return pixel(stage.window(), widget.mapTo(&stage.window(), offset));
        };
        const QColor fieldGround = over(cardGround, QColor(12, 22, 31, 230));
        const QWidget *fields[] = {&stage.combo(), &stage.when(), &stage.edit(0)};
        for (const QWidget *field : fields) {
            QVERIFY(isNear(at(*field, {4, field->height() / 2}), fieldGround));
            QVERIFY(!isNear(at(*field, {0, 0}), QColor(0x2A4456))); // the corner is round
        }
        const QLabel &tag = *stage.form().fields().first().label;
        QVERIFY(isNear(at(tag, {4, tag.height() / 2}), over(cardGround, QColor(23, 45, 63, 235))));
        const auto labels = stage.card().findChildren<QLabel *>(u"blockLabel"_s);
        QCOMPARE(labels.size(), 2);
        for (const QLabel *label : labels) {
            const QColor shown = at(*label, {4, label->height() / 2});
            QVERIFY(isNear(shown, over(cardGround, QColor(18, 39, 54, 220))));
        }
    }

    void tagsArePills()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(task(u"LockOn"_s)));
        stage.show();
        QLabel &tag = *stage.form().fields().first().label;
        QTRY_VERIFY(tag.isVisible());
        QCOMPARE(tag.font().weight(), QFont::DemiBold);
        const QImage image = tag.grab().toImage();
        QVERIFY(pixelsOf(image, QColor(0xDCE7EE)) > 0);
        QVERIFY(pixelsOf(image, QColor(0x35617A)) > tag.width());
        const auto labels = stage.card().findChildren<QLabel *>(u"blockLabel"_s);
        QCOMPARE(labels.size(), 2);
        for (const QLabel *label : labels)
            QCOMPARE(label->font().weight(), QFont::DemiBold);
    }
};

GAMEPAD_TEST_MAIN(TestActionLooks)
#include "tst_actionlooks.moc"
