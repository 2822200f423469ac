// SPDX-License-Identifier: MIT
// The window comes and goes, and is used for long: nothing crashes, nothing grows, nothing of one profile is
// left in the next.
#include "homedocuments.h"
#include "keptdocuments.h"
#include "profilesroot.h"
#include "residentmemory.h"
#include "sanitizers.h"
#include "testmain.h"
#include "windowstage.h"

#include "argumentform.h"

#include <QtGui/QPixmapCache>

using namespace Qt::StringLiterals;

namespace
{
constexpr int profileCount = 3;

QStringList titlesOf(int profile)
{
    return {u"but_1"_s, u"joy_2"_s, u"but_4"_s, u"but_%1"_s.arg(10 + profile)};
}

/// The stored bridges, with an argument that only this profile has.
QJsonArray bridgesOf(int profile)
{
    QJsonArray bridges = home::bridges();
    QJsonObject first = bridges[0].toObject();
    first["args"_L1] = QJsonObject{{u"speed"_s, 40 + profile}};
    QJsonObject task = first["dst"_L1][0].toObject();
    task["args"_L1] = QJsonObject{{u"p"_s, 40 + profile}};
    first["dst"_L1] = QJsonArray{task};
    bridges[0] = first;
    return bridges;
}

QStringList titlesOn(const InteractiveOverlay &overlay)
{
    QStringList titles;
    const QJsonArray nodes = overlay.toJson()["nodes"_L1].toArray();
    for (const QJsonValue &node : nodes)
        titles.append(node["title"_L1].toString());
    return titles;
}

void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// What could pile up in the process.
struct Held
{
    qsizetype topLevels = 0;
    qsizetype widgets = 0;
    qsizetype objects = 0;
    bool operator==(const Held &) const = default;
};

char *toString(const Held &held)
{
    return QTest::toString(
        u"%1 windows, %2 widgets, %3 objects"_s.arg(held.topLevels).arg(held.widgets).arg(held.objects));
}

Held heldBy(const QWidget &window)
{
    return {QApplication::topLevelWidgets().size(), QApplication::allWidgets().size(),
            window.findChildren<QObject *>().size()};
}
} // namespace

class TestWindowLife : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowStage> m_stage;

    WindowStage &stage() { return *m_stage; }

    void openWithServices()
    {
        stage().open();
        stage().surface().setServices(home::services());
    }

    /// Changes in all three tabs that no file has yet.
    void leaveSavesPending()
    {
        stage().editorOverlay().addPastille(QPoint(60, 60), u"but_77"_s);
        stage().linkerOverlay().applyActionToTitle(u"C"_s, titlesOf(1).constLast());
        stage().turnTo(u"Action designer"_s);
        WindowStage::click(stage().actionList(), 2);
        WindowStage::type(stage().actionName(), u"Renamed"_s);
        QVERIFY(!stage().rests());
    }

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
        for (int profile = 1; profile <= profileCount; ++profile) {
            home::storeProfile(profile, titlesOf(profile));
            home::storeMapping(profile, bridgesOf(profile));
        }
        home::storeActions(home::actions());
        m_stage = std::make_unique<WindowStage>();
    }
    void cleanup()
    {
        m_stage.reset();
        keepDocuments(profilesBasePath());
    }

    void closedWithSavesPendingItGoesOnSaving()
    {
        openWithServices();
        leaveSavesPending();
        QVERIFY(stage().window().close());
        QTRY_VERIFY(stage().rests());
        QCOMPARE(home::storedNames(), QStringList({u"A"_s, u"B"_s, u"Renamed"_s}));
        QCOMPARE(home::storedBridges(1).size(), 4);
        QCOMPARE(home::documentAt(home::overlayPath(1))["nodes"_L1].toArray().size(), 5);
    }

    void closedAndShownAgainItIsAsItWas()
    {
        openWithServices();
        stage().turnTo(u"Action designer"_s);
        WindowStage::click(stage().actionList(), 1);
        QTRY_VERIFY(stage().rests());
        settle();
        const Held held = heldBy(stage().window());
        for (int i = 0; i < 20; ++i) {
            QVERIFY(stage().window().close());
            settle();
            stage().window().show();
            QVERIFY(QTest::qWaitForWindowExposed(&stage().window()));
        }
        settle();
        QCOMPARE(stage().actionList().currentRow(), 1);
        QCOMPARE(stage().actionName().text(), u"B"_s);
        QCOMPARE(stage().linkedBridges(), bridgesOf(1));
        QCOMPARE(heldBy(stage().window()), held);
    }

    void destroyedWithSavesPendingNothingOnDiskIsLost()
    {
        openWithServices();
        leaveSavesPending();
        stage().destroy();
        settle();
        // The profile editor writes what it has; the designer and the linker lose their last moment, no more.
        QCOMPARE(home::documentAt(home::overlayPath(1))["nodes"_L1].toArray().size(), 5);
        QCOMPARE(home::storedNames(), QStringList({u"A"_s, u"B"_s, u"C"_s}));
        QCOMPARE(home::storedBridges(1), bridgesOf(1));

        openWithServices();
        QCOMPARE(titlesOn(stage().editorOverlay()), titlesOf(1) << u"but_77"_s);
        QCOMPARE(stage().linkedBridges(), bridgesOf(1));
    }

    void destroyedWhileTheSettingsOfAToolBoxAreOpen()
    {
        openWithServices();
        stage().turnTo(u"Mapping"_s);
        QVERIFY(stage().linkerOverlay().openFirstToolboxSettings());
        const QPointer<QWidget> panel = QApplication::activePopupWidget();
        QVERIFY(panel);
        stage().destroy();
        QTRY_VERIFY(!panel);
        QCOMPARE(QApplication::activePopupWidget(), nullptr);
    }

    void aHundredWindowsLeaveNothingBehind()
    {
        qsizetype widgets = 0;
        qint64 memory = 0;
        for (int i = 0; i < 100; ++i) {
            openWithServices();
            stage().destroy();
            settle();
            // Painted icons stay in a cache of Qt's, which has a limit of its own.
            QPixmapCache::clear();
            if (i == 20) {
                widgets = QApplication::allWidgets().size();
                memory = residentMemory();
            }
        }
        QCOMPARE(QApplication::allWidgets().size(), widgets);
        if (!sanitized)
            QVERIFY2(residentMemory() <= memory + 2048,
                     qPrintable(u"%1 KiB"_s.arg(residentMemory() - memory)));
        QCOMPARE(home::storedBridges(1), bridgesOf(1));
    }

    void servicesThatChangeLeaveWhatCardsHold()
    {
        openWithServices();
        stage().turnTo(u"Action designer"_s);
        WindowStage::type(stage().conditionOf(0), u"state(armed)"_s);
        WindowStage::type(*stage().argumentsOf(0).constFirst(), u"transform(arg_0, 3)"_s);
        QJsonObject more = home::services();
        QJsonArray functions = more["ref"_L1].toArray();
        functions.prepend(QJsonObject{{u"name"_s, u"New"_s}});
        more["ref"_L1] = functions;
        for (int i = 0; i < 10; ++i) {
            // In the middle of typing: the field that has the focus goes and comes.
            stage().conditionOf(0).setFocus();
            stage().surface().setServices(i % 2 ? home::services() : more);
            settle();
            QCOMPARE(stage().cards().size(), 1);
            QCOMPARE(stage().conditionOf(0).text(), u"state(armed)"_s);
            QCOMPARE(stage().argumentsOf(0).constFirst()->text(), u"transform(arg_0, 3)"_s);
        }
        QTRY_VERIFY(stage().rests());
        const QJsonValue task = home::storedActions()[0]["tasks"_L1][0];
        QCOMPARE(task["ref"_L1], QJsonValue(u"F"_s));
        QCOMPARE(task["when"_L1], QJsonValue(u"state(armed)"_s));
        QCOMPARE(task["args"_L1]["p"_L1], QJsonValue(u"transform(arg_0, 3)"_s));
    }

    void servicesThatChangeUnderOpenSettingsOfAToolBox()
    {
        openWithServices();
        stage().turnTo(u"Mapping"_s);
        QVERIFY(stage().linkerOverlay().openFirstToolboxSettings());
        QTest::keyClicks(
            QApplication::activePopupWidget()->findChild<ArgumentForm *>()->fields().constFirst().edit,
            u"7"_s);
        stage().surface().setServices({});
        stage().surface().setServices(home::services());
        settle();
        QTRY_VERIFY(stage().rests());
        QCOMPARE(home::storedBridges(1), stage().linkedBridges());
        QCOMPARE(home::storedBridges(1)[0]["args"_L1]["speed"_L1], QJsonValue(417));
    }

    void twoHundredSwitchesBetweenProfiles()
    {
        openWithServices();
        Held held;
        qint64 memory = 0;
        for (int i = 1; i <= 200; ++i) {
            const int profile = i % profileCount + 1;
            WindowStage::click(stage().profileList(), profile - 1);
            settle();
            QCOMPARE(stage().profiles().currentRow(), profile - 1);
            QCOMPARE(titlesOn(stage().editorOverlay()), titlesOf(profile));
            QCOMPARE(titlesOn(stage().linkerOverlay()), titlesOf(profile));
            QCOMPARE(stage().linkedBridges(), bridgesOf(profile));
            if (i == 50) {
                held = heldBy(stage().window());
                memory = residentMemory();
            }
        }
        QCOMPARE(heldBy(stage().window()), held);
        if (!sanitized)
            QVERIFY2(residentMemory() <= memory + 2048,
                     qPrintable(u"%1 KiB"_s.arg(residentMemory() - memory)));
        QTRY_VERIFY(stage().rests());
        for (int profile = 1; profile <= profileCount; ++profile)
            QCOMPARE(home::storedBridges(profile), bridgesOf(profile));
    }

    void anArmedChangeOfOneProfileIsNotWrittenToTheNext()
    {
        openWithServices();
        stage().linkerOverlay().applyActionToTitle(u"C"_s, titlesOf(1).constLast());
        WindowStage::click(stage().profileList(), 1);
        QTRY_VERIFY(stage().rests());
        // The change is dropped, as every pending one by a switch.
        QCOMPARE(home::storedBridges(1), bridgesOf(1));
        QCOMPARE(home::storedBridges(2), bridgesOf(2));
        WindowStage::click(stage().profileList(), 0);
        QCOMPARE(stage().linkedBridges(), bridgesOf(1));
    }
};

GAMEPAD_TEST_MAIN(TestWindowLife)
#include "tst_windowlife.moc"
