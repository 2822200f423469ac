// SPDX-License-Identifier: MIT
// When a mapping is written, what stands in it, and who is told.
#include "linkertest.h"

#include "actiontoolbox.h"
#include "argumentform.h"
#include "machine.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

using namespace Qt::StringLiterals;

class TestActionLinkerSaving : public LinkerTest
{
    Q_OBJECT

    void bind(const QString &action, const QString &title)
    {
        stage().overlay().applyActionToTitle(action, title);
    }

private Q_SLOTS:
    void init()
    {
        LinkerTest::init();
        stage().linker().setExternalServices(someActions());
    }

    void oneBoundButtonLooksAsTold()
    {
        ControlManette &device = stage().plug(u"Pad"_s);
        const QSignalSpy told(&device, &IComInterface::noCodeAppChanged);
        writeMeta(oneProfile.toString(QUuid::WithoutBraces), {{u"deviceName"_s, u"pad"_s}});
        writeMapping("{'signals':[],'onStartup':[],'onClose':[],'timers':[],'bridges':[],'ref':[]}");
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s});

        stage().clickAction(u"A"_s);
        stage().press(3);
        QVERIFY(stage().overlay().openFirstToolboxSettings());
        auto *form = QApplication::activePopupWidget()->findChild<ArgumentForm *>();
        QVERIFY(form);
        form->fields().constFirst().edit->setFocus();
        QTest::keyClicks(form->fields().constFirst().edit, u"5"_s);
        QApplication::activePopupWidget()->close();
        QTRY_COMPARE(told.count(), 1);

        QCOMPARE(told[0][0].toStringList(), QStringList{mappingPath()});
        QCOMPARE(storedMapping(), object(R"({'signals':[],'onStartup':[],'onClose':[],'timers':[],'ref':[],
            'bridges':[{'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_3'},
                        'action':'A','args':{'speed':5},
                        'dst':[{'ref':'F','args':{'p':5},'when':'W'}]}]})"));
        QCOMPARE(fileContent(mappingPath()), QJsonDocument(storedMapping()).toJson(QJsonDocument::Indented));
    }

    void aChangeIsSavedAQuarterOfASecondAfterTheFirst()
    {
        stage().show(oneProfile, {}, {u"but_3"_s, u"but_4"_s});
        bind(u"C"_s, u"but_3"_s);
        QVERIFY(stage().saveTimer().isActive());
        const int id = stage().saveTimer().timerId();
        bind(u"C"_s, u"but_4"_s);
        // Not started anew.
        QCOMPARE(stage().saveTimer().timerId(), id);
        QVERIFY(!QFile::exists(mappingPath()));
        stage().save();
        QCOMPARE(storedBridges().size(), 2);
        QVERIFY(!stage().saveTimer().isActive());
        bind(u"none"_s, u"but_4"_s);
        QVERIFY(stage().saveTimer().isActive());
        QTRY_COMPARE(storedBridges().size(), 1);
    }

    void everyCycleWritesEvenWhereNothingDiffers()
    {
        stage().show(oneProfile, {}, {u"but_3"_s});
        bind(u"C"_s, u"but_3"_s);
        stage().save();
        QVERIFY(QFile::remove(mappingPath()));
        Q_EMIT stage().overlay().dirty();
        stage().save();
        QCOMPARE(storedBridges().size(), 1);
    }

    void withoutAProfileNothingIsSaved()
    {
        Q_EMIT stage().overlay().dirty();
        QVERIFY(!stage().saveTimer().isActive());
        stage().show({}, {}, {u"but_3"_s});
        bind(u"C"_s, u"but_3"_s);
        QVERIFY(!stage().saveTimer().isActive());
    }

    void withoutItsGamepadAProfileIsSavedAndNobodyIsTold()
    {
        const QSignalSpy told(&stage().plug(u"Another"_s), &IComInterface::noCodeAppChanged);
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s});
        stage().overlay().findChild<ActionToolBox *>()->applyConfig({{u"ref"_s, u"C"_s}});
        stage().save();
        QCOMPARE(storedBridges()[0]["action"_L1].toString(), u"C"_s);
        QCOMPARE(told.count(), 0);
    }

    void theFirstGamepadOfThatNameIsTold()
    {
        const QSignalSpy other(&stage().plug(u"Other"_s, 0), &IComInterface::noCodeAppChanged);
        const QSignalSpy first(&stage().plug(u"PAD"_s, 1), &IComInterface::noCodeAppChanged);
        const QSignalSpy second(&stage().plug(u"Pad"_s, 2), &IComInterface::noCodeAppChanged);
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s});
        bind(u"C"_s, u"but_3"_s);
        stage().save();
        QCOMPARE(first.count(), 1);
        QCOMPARE(second.count(), 0);
        QCOMPARE(other.count(), 0);
    }

    /// Blanks around the name do not hide the panel, but the gamepad that is told has exactly the name.
    void aNameWithBlanksAroundItTellsNobody()
    {
        const QSignalSpy told(&stage().plug(u"Pad"_s), &IComInterface::noCodeAppChanged);
        stage().show(oneProfile, u" Pad "_s, {u"but_3"_s});
        QVERIFY(stage().panel().isVisible());
        bind(u"C"_s, u"but_3"_s);
        stage().save();
        QCOMPARE(storedBridges().size(), 1);
        QCOMPARE(told.count(), 0);
    }

    void theFolderIsMade()
    {
        stage().show(oneProfile, {}, {u"but_3"_s});
        QVERIFY(!QFile::exists(QFileInfo(mappingPath()).path()));
        bind(u"C"_s, u"but_3"_s);
        stage().save();
        QCOMPARE(storedMapping().keys(),
                 QStringList({u"bridges"_s, u"onClose"_s, u"onStartup"_s, u"signals"_s, u"timers"_s}));
    }

    void aConfigWithBlanksAroundItIsTheFilesName()
    {
        const QString folder = oneProfile.toString(QUuid::WithoutBraces);
        writeMeta(folder, {{u"config"_s, u" mine.json "_s}});
        stage().show(oneProfile, {}, {u"but_3"_s});
        bind(u"C"_s, u"but_3"_s);
        stage().save();
        const QString path = QFileInfo(mappingPath()).path() + u"/ mine.json "_s;
        QVERIFY(QFile::exists(path));
        QVERIFY(!QFile::exists(mappingPath()));
        // The other lookup trims.
        const QByteArray before = fileContent(path);
        stage()->refreshBridgesFromActions(array("[{'name':'C','tasks':[{'ref':'new'}]}]"));
        QCOMPARE(fileContent(path), before);
    }

    void aConfigThatLeadsElsewhereCountsAsMissing()
    {
        writeMeta(oneProfile.toString(QUuid::WithoutBraces), {{u"config"_s, u"../stolen.json"_s}});
        stage().show(oneProfile, {}, {u"but_3"_s});
        bind(u"C"_s, u"but_3"_s);
        stage().save();
        QCOMPARE(storedBridges().size(), 1);
        QVERIFY(!QFile::exists(QFileInfo(mappingPath()).path() + u"/../stolen.json"_s));
    }

    void whatElseTheFileHoldsStays()
    {
        writeMapping("{'timers':[{'every':5,'dst':[{'ref':'x'}]}],'mine':{'a':[1]},'ref':[{'name':'kept'}]}");
        stage().show(oneProfile, {}, {u"but_3"_s});
        bind(u"C"_s, u"but_3"_s);
        stage().save();
        QJsonObject stored = storedMapping();
        QCOMPARE(stored.take(u"bridges"_s).toArray().size(), 1);
        QCOMPARE(stored, object("{'timers':[{'every':5,'dst':[{'ref':'x'}]}],'mine':{'a':[1]},"
                                "'ref':[{'name':'kept'}],'signals':[],'onStartup':[],'onClose':[]}"));
    }

    void aBrokenFileIsReplacedWithoutAWord_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("cut off") << R"({"timers":[1],"ref":[)"_ba;
        QTest::newRow("an array") << "[1]"_ba;
        QTest::newRow("empty") << ""_ba;
        QTest::newRow("binary") << QByteArray("\x89PNG\r\n\0\xff", 8);
    }

    void aBrokenFileIsReplacedWithoutAWord()
    {
        QFETCH(const QByteArray, content);
        stage().show(oneProfile, {}, {u"but_3"_s});
        writeBelowRoot(oneProfile.toString(QUuid::WithoutBraces) + u"/configActionGamepad.json"_s, content);
        bind(u"C"_s, u"but_3"_s);
        stage().save();
        QCOMPARE(storedMapping().keys(),
                 QStringList({u"bridges"_s, u"onClose"_s, u"onStartup"_s, u"signals"_s, u"timers"_s}));
        QCOMPARE(storedBridges().size(), 1);
    }

    void aBridgeWithoutAnActionKeepsItsOldTail()
    {
        stage()->setExternalServices(array("[{'name':' '},{'name':'C','tasks':[{'ref':'H'}]}]"));
        stage().show(oneProfile, {}, {u"but_3"_s, u"but_4"_s});
        stage().overlay().findChild<ActionToolBox *>()->applyConfig({{u"ref"_s, u" "_s}});
        bind(u"C"_s, u"but_4"_s);
        writeMapping("{'bridges':[{'src':{'stringKey':'BUT_3','deviceType':'gamepade'},"
                     "'dst':[{'ref':'1'},{'ref':'2'},{'ref':'3'}]},"
                     "{'src':{'stringKey':'but_4'},'dst':[{'ref':'1'},{'ref':'2'},{'ref':'3'}]}]}");
        stage().save();
        QCOMPARE(storedBridges()[0]["dst"_L1].toArray(),
                 array("[{'ref':' ','action':' ','args':{}},{'ref':'2'},{'ref':'3'}]"));
        QCOMPARE(storedBridges()[1]["dst"_L1].toArray(), array("[{'ref':'H'}]"));
    }

    void anActionWithoutTasksIsKeptInert()
    {
        stage().show(oneProfile, {}, {u"but_3"_s});
        bind(u"Vide"_s, u"but_3"_s);
        stage().save();
        QCOMPARE(storedBridges()[0]["dst"_L1].toArray(), array("[{'when':false}]"));
    }

    void aFailedWriteIsWarnedOfAndTriedAgainWithTheNextChange()
    {
        const QSignalSpy told(&stage().plug(u"Pad"_s), &IComInterface::noCodeAppChanged);
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s});
        QVERIFY(QDir().mkpath(mappingPath()));
        bind(u"C"_s, u"but_3"_s);
        QTest::ignoreMessage(
            QtWarningMsg,
            QRegularExpression(u"^\\[ActionLinker\\] mapping save failed: \"Cannot write .*\"$"_s));
        stage().save();
        QCOMPARE(told.count(), 0);
        QVERIFY(!stage().saveTimer().isActive());
        QVERIFY(QDir().rmdir(mappingPath()));
        Q_EMIT stage().overlay().dirty();
        stage().save();
        QCOMPARE(storedBridges().size(), 1);
        QCOMPARE(told.count(), 1);
    }

    void aFullDiskIsWarnedOf()
    {
        GAMEPAD_NEED_FULL_DEVICE();
        stage().show(oneProfile, {}, {u"but_3"_s});
        QVERIFY(QDir().mkpath(QFileInfo(mappingPath()).path()));
        QVERIFY(QFile::link(fullDevice(), mappingPath()));
        bind(u"C"_s, u"but_3"_s);
        QTest::ignoreMessage(
            QtWarningMsg,
            QRegularExpression(u"^\\[ActionLinker\\] mapping save failed: \"Write failed for .*\"$"_s));
        stage().save();
    }

    void aPendingSaveIsDroppedWithTheLinker()
    {
        stage().show(oneProfile, {}, {u"but_3"_s});
        bind(u"C"_s, u"but_3"_s);
        stage().closeLinker();
        QTest::qWait(0);
        QVERIFY(!QFile::exists(mappingPath()));
    }

    void theHostMayCloseTheWindowWhenItIsTold_data()
    {
        QTest::addColumn<QString>("reason");
        QTest::newRow("of a save") << u"save"_s;
        QTest::newRow("of a save ahead of new actions") << u"actions"_s;
        QTest::newRow("of refreshed bridges") << u"refresh"_s;
    }

    void theHostMayCloseTheWindowWhenItIsTold()
    {
        QFETCH(const QString, reason);
        ControlManette &device = stage().plug(u"Pad"_s);
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s});
        bind(u"C"_s, u"but_3"_s);
        const QPointer<ActionLinker> linker(&stage().linker());
        connect(&device, &IComInterface::noCodeAppChanged, this, [this] { stage().closeLinker(); });
        if (reason == u"actions"_s)
            linker->setExternalServices({});
        else if (reason == u"refresh"_s)
            linker->refreshBridgesFromActions(someActions());
        QTRY_VERIFY(!linker);
        QCOMPARE(QFile::exists(mappingPath()), reason != u"refresh"_s);
    }

    void everyProfileFollowsAChangedActionAtOnce()
    {
        const QByteArray bridge =
            "{'bridges':[{'src':{'stringKey':'but_3'},'action':'A','args':{'speed':7},"
            "'dst':[]},{'src':{'stringKey':'but_4'},'action':'Old name','dst':[{'ref':'o'}]}]}";
        const QSignalSpy told(&stage().plug(u"Pad"_s), &IComInterface::noCodeAppChanged);
        for (const QUuid &id : {oneProfile, otherProfile}) {
            writeMeta(id.toString(QUuid::WithoutBraces), {});
            writeMapping(bridge, id);
        }
        stage().show(oneProfile, u"Pad"_s, {});
        stage()->refreshBridgesFromActions(someActions());
        for (const QUuid &id : {oneProfile, otherProfile}) {
            QCOMPARE(storedBridges(id),
                     array(R"([{'src':{'stringKey':'but_3'},'action':'A','args':{'speed':7},
                'dst':[{'ref':'F','args':{'p':7},'when':'W'}]},
                {'src':{'stringKey':'but_4'},'action':'Old name','dst':[{'ref':'o'}]}])"));
        }
        QCOMPARE(told.count(), 1);
        stage()->refreshBridgesFromActions(someActions());
        QCOMPARE(told.count(), 2);
    }

    void whatIsOnShowIsNotReadAnewForIt()
    {
        writeMeta(oneProfile.toString(QUuid::WithoutBraces), {});
        writeMapping("{'bridges':[{'src':{'stringKey':'but_3'},'action':'A','args':{'speed':1},'dst':[]}]}");
        stage().show(oneProfile, {}, {u"but_3"_s, u"but_4"_s});
        bind(u"C"_s, u"but_4"_s);
        stage()->refreshBridgesFromActions(someActions());
        QCOMPARE(stage().refs(), QStringList({u"A"_s, u"C"_s}));
        QVERIFY(stage().saveTimer().isActive());
        QCOMPARE(storedBridges()[0]["dst"_L1].toArray(), array("[{'ref':'F','args':{'p':1},'when':'W'}]"));
        stage().save();
        QCOMPARE(storedBridges().size(), 2);
    }

    void withoutActionsNoFileChangesAndNobodyIsTold()
    {
        const QSignalSpy told(&stage().plug(u"Pad"_s), &IComInterface::noCodeAppChanged);
        writeMeta(oneProfile.toString(QUuid::WithoutBraces), {});
        writeMapping("{'bridges':[{'src':{'stringKey':'but_3'},'action':'A','dst':[]}]}");
        const QByteArray before = fileContent(mappingPath());
        stage().show(oneProfile, u"Pad"_s, {});
        stage()->refreshBridgesFromActions({});
        QCOMPARE(fileContent(mappingPath()), before);
        QCOMPARE(told.count(), 0);
    }
};

GAMEPAD_TEST_MAIN(TestActionLinkerSaving)
#include "tst_actionlinker_saving.moc"
