// SPDX-License-Identifier: MIT
#include "cardstage.h"

#include "entries.h"
#include "testmain.h"

#include <QtWidgets/QScrollBar>

using namespace Qt::StringLiterals;

namespace
{
QJsonArray params(int count)
{
    QJsonArray params;
    for (int i = 0; i < count; ++i)
        params.append(param(u"parametre_%1"_s.arg(i), u"string"_s));
    return params;
}

QJsonArray catalogue()
{
    return {function(u"sans"_s), function(u"un"_s, params(1)), function(u"dix"_s, params(10))};
}
} // namespace

class TestActionTaskBlockFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theCardHoldsThreeRows()
    {
        CardStage stage;
        QCOMPARE(stage.card().objectName(), u"ActionTaskBlockWidget"_s);
        QVERIFY(stage.card().testAttribute(Qt::WA_StyledBackground));
        const auto *layout = qobject_cast<QVBoxLayout *>(stage.card().layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(10, 8, 10, 8));
        QCOMPARE(layout->spacing(), 6);
        QCOMPARE(layout->count(), 3);
        QCOMPARE(layout->itemAt(1)->widget(), &stage.scroll());

        const auto compareRow = [&](int index, const QString &text, QWidget *content) {
            const auto *row = qobject_cast<QHBoxLayout *>(layout->itemAt(index)->layout());
            QVERIFY(row);
            QCOMPARE(row->spacing(), 6);
            QCOMPARE(row->count(), 2);
            const auto *label = qobject_cast<QLabel *>(row->itemAt(0)->widget());
            QVERIFY(label);
            QCOMPARE(label->text(), text);
            QCOMPARE(label->objectName(), u"blockLabel"_s);
            QCOMPARE(row->stretch(0), 0);
            QCOMPARE(row->itemAt(1)->widget(), content);
            QCOMPARE(row->stretch(1), 1);
        };
        compareRow(0, u"Action"_s, &stage.combo());
        compareRow(2, u"when"_s, &stage.when());
        QCOMPARE(stage.combo().sizeAdjustPolicy(), QComboBox::AdjustToContents);
        QCOMPARE(stage.combo().minimumContentsLength(), 28);
        QCOMPARE(stage.when().placeholderText(), u"condition"_s);
    }

    void theFormScrollsVerticallyOnly()
    {
        CardStage stage;
        const QScrollArea &scroll = stage.scroll();
        QVERIFY(scroll.widgetResizable());
        QCOMPARE(scroll.frameShape(), QFrame::NoFrame);
        QCOMPARE(scroll.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(scroll.verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
        QCOMPARE(scroll.sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
        QCOMPARE(scroll.sizePolicy().verticalPolicy(), QSizePolicy::Maximum);
        QCOMPARE(scroll.maximumHeight(), 180);
        QCOMPARE(scroll.widget(), &stage.form());
        const QFormLayout *rows = stage.form().formLayout();
        QCOMPARE(rows->contentsMargins(), QMargins());
        QCOMPARE(rows->verticalSpacing(), 6);
        QCOMPARE(rows->horizontalSpacing(), 10);
        QCOMPARE(rows->labelAlignment(), Qt::AlignLeft | Qt::AlignVCenter);
    }

    void aFunctionWithoutParametersHidesTheForm()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        stage.show();
        QVERIFY(stage.card().applyConfig(task(u"un"_s)));
        QVERIFY(stage.scroll().isVisible());
        QVERIFY(stage.card().applyConfig(task(u"sans"_s)));
        QCOMPARE(stage.combo().currentText(), u"sans()"_s);
        QVERIFY(!stage.scroll().isVisible());
        QCOMPARE(stage.scroll().minimumHeight(), 0);
        QCOMPARE(stage.scroll().maximumHeight(), 0);
        QCOMPARE(stage.form().formLayout()->rowCount(), 0);
    }

    void noFunctionHidesTheForm()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        QVERIFY(stage.card().applyConfig(task(u"un"_s)));
        stage.combo().setCurrentIndex(0);
        QVERIFY(stage.scroll().isHidden());
        QVERIFY(stage.card().applyConfig(task(u"un"_s)));
        stage.combo().setCurrentIndex(-1);
        QVERIFY(stage.scroll().isHidden());
    }

    void aShortFormIsAsHighAsItsRows()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        stage.show();
        QVERIFY(stage.card().applyConfig(task(u"un"_s)));
        const int height = stage.form().sizeHint().height() + 6;
        QVERIFY(height < 180);
        QCOMPARE(stage.scroll().minimumHeight(), height);
        QCOMPARE(stage.scroll().maximumHeight(), height);
        QTRY_COMPARE(stage.scroll().height(), height);
        QTRY_VERIFY(!stage.scroll().verticalScrollBar()->isVisible());
    }

    void tenParametersAreCappedAndScrolled()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        stage.show();
        QVERIFY(stage.card().applyConfig(task(u"dix"_s)));
        QCOMPARE(stage.form().fields().size(), 10);
        QTRY_COMPARE(stage.scroll().height(), 180);
        QTRY_VERIFY(stage.scroll().verticalScrollBar()->isVisible());
        stage.window().resize(60, 480);
        QTRY_VERIFY(stage.scroll().verticalScrollBar()->isVisible());
        QVERIFY(!stage.scroll().horizontalScrollBar()->isVisible());
    }

    void aCardFilledBeforeItIsShownIsAsHighAsOneFilledAfterwards()
    {
        CardStage before;
        before.card().setFunctions(catalogue());
        QVERIFY(before.card().applyConfig(task(u"un"_s)));
        before.show();
        CardStage after;
        after.card().setFunctions(catalogue());
        after.show();
        QVERIFY(after.card().applyConfig(task(u"un"_s)));
        QCOMPARE(before.scroll().maximumHeight(), after.scroll().maximumHeight());
        QTRY_COMPARE(before.card().height(), after.card().height());
    }

    void eachParameterHasATagAndAField()
    {
        CardStage stage;
        stage.card().setFunctions(
            {function(u"f"_s, {param(u"a & b"_s, u"int"_s), param(u"c"_s, u"string"_s)})});
        QVERIFY(stage.card().applyConfig(task(u"f"_s)));
        const QFormLayout *rows = stage.form().formLayout();
        QCOMPARE(rows->rowCount(), 2);
        const QStringList names{u"a & b"_s, u"c"_s};
        const QStringList placeholders{u"0"_s, u"<defaut>"_s};
        for (int row = 0; row < 2; ++row) {
            const auto *tag = qobject_cast<QLabel *>(rows->itemAt(row, QFormLayout::LabelRole)->widget());
            QVERIFY(tag);
            QCOMPARE(tag->text(), names.at(row));
            QCOMPARE(tag->objectName(), u"paramTag"_s);
            const auto *edit = qobject_cast<QLineEdit *>(rows->itemAt(row, QFormLayout::FieldRole)->widget());
            QVERIFY(edit);
            QCOMPARE(edit->placeholderText(), placeholders.at(row));
            QCOMPARE(edit->text(), QString());
        }
    }

    void tagsStandInTheMiddleOfTheirRows()
    {
        CardStage stage;
        stage.card().setFunctions(catalogue());
        stage.show();
        QVERIFY(stage.card().applyConfig(task(u"un"_s)));
        const ParamField &field = stage.form().fields().first();
        QTRY_VERIFY(field.label->isVisible());
        QTRY_VERIFY(qAbs(field.label->geometry().center().y() - field.edit->geometry().center().y()) <= 1);
    }
};

GAMEPAD_TEST_MAIN(TestActionTaskBlockFrame)
#include "tst_actiontaskblockframe.moc"
