// SPDX-License-Identifier: MIT
// Which gamepad the linker listens to, and when its panel shows.
#include "linkertest.h"

using namespace Qt::StringLiterals;

class TestActionLinkerDevices : public LinkerTest
{
    Q_OBJECT

    bool panelShows() { return stage().panel().isVisible(); }

    /// Whether a press on the gamepad in `slot` reaches an armed action.
    bool hears(unsigned slot)
    {
        stage().clickAction(u"C"_s);
        stage().release(3, slot);
        stage().press(3, slot);
        const bool heard = !stage().armed();
        if (!heard)
            stage().clickAction(u"C"_s);
        return heard;
    }

private Q_SLOTS:
    void init()
    {
        LinkerTest::init();
        stage().linker().setExternalServices(someActions());
    }

    void thePanelShowsWithTheGamepad()
    {
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s});
        QVERIFY(!panelShows());
        stage().plug(u"Pad"_s);
        QVERIFY(panelShows());
        QVERIFY(hears(0));
        stage().unplug();
        QVERIFY(!panelShows());
        stage().plug(u"Pad"_s);
        QVERIFY(panelShows());
        QVERIFY(hears(0));
    }

    void thePanelThatComesAndGoesChangesNothingWorthSaving()
    {
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s, u"joy_1"_s});
        QTRY_VERIFY(stage().overlay().width() > 500);
        const int wide = stage().overlay().width();
        stage().plug(u"Pad"_s);
        QTRY_VERIFY(stage().overlay().width() < wide);
        stage().unplug();
        QTRY_COMPARE(stage().overlay().width(), wide);
        QVERIFY(!stage().saveTimer().isActive());
    }

    void aNameIsTheSameInAnotherCase()
    {
        stage().plug(u"Pad ÉTÉ"_s);
        stage().show(oneProfile, u"pad été"_s, {u"but_3"_s});
        QVERIFY(panelShows());
        QVERIFY(hears(0));
    }

    void noOrABlankNameIsNoGamepad_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("none") << QString();
        QTest::newRow("blank") << u"  "_s;
    }

    void noOrABlankNameIsNoGamepad()
    {
        QFETCH(const QString, name);
        stage().plug(name);
        stage().show(oneProfile, name, {u"but_3"_s});
        QVERIFY(!panelShows());
    }

    void aNameWithBlanksAroundItShowsThePanelButFindsNoDevice()
    {
        stage().plug(u"Pad"_s);
        stage().show(oneProfile, u" Pad "_s, {u"but_3"_s});
        QVERIFY(panelShows());
        QVERIFY(!hears(0));
    }

    void aGamepadWhoseOwnNameEndsInBlanksIsHeard()
    {
        stage().plug(u"USB Joystick  "_s);
        stage().show(oneProfile, u"USB Joystick  "_s, {u"but_3"_s});
        QVERIFY(panelShows());
        QVERIFY(hears(0));
    }

    void ofTwoGamepadsOfOneNameTheFirstIsHeard()
    {
        stage().plug(u"Pad"_s, 0);
        stage().plug(u"Pad"_s, 1);
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s});
        QVERIFY(hears(0));
        QVERIFY(!hears(1));
        stage().unplug(0);
        QVERIFY(panelShows());
        QVERIFY(hears(1));
    }

    void theSelectedDeviceIsHeardAndTheOneBeforeIsNot()
    {
        stage().plug(u"One"_s, 0);
        stage().plug(u"Two"_s, 1);
        stage().show(oneProfile, u"One"_s, {u"but_3"_s});
        stage()->onDeviceSelectionChanged(u"Two"_s);
        QVERIFY(hears(1));
        QVERIFY(!hears(0));
        stage()->onDeviceSelectionChanged({});
        QVERIFY(!panelShows());
        stage()->onDeviceSelectionChanged(u"One"_s);
        QVERIFY(hears(0));
        QVERIFY(!hears(1));
    }

    void anInputIsTakenOnceHoweverOftenTheGamepadsChange()
    {
        stage().plug(u"Pad"_s);
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s, u"but_4"_s});
        for (int i = 0; i < 3; ++i) {
            Q_EMIT GamepadManager::instance()->gamepadsChanged();
            stage()->onDeviceSelectionChanged(u"Pad"_s);
        }
        int heard = 0;
        connect(&stage().overlay(), &InteractiveOverlay::dirty, this, [&heard] { ++heard; });
        stage().clickAction(u"C"_s);
        stage().press(3);
        const int once = heard;
        QVERIFY(once > 0);
        QVERIFY(!stage().armed());
        stage().press(4);
        QCOMPARE(heard, once);
        QCOMPARE(stage().refs(), QStringList({u"C"_s, u""_s}));
    }

    void unpluggingDisarms()
    {
        stage().plug(u"Pad"_s);
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s});
        stage().clickAction(u"C"_s);
        stage().unplug();
        QVERIFY(!stage().armed());
        QVERIFY(!panelShows());
    }

    void aDeviceThatIsDestroyedDisarmsToo()
    {
        ControlManette *device = &stage().plug(u"Pad"_s);
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s});
        stage().clickAction(u"C"_s);
        delete device;
        QVERIFY(!stage().armed());
        QVERIFY(!panelShows());
    }

    void theManagerMayDieAndTheNextOneIsFollowed()
    {
        stage().plug(u"Pad"_s);
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s});
        stage().clickAction(u"C"_s);
        scripted::reset();
        stage().destroyManager();
        QVERIFY(!stage().armed());
        QVERIFY(!panelShows());

        QObject family;
        GamepadManager *next = GamepadManager::instance(&family);
        QCOMPARE(next->parent(), &family);
        stage()->onDeviceSelectionChanged(u"Pad"_s);
        QVERIFY(!panelShows());
        stage().plug(u"Pad"_s);
        QVERIFY(panelShows());
        QVERIFY(hears(0));
        scripted::reset();
    }

    void aLinkerThatIsGoneHearsNothing()
    {
        stage().plug(u"Pad"_s);
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s});
        stage().clickAction(u"C"_s);
        stage().closeLinker();
        stage().press(3);
        stage().push(1, 80);
        stage().unplug();
    }

    void aLinkerThatDiesInsideAnInputIsNotTouchedAnyMore()
    {
        ControlManette &device = stage().plug(u"Pad"_s);
        // Ahead of the linker.
        connect(&device, &ControlManette::buttonChanged, &stage().window(),
                [this] { stage().closeLinker(); });
        stage().show(oneProfile, u"Pad"_s, {u"but_3"_s});
        stage().clickAction(u"C"_s);
        stage().press(3);
    }
};

GAMEPAD_TEST_MAIN(TestActionLinkerDevices)
#include "tst_actionlinker_devices.moc"
