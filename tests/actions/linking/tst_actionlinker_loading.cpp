// SPDX-License-Identifier: MIT
// A profile that is shown: its picture, its pastilles, its bindings, and what a broken mapping leaves of
// them.
#include "linkertest.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtGui/QImage>

using namespace Qt::StringLiterals;

class TestActionLinkerLoading : public LinkerTest
{
    Q_OBJECT

    QStringList titles()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QStringList titles;
        const auto areas = stage().overlay().findChildren<TouchArea *>();
        for (const TouchArea *area : areas)
            titles.append(area->title());
        return titles;
    }

private Q_SLOTS:
    void init()
    {
        LinkerTest::init();
        stage().linker().setExternalServices(someActions());
    }

    void pictureAndPastillesAreShown()
    {
        QImage image(120, 80, QImage::Format_RGB32);
        image.fill(Qt::red);
        const QString path = temporaryHome() + u"/picture.png"_s;
        QVERIFY(image.save(path));
        stage()->loadGamepadSnapshot(oneProfile, u"x"_s, {}, overlayOf({u"but_1"_s, u"joy_2"_s}), path);
        QCOMPARE(stage().overlay().backgroundPixmap().size(), QSize(120, 80));
        QCOMPARE(titles(), QStringList({u"but_1"_s, u"joy_2"_s}));
        stage()->loadGamepadSnapshot(oneProfile, u"x"_s, {}, overlayOf({u"but_5"_s}), u"/no/such.png"_s);
        QVERIFY(stage().overlay().backgroundPixmap().isNull());
        QCOMPARE(titles(), QStringList{u"but_5"_s});
    }

    void theMappingBindsThem()
    {
        writeMapping("{'bridges':[{'src':{'stringKey':'but_1'},'action':'A','args':{'speed':42},'dst':[]}]}");
        stage().show(oneProfile, {}, {u"but_1"_s, u"but_2"_s});
        QCOMPARE(stage().configs(), array("[{'ref':'A','action':'A','args':{'speed':42}},{}]"));
    }

    void aConfigNamesTheFileThatIsRead()
    {
        const QString folder = oneProfile.toString(QUuid::WithoutBraces);
        writeMeta(folder, {{u"config"_s, u" mine.json"_s}});
        writeMapping("{'bridges':[{'src':{'stringKey':'but_1'},'action':'A','dst':[]}]}");
        writeBelowRoot(folder + "/ mine.json"_L1,
                       R"({"bridges":[{"src":{"stringKey":"but_1"},"action":"C","dst":[]}]})");
        stage().show(oneProfile, {}, {u"but_1"_s});
        QCOMPARE(stage().refs(), QStringList{u"C"_s});
    }

    void aLoadWritesNothing()
    {
        writeMapping("{'bridges':[{'src':{'stringKey':'but_1'},'action':'A','dst':[]}]}");
        const QByteArray before = fileContent(mappingPath());
        stage().show(oneProfile, {}, {u"but_1"_s});
        QVERIFY(!stage().saveTimer().isActive());
        QTest::qWait(0);
        QVERIFY(!stage().saveTimer().isActive());
        QCOMPARE(fileContent(mappingPath()), before);
    }

    void aPendingSaveIsDropped()
    {
        stage().show(oneProfile, {}, {u"but_1"_s});
        stage().overlay().applyActionToTitle(u"C"_s, u"but_1"_s);
        QVERIFY(stage().saveTimer().isActive());
        stage().show(otherProfile, {}, {u"but_1"_s});
        QVERIFY(!stage().saveTimer().isActive());
        QVERIFY(!QFile::exists(mappingPath(oneProfile)));
        QVERIFY(!QFile::exists(mappingPath(otherProfile)));
        // And the next change is one of the new profile.
        stage().overlay().applyActionToTitle(u"C"_s, u"but_1"_s);
        stage().save();
        QVERIFY(!QFile::exists(mappingPath(oneProfile)));
        QCOMPARE(storedBridges(otherProfile).size(), 1);
    }

    void withoutAFileThePastillesAreUnboundWithoutAWord()
    {
        stage().show(oneProfile, {}, {u"but_1"_s});
        QCOMPARE(stage().configs(), array("[{}]"));
    }

    void anotherProfilesBindingsDoNotStay()
    {
        writeMapping("{'bridges':[{'src':{'stringKey':'but_1'},'action':'A','dst':[]}]}");
        stage().show(oneProfile, {}, {u"but_1"_s});
        stage().show(otherProfile, {}, {u"but_1"_s});
        QCOMPARE(stage().refs(), QStringList{u""_s});
    }

    void aFileThatCannotBeReadIsWarnedOfAndReplacedAtTheNextSave_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("reason");
        QTest::newRow("broken") << R"({"bridges":)"_ba << u"Invalid JSON in .* \\(.*\\)"_s;
        QTest::newRow("no object") << "[]"_ba << u"Invalid JSON in .* \\(no error occurred\\)"_s;
    }

    void aFileThatCannotBeReadIsWarnedOfAndReplacedAtTheNextSave()
    {
        QFETCH(const QByteArray, content);
        QFETCH(const QString, reason);
        writeBelowRoot(oneProfile.toString(QUuid::WithoutBraces) + u"/configActionGamepad.json"_s, content);
        QTest::ignoreMessage(
            QtWarningMsg,
            QRegularExpression(u"^\\[ActionLinker\\] mapping load failed: \"%1\"$"_s.arg(reason)));
        stage().show(oneProfile, {}, {u"but_1"_s});
        QCOMPARE(stage().refs(), QStringList{u""_s});
        QCOMPARE(fileContent(mappingPath()), content);
        stage().overlay().applyActionToTitle(u"C"_s, u"but_1"_s);
        stage().save();
        QCOMPARE(storedBridges().size(), 1);
    }

    void aFolderInItsPlaceIsWarnedOf()
    {
        QVERIFY(QDir().mkpath(mappingPath()));
        QTest::ignoreMessage(
            QtWarningMsg,
            QRegularExpression(u"^\\[ActionLinker\\] mapping load failed: \"Cannot open .*\"$"_s));
        stage().show(oneProfile, {}, {u"but_1"_s});
    }

    void aMappingOfAnyShapeIsTaken_data()
    {
        QTest::addColumn<QByteArray>("mapping");
        QTest::newRow("empty") << "{}"_ba;
        QTest::newRow("bridges of every type")
            << "{'bridges':[null,1,'x',[],{},{'src':1},{'src':{'stringKey':7},'dst':'x','action':[],'args':3}"
               ","
               "{'src':{'stringKey':'but_1','deviceId':1e300,'packetId':'99999999999999999999'},'action':{}}]}"_ba;
        QTest::newRow("bridges that are no array") << "{'bridges':{'src':{}},'ref':{},'timers':1}"_ba;
        QTest::newRow("the same input a thousand times")
            << "{'bridges':[" + QByteArray("{'src':{'stringKey':'but_1'},'action':'A'},").repeated(999) +
                   "{'src':{'stringKey':'but_1'},'action':'C'}]}";
        QTest::newRow("a name of ten thousand letters")
            << "{'bridges':[{'src':{'stringKey':'but_1'},'action':'" + QByteArray(10'000, 'x') + "'}]}";
        QTest::newRow("deep arguments")
            << "{'bridges':[{'src':{'stringKey':'but_1'},'action':'A','args':{'speed':" +
                   QByteArray(400, '[') + QByteArray(400, ']') + "}}]}";
    }

    void aMappingOfAnyShapeIsTaken()
    {
        QFETCH(const QByteArray, mapping);
        writeMeta(oneProfile.toString(QUuid::WithoutBraces), {});
        writeMapping(mapping);
        stage().show(oneProfile, {}, {u"but_1"_s, u"but_2"_s});
        stage()->setExternalServices({});
        stage()->setExternalServices(someActions());
        stage()->refreshBridgesFromActions(someActions());
        stage().overlay().applyActionToTitle(u"C"_s, u"but_2"_s);
        stage().save();
        const QJsonArray bridges = storedBridges();
        QVERIFY(!bridges.isEmpty());
        QCOMPARE(bridges.last()["action"_L1].toString(), u"C"_s);
        QCOMPARE(bridges.last()["src"_L1]["stringKey"_L1].toString(), u"but_2"_s);
    }

    void whatIsNoOverlayLeavesTheOneBefore()
    {
        stage().show(oneProfile, {}, {u"but_1"_s});
        stage()->loadGamepadSnapshot(otherProfile, {}, {}, {}, {});
        QCOMPARE(titles(), QStringList{u"but_1"_s});
    }

    void twoHundredChangesOfProfileLeaveNoPile()
    {
        writeMapping("{'bridges':[{'src':{'stringKey':'but_1'},'action':'A','dst':[]}]}");
        qsizetype objects = 0;
        qsizetype windows = 0;
        for (int i = 0; i < 200; ++i) {
            stage().show(i % 2 ? oneProfile : otherProfile, {}, {u"but_1"_s, u"but_2"_s});
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            if (i == 19) {
                objects = stage()->findChildren<QObject *>().size();
                windows = QApplication::topLevelWidgets().size();
            }
        }
        QCOMPARE(stage()->findChildren<QObject *>().size(), objects);
        QCOMPARE(QApplication::topLevelWidgets().size(), windows);
    }
};

GAMEPAD_TEST_MAIN(TestActionLinkerLoading)
#include "tst_actionlinker_loading.moc"
