// SPDX-License-Identifier: MIT
#include "argumentform.h"

#include "testmain.h"

#include <QtCore/QJsonArray>
#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;

namespace
{
const ParamDef speed{u"speed"_s, u"double"_s, u"0.0"_s};
const ParamDef count{u"count"_s, u"int"_s, QString()};
const ParamDef on{u"on"_s, u"bool"_s, u"false"_s};

void runDeferred()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
} // namespace

class TestArgumentForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theTwoEditorsLabelRowsTheirOwnWay()
    {
        ArgumentForm inToolBox(toolBoxTraits);
        inToolBox.setParams({speed, count});
        QCOMPARE(inToolBox.fields().at(0).label->text(), u"speed:"_s);
        QCOMPARE(inToolBox.fields().at(0).label->objectName(), QString());
        QCOMPARE(inToolBox.fields().at(0).edit->placeholderText(), u"0.0"_s);
        QCOMPARE(inToolBox.fields().at(1).edit->placeholderText(), u"<par défaut>"_s);

        ArgumentForm onCard(taskBlockTraits);
        onCard.setParams({speed, count});
        QCOMPARE(onCard.fields().at(0).label->text(), u"speed"_s);
        QCOMPARE(onCard.fields().at(0).label->objectName(), u"paramTag"_s);
        QCOMPARE(onCard.fields().at(0).edit->placeholderText(), u"0.0"_s);
        QCOMPARE(onCard.fields().at(1).edit->placeholderText(), u"<defaut>"_s);
    }

    void everyTypeGetsAPlainField()
    {
        ArgumentForm form(toolBoxTraits);
        form.setParams({speed, count, on, {u"x"_s, u"colour"_s, QString()}});
        QCOMPARE(form.fields().size(), 4);
        for (const ParamField &field : form.fields())
            QCOMPARE(field.edit->metaObject()->className(), "QLineEdit");
    }

    void namesAreShownAsTheyAre()
    {
        ArgumentForm form(toolBoxTraits);
        form.setParams({{u"<i>a</i> & b%1"_s, u"int"_s, QString()}});
        const QLabel *label = form.fields().first().label;
        QCOMPARE(label->text(), u"<i>a</i> & b%1:"_s);
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QVERIFY(!label->buddy()); // a buddy would make the ampersand a shortcut
    }

    void argumentsAreCollectedInOrder()
    {
        ArgumentForm form(toolBoxTraits);
        form.setParams({speed, count, on});
        QCOMPARE(form.args(), (QJsonObject{{u"speed"_s, 0.0}, {u"count"_s, QString()}, {u"on"_s, false}}));
        form.fields().at(0).edit->setText(u" 2.5 "_s);
        form.fields().at(1).edit->setText(u"3"_s);
        form.fields().at(2).edit->setText(u"state(a)"_s);
        QCOMPARE(form.args(), (QJsonObject{{u"speed"_s, 2.5}, {u"count"_s, 3}, {u"on"_s, u"state(a)"_s}}));
    }

    void anEmptyFieldSendsItsDefaultAsIfItWereTyped()
    {
        ArgumentForm form(taskBlockTraits);
        form.setParams({{u"capitals"_s, u"bool"_s, u"TRUE"_s},
                        {u"words"_s, u"int"_s, u" many "_s},
                        {u"endless"_s, u"double"_s, u"1e999"_s},
                        {u"input"_s, u"double"_s, u"arg_0"_s},
                        {u"escaped"_s, u"int"_s, uR"(state(\"a\"))"_s}});
        QCOMPARE(form.args(), (QJsonObject{{u"capitals"_s, true},
                                           {u"words"_s, u"many"_s},
                                           {u"endless"_s, u"1e999"_s},
                                           {u"input"_s, u"arg_0"_s},
                                           {u"escaped"_s, uR"(state("a"))"_s}}));
    }

    void filledFieldsFollowTheirValues()
    {
        ArgumentForm form(toolBoxTraits);
        form.setParams({speed, count, on});
        form.fields().at(1).edit->setText(u"typed"_s);
        form.fill({{u"speed"_s, 1.5}, {u"on"_s, true}, {u"other"_s, 1}});
        QCOMPARE(form.fields().at(0).edit->text(), u"1.5"_s);
        QCOMPARE(form.fields().at(1).edit->text(), u"typed"_s); // not named: left as it is
        QCOMPARE(form.fields().at(2).edit->text(), u"true"_s);
        form.fill({{u"count"_s, QJsonValue::Null}});
        QCOMPARE(form.fields().at(1).edit->text(), QString());
    }

    void aTextThatIsTooLongForItsFieldStaysWholeUntilItIsEdited()
    {
        const QString endless(40'000, u'w');
        ArgumentForm form(toolBoxTraits);
        form.setParams({{u"x"_s, u"string"_s, QString()}, {u"y"_s, u"string"_s, QString()}});
        QJsonObject told;
        connect(&form, &ArgumentForm::edited, &form, [&] { told = form.args(); });
        form.fill({{u"x"_s, endless}, {u"y"_s, endless}});
        const QJsonObject whole{{u"x"_s, endless}, {u"y"_s, endless}};
        QVERIFY(form.args() == whole);
        QVERIFY(told == whole);

        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QLineEdit *edit = form.fields().first().edit;
        QTest::keyClick(edit, Qt::Key_Backspace);
        const QJsonObject edited{{u"x"_s, endless.first(edit->maxLength() - 1)}, {u"y"_s, endless}};
        QVERIFY(form.args() == edited);
        QVERIFY(told == edited);
    }

    void everyChangeOfATextIsTold()
    {
        ArgumentForm form(toolBoxTraits);
        form.setParams({speed, count});
        const QSignalSpy edited(&form, &ArgumentForm::edited);
        form.fields().at(1).edit->setText(u"3"_s);
        QCOMPARE(edited.count(), 1);
        form.fields().at(1).edit->setText(u"3"_s);
        QCOMPARE(edited.count(), 1);
        form.setParams({speed});
        form.clear();
        QCOMPARE(edited.count(), 1);
    }

    void oldRowsWaitHiddenAndSilentForTheEventLoop()
    {
        ArgumentForm form(toolBoxTraits);
        form.setParams({speed});
        const ParamField old = form.fields().first();
        const QSignalSpy edited(&form, &ArgumentForm::edited);
        form.setParams({count});
        QCOMPARE(form.formLayout()->rowCount(), 1);
        QVERIFY(old.edit && old.label);
        QVERIFY(old.edit->isHidden() && old.label->isHidden());
        old.edit->setText(u"late"_s);
        QCOMPARE(edited.count(), 0);
        runDeferred();
        QVERIFY(!old.edit && !old.label);
        QCOMPARE(form.fields().size(), 1);
    }

    void clearRemovesEveryRow()
    {
        ArgumentForm form(toolBoxTraits);
        form.setParams({speed, count, on});
        form.clear();
        QCOMPARE(form.formLayout()->rowCount(), 0);
        QCOMPARE(form.fields().size(), 0);
        QCOMPARE(form.args(), QJsonObject());
        runDeferred();
        QVERIFY(form.findChildren<QWidget *>().isEmpty());
        form.clear();
    }

    void whoListensMayRebuildTheFormWhileItIsFilled()
    {
        ArgumentForm form(toolBoxTraits);
        form.setParams({speed, count, on});
        connect(
            &form, &ArgumentForm::edited, &form, [&form] { form.setParams({count}); },
            Qt::SingleShotConnection);
        form.fill({{u"speed"_s, 1}, {u"count"_s, 2}, {u"on"_s, true}});
        runDeferred();
        QCOMPARE(form.args(), (QJsonObject{{u"count"_s, QString()}}));
    }

    void parametersBeyondWhatCanBeShownKeepTheirValues()
    {
        constexpr int many = 30'000; // fields for all of them would take half a minute
        QList<ParamDef> params;
        QJsonObject defaults;
        for (int i = 0; i < many; ++i) {
            params.append({u"p%1"_s.arg(i, 5, 10, QChar(u'0')), u"int"_s, QString::number(i)});
            defaults.insert(params.last().name, i);
        }
        ArgumentForm form(taskBlockTraits);
        form.setParams(params);
        QCOMPARE(form.fields().size(), 100);
        QCOMPARE(form.args(), defaults);

        form.fill({{u"p00099"_s, 1}, {u"p00100"_s, 2}, {u"p29999"_s, QJsonArray{3}}});
        QJsonObject expected = defaults;
        expected[u"p00099"_s] = 1;
        expected[u"p00100"_s] = 2;
        expected[u"p29999"_s] = QJsonArray{3};
        QCOMPARE(form.args(), expected);

        form.setParams(params);
        QCOMPARE(form.args(), defaults);
        form.setParams({speed});
        QCOMPARE(form.args(), (QJsonObject{{u"speed"_s, 0.0}}));
    }

    void aParameterBeyondWhatCanBeShownOverwritesAnEarlierOneOfItsName()
    {
        QList<ParamDef> params;
        for (int i = 0; i < 100; ++i)
            params.append({u"p%1"_s.arg(i), u"int"_s, QString::number(i)});
        params.append({u"p0"_s, u"int"_s, u"-1"_s});
        ArgumentForm form(taskBlockTraits);
        form.setParams(params);
        QCOMPARE(form.fields().size(), 100);
        QCOMPARE(form.args().size(), 100);
        QCOMPARE(form.args().value("p0"_L1), QJsonValue(-1));
        QCOMPARE(form.args().value("p1"_L1), QJsonValue(1));
        form.fill({{u"p0"_s, 7}});
        QCOMPARE(form.args().value("p0"_L1), QJsonValue(7));
    }

    void textsThatFillADocumentAreShownByTheirBeginning()
    {
        const QString endless(10'000'000, u'w');
        ArgumentForm form(toolBoxTraits);
        form.setParams({{endless, u"string"_s, endless}});
        QVERIFY(form.fields().first().label->text().size() < 1000);
        QVERIFY(form.fields().first().edit->placeholderText().size() < 1000);
        QCOMPARE(form.args(), (QJsonObject{{endless, endless}}));
    }

    void theInputTakesTheFirstFreeFieldThatSuitsIt()
    {
        ArgumentForm form(toolBoxTraits);
        form.setParams({on, speed, count});
        form.fillFromInput(0);
        form.fillFromInput(1);
        QCOMPARE(form.args(),
                 (QJsonObject{{u"on"_s, u"arg_0"_s}, {u"speed"_s, u"arg_0"_s}, {u"count"_s, QString()}}));
        form.fillFromInput(1);
        form.fillFromInput(0);
        QCOMPARE(form.fields().at(2).edit->text(), u"arg_0"_s);
    }

    void theInputPassesOverATextThatOnlyBeginsBlank()
    {
        const QString filled = QString(40'000, u' ') + u"2.5"_s;
        ArgumentForm form(toolBoxTraits);
        form.setParams({speed});
        form.fill({{u"speed"_s, filled}});
        form.fillFromInput(0);
        QCOMPARE(form.args(), (QJsonObject{{u"speed"_s, 2.5}}));
    }
};

GAMEPAD_TEST_MAIN(TestArgumentForm)
#include "tst_argumentform.moc"
