// SPDX-License-Identifier: MIT
#include "pastillestage.h"

#include "testmain.h"

#include <QtCore/QMetaEnum>
#include <QtCore/QMetaMethod>

using namespace Qt::StringLiterals;

class TestTouchArea : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aNewPastille()
    {
        const TouchArea pastille;
        const TouchArea other;
        QVERIFY(!pastille.id().isNull());
        QVERIFY(pastille.id() != other.id());
        QCOMPARE(pastille.title(), u"Bouton"_s);
        QCOMPARE(pastille.state(), TouchArea::Normal);
        QVERIFY(!pastille.freeAspect());
        QCOMPARE(pastille.size(), QSize(56, 56));
        QCOMPARE(pastille.minimumSize(), QSize(56, 56));
        QCOMPARE(pastille.maximumSize(), QSize(56, 56));
        // The cursor of edit mode comes only when somebody sets the mode.
        QCOMPARE(pastille.cursor().shape(), Qt::PointingHandCursor);
        QVERIFY(pastille.testAttribute(Qt::WA_TranslucentBackground));
        QVERIFY(!pastille.hasMouseTracking());
    }

    void itsIdentityCanBeReplaced()
    {
        TouchArea pastille;
        const QUuid id = QUuid::createUuid();
        pastille.setId(id);
        QCOMPARE(pastille.id(), id);
    }

    void statesHaveTheirNumbersAndNames()
    {
        const auto meta = QMetaEnum::fromType<TouchArea::State>();
        QCOMPARE(meta.keyCount(), 3);
        QCOMPARE(meta.keyToValue("Normal"), 0);
        QCOMPARE(meta.keyToValue("Listening"), 1);
        QCOMPARE(meta.keyToValue("Active"), 2);
    }

    void signalsStandInTheirOrder()
    {
        const QMetaObject &meta = TouchArea::staticMetaObject;
        QList<QByteArray> names;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() == QMetaMethod::Signal)
                names.append(meta.method(i).methodSignature());
        }
        const QList<QByteArray> expected{"activated(QUuid,QString)",
                                         "requestDelete(TouchArea*)",
                                         "requestStartListening(TouchArea*)",
                                         "requestSetActive(TouchArea*,bool)",
                                         "moved()",
                                         "resized()",
                                         "stateChanged(TouchArea::State,TouchArea::State)",
                                         "freeAspectChanged(bool)",
                                         "listeningCompleted(QString)"};
        QCOMPARE(names, expected);
    }

    void propertiesAreNotified()
    {
        PastilleStage stage;
        TouchArea *pastille = stage.pastille();
        QVERIFY(pastille->setProperty("state", TouchArea::Active));
        QVERIFY(pastille->setProperty("freeAspect", true));
        QCOMPARE(pastille->property("state").toInt(), 2);
        QCOMPARE(pastille->property("freeAspect").toBool(), true);
        QCOMPARE(stage.takeJournal(), QStringList({u"stateChanged 2 0"_s, u"freeAspectChanged 1"_s}));
        const QMetaObject *meta = pastille->metaObject();
        QCOMPARE(meta->property(meta->indexOfProperty("state")).notifySignal().name(), "stateChanged"_ba);
        QCOMPARE(meta->property(meta->indexOfProperty("freeAspect")).notifySignal().name(),
                 "freeAspectChanged"_ba);
    }

    void eachStepFromStateToState_data()
    {
        using Step = std::function<void(TouchArea *)>;
        QTest::addColumn<TouchArea::State>("from");
        QTest::addColumn<Step>("step");
        QTest::addColumn<TouchArea::State>("to");
        QTest::addColumn<QStringList>("journal");

        const QList<std::pair<QByteArray, TouchArea::State>> states{{"normal", TouchArea::Normal},
                                                                    {"listening", TouchArea::Listening},
                                                                    {"active", TouchArea::Active}};
        const auto row = [](const QByteArray &name, TouchArea::State from, const Step &step,
                            TouchArea::State to) {
            QStringList journal;
            if (from != to)
                journal.append(u"stateChanged %1 %2"_s.arg(to).arg(from));
            QTest::newRow(name.constData()) << from << step << to << journal;
        };
        for (const auto &[name, from] : states) {
            for (const auto &[newName, to] : states)
                row(name + ", set " + newName, from, [to](TouchArea *p) { p->setState(to); }, to);
            row(name + ", made active", from, [](TouchArea *p) { p->setActive(true); }, TouchArea::Active);
            row(name + ", made inactive", from, [](TouchArea *p) { p->setActive(false); }, TouchArea::Normal);
            row(
                name + ", starts to listen", from, [](TouchArea *p) { p->startListening(); },
                TouchArea::Listening);
            row(
                name + ", stops to listen", from, [](TouchArea *p) { p->stopListening(); },
                from == TouchArea::Listening ? TouchArea::Normal : from);
        }
        const Step titled = [](TouchArea *p) { p->setTitle(u"but_7"_s); };
        row("normal, titled", TouchArea::Normal, titled, TouchArea::Normal);
        row("active, titled", TouchArea::Active, titled, TouchArea::Active);
        QTest::newRow("listening, titled")
            << TouchArea::Listening << titled << TouchArea::Normal
            << QStringList{u"stateChanged 0 1"_s, u"listeningCompleted but_7"_s};
    }

    void eachStepFromStateToState()
    {
        QFETCH(const TouchArea::State, from);
        QFETCH(const std::function<void(TouchArea *)>, step);
        QFETCH(const TouchArea::State, to);
        PastilleStage stage;
        stage.pastille()->setState(from);
        stage.takeJournal();
        step(stage.pastille());
        QCOMPARE(stage.pastille()->state(), to);
        QTEST(stage.takeJournal(), "journal");
    }

    void theSameTitleEndsListeningToo()
    {
        PastilleStage stage;
        stage.pastille()->setTitle(u"joy_1"_s);
        stage.pastille()->startListening();
        stage.takeJournal();
        stage.pastille()->setTitle(u"joy_1"_s);
        QCOMPARE(stage.takeJournal(), QStringList({u"stateChanged 0 1"_s, u"listeningCompleted joy_1"_s}));
    }

    void aTitleIsStoredAsItIs()
    {
        TouchArea pastille;
        for (const QString &title : {u"  blanks  "_s, QString(), u"é ? & <b>"_s}) {
            pastille.setTitle(title);
            QCOMPARE(pastille.title(), title);
        }
    }

    void theNewTitleIsThereWhenListeningEnds()
    {
        TouchArea pastille;
        pastille.startListening();
        QStringList heard;
        connect(&pastille, &TouchArea::stateChanged, this, [&] { heard.append(pastille.title()); });
        connect(&pastille, &TouchArea::listeningCompleted, this,
                [&] { heard.append(u"%1 %2"_s.arg(pastille.title()).arg(pastille.state())); });
        pastille.setTitle(u"but_3"_s);
        QCOMPARE(heard, QStringList({u"but_3"_s, u"but_3 0"_s}));
    }

    void theNewStateIsThereWhenItIsAnnounced()
    {
        TouchArea pastille;
        QList<int> heard;
        connect(&pastille, &TouchArea::stateChanged, this,
                [&](TouchArea::State state) { heard << state << pastille.state(); });
        pastille.setActive(true);
        QCOMPARE(heard, QList<int>({2, 2}));
    }

    void theEditModeSetsTheCursor()
    {
        PastilleStage stage;
        stage.pastille()->setEditMode(true);
        QCOMPARE(stage.cursor(), Qt::OpenHandCursor);
        stage.pastille()->setEditMode(false);
        QCOMPARE(stage.cursor(), Qt::PointingHandCursor);
        // Also where the mode stays the same.
        stage.pastille()->setCursor(Qt::CrossCursor);
        stage.pastille()->setEditMode(false);
        QCOMPARE(stage.cursor(), Qt::PointingHandCursor);
        QCOMPARE(stage.takeJournal(), QStringList());
    }

    void aChangeOfStateSetsTheCursor()
    {
        PastilleStage stage;
        const auto after = [&](auto change) {
            stage.pastille()->setCursor(Qt::CrossCursor);
            change();
            return stage.cursor();
        };
        QCOMPARE(after([&] { stage.pastille()->startListening(); }), Qt::OpenHandCursor);
        QCOMPARE(after([&] { stage.pastille()->startListening(); }), Qt::CrossCursor);
        stage.pastille()->setEditMode(false);
        QCOMPARE(after([&] { stage.pastille()->setActive(true); }), Qt::PointingHandCursor);
        QCOMPARE(after([&] { stage.pastille()->stopListening(); }), Qt::CrossCursor);
    }

    void goingOvalChangesNoSize()
    {
        PastilleStage stage;
        stage.pastille()->setFreeAspect(true);
        QVERIFY(stage.pastille()->freeAspect());
        QCOMPARE(stage.pastille()->geometry(), QRect(100, 80, 56, 56));
        stage.pastille()->setFreeAspect(true);
        QCOMPARE(stage.takeJournal(), QStringList({u"freeAspectChanged 1"_s}));
    }

    void goingRoundTakesTheLongerSide_data()
    {
        QTest::addColumn<QSize>("oval");
        QTest::addColumn<QSize>("round");
        QTest::newRow("wide") << QSize(80, 40) << QSize(80, 80);
        QTest::newRow("tall") << QSize(30, 90) << QSize(90, 90);
        QTest::newRow("even") << QSize(56, 56) << QSize(56, 56);
    }

    void goingRoundTakesTheLongerSide()
    {
        QFETCH(const QSize, oval);
        QFETCH(const QSize, round);
        PastilleStage stage;
        stage.pastille()->setFreeAspect(true);
        stage.pastille()->setFixedSize(oval);
        stage.takeJournal();
        stage.pastille()->setFreeAspect(false);
        QCOMPARE(stage.pastille()->geometry(), QRect(QPoint(100, 80), round));
        QCOMPARE(stage.pastille()->minimumSize(), round);
        QCOMPARE(stage.pastille()->maximumSize(), round);
        stage.pastille()->setFreeAspect(false);
        QCOMPARE(stage.takeJournal(), QStringList({u"freeAspectChanged 0"_s}));
    }

    void theNewSizeIsThereWhenTheShapeIsAnnounced()
    {
        TouchArea pastille;
        pastille.setFreeAspect(true);
        pastille.setFixedSize(80, 40);
        QSize heard;
        connect(&pastille, &TouchArea::freeAspectChanged, this, [&] { heard = pastille.size(); });
        pastille.setFreeAspect(false);
        QCOMPARE(heard, QSize(80, 80));
    }

    void aStretchedRoundPastilleStaysAsItIs()
    {
        TouchArea pastille;
        pastille.setFixedSize(80, 40);
        pastille.setFreeAspect(false);
        QCOMPARE(pastille.size(), QSize(80, 40));
    }
};

GAMEPAD_TEST_MAIN(TestTouchArea)
#include "tst_toucharea.moc"
