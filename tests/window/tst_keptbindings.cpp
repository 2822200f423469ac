// SPDX-License-Identifier: MIT
// A stored binding stays as it is, its arguments above all, whatever else is done in the window.
#include "homedocuments.h"
#include "keptdocuments.h"
#include "profilesroot.h"
#include "testmain.h"
#include "windowstage.h"

using namespace Qt::StringLiterals;

class TestKeptBindings : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowStage> m_stage;

    WindowStage &stage() { return *m_stage; }

    /// Waits until the window has written all that it will, then compares the mappings on disk with what was
    /// there before, and with what the linker holds.
    void verifyBindingsAreKept()
    {
        QTRY_VERIFY(stage().rests());
        QCOMPARE(home::documentAt(home::mappingPath(1)), m_mapping);
        QCOMPARE(home::documentAt(home::mappingPath(2)), m_mapping);
        QCOMPARE(stage().linkedBridges(), home::bridges());
    }

    /// A window with its services, at the designer's tab.
    void openDesigner()
    {
        stage().open();
        stage().surface().setServices(home::services());
        stage().turnTo(u"Action designer"_s);
    }

    QJsonObject m_mapping; ///< of either profile, as it was stored

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
        for (const int profile : {1, 2}) {
            home::storeProfile(profile, {u"but_1"_s, u"joy_2"_s, u"but_4"_s, u"but_9"_s});
            home::storeMapping(profile, home::bridges());
        }
        home::storeActions(home::actions());
        m_mapping = home::documentAt(home::mappingPath(1));
        QCOMPARE(m_mapping["bridges"_L1].toArray(), home::bridges());
        m_stage = std::make_unique<WindowStage>();
    }
    void cleanup()
    {
        m_stage.reset();
        keepDocuments(profilesBasePath());
    }

    void openingTheWindowWithoutServices()
    {
        const QByteArray before = home::bytesOf(home::mappingPath(1));
        stage().open();
        QTRY_VERIFY(stage().rests());
        QCOMPARE(home::bytesOf(home::mappingPath(1)), before);
    }

    void openingTheWindowWithServices()
    {
        const QByteArray before = home::bytesOf(home::mappingPath(1));
        stage().open();
        stage().surface().setServices(home::services());
        verifyBindingsAreKept();
        QCOMPARE(home::bytesOf(home::mappingPath(1)), before);
    }

    void servicesThatComeLateAndTwice()
    {
        stage().open();
        stage().surface().setServices({});
        QTRY_VERIFY(stage().rests());
        stage().surface().setServices(home::services());
        verifyBindingsAreKept();
        stage().surface().setServices(home::services());
        verifyBindingsAreKept();
    }

    void servicesThatGoAndComeBack()
    {
        stage().open();
        for (int i = 0; i < 3; ++i) {
            stage().surface().setServices(home::services());
            stage().surface().setServices({});
        }
        stage().surface().setServices(home::services());
        verifyBindingsAreKept();
    }

    void anotherActionIsAddedNamedAndGivenAStep()
    {
        openDesigner();
        stage().press(u"+"_s);
        WindowStage::type(stage().actionName(), u"New"_s);
        stage().press(u"+ Etape"_s);
        QCOMPARE(stage().cards().size(), 1);
        stage().cards().constFirst()->findChild<QComboBox *>()->setCurrentIndex(1);
        WindowStage::type(*stage().argumentsOf(0).constFirst(), u"7"_s);
        verifyBindingsAreKept();
        QCOMPARE(home::storedNames(), QStringList({u"A"_s, u"B"_s, u"C"_s, u"New"_s}));
        QCOMPARE(home::storedActions().at(3)["tasks"_L1][0]["args"_L1]["p"_L1], QJsonValue(7));
    }

    void anotherActionIsEditedCopiedAndDeleted()
    {
        openDesigner();
        WindowStage::click(stage().actionList(), 2);
        WindowStage::type(stage().conditionOf(0), u"state(parked)"_s);
        verifyBindingsAreKept();
        QCOMPARE(home::storedActions().at(2)["tasks"_L1][0]["when"_L1], QJsonValue(u"state(parked)"_s));
        stage().press(u"Dupliquer"_s);
        verifyBindingsAreKept();
        QCOMPARE(home::storedNames(), QStringList({u"A"_s, u"B"_s, u"C"_s, u"C (copy)"_s}));
        stage().press(u"Supprimer"_s);
        WindowStage::click(stage().actionList(), 2);
        stage().press(u"Supprimer"_s);
        verifyBindingsAreKept();
        QCOMPARE(home::storedNames(), QStringList({u"A"_s, u"B"_s}));
    }

    void anotherActionIsRenamedWhileServicesComeAgain()
    {
        openDesigner();
        WindowStage::click(stage().actionList(), 2);
        WindowStage::type(stage().actionName(), u"Other"_s);
        stage().surface().setServices(home::services());
        verifyBindingsAreKept();
        QCOMPARE(home::storedNames(), QStringList({u"A"_s, u"B"_s, u"Other"_s}));
    }

    void profilesAreSwitched()
    {
        stage().open();
        stage().surface().setServices(home::services());
        for (const int row : {1, 0, 1, 0}) {
            WindowStage::click(stage().profileList(), row);
            verifyBindingsAreKept();
        }
    }

    void theWindowIsOpenedAgainAndAgain()
    {
        for (int i = 0; i < 3; ++i) {
            openDesigner();
            WindowStage::click(stage().actionList(), 2);
            WindowStage::type(stage().conditionOf(0), u"W%1"_s.arg(i));
            verifyBindingsAreKept();
            stage().destroy();
            QCOMPARE(home::documentAt(home::mappingPath(1)), m_mapping);
        }
    }

    void anotherBindingIsAddedAndSaved()
    {
        stage().open();
        stage().surface().setServices(home::services());
        stage().linkerOverlay().applyActionToTitle(u"C"_s, u"but_9"_s);
        QTRY_VERIFY(stage().rests());
        QJsonObject mapping = home::documentAt(home::mappingPath(1));
        QJsonArray bridges = mapping["bridges"_L1].toArray();
        QCOMPARE(bridges.size(), 4);
        QCOMPARE(bridges.last()["action"_L1], QJsonValue(u"C"_s));
        bridges.removeLast();
        mapping["bridges"_L1] = bridges;
        QCOMPARE(mapping, m_mapping);
        QCOMPARE(home::documentAt(home::mappingPath(2)), m_mapping);
    }

    void theActionItselfIsChanged()
    {
        openDesigner();
        WindowStage::click(stage().actionList(), 0);
        WindowStage::type(stage().conditionOf(0), u"V"_s);
        QTRY_VERIFY(stage().rests());
        // What it does is new, what was bound to it is not.
        QTRY_COMPARE(home::storedBridges(2).at(0)["dst"_L1][0]["when"_L1], QJsonValue(u"V"_s));
        for (const int profile : {1, 2}) {
            const QJsonArray now = home::storedBridges(profile);
            for (qsizetype i = 0; i < 3; ++i) {
                QCOMPARE(now.at(i)["args"_L1], home::bridges().at(i)["args"_L1]);
                QCOMPARE(now.at(i)["src"_L1], home::bridges().at(i)["src"_L1]);
                QCOMPARE(now.at(i)["action"_L1], home::bridges().at(i)["action"_L1]);
                QCOMPARE(now.at(i)["dst"_L1][0]["args"_L1], home::bridges().at(i)["dst"_L1][0]["args"_L1]);
            }
        }
    }
};

GAMEPAD_TEST_MAIN(TestKeptBindings)
#include "tst_keptbindings.moc"
