// SPDX-License-Identifier: MIT
// An armed action, the input that it waits for, and what ends the waiting.
#include "linkertest.h"

#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>

using namespace Qt::StringLiterals;

class TestActionLinkerArming : public LinkerTest
{
    Q_OBJECT

    QStringList refs() { return stage().refs(); }
    void arm(const QString &action = u"C"_s)
    {
        stage().clickAction(action);
        QVERIFY(stage().armed());
    }

private Q_SLOTS:
    void init()
    {
        LinkerTest::init();
        stage().linker().setExternalServices(someActions());
        stage().plug(u"Pad"_s);
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s, u"joy_1"_s, u"BUT_3"_s, u"Tir"_s});
    }

    void aPressBindsEveryPastilleOfThatInput()
    {
        arm();
        QCOMPARE(stage().hint(), u"Appuyez sur un bouton pour mapper \"C\"."_s);
        stage().press(3);
        QCOMPARE(refs(), QStringList({u"C"_s, u""_s, u"C"_s, u""_s}));
        QVERIFY(!stage().armed());
        QVERIFY(stage().list().selectedItems().isEmpty());
        QVERIFY(stage().saveTimer().isActive());
    }

    void anArmIsGoodForOneInput()
    {
        arm();
        stage().press(3);
        stage().push(1, 80);
        QCOMPARE(refs(), QStringList({u"C"_s, u""_s, u"C"_s, u""_s}));
    }

    void withoutAnArmAnInputDoesNothing()
    {
        stage().press(3);
        stage().push(1, 80);
        QCOMPARE(refs(), QStringList({u""_s, u""_s, u""_s, u""_s}));
        QVERIFY(!stage().saveTimer().isActive());
    }

    void aPressBeforeTheArmDoesNotCountNorDoesItsRelease()
    {
        stage().press(3);
        arm();
        stage().release(3);
        QVERIFY(stage().armed());
        QCOMPARE(refs(), QStringList({u""_s, u""_s, u""_s, u""_s}));
        stage().press(3);
        QCOMPARE(refs(), QStringList({u"C"_s, u""_s, u"C"_s, u""_s}));
    }

    void anAxisCountsFromFortyOn_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<bool>("binds");
        QTest::newRow("39.9") << 39.9 << false;
        QTest::newRow("-39.9") << -39.9 << false;
        QTest::newRow("40.0") << 40.0 << true;
        QTest::newRow("-40.0") << -40.0 << true;
        QTest::newRow("100") << 100.0 << true;
        QTest::newRow("-100") << -100.0 << true;
    }

    void anAxisCountsFromFortyOn()
    {
        QFETCH(const double, value);
        QFETCH(const bool, binds);
        arm();
        stage().push(1, value);
        QCOMPARE(stage().armed(), !binds);
        QCOMPARE(refs()[1], binds ? u"C"_s : u""_s);
    }

    void anInputWithoutAPastilleEndsTheArmAlone()
    {
        arm();
        stage().press(9);
        QVERIFY(!stage().armed());
        QVERIFY(!stage().saveTimer().isActive());
        QCOMPARE(refs(), QStringList({u""_s, u""_s, u""_s, u""_s}));
    }

    void anActionReplacesTheOneThatWasBound()
    {
        arm(u"A"_s);
        stage().press(3);
        stage().release(3);
        arm(u"C"_s);
        stage().press(3);
        QCOMPARE(refs(), QStringList({u"C"_s, u""_s, u"C"_s, u""_s}));
    }

    void aSecondClickDisarms()
    {
        arm();
        stage().clickAction(u"C"_s);
        QVERIFY(!stage().armed());
        stage().press(3);
        QCOMPARE(refs()[0], u""_s);
    }

    void aClickInTheTabDisarms_data()
    {
        QTest::addColumn<QString>("where");
        QTest::addColumn<QPoint>("pos");
        QTest::newRow("free surface of the overlay") << u"iteractiveoverlay"_s << QPoint(5, 5);
        QTest::newRow("the hint") << u"mappingActionsHint"_s << QPoint(5, 5);
        QTest::newRow("the panel's margin") << u"mappingActionsPanel"_s << QPoint(3, 100);
        QTest::newRow("the tab itself") << u"ActionLinker"_s << QPoint(2, 2);
    }

    void aClickInTheTabDisarms()
    {
        QFETCH(const QString, where);
        QFETCH(const QPoint, pos);
        arm();
        const auto *widget =
            stage()->objectName() == where ? &stage().linker() : stage()->findChild<QWidget *>(where);
        QVERIFY(widget);
        stage().click(*widget, pos);
        QVERIFY(!stage().armed());
        QVERIFY(stage().list().selectedItems().isEmpty());
        QVERIFY(!stage().saveTimer().isActive());
    }

    void aClickOnAPastilleDisarmsAndReachesIt()
    {
        arm();
        const QSignalSpy activated(&stage().overlay(), &InteractiveOverlay::pastilleActivated);
        const auto *pastille = stage().overlay().findChild<TouchArea *>();
        stage().click(*pastille, pastille->rect().center());
        QVERIFY(!stage().armed());
        QCOMPARE(activated.count(), 1);
    }

    void aClickOnTheListLeavesTheArm()
    {
        arm();
        const QWidget &viewport = *stage().list().viewport();
        stage().click(viewport, QPoint(20, viewport.height() - 5));
        QVERIFY(stage().armed());
    }

    void aClickOnTheListsScrollBarLeavesTheArm()
    {
        QJsonArray many;
        for (int i = 0; i < 80; ++i)
            many.append(QJsonObject{{u"name"_s, u"Action %1"_s.arg(i)}});
        stage()->setExternalServices(many);
        const QScrollBar *bar = stage().list().verticalScrollBar();
        QTRY_VERIFY(bar->isVisible());
        arm(u"Action 3"_s);
        stage().click(*bar, QPoint(bar->width() / 2, bar->height() - 20));
        QVERIFY(stage().armed());
        QVERIFY(bar->value() > 0);
    }

    void aClickInAnotherWindowLeavesTheArm()
    {
        arm();
        QWidget other;
        other.resize(200, 200);
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        QTest::mouseClick(other.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 50));
        QVERIFY(stage().armed());
    }

    void aClickBesideTheTabInItsWindowLeavesTheArm()
    {
        arm();
        QWidget neighbour(&stage().window());
        stage()->setGeometry(0, 0, 700, 600);
        neighbour.setGeometry(720, 0, 100, 100);
        neighbour.show();
        stage().click(neighbour, QPoint(10, 10));
        QVERIFY(stage().armed());
    }

    void aClickInAMenuOfTheTabIsOneInAnotherWindow()
    {
        arm();
        QMenu menu(&stage().overlay());
        menu.addAction(u"one"_s);
        menu.popup(QPoint(400, 300));
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        QTest::mouseClick(menu.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
        QVERIFY(stage().armed());
    }

    void aClickOfAnotherButtonDisarmsToo()
    {
        arm();
        QTest::mouseClick(stage().window().windowHandle(), Qt::MiddleButton, Qt::NoModifier,
                          stage().overlay().mapTo(&stage().window(), QPoint(5, 5)));
        QVERIFY(!stage().armed());
    }

    void withoutAnArmAClickChangesNothing()
    {
        stage().click(stage().overlay(), QPoint(5, 5));
        QVERIFY(!stage().armed());
    }

    void aRefreshOfThePanelDisarms()
    {
        arm();
        QJsonArray more = someActions();
        more.append(QJsonObject{{u"name"_s, u"D"_s}});
        stage()->setExternalServices(more);
        QVERIFY(!stage().armed());
        stage().press(3);
        QCOMPARE(refs()[0], u""_s);
    }

    void theSameActionsAgainLeaveTheArm()
    {
        arm();
        stage()->setExternalServices(someActions());
        QVERIFY(stage().armed());
    }

    void anArmSurvivesAChangeOfProfileWhileTheGamepadIsThere()
    {
        stage().plug(u"Other"_s, 1);
        arm();
        stage().show(otherProfile, u"Other"_s, {u"but_3"_s});
        QVERIFY(stage().armed());
        stage().press(3, 0);
        QCOMPARE(refs(), QStringList{u""_s});
        stage().press(3, 1);
        QCOMPARE(refs(), QStringList{u"C"_s});
        stage().save();
        QCOMPARE(storedBridges(otherProfile).size(), 1);
        QVERIFY(!QFile::exists(mappingPath(oneProfile)));
    }

    void aChangeToAProfileWithoutItsGamepadDisarms()
    {
        arm();
        stage().show(otherProfile, u"Away"_s, {u"but_3"_s});
        QVERIFY(!stage().armed());
    }
};

GAMEPAD_TEST_MAIN(TestActionLinkerArming)
#include "tst_actionlinker_arming.moc"
