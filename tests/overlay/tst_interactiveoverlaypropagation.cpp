// SPDX-License-Identifier: MIT
// Like-titled pastilles share one configuration.
#include "overlaystage.h"

#include "testmain.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

using namespace Qt::StringLiterals;

namespace
{
QJsonObject config(const QString &function, const QJsonObject &args = {})
{
    return {{u"ref"_s, function}, {u"action"_s, function}, {u"args"_s, args}};
}

/// Types into the field of the tool box's settings that has this parameter, as a person would.
void type(ActionToolBox *box, const QString &parameter, const QString &text)
{
    box->openSettings();
    QWidget *panel = QApplication::activePopupWidget();
    QVERIFY(panel);
    for (auto *edit : panel->findChildren<QLineEdit *>()) {
        if (edit->accessibleName() == parameter && edit->isVisible()) {
            edit->selectAll();
            QTest::keyClicks(edit, text);
        }
    }
    panel->close();
}
} // namespace

class TestInteractiveOverlayPropagation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    // From one tool box to the others.

    void aChangeGoesToAllOfTheSameTitle()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (const QString &title : {u"joy_1"_s, u"JOY_1"_s, u" joy_1 "_s, u"joy_2"_s, u"Joy_1"_s})
            stage->addPastille({}, title);
        stage.box(0)->applyConfig(config(u"Dire"_s, object("{'texte':'bonjour'}")));
        // The blanks of another title count.
        QCOMPARE(stage.functions(), QStringList({u"Dire"_s, u"Dire"_s, QString(), QString(), u"Dire"_s}));
        QCOMPARE(stage.box(4)->config(), stage.box(0)->config());
        QCOMPARE(stage.box(4)->config(), config(u"Dire"_s, object("{'texte':'bonjour'}")));
    }

    void theBlanksOfTheOwnTitleDoNotCount()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (const QString &title : {u" joy_1 "_s, u"JOY_1"_s, u" joy_1 "_s})
            stage->addPastille({}, title);
        stage.box(0)->applyConfig(config(u"Centrer"_s));
        QCOMPARE(stage.functions(), QStringList({u"Centrer"_s, u"Centrer"_s, QString()}));
    }

    void aBlankTitleSharesNothing()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"  "_s);
        stage->addPastille({}, u"  "_s);
        stage->addPastille({}, u"x"_s);
        stage.pastille(2)->setTitle(QString());
        stage.box(0)->applyConfig(config(u"Centrer"_s));
        QCOMPARE(stage.functions(), QStringList({u"Centrer"_s, QString(), QString()}));
        stage.takeDirty();
        stage.box(0)->setInputKind(0);
        QCOMPARE(stage.takeDirty(), 1);
    }

    void typedTextGoesToAllOfTheSameTitle()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille(QPoint(100, 100), u"a"_s);
        stage->addPastille(QPoint(100, 200), u"A"_s);
        stage.box(0)->applyConfig(config(u"Dire"_s));
        type(stage.box(0), u"texte"_s, u"salut"_s);
        QCOMPARE(stage.box(0)->config(), config(u"Dire"_s, object("{'texte':'salut'}")));
        QCOMPARE(stage.box(1)->config(), stage.box(0)->config());
    }

    void aChoiceInTheComboGoesToAllOfTheSameTitle()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille(QPoint(100, 100), u"a"_s);
        stage->addPastille(QPoint(100, 200), u"a"_s);
        auto *combo = stage.box(0)->findChild<QComboBox *>();
        combo->setFocus();
        QTest::keyClick(combo, Qt::Key_Down);
        QTest::keyClick(combo, Qt::Key_Down);
        QCOMPARE(stage.functions(), QStringList({u"Tirer"_s, u"Tirer"_s}));
        QTest::keyClick(combo, Qt::Key_Home);
        QCOMPARE(stage.functions(), QStringList({QString(), QString()}));
    }

    void aBoxWithoutFunctionUnbindsTheOthers()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"a"_s);
        stage->addPastille({}, u"b"_s);
        stage.box(1)->applyConfig(config(u"Centrer"_s));
        stage.pastille(1)->setTitle(u"A"_s);
        stage.box(0)->applyConfig({});
        QCOMPARE(stage.functions(), QStringList({QString(), QString()}));
    }

    void aBoxWithoutFunctionGivesTheOthersTheFunctionNone()
    {
        OverlayStage stage;
        stage->setExternalServices(array("[{'name':'F'},{'name':'none'}]"));
        stage->addPastille({}, u"a"_s);
        stage->addPastille({}, u"a"_s);
        stage.box(0)->applyConfig(config(u"F"_s));
        QCOMPARE(stage.functions(), QStringList({u"F"_s, u"F"_s}));
        stage.box(0)->applyConfig({});
        QCOMPARE(stage.functions(), QStringList({QString(), u"none"_s}));
    }

    void everyChangeIsDirtyByItself()
    {
        OverlayStage stage;
        stage->addPastille({}, u"a"_s);
        stage->addPastille({}, u"b"_s);
        QSignalSpy other(stage.box(1), &ActionToolBox::durty);
        stage.takeDirty();
        stage.box(0)->setInputKind(1);
        QCOMPARE(stage.takeDirty(), 1);
        QCOMPARE(other.size(), 0);

        // A like-titled one emits as often as it changes, and each is dirty once; its own is one more.
        stage.pastille(1)->setTitle(u"a"_s);
        stage.box(0)->setInputKind(0);
        QVERIFY(other.size() >= 1);
        QCOMPARE(stage.takeDirty(), int(other.size()) + 1);
    }

    void whatIsSpreadDoesNotComeBack()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (int i = 0; i < 3; ++i)
            stage->addPastille({}, u"a"_s);
        QSignalSpy own(stage.box(0), &ActionToolBox::durty);
        QSignalSpy others(stage.box(1), &ActionToolBox::durty);
        QSignalSpy third(stage.box(2), &ActionToolBox::durty);
        stage.takeDirty();
        stage.box(0)->applyConfig(config(u"Dire"_s, object("{'texte':'x'}")));
        QCOMPARE(others.size(), third.size());
        QCOMPARE(stage.takeDirty(), int(own.size() + others.size() + third.size()));
        // For each emission of the first box, one configuration of each other, which emits once for the
        // choice, once for the text and once at its end, or less where nothing changes.
        QVERIFY(others.size() <= own.size() * 3);
        QCOMPARE(stage.box(2)->config(), config(u"Dire"_s, object("{'texte':'x'}")));
    }

    // Titles that follow the function.

    void aNamelessPastilleIsTitledByItsFunction()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, QString());
        stage->addPastille({}, u"named"_s);
        stage.box(0)->setHeaderText(u"?"_s);
        stage.box(0)->applyConfig(config(u"Centrer"_s));
        stage.box(1)->applyConfig(config(u"Dire"_s));
        QCOMPARE(stage.titles(), QStringList({u"Centrer"_s, u"named"_s}));
        QCOMPARE(stage.box(0)->findChild<QLabel *>()->text(), u"Action"_s);
        // It goes on following.
        stage.box(0)->applyConfig(config(u"Tirer"_s));
        QCOMPARE(stage.titles().first(), u"Tirer"_s);
        // Without a function the title stays.
        stage.box(0)->applyConfig({});
        QCOMPARE(stage.titles().first(), u"Tirer"_s);
    }

    void theNewTitleSharesAtOnce()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, QString());
        stage->addPastille({}, u"centrer"_s);
        stage->addPastille({}, u"bouton 1"_s);
        stage.box(0)->applyConfig(config(u"Centrer"_s));
        QCOMPARE(stage.functions(), QStringList({u"Centrer"_s, u"Centrer"_s, QString()}));
    }

    void aRetitledPastilleListensNoMore()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, QString());
        stage.pastille(0)->startListening();
        stage.box(0)->applyConfig(config(u"Centrer"_s));
        QCOMPARE(stage.pastille(0)->state(), TouchArea::Normal);
        QVERIFY(!stage->listeningPastille());
    }

    // Binding by title.

    void anActionIsBoundByTitle()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (const QString &title : {u"but_3"_s, u"BUT_3"_s, u" but_3"_s, u"but_33"_s})
            stage->addPastille({}, title);
        stage.takeDirty();
        stage->applyActionToTitle(u" Centrer\n"_s, u" But_3 "_s);
        QCOMPARE(stage.functions(), QStringList({u"Centrer"_s, u"Centrer"_s, QString(), QString()}));
        QVERIFY(stage.takeDirty() >= 3); // each box's own, and one at the end
    }

    void aBoundActionForgetsItsArgumentsAndTakesTheInput()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"joy_1"_s);
        stage.box(0)->applyConfig(config(u"Avancer"_s, object("{'vitesse':3,'pas':4}")));
        stage->applyActionToTitle(u"Avancer"_s, u"joy_1"_s);
        QCOMPARE(stage.box(0)->config(), config(u"Avancer"_s, object("{'vitesse':'arg_0','pas':0}")));
    }

    void oneDirtyEndsTheBinding()
    {
        OverlayStage stage;
        stage->addPastille({}, u"a"_s);
        QSignalSpy durty(stage.box(0), &ActionToolBox::durty);
        stage.takeDirty();
        stage->applyActionToTitle(u"X"_s, u"a"_s);
        QCOMPARE(stage.takeDirty(), int(durty.size()) + 1);
    }

    void aBindingThatMatchesNobodyIsNone_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("title");
        QTest::newRow("unknown title") << u"Centrer"_s << u"but_4"_s;
        QTest::newRow("empty title") << u"Centrer"_s << QString();
        QTest::newRow("blank title") << u"Centrer"_s << u" "_s;
        QTest::newRow("empty action") << QString() << u"but_3"_s;
        QTest::newRow("blank action") << u"\t"_s << u"but_3"_s;
    }

    void aBindingThatMatchesNobodyIsNone()
    {
        QFETCH(const QString, action);
        QFETCH(const QString, title);
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"but_3"_s);
        stage->addPastille({}, u" "_s);
        stage.takeDirty();
        stage->applyActionToTitle(action, title);
        QCOMPARE(stage.functions(), QStringList({QString(), QString()}));
        QCOMPARE(stage.takeDirty(), 0);
    }

    void aBoundPastilleKeepsItsTitle()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, QString());
        stage->applyActionToTitle(u"Centrer"_s, u"bouton 1"_s);
        QCOMPARE(stage.titles(), QStringList({u"Bouton 1"_s}));
        // From now on it does not follow its function.
        stage.box(0)->applyConfig(config(u"Tirer"_s));
        QCOMPARE(stage.titles(), QStringList({u"Bouton 1"_s}));
    }

    void anUnknownActionIsBoundTooAndKept()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"a"_s);
        stage->applyActionToTitle(u"Disparue"_s, u"a"_s);
        QCOMPARE(stage.box(0)->config(), config(u"Disparue"_s));
    }
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayPropagation)
#include "tst_interactiveoverlaypropagation.moc"
