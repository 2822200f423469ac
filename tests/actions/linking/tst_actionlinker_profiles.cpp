// SPDX-License-Identifier: MIT
// The linker beside the editor whose profile it shows.
#include "linkertest.h"

#include "gamepaddefinder.h"

using namespace Qt::StringLiterals;

namespace
{
void writeProfile(const QUuid &id, const QString &deviceName, const QStringList &titles)
{
    const QString folder = id.toString(QUuid::WithoutBraces);
    writeMeta(folder, {{u"id"_s, folder}, {u"name"_s, u"Profile"_s}, {u"deviceName"_s, deviceName}});
    writeBelowRoot(folder + u"/overlay.json"_s, QJsonDocument(overlayOf(titles)).toJson());
}
} // namespace

class TestActionLinkerProfiles : public LinkerTest
{
    Q_OBJECT

    std::unique_ptr<GamepadDefinder> m_definder;

private Q_SLOTS:
    void init()
    {
        LinkerTest::init();
        stage().linker().setExternalServices(someActions());
        stage().plug(u"Pad"_s);
        writeProfile(oneProfile, u"Pad"_s, {u"but_1"_s});
        writeProfile(otherProfile, {}, {u"but_2"_s, u"but_3"_s});
        writeMapping("{'bridges':[{'src':{'stringKey':'but_1'},'action':'A','args':{'speed':4},'dst':[]}]}");
        m_definder = std::make_unique<GamepadDefinder>();
    }
    void cleanup()
    {
        m_definder.reset();
        LinkerTest::cleanup();
    }

    void theProfileOnShowIsTakenAtOnce()
    {
        stage()->bindGamepadDefinder(m_definder.get());
        QCOMPARE(stage().configs(), array("[{'ref':'A','action':'A','args':{'speed':4}}]"));
        QVERIFY(stage().panel().isVisible());
    }

    void theNextProfileIsFollowed()
    {
        stage()->bindGamepadDefinder(m_definder.get());
        m_definder->findChild<QListWidget *>(u"listWidget"_s)->setCurrentRow(1);
        QCOMPARE(stage().refs(), QStringList({u""_s, u""_s}));
        QVERIFY(!stage().panel().isVisible());
        stage().overlay().applyActionToTitle(u"C"_s, u"but_2"_s);
        stage().save();
        QCOMPARE(storedBridges(otherProfile).size(), 1);
        m_definder->findChild<QListWidget *>(u"listWidget"_s)->setCurrentRow(0);
        QVERIFY(stage().panel().isVisible());
    }

    void theEditorsOtherSelectionsOfADeviceAreFollowed()
    {
        stage()->bindGamepadDefinder(m_definder.get());
        Q_EMIT m_definder->deviceSelectionChanged({});
        QVERIFY(!stage().panel().isVisible());
        Q_EMIT m_definder->deviceSelectionChanged(u"PAD"_s);
        QVERIFY(stage().panel().isVisible());
    }

    void anEditorWithoutAProfileTellsNothing()
    {
        clearTemporaryHome();
        GamepadDefinder empty;
        stage()->bindGamepadDefinder(&empty);
        QCOMPARE(stage().refs(), QStringList());
        QVERIFY(!stage().panel().isVisible());
    }

    void anotherEditorTakesThePlaceOfTheFirst()
    {
        stage()->bindGamepadDefinder(m_definder.get());
        GamepadDefinder second;
        stage()->bindGamepadDefinder(&second);
        Q_EMIT m_definder->deviceSelectionChanged({});
        QVERIFY(stage().panel().isVisible());
        Q_EMIT second.deviceSelectionChanged({});
        QVERIFY(!stage().panel().isVisible());
    }

    void noEditorIsFollowedAfterNull()
    {
        stage()->bindGamepadDefinder(m_definder.get());
        stage()->bindGamepadDefinder(nullptr);
        Q_EMIT m_definder->deviceSelectionChanged({});
        QVERIFY(stage().panel().isVisible());
        QCOMPARE(stage().refs(), QStringList{u"A"_s});
    }

    void theSameEditorTwiceIsHeardOnce()
    {
        stage()->bindGamepadDefinder(m_definder.get());
        stage()->bindGamepadDefinder(m_definder.get());
        int loads = 0;
        connect(&stage().overlay(), &InteractiveOverlay::backgroundPixmapChanged, this,
                [&loads] { ++loads; });
        m_definder->emitCurrentSelection();
        const int once = loads;
        m_definder->emitCurrentSelection();
        QCOMPARE(loads, 2 * once);
        QVERIFY(once <= 1);
    }

    void anEditorThatIsGoneIsNotTouched()
    {
        stage()->bindGamepadDefinder(m_definder.get());
        m_definder.reset();
        QVERIFY(stage().panel().isVisible());
        GamepadDefinder next;
        stage()->bindGamepadDefinder(&next);
        stage()->bindGamepadDefinder(nullptr);
    }

    void aLinkerThatIsGoneHearsNothingOfTheEditor()
    {
        stage()->bindGamepadDefinder(m_definder.get());
        stage().closeLinker();
        m_definder->emitCurrentSelection();
    }
};

GAMEPAD_TEST_MAIN(TestActionLinkerProfiles)
#include "tst_actionlinker_profiles.moc"
