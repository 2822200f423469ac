// SPDX-License-Identifier: MIT
#include "sharedsheet.h"

#include "testmain.h"

#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

namespace
{
const QString sheet = u"QLabel { color: #102030; }"_s;
const QColor colour(0x10, 0x20, 0x30);

QColor textColour(QWidget &label)
{
    label.ensurePolished();
    return label.palette().color(QPalette::WindowText);
}
} // namespace

class TestSharedSheet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aWidgetAloneWearsItsSheet()
    {
        QWidget parent;
        QLabel label(&parent);
        wearSheet(&label, sheet);
        QCOMPARE(label.styleSheet(), sheet);
        QCOMPARE(textColour(label), colour);
    }

    void aWidgetBelowACarrierNeedsNone()
    {
        QWidget surface;
        carrySheet(&surface, sheet);
        QWidget between(&surface);
        QLabel label(&between);
        wearSheet(&label, sheet);
        QCOMPARE(label.styleSheet(), QString());
        QCOMPARE(textColour(label), colour);
    }

    void aCarrierKeepsItsOwnRulesAndCarriesOnce()
    {
        QWidget surface;
        const QString own = u"QWidget { background: #405060; }"_s;
        surface.setStyleSheet(own);
        carrySheet(&surface, sheet);
        carrySheet(&surface, sheet);
        QCOMPARE(surface.styleSheet(), own + sheet);
    }

    void anotherSheetAboveIsNoCarrier()
    {
        QWidget parent;
        parent.setStyleSheet(u"QLabel { color: red; }"_s);
        QLabel label(&parent);
        wearSheet(&label, sheet);
        QCOMPARE(textColour(label), colour);
    }
};

GAMEPAD_TEST_MAIN(TestSharedSheet)
#include "tst_sharedsheet.moc"
