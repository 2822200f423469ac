// SPDX-License-Identifier: MIT
// Bindings keep their arguments, whatever becomes of the actions around them.
#include "linkertest.h"

#include "actiontoolbox.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{
/// No argument is what an empty field would give.
const QByteArray stored = R"({'timers':[{'every':9}],'bridges':[
    {'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_1'},
     'action':'A','args':{'speed':42},'dst':[{'ref':'F','args':{'p':42},'when':'W'}]},
    {'src':{'deviceType':'gamepade','deviceId':3,'packetId':7,'stringKey':'joy_2'},
     'action':'B','args':{'text':'hello world','level':-7.25,'on':true},
     'dst':[{'ref':'G','args':{'t':'hello world','l':-7.25,'o':true}}]},
    {'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_4'},
     'action':'A','args':{'speed':'transform(arg_0, 2)'},
     'dst':[{'ref':'F','args':{'p':'transform(arg_0, 2)'},'when':'W'}]}]})";

const QStringList titles{u"but_1"_s, u"joy_2"_s, u"but_4"_s, u"but_9"_s};

QJsonArray withMore(const QByteArray &more)
{
    QJsonArray actions = someActions();
    actions.append(object(more));
    return actions;
}
} // namespace

class TestActionLinkerServices : public LinkerTest
{
    Q_OBJECT

    /// What a window does with a changed list of actions.
    void takeActions(const QJsonArray &actions)
    {
        stage().linker().setExternalServices(actions);
        stage().linker().setServicesLocked(true);
        stage().linker().refreshBridgesFromActions(actions);
    }

    void verifyNothingWasWrittenNorLost()
    {
        QVERIFY(!stage().saveTimer().isActive());
        QCoreApplication::processEvents();
        QVERIFY(!stage().saveTimer().isActive());
        QCOMPARE(storedMapping(), object(stored));
        // And what the overlay would write is the same.
        QCOMPARE(stage().overlay().exportBridges()["bridges"_L1].toArray(),
                 object(stored)["bridges"_L1].toArray());
    }

private Q_SLOTS:
    void init()
    {
        LinkerTest::init();
        writeMeta(oneProfile.toString(QUuid::WithoutBraces), {});
        writeMapping(stored);
    }

    void theProfileIsThereBeforeTheActions()
    {
        stage().show(oneProfile, {}, titles);
        takeActions(someActions());
        verifyNothingWasWrittenNorLost();
    }

    void theActionsAreThereBeforeTheProfile()
    {
        takeActions(someActions());
        stage().show(oneProfile, {}, titles);
        verifyNothingWasWrittenNorLost();
    }

    void theActionsComeTwice()
    {
        stage().show(oneProfile, {}, titles);
        takeActions(someActions());
        takeActions(someActions());
        verifyNothingWasWrittenNorLost();
    }

    void theActionsGoAndComeBack()
    {
        stage().show(oneProfile, {}, titles);
        takeActions(someActions());
        takeActions({});
        QVERIFY(!stage().saveTimer().isActive());
        QCOMPARE(storedMapping(), object(stored));
        takeActions(someActions());
        verifyNothingWasWrittenNorLost();
    }

    void anotherActionIsAddedEditedRenamedAndDeleted()
    {
        stage().show(oneProfile, {}, titles);
        takeActions(someActions());
        takeActions(withMore("{'name':'New','tasks':[]}"));
        verifyNothingWasWrittenNorLost();
        takeActions(withMore("{'name':'New','params':[{'name':'x'}],'tasks':[{'ref':'N'}]}"));
        verifyNothingWasWrittenNorLost();
        takeActions(withMore("{'name':'Renamed','tasks':[{'ref':'N'}]}"));
        verifyNothingWasWrittenNorLost();
        takeActions(someActions());
        verifyNothingWasWrittenNorLost();
        QJsonArray fewer = someActions();
        fewer.removeAt(2);
        takeActions(fewer);
        verifyNothingWasWrittenNorLost();
    }

    void anActionIsRenamedLetterByLetterAndBack()
    {
        stage().show(oneProfile, {}, titles);
        takeActions(someActions());
        for (const QString &name : {u"Ab"_s, u"Abc"_s, u"Ab"_s}) {
            QJsonArray actions = someActions();
            QJsonObject renamed = actions[0].toObject();
            renamed["name"_L1] = name;
            actions[0] = renamed;
            takeActions(actions);
            QCOMPARE(storedMapping(), object(stored));
        }
        takeActions(someActions());
        verifyNothingWasWrittenNorLost();
    }

    void aChangeAfterAllThatSavesEveryBindingAsItWas()
    {
        stage().show(oneProfile, {}, titles);
        takeActions(someActions());
        takeActions(withMore("{'name':'New','tasks':[{'ref':'N'}]}"));
        stage().overlay().applyActionToTitle(u"New"_s, u"but_9"_s);
        stage().save();
        QJsonArray bridges = storedBridges();
        QCOMPARE(bridges.size(), 4);
        QCOMPARE(bridges.takeAt(3)["dst"_L1].toArray(), array("[{'ref':'N'}]"));
        QCOMPARE(bridges, object(stored)["bridges"_L1].toArray());
    }

    void anActionInAnotherCaseIsTheSameAction()
    {
        stage().show(oneProfile, {}, titles);
        takeActions(someActions());
        QJsonArray actions = someActions();
        QJsonObject renamed = actions[0].toObject();
        renamed["name"_L1] = u"a"_s;
        actions[0] = renamed;
        takeActions(actions);
        QCOMPARE(storedMapping(), object(stored));
        stage().overlay().applyActionToTitle(u"C"_s, u"but_9"_s);
        stage().save();
        QCOMPARE(storedBridges()[0]["action"_L1].toString(), u"a"_s);
        QCOMPARE(storedBridges()[0]["args"_L1].toObject(), object("{'speed':42}"));
        QCOMPARE(storedBridges()[0]["dst"_L1].toArray(), array("[{'ref':'F','args':{'p':42},'when':'W'}]"));
        // Another profile's binding that no change of the actions has touched.
        writeMapping("{'bridges':[{'src':{'stringKey':'but_1'},'action':'A','args':{'speed':7},'dst':[]}]}",
                     otherProfile);
        stage().show(otherProfile, {}, titles);
        QCOMPARE(stage().configs()[0].toObject(), object("{'ref':'a','action':'a','args':{'speed':7}}"));
    }

    void anActionThatOnlyATaskNamesIsFoundInAnotherCase_data()
    {
        QTest::addColumn<QByteArray>("tasks");
        QTest::newRow("by ref") << "'args':{'speed':42},'dst':[{'ref':'a'}]"_ba;
        QTest::newRow("by action") << "'dst':[{'action':'a','args':{'speed':42}}]"_ba;
    }

    void anActionThatOnlyATaskNamesIsFoundInAnotherCase()
    {
        QFETCH(const QByteArray, tasks);
        const QByteArray source =
            "{'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_1'},";
        writeMapping("{'bridges':[" + source + tasks + "}]}");
        stage().show(oneProfile, {}, titles);
        stage()->setExternalServices(someActions());
        QCOMPARE(stage().overlay().exportBridges()["bridges"_L1].toArray(),
                 QJsonArray{object(stored)["bridges"_L1][0]});
    }

    /// As somebody may have written it by hand; the window itself stores none.
    void anActionWithBlanksAroundItsNameIsTheSameAction()
    {
        QJsonArray actions = someActions();
        QJsonObject renamed = actions[0].toObject();
        renamed["name"_L1] = u" A "_s;
        actions[0] = renamed;
        stage().show(oneProfile, {}, titles);
        takeActions(actions);
        verifyNothingWasWrittenNorLost();
        stage().show(oneProfile, {}, titles);
        verifyNothingWasWrittenNorLost();
        QCOMPARE(stage()->externalServices(), actions);
        // A binding that is made now has its fields and its tasks too.
        stage().overlay().applyActionToTitle(u"A"_s, u"but_9"_s);
        stage().save();
        QCOMPARE(storedBridges()[3]["dst"_L1][0]["ref"_L1].toString(), u"F"_s);
        QVERIFY(storedBridges()[3]["args"_L1].toObject().contains("speed"_L1));
    }

    void aChangedStepReachesTheStoredTasksAndTheNextSaveGivesTheSame()
    {
        stage().show(oneProfile, {}, titles);
        takeActions(someActions());
        QJsonArray actions = someActions();
        QJsonObject changed = actions[0].toObject();
        changed["tasks"_L1] = array("[{'ref':'F2','args':{'q':'param:speed'}},{'ref':'F3'}]");
        actions[0] = changed;
        takeActions(actions);
        const QJsonArray refreshed = storedBridges();
        QCOMPARE(refreshed[0]["dst"_L1].toArray(), array("[{'ref':'F2','args':{'q':42}},{'ref':'F3'}]"));
        QCOMPARE(refreshed[0]["args"_L1].toObject(), object("{'speed':42}"));
        QVERIFY(!stage().saveTimer().isActive());
        Q_EMIT stage().overlay().dirty();
        stage().save();
        QCOMPARE(storedBridges(), refreshed);
    }

    void aPendingSaveIsWrittenFirst()
    {
        stage().show(oneProfile, {}, titles);
        takeActions(someActions());
        stage().overlay().findChild<ActionToolBox *>()->applyConfig(
            object("{'ref':'A','args':{'speed':1000}}"));
        QVERIFY(stage().saveTimer().isActive());
        takeActions(withMore("{'name':'New'}"));
        QVERIFY(!stage().saveTimer().isActive());
        QCOMPARE(storedBridges()[0]["args"_L1].toObject(), object("{'speed':1000}"));
        QCOMPARE(stage().configs()[0]["args"_L1].toObject(), object("{'speed':1000}"));
        QCOMPARE(storedBridges()[1], object(stored)["bridges"_L1][1]);
    }

    void whatCouldNotBeSavedStaysInTheOverlay()
    {
        stage().show(oneProfile, {}, titles);
        takeActions(someActions());
        stage().overlay().findChild<ActionToolBox *>()->applyConfig(
            object("{'ref':'A','args':{'speed':1000}}"));
        QVERIFY(QFile::remove(mappingPath()));
        QVERIFY(QDir().mkpath(mappingPath()));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^\\[ActionLinker\\] mapping save failed:"_s));
        takeActions(withMore("{'name':'New'}"));
        QCOMPARE(stage().configs()[0]["args"_L1].toObject(), object("{'speed':1000}"));
        QCOMPARE(stage().configs()[1]["args"_L1].toObject(),
                 object("{'text':'hello world','level':-7.25,'on':true}"));
        QVERIFY(QDir().rmdir(mappingPath()));
        takeActions(someActions());
        QCOMPARE(stage().configs()[0]["args"_L1].toObject(), object("{'speed':1000}"));
        Q_EMIT stage().overlay().dirty();
        stage().save();
        QCOMPARE(storedBridges().size(), 3);
    }

    void aFileThatBrokeMeanwhileCostsNothing()
    {
        stage().show(oneProfile, {}, titles);
        takeActions(someActions());
        writeBelowRoot(oneProfile.toString(QUuid::WithoutBraces) + u"/configActionGamepad.json"_s, "{");
        takeActions(withMore("{'name':'New'}"));
        QCOMPARE(stage().overlay().exportBridges()["bridges"_L1].toArray(),
                 object(stored)["bridges"_L1].toArray());
        QCOMPARE(fileContent(mappingPath()), "{");
    }

    void aPastilleThatIsNotCalledAsItsInputKeepsWhatItHolds()
    {
        takeActions(someActions());
        stage().show(oneProfile, {}, {u"but_1"_s, u"Tir"_s});
        auto *box = stage().overlay().findChildren<ActionToolBox *>().at(1);
        box->applyConfig(object("{'ref':'A','args':{'speed':3}}"));
        stage().save();
        takeActions(withMore("{'name':'New'}"));
        QCOMPARE(stage().configs()[1].toObject(), object("{'ref':'A','action':'A','args':{'speed':3}}"));
        QVERIFY(!stage().saveTimer().isActive());
    }

    void aChangeOfTheActionsTellsNoHost()
    {
        const QSignalSpy told(&stage().plug(u"Pad"_s), &IComInterface::noCodeAppChanged);
        stage().show(oneProfile, u"Pad"_s, titles);
        stage()->setExternalServices(someActions());
        QCOMPARE(told.count(), 0);
    }

    void actionsWithoutAProfileChangeNothing()
    {
        takeActions(someActions());
        takeActions({});
        QVERIFY(!stage().saveTimer().isActive());
        QCOMPARE(storedMapping(), object(stored));
    }
};

GAMEPAD_TEST_MAIN(TestActionLinkerServices)
#include "tst_actionlinker_services.moc"
