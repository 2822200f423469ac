// SPDX-License-Identifier: MIT
// One pastille at most listens and one at most is active. Hosts count on each `dirty`.
#include "overlaystage.h"

#include "testmain.h"

using namespace Qt::StringLiterals;

namespace
{
constexpr auto normal = TouchArea::Normal;
constexpr auto listening = TouchArea::Listening;
constexpr auto active = TouchArea::Active;

/// Pastilles a, b and c, and a journal of all that they and the overlay emit.
class ThreePastilles : public OverlayStage
{
public:
    ThreePastilles()
    {
        for (const QString &title : {u"a"_s, u"b"_s, u"c"_s}) {
            TouchArea *area = overlay()->addPastille({}, title);
            QObject::connect(area, &TouchArea::stateChanged, area, [this, title](TouchArea::State state) {
                m_journal.append(title + QString::number(state));
            });
            QObject::connect(area, &TouchArea::listeningCompleted, area,
                             [this](const QString &text) { m_journal.append("learned "_L1 + text); });
        }
        takeDirty();
    }

    TouchArea *a() { return pastille(0); }
    TouchArea *b() { return pastille(1); }
    TouchArea *c() { return pastille(2); }

    [[nodiscard]] QList<TouchArea::State> states() const
    {
        QList<TouchArea::State> states;
        for (const TouchArea *area : pastilles())
            states.append(area->state());
        return states;
    }

    void listen(TouchArea *area) { Q_EMIT area->requestStartListening(area); }
    void activate(TouchArea *area, bool on = true) { Q_EMIT area->requestSetActive(area, on); }

    QStringList takeJournal() { return std::exchange(m_journal, {}); }

private:
    QStringList m_journal;
};

using States = QList<TouchArea::State>;
} // namespace

class TestInteractiveOverlayStates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    // Listening.

    void aPastilleListensWhenItAsksTo()
    {
        ThreePastilles stage;
        stage.listen(stage.a());
        QCOMPARE(stage.states(), (States{listening, normal, normal}));
        QCOMPARE(stage->listeningPastille(), stage.a());
        QCOMPARE(stage.takeDirty(), 2); // its change of state, and the request
    }

    void anotherOneTakesTheListeningOver()
    {
        ThreePastilles stage;
        stage.listen(stage.a());
        stage.takeDirty();
        stage.takeJournal();
        stage.listen(stage.b());
        QCOMPARE(stage.states(), (States{normal, listening, normal}));
        QCOMPARE(stage->listeningPastille(), stage.b());
        QCOMPARE(stage.takeJournal(), QStringList({u"a0"_s, u"b1"_s}));
        QCOMPARE(stage.takeDirty(), 3);
    }

    void whoListensAlreadyGoesOn()
    {
        ThreePastilles stage;
        stage.listen(stage.a());
        stage.takeDirty();
        stage.listen(stage.a());
        QCOMPARE(stage->listeningPastille(), stage.a());
        QCOMPARE(stage.takeDirty(), 1);
    }

    void anActiveOneThatListensIsActiveNoMore()
    {
        ThreePastilles stage;
        stage.activate(stage.a());
        stage.takeDirty();
        stage.listen(stage.a());
        QCOMPARE(stage.states(), (States{listening, normal, normal}));
        QCOMPARE(stage.takeDirty(), 2);
        // The reference went with it: another one becomes active alone.
        stage.activate(stage.b());
        QCOMPARE(stage.states(), (States{listening, active, normal}));
        QCOMPARE(stage->listeningPastille(), stage.a());
    }

    void aPastilleThatStartsByItselfTakesTheListeningOver()
    {
        ThreePastilles stage;
        stage.listen(stage.a());
        stage.takeDirty();
        stage.b()->startListening();
        QCOMPARE(stage.states(), (States{normal, listening, normal}));
        QCOMPARE(stage->listeningPastille(), stage.b());
        QCOMPARE(stage.takeDirty(), 2);
    }

    void aPastilleThatStopsLeavesNobodyListening()
    {
        ThreePastilles stage;
        stage.listen(stage.a());
        stage.takeDirty();
        stage.a()->setState(normal);
        QVERIFY(!stage->listeningPastille());
        QCOMPARE(stage.takeDirty(), 1);
    }

    void aRenamedPastilleLeavesNobodyListening()
    {
        ThreePastilles stage;
        stage.listen(stage.a());
        stage.takeDirty();
        stage.a()->setTitle(u"Tir"_s);
        QVERIFY(!stage->listeningPastille());
        QCOMPARE(stage.takeDirty(), 1); // that of the state; none for what was completed
        stage.a()->setTitle(u"Feu"_s);
        QCOMPARE(stage.takeDirty(), 0);
    }

    void whicheverPastilleCompletesNobodyIsWaitedFor()
    {
        ThreePastilles stage;
        stage.listen(stage.a());
        stage.takeDirty();
        Q_EMIT stage.b()->listeningCompleted(u"b"_s);
        QVERIFY(!stage->listeningPastille());
        QCOMPARE(stage.states(), (States{listening, normal, normal}));
        QCOMPARE(stage.takeDirty(), 0);
    }

    // Being active.

    void aPastilleIsActiveWhenItAsksToBe()
    {
        ThreePastilles stage;
        stage.activate(stage.a());
        QCOMPARE(stage.states(), (States{active, normal, normal}));
        QCOMPARE(stage.takeDirty(), 3); // its change of state, the request, and once more
    }

    void anotherOneTakesTheActivityOver()
    {
        ThreePastilles stage;
        stage.activate(stage.a());
        stage.takeDirty();
        stage.takeJournal();
        stage.activate(stage.b());
        QCOMPARE(stage.states(), (States{normal, active, normal}));
        QCOMPARE(stage.takeJournal(), QStringList({u"a0"_s, u"b2"_s}));
        QCOMPARE(stage.takeDirty(), 4);
    }

    void whoIsActiveAlreadyStaysSo()
    {
        ThreePastilles stage;
        stage.activate(stage.a());
        stage.takeDirty();
        stage.activate(stage.a());
        QCOMPARE(stage.states(), (States{active, normal, normal}));
        QCOMPARE(stage.takeDirty(), 2);
    }

    void anActivityIsGivenBack()
    {
        ThreePastilles stage;
        stage.activate(stage.a());
        stage.takeDirty();
        stage.activate(stage.a(), false);
        QCOMPARE(stage.states(), (States{normal, normal, normal}));
        QCOMPARE(stage.takeDirty(), 3);
    }

    void whoIsNotActiveGivesNothingBack()
    {
        ThreePastilles stage;
        stage.activate(stage.a());
        stage.listen(stage.b());
        stage.takeDirty();
        stage.activate(stage.b(), false);
        QCOMPARE(stage.states(), (States{active, listening, normal}));
        QCOMPARE(stage.takeDirty(), 2);
    }

    void nobodyAskingIsDirtyOnce()
    {
        ThreePastilles stage;
        stage.activate(stage.a());
        stage.takeDirty();
        Q_EMIT stage.b()->requestSetActive(nullptr, true);
        QCOMPARE(stage.takeDirty(), 1);
        Q_EMIT stage.b()->requestSetActive(nullptr, false);
        QCOMPARE(stage.takeDirty(), 1);
        QCOMPARE(stage.states(), (States{active, normal, normal}));
        Q_EMIT stage.b()->requestStartListening(nullptr);
        QCOMPARE(stage.states(), (States{active, normal, normal}));
    }

    void aListeningOneThatBecomesActiveListensNoMore()
    {
        ThreePastilles stage;
        stage.listen(stage.a());
        stage.takeDirty();
        stage.activate(stage.a());
        QCOMPARE(stage.states(), (States{active, normal, normal}));
        QVERIFY(!stage->listeningPastille());
        QCOMPARE(stage.takeDirty(), 3);
    }

    void aPastilleThatBecomesActiveByItselfIsTheOnlyOne()
    {
        ThreePastilles stage;
        stage.activate(stage.a());
        stage.listen(stage.b());
        stage.takeDirty();
        stage.takeJournal();
        stage.b()->setActive(true);
        QCOMPARE(stage.states(), (States{normal, active, normal}));
        QVERIFY(!stage->listeningPastille());
        // The old one is told from within the new one's change; the journal heard of the new one last.
        QCOMPARE(stage.takeJournal(), QStringList({u"a0"_s, u"b2"_s}));
        QCOMPARE(stage.takeDirty(), 2);
    }

    void aPastilleThatBecomesNormalIsNeither()
    {
        ThreePastilles stage;
        stage.activate(stage.a());
        stage.takeDirty();
        stage.a()->setState(normal);
        QCOMPARE(stage.takeDirty(), 1);
        // No reference is left that would be put back to normal.
        stage.a()->blockSignals(true);
        stage.a()->setState(active);
        stage.a()->blockSignals(false);
        stage.activate(stage.b());
        QCOMPARE(stage.states(), (States{active, active, normal}));
    }

    // Learning.

    void nobodyListensAndNothingIsLearned()
    {
        ThreePastilles stage;
        const QJsonObject before = stage->toJson();
        stage->applyListenedInput(u"but_7"_s);
        QCOMPARE(stage.takeDirty(), 0);
        QCOMPARE(stage->toJson(), before);
    }

    void theTitleAloneCarriesWhatWasLearned()
    {
        ThreePastilles stage;
        const QJsonValue source = stage.node(1)["src"_L1];
        stage.listen(stage.b());
        stage.takeDirty();
        stage.takeJournal();

        bool cleared = false;
        connect(stage.b(), &TouchArea::listeningCompleted, stage.b(),
                [&] { cleared = stage->listeningPastille() == nullptr; });
        stage->applyListenedInput(u"but_7"_s);

        QVERIFY(cleared); // before the title's setting came to its end
        QCOMPARE(stage.takeJournal(), QStringList({u"b0"_s, u"learned but_7"_s}));
        QCOMPARE(stage.takeDirty(), 2); // the change of state, and the learning
        QCOMPARE(stage.b()->title(), u"but_7"_s);
        QCOMPARE(stage.states(), (States{normal, normal, normal}));
        QVERIFY(!stage->listeningPastille());
        QCOMPARE(stage.node(1)["src"_L1], source);
    }

    void learningRaisesNoCounter()
    {
        ThreePastilles stage;
        stage.listen(stage.b());
        stage->applyListenedInput(u"joy_40"_s);
        stage->addPastille({}, u"d"_s);
        QCOMPARE(stage.key(3), u"joy_3"_s);
    }

    void learningTellsTheToolBoxNoKind()
    {
        OverlayStage stage;
        stage->setExternalServices(array("[{'name':'F','params':[{'name':'n','preferredType':'int'},"
                                         "{'name':'on','preferredType':'bool'}]}]"));
        TouchArea *area = stage->addPastille({}, u"a"_s);
        area->startListening();
        stage->applyListenedInput(u"but_7"_s);
        // Still the kind of an axis, so the number takes the input and not the switch.
        stage.box(0)->applyConfig(object("{'ref':'F'}"));
        QCOMPARE(stage.box(0)->config()["args"_L1].toObject(), object("{'n':'arg_0','on':false}"));
    }

    void aLearnedTitleOfANamelessPastilleStillFollowsItsFunction()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        TouchArea *area = stage->addPastille({}, QString());
        area->startListening();
        stage->applyListenedInput(u"but_7"_s);
        QCOMPARE(area->title(), u"but_7"_s);
        stage.box(0)->applyConfig(object("{'ref':'Centrer'}"));
        QCOMPARE(area->title(), u"Centrer"_s);
    }

    void anyTextIsLearned_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("word") << u"Tir"_s;
        QTest::newRow("empty") << QString();
        QTest::newRow("beyond int") << u"joy_99999999999"_s;
    }

    void anyTextIsLearned()
    {
        QFETCH(const QString, key);
        ThreePastilles stage;
        stage.listen(stage.a());
        stage.takeDirty();
        stage->applyListenedInput(key);
        QCOMPARE(stage.a()->title(), key);
        QCOMPARE(stage.takeDirty(), 2);
    }

    void theNextPastilleMayListenFromWithinTheLearning()
    {
        // A host that teaches one input after the other.
        ThreePastilles stage;
        stage.listen(stage.a());
        connect(stage.a(), &TouchArea::listeningCompleted, stage.b(), [&] { stage.listen(stage.b()); });
        stage->applyListenedInput(u"but_7"_s);
        QCOMPARE(stage->listeningPastille(), stage.b());
        QCOMPARE(stage.titles(), QStringList({u"but_7"_s, u"b"_s, u"c"_s}));
        QCOMPARE(stage.key(1), u"joy_1"_s);
        stage->applyListenedInput(u"but_8"_s);
        QCOMPARE(stage.titles(), QStringList({u"but_7"_s, u"but_8"_s, u"c"_s}));
    }
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayStates)
#include "tst_interactiveoverlaystates.moc"
