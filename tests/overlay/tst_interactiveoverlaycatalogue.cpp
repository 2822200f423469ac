// SPDX-License-Identifier: MIT
// The functions that tool boxes offer: from the host, and from mappings.
#include "overlaystage.h"

#include "testmain.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>

using namespace Qt::StringLiterals;

namespace
{
QJsonObject config(const QString &function, const QByteArray &args = "{}")
{
    return {{u"ref"_s, function}, {u"action"_s, function}, {u"args"_s, object(args)}};
}
} // namespace

class TestInteractiveOverlayCatalogue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    // From the host.

    void aNewCatalogueIsAnnouncedAndGivenToAll()
    {
        OverlayStage stage;
        stage->addPastille({}, u"a"_s);
        stage->addPastille({}, u"b"_s);
        QStringList journal;
        QJsonArray known;
        int offered = -1;
        connect(stage.overlay(), &InteractiveOverlay::externalServicesChanged, this, [&] {
            journal.append(u"changed"_s);
            known = stage->externalServices();
            offered = stage.box(0)->findChild<QComboBox *>()->count();
        });
        connect(stage.overlay(), &InteractiveOverlay::dirty, this, [&] { journal.append(u"dirty"_s); });
        QVERIFY(stage->setProperty("externalServices", someFunctions()));
        QCOMPARE(journal, QStringList({u"changed"_s, u"dirty"_s}));
        // Announced once it is stored, and before the tool boxes are given it.
        QCOMPARE(known, someFunctions());
        QCOMPARE(offered, 0);
        QCOMPARE(stage->externalServices(), someFunctions());
        for (const ActionToolBox *box : stage.boxes())
            QCOMPARE(box->findChild<QComboBox *>()->count(), 5);
    }

    void theSameCatalogueIsGivenAgainWithoutAWord()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"a"_s);
        stage.box(0)->applyConfig(config(u"Dire"_s, "{'texte':'x'}"));
        QSignalSpy changed(stage.overlay(), &InteractiveOverlay::externalServicesChanged);
        stage.takeDirty();
        stage->setExternalServices(someFunctions());
        QCOMPARE(changed.size(), 0);
        QCOMPARE(stage.takeDirty(), 1);
        // Given again all the same: the field is empty now.
        QCOMPARE(stage.box(0)->config(), config(u"Dire"_s, "{'texte':''}"));
    }

    void theArgumentIsNotLookedAt()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"a"_s);
        QSignalSpy changed(stage.overlay(), &InteractiveOverlay::externalServicesChanged);
        stage.takeDirty();
        stage->applyExternalServices(array("[{'name':'Other'}]"));
        QCOMPARE(stage.box(0)->findChild<QComboBox *>()->count(), 5);
        QCOMPARE(stage->externalServices(), someFunctions());
        QCOMPARE(changed.size(), 0);
        QCOMPARE(stage.takeDirty(), 1);
    }

    void aHostMayTakeTheCatalogueOver()
    {
        class Host : public InteractiveOverlay
        {
        public:
            void applyExternalServices(const QJsonArray &services) override
            {
                given.append(services);
                known.append(externalServices());
            }
            QList<QJsonArray> given;
            QList<QJsonArray> known;
        };
        Host host;
        host.setExternalServices(someFunctions());
        host.setExternalServices(someFunctions());
        QVERIFY(!host.applyMapping(object("{'ref':['Plus']}")));
        QJsonArray merged = someFunctions();
        merged.append(u"Plus"_s);
        QCOMPARE(host.given, QList<QJsonArray>({someFunctions(), someFunctions(), merged}));
        QCOMPARE(host.known, host.given);
    }

    void aBoundGroupStaysInStepWithANewCatalogue()
    {
        // Each box fills its first number in by itself, which goes to the others.
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (int i = 0; i < 3; ++i)
            stage->addPastille({}, u"a"_s);
        stage.box(0)->applyConfig(config(u"Avancer"_s, "{'vitesse':3,'pas':4}"));
        QJsonArray more = someFunctions();
        more.append(QJsonObject{{u"name"_s, u"Plus"_s}});
        stage->setExternalServices(more);
        for (const ActionToolBox *box : stage.boxes())
            QCOMPARE(box->config(), config(u"Avancer"_s, "{'vitesse':'arg_0','pas':0}"));
    }

    void theLastOfAGroupHasTheSayOverItsFields()
    {
        // What each box does in turn shows in the fields: the last one's are as it left them, those of the
        // others hold what it gave them.
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        for (int i = 0; i < 3; ++i)
            stage->addPastille(QPoint(100, 100 + 100 * i), u"a"_s);
        stage.box(0)->applyConfig(config(u"Avancer"_s));
        stage->setExternalServices(someFunctions());
        QStringList steps;
        for (ActionToolBox *box : stage.boxes()) {
            box->openSettings();
            for (const auto *edit : QApplication::activePopupWidget()->findChildren<QLineEdit *>()) {
                if (edit->accessibleName() == "pas"_L1 && edit->isVisible())
                    steps.append(edit->text());
            }
            QApplication::activePopupWidget()->close();
        }
        QCOMPARE(steps, QStringList({u"0"_s, u"0"_s, QString()}));
    }

    void aGroupOutOfStepTakesTheFirstFunctionThatFillsAField()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        const QStringList titles{u"p"_s, u"q"_s, u"r"_s, u"s"_s};
        for (const QString &title : titles)
            stage->addPastille({}, title);
        stage.box(0)->applyConfig(config(u"Dire"_s));
        stage.box(1)->applyConfig(config(u"Avancer"_s));
        stage.box(2)->applyConfig(config(u"Centrer"_s));
        for (TouchArea *area : stage.pastilles())
            area->setTitle(u"a"_s);
        // The text takes no input; the second box does, and from there on all have its function.
        stage->setExternalServices(someFunctions());
        QCOMPARE(stage.functions(), QStringList(4, u"Avancer"_s));
    }

    // From a mapping.

    void aMappingAddsItsFunctions()
    {
        OverlayStage stage;
        stage->setExternalServices(array("[{'name':'Dire','mine':true}]"));
        QSignalSpy changed(stage.overlay(), &InteractiveOverlay::externalServicesChanged);
        stage->addPastille({}, u"a"_s);
        stage.takeDirty();
        QVERIFY(!stage->applyMapping(object("{'ref':[{'name':' DIRE '},{'name':'Plus'},5]}")));
        QCOMPARE(stage->externalServices(), array("[{'name':'Dire','mine':true},{'name':'Plus'},5]"));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(stage.takeDirty(), 1);
        QCOMPARE(stage.box(0)->findChild<QComboBox *>()->count(), 3);

        // Known ones alone: no change, but the tool boxes are given the catalogue again.
        QVERIFY(!stage->applyMapping(object("{'ref':['plus']}")));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(stage.takeDirty(), 1);
        QVERIFY(!stage->applyMapping(object("{'ref':[]}")));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(stage.takeDirty(), 1);
    }

    void itsFunctionsAreThereForItsBridges()
    {
        OverlayStage stage;
        stage->addPastille({}, u"joy_1"_s);
        QVERIFY(stage->applyMapping(object("{'ref':[{'name':'F','tasks':[{'ref':'go'}]}],"
                                           "'bridges':[{'src':{'stringKey':'joy_1'},'action':'F'}]}")));
        QCOMPARE(stage->exportBridges()["bridges"_L1][0]["dst"_L1].toArray(), array("[{'ref':'go'}]"));
    }

    void aLockedCatalogueTakesNone()
    {
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->setServicesLocked(true);
        QSignalSpy changed(stage.overlay(), &InteractiveOverlay::externalServicesChanged);
        stage->addPastille({}, u"joy_1"_s);
        stage.takeDirty();
        QVERIFY(!stage->applyMapping(object("{'ref':[{'name':'Plus'}]}")));
        QCOMPARE(stage.takeDirty(), 0);
        QVERIFY(stage->applyMapping(object("{'ref':[{'name':'Plus'}],"
                                           "'bridges':[{'src':{'stringKey':'joy_1'},'action':'Plus'}]}")));
        QCOMPARE(stage->externalServices(), someFunctions());
        QCOMPARE(changed.size(), 0);
        // The host still may.
        stage->setExternalServices({});
        QCOMPARE(changed.size(), 1);
        stage->setServicesLocked(false);
        stage->applyMapping(object("{'ref':[{'name':'Plus'}]}"));
        QCOMPARE(stage->externalServices(), array("[{'name':'Plus'}]"));
    }

    void theCatalogueIsTakenAnewAndTheMappingBroughtBackByIt()
    {
        // What a host does whose actions changed.
        OverlayStage stage;
        stage->setExternalServices(someFunctions());
        stage->addPastille({}, u"joy_1"_s);
        stage.box(0)->applyConfig(config(u"Avancer"_s, "{'vitesse':3,'pas':4}"));
        const QJsonObject exported = stage->exportBridges();
        QJsonArray more = someFunctions();
        more.prepend(QJsonObject{{u"name"_s, u"Plus"_s}});
        stage->setExternalServices(more);
        QVERIFY(stage->applyMapping(exported));
        QCOMPARE(stage->exportBridges(), exported);
    }
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayCatalogue)
#include "tst_interactiveoverlaycatalogue.moc"
