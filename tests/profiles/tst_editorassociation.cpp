// SPDX-License-Identifier: MIT
// The combo of gamepads, and the link of a profile to one of them.
#include "editorstage.h"
#include "gamepadmanager.h"
#include "testmain.h"

#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
/// What a person does in the combo.
void pick(GamepadDefinder &editor, const QString &name)
{
    QComboBox &combo = comboOf(editor);
    const int index = combo.findText(name);
    QVERIFY(index >= 0);
    combo.showPopup();
    QAbstractItemView *view = combo.view();
    QVERIFY(view->isVisible());
    const QModelIndex item = combo.model()->index(index, 0);
    view->scrollTo(item);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(item).center());
}

/// Another thing a person does there: the first letter of a name.
void typeIn(const GamepadDefinder &editor, Qt::Key letter)
{
    comboOf(editor).setFocus();
    QTest::keyClick(&comboOf(editor), letter);
}
} // namespace

class TestEditorAssociation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }

    // The list of gamepads.

    void constructionTakesTheManagersGamepads()
    {
        Pads pads;
        pads.plug(3, u"Trois"_s);
        pads.plug(1, u"Un"_s);
        const GamepadDefinder editor;
        QCOMPARE(editor.realGamepads(), GamepadManager::instance()->gamepads());
        QCOMPARE(editor.realGamepads().size(), 2);
        QCOMPARE(namesIn(comboOf(editor)), (QStringList{u"Trois"_s, u"Un"_s}));
    }

    void theManagersChangesAreFollowed()
    {
        Pads pads;
        GamepadDefinder editor;
        Journal journal(&editor);
        pads.plug(0);
        QCOMPARE(journal.take(), QStringList{u"realGamepadsChanged"_s});
        QCOMPARE(editor.realGamepads(), GamepadManager::instance()->gamepads());
        pads.unplug(0);
        QCOMPARE(journal.take(), QStringList{u"realGamepadsChanged"_s});
        QCOMPARE(editor.realGamepads().size(), 0);
        QCOMPARE(comboOf(editor).count(), 0);
    }

    void anEqualListChangesNothing()
    {
        Pads pads;
        pads.plug(0);
        GamepadDefinder editor;
        Journal journal(&editor);
        editor.setRealGamepads(editor.realGamepads());
        Q_EMIT GamepadManager::instance()->gamepadsChanged();
        QCOMPARE(journal.take(), QStringList());
        QVERIFY(editor.setProperty("realGamepads", QVariant::fromValue(GamepadManager::Gamepads())));
        QCOMPARE(journal.take(), QStringList{u"realGamepadsChanged"_s});
    }

    void aChangedListReachesTheVirtualOperationAfterTheSignal()
    {
        class Watched : public GamepadDefinder
        {
        public:
            QStringList told;

        protected:
            void onRealGamepadsApplied(const Gamepads &gamepads) override
            {
                told.append(u"applied %1"_s.arg(gamepads.size()));
                GamepadDefinder::onRealGamepadsApplied(gamepads);
            }
        };
        Pads pads;
        Watched editor;
        connect(&editor, &GamepadDefinder::realGamepadsChanged, &editor,
                [&editor] { editor.told.append(u"changed %1"_s.arg(editor.realGamepads().size())); });
        pads.plug(0);
        QCOMPARE(editor.told, (QStringList{u"changed 1"_s, u"applied 1"_s}));
    }

    void aListenerMayChangeTheListAgain()
    {
        const Pads pads;
        GamepadDefinder editor;
        QObject owner;
        const QPointer<ControlManette> former = new ControlManette(-1, &owner);
        const QPointer<ControlManette> latter = new ControlManette(-1, &owner);
        former->setName(u"Former"_s);
        latter->setName(u"Latter"_s);
        connect(&editor, &GamepadDefinder::realGamepadsChanged, &owner,
                [&] { editor.setRealGamepads({latter}); });
        editor.setRealGamepads({former});
        QCOMPARE(editor.realGamepads(), GamepadDefinder::Gamepads{latter});
        QCOMPARE(namesIn(comboOf(editor)), QStringList{u"Latter"_s});
    }

    void deadGamepadsAreLeftOut()
    {
        const Pads pads;
        GamepadDefinder editor;
        QObject owner;
        QPointer<ControlManette> dead = new ControlManette(-1, &owner);
        QPointer<ControlManette> alive = new ControlManette(-1, &owner);
        dead->setName(u"Morte"_s);
        alive->setName(u"Vivante"_s);
        GamepadManager::Gamepads gamepads{dead, alive};
        delete dead.data();
        editor.setRealGamepads(gamepads);
        QCOMPARE(namesIn(comboOf(editor)), QStringList{u"Vivante"_s});
    }

    void namesStandOnceAndInOrderWithoutCase()
    {
        Pads pads;
        pads.plug(0, u"beta"_s);
        pads.plug(1, u"Gamma"_s);
        pads.plug(2, u"Alpha"_s);
        pads.plug(3, u"beta"_s);
        const GamepadDefinder editor;
        QCOMPARE(namesIn(comboOf(editor)), (QStringList{u"Alpha"_s, u"beta"_s, u"Gamma"_s}));
    }

    // What the combo shows.

    void theComboHasNoEmptyRow()
    {
        store(1);
        Pads pads;
        pads.plug(0);
        GamepadDefinder editor;
        QCOMPARE(namesIn(comboOf(editor)), QStringList{u"Pad"_s});
        QCOMPARE(comboOf(editor).currentIndex(), -1);
        QCOMPARE(editor.entries().at(0).deviceName, QString());
    }

    void theComboShowsTheLinkOfTheProfileOnShow()
    {
        store(1, {.deviceName = u"B"_s});
        store(2, {.deviceName = u"absente"_s});
        store(3, {.deviceName = u"a"_s});
        Pads pads;
        pads.plug(0, u"A"_s);
        pads.plug(1, u"B"_s);
        GamepadDefinder editor;
        // Filled after the first profile was shown, by the profile's own link.
        QCOMPARE(comboOf(editor).currentText(), u"B"_s);
        listOf(editor).setCurrentRow(1);
        QCOMPARE(comboOf(editor).currentIndex(), -1);
        listOf(editor).setCurrentRow(0);
        QCOMPARE(comboOf(editor).currentText(), u"B"_s);
        // Case counts here.
        listOf(editor).setCurrentRow(2);
        QCOMPARE(comboOf(editor).currentIndex(), -1);
    }

    void rebuildingKeepsWhatIsShownAndTellsNobody()
    {
        const QString folder = store(1, {.deviceName = u"B"_s});
        Pads pads;
        pads.plug(1, u"B"_s);
        GamepadDefinder editor;
        Journal journal(&editor);
        pads.plug(0, u"A"_s);
        QCOMPARE(namesIn(comboOf(editor)), (QStringList{u"A"_s, u"B"_s}));
        QCOMPARE(comboOf(editor).currentText(), u"B"_s);
        pads.unplug(1);
        QCOMPARE(comboOf(editor).currentIndex(), -1);
        pads.plug(2, u"B"_s);
        // What was shown is gone, so the profile's link decides.
        QCOMPARE(comboOf(editor).currentText(), u"B"_s);
        QCOMPARE(journal.take(),
                 (QStringList{u"realGamepadsChanged"_s, u"realGamepadsChanged"_s, u"realGamepadsChanged"_s}));
        QCOMPARE(editor.entries().at(0).deviceName, u"B"_s);
        QVERIFY(metaIn(folder).contains("createdAt"_L1));
    }

    void rebuildingGoesByWhatIsShownBeforeTheLink()
    {
        store(1, {.deviceName = u"B"_s});
        Pads pads;
        pads.plug(0, u"A"_s);
        pads.plug(1, u"B"_s);
        GamepadDefinder editor;
        {
            const QSignalBlocker blocker(comboOf(editor));
            comboOf(editor).setCurrentIndex(0);
        }
        pads.plug(2, u"C"_s);
        QCOMPARE(comboOf(editor).currentText(), u"A"_s);
        pads.unplug(0);
        QCOMPARE(comboOf(editor).currentText(), u"B"_s);
    }

    void aSecondGamepadOfOneNameLeavesTheComboAlone()
    {
        store(1);
        Pads pads;
        pads.plug(0);
        const GamepadDefinder editor;
        QSignalSpy reset(comboOf(editor).model(), &QAbstractItemModel::rowsInserted);
        pads.plug(1);
        QCOMPARE(editor.realGamepads().size(), 2);
        QCOMPARE(reset.size(), 0);
        pads.plug(2, u"Autre"_s);
        QVERIFY(reset.size() > 0);
    }

    // Linking.

    void pickingAGamepadLinksAtOnce()
    {
        const QString folder = store(1, {.name = u"Un"_s});
        Pads pads;
        pads.plug(0);
        pads.plug(1, u"Autre"_s);
        GamepadDefinder editor;
        QVERIFY(present(editor));
        addPastille(editor, u"Avec"_s);
        Journal journal(&editor);
        pick(editor, u"Pad"_s);
        QCOMPARE(journal.take(), QStringList{u"device Pad"_s});
        QCOMPARE(editor.entries().at(0).deviceName, u"Pad"_s);
        QCOMPARE(metaIn(folder)["deviceName"_L1].toString(), u"Pad"_s);
        QCOMPARE(titlesIn(folder), (QStringList{u"Start"_s, u"Avec"_s}));
        QVERIFY(!editor.isDirty());
        QVERIFY(pads.isRunning(0));

        // The link can move, and the former gamepad is let go.
        pick(editor, u"Autre"_s);
        QCOMPARE(journal.take(), QStringList{u"device Autre"_s});
        QCOMPARE(metaIn(folder)["deviceName"_L1].toString(), u"Autre"_s);
        QVERIFY(!pads.isRunning(0));
        QVERIFY(pads.isRunning(1));
    }

    void whoIsToldOfALinkFindsItSavedAndBound()
    {
        const QString folder = store(1);
        Pads pads;
        pads.plug(0);
        pads.plug(1, u"Libre"_s);
        GamepadDefinder editor;
        QStringList found;
        connect(&editor, &GamepadDefinder::deviceSelectionChanged, &editor, [&] {
            found = QStringList{metaIn(folder)["deviceName"_L1].toString(),
                                pads.isRunning(0) ? u"bound"_s : u"unbound"_s};
        });
        comboOf(editor).setCurrentIndex(comboOf(editor).findText(u"Pad"_s));
        QCOMPARE(found, (QStringList{u"Pad"_s, u"bound"_s}));
    }

    void anEmptyNameTakesTheLinkAway()
    {
        store(1);
        const QString folder = store(2, {.deviceName = u"Pad"_s});
        store(3);
        Pads pads;
        pads.plug(0);
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(1);
        QVERIFY(pads.isRunning(0));
        Journal journal(&editor);
        Boxes boxes;
        // Other profiles are without a link, too: that is no name that is taken.
        editor.onDeviceComboChanged({});
        QCOMPARE(boxes.take(), QStringList());
        QCOMPARE(journal.take(), QStringList{u"device"_s + u' '});
        QCOMPARE(metaIn(folder)["deviceName"_L1].toString(), QString());
        QVERIFY(!pads.isRunning(0));
    }

    void aNameOfAnotherProfileIsRefused_data()
    {
        QTest::addColumn<QString>("taken");
        QTest::newRow("same") << u"Pad"_s;
        QTest::newRow("other case") << u"pAD"_s;
    }
    void aNameOfAnotherProfileIsRefused()
    {
        QFETCH(QString, taken);
        const QString folder = store(1, {.deviceName = u"Autre"_s});
        store(2, {.deviceName = taken});
        Pads pads;
        pads.plug(0);
        pads.plug(1, u"Autre"_s);
        pads.plug(2, u"Libre"_s);
        GamepadDefinder editor;
        QVERIFY(present(editor));
        Journal journal(&editor);
        Boxes boxes;
        typeIn(editor, Qt::Key_P);
        QCOMPARE(
            boxes.take(),
            QStringList{u"Warning: Association: \u00c2\u00ab Pad \u00c2\u00bb est d\u00c3\u00a9j\u00c3\u00a0 "
                        u"associ\u00c3\u00a9 \u00c3\u00a0 un autre profil."_s});
        QCOMPARE(comboOf(editor).currentText(), u"Autre"_s);
        QCOMPARE(editor.entries().at(0).deviceName, u"Autre"_s);
        QCOMPARE(journal.take(), QStringList());
        QVERIFY(metaIn(folder).contains("createdAt"_L1));
    }

    void aRefusedPickReturnsToALinkThatIsAway()
    {
        store(1, {.deviceName = u"Absente"_s});
        store(2, {.deviceName = u"Pad"_s});
        Pads pads;
        pads.plug(0);
        pads.plug(1, u"Libre"_s);
        GamepadDefinder editor;
        QVERIFY(present(editor));
        Boxes boxes;
        pick(editor, u"Pad"_s);
        QCOMPARE(boxes.take().size(), 1);
        QCOMPARE(comboOf(editor).currentIndex(), -1);
        QCOMPARE(editor.entries().at(0).deviceName, u"Absente"_s);
    }

    void theSameNameInOtherCaseIsAChangeOfTheLink()
    {
        const QString folder = store(1, {.deviceName = u"PAD"_s});
        Pads pads;
        pads.plug(0);
        pads.plug(1, u"Libre"_s);
        GamepadDefinder editor;
        Journal journal(&editor);
        editor.onDeviceComboChanged(u"PAD"_s);
        QCOMPARE(journal.take(), QStringList());
        editor.onDeviceComboChanged(u"Pad"_s);
        QCOMPARE(journal.take(), QStringList{u"device Pad"_s});
        QCOMPARE(metaIn(folder)["deviceName"_L1].toString(), u"Pad"_s);
    }

    void withoutAProfileThePickIsIgnored()
    {
        Pads pads;
        pads.plug(0);
        pads.plug(1, u"Autre"_s);
        GamepadDefinder editor;
        Journal journal(&editor);
        comboOf(editor).setCurrentIndex(1);
        QCOMPARE(journal.take(), QStringList());
        QVERIFY(!pads.isRunning(0) && !pads.isRunning(1));
        // It stays for as long as its gamepad.
        QCOMPARE(comboOf(editor).currentText(), u"Pad"_s);
        pads.plug(2, u"Libre"_s);
        QCOMPARE(comboOf(editor).currentText(), u"Pad"_s);
        pads.unplug(0);
        QCOMPARE(namesIn(comboOf(editor)), (QStringList{u"Autre"_s, u"Libre"_s}));
        QCOMPARE(comboOf(editor).currentIndex(), -1);
    }

    void aLinkThatCannotBeSavedStaysInMemoryAndIsBound()
    {
        const QString folder = store(1);
        Pads pads;
        pads.plug(0);
        pads.plug(1, u"Libre"_s);
        GamepadDefinder editor;
        Journal journal(&editor);
        Boxes boxes;
        const BlockedFile blocked(folder + "/meta.json"_L1);
        comboOf(editor).setCurrentIndex(comboOf(editor).findText(u"Pad"_s));
        QCOMPARE(boxes.take().size(), 1);
        QCOMPARE(editor.entries().at(0).deviceName, u"Pad"_s);
        QVERIFY(pads.isRunning(0));
        QCOMPARE(journal.take(), QStringList{u"device Pad"_s});
    }
};

GAMEPAD_TEST_MAIN(TestEditorAssociation)
#include "tst_editorassociation.moc"
