// SPDX-License-Identifier: MIT
// Hosts close windows when they like: the editor goes under each of its boxes, menus, dialogs and signals.
#include "editorstage.h"
#include "gamepadmanager.h"
#include "interactiveoverlay.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QFile>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMenu>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
/// How a host lets a window go: at once, or by asking for its deletion.
enum class Farewell { Delete, DeleteLater };

/// An editor inside a window of the host's.
class Host
{
public:
    Host()
    {
        m_window->resize(1200, 600);
        m_editor = new GamepadDefinder(m_window);
        m_window->show();
        m_exposed = QTest::qWaitForWindowActive(m_window);
    }
    ~Host() { delete m_window; }
    Q_DISABLE_COPY_MOVE(Host)

    [[nodiscard]] bool exposed() const { return m_exposed; }
    [[nodiscard]] GamepadDefinder *operator->() const { return m_editor; }
    [[nodiscard]] GamepadDefinder &operator*() const { return *m_editor; }
    [[nodiscard]] bool isGone() const { return !m_editor && !m_window; }
    void goAway(Farewell farewell)
    {
        if (farewell == Farewell::Delete)
            delete m_window;
        else
            m_window->deleteLater();
    }

private:
    QPointer<QWidget> m_window = new QWidget;
    QPointer<GamepadDefinder> m_editor;
    bool m_exposed = false;
};

/// Runs `action`, during which a box of this title or a menu opens, and the host goes.
template <typename Window = QDialog>
int goneUnder(Host &host, Farewell farewell, QWidget *(*find)(), const std::function<void()> &action)
{
    const Answer<Window> answer(find, [&](Window *) {
        host.goAway(farewell);
        settle();
    });
    action();
    settle();
    return answer.given();
}

/// Runs `action`, which saves and cannot write `file` until a box says so; there the host goes. True if the
/// box came.
bool goneUnderTheBoxOfASave(Host &host, Farewell farewell, const QString &file,
                            const std::function<void()> &action)
{
    std::optional<BlockedFile> blocked(file);
    bool gone = false;
    const Answer<QDialog> answer(openDialog, [&](QDialog *) {
        blocked.reset();
        host.goAway(farewell);
        gone = true;
    });
    action();
    return gone;
}
} // namespace

class TestEditorLifetime : public QObject
{
    Q_OBJECT

    static void addFarewells()
    {
        QTest::addColumn<int>("farewell");
        QTest::newRow("delete") << int(Farewell::Delete);
        QTest::newRow("deleteLater") << int(Farewell::DeleteLater);
    }
    static Farewell farewell()
    {
        return Farewell{*static_cast<int *>(QTest::qData("farewell", QMetaType::Int))};
    }

private Q_SLOTS:
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void init() { startAfresh(); }

    // Below an event handler of the list or of the combo only `deleteLater` can be survived, whatever the
    // code: Qt goes on with the deleted widget after a `delete`.

    void underTheBoxOfARowChangeThatCannotSave()
    {
        const QString folder = store(1);
        store(2);
        const Pads pads;
        Host host;
        QVERIFY(host.exposed());
        addPastille(*host, u"Neuve"_s);
        saveTimerOf(*host).stop();
        std::optional<BlockedFile> blocked(folder + "/overlay.json"_L1);
        const Answer<QDialog> answer(openDialog, [&](QDialog *) {
            blocked.reset();
            host.goAway(Farewell::DeleteLater);
            settle();
        });
        listOf(*host).setCurrentRow(1);
        QCOMPARE(answer.given(), 1);
        QTRY_VERIFY(host.isGone());
        QCOMPARE(titlesIn(folder), (QStringList{u"Start"_s, u"Neuve"_s}));
    }

    void underTheBoxOfALoadThatFails()
    {
        store(1);
        const QString folder = store(2);
        const Pads pads;
        Host host;
        QVERIFY(host.exposed());
        QVERIFY(QFile::remove(folder + "/overlay.json"_L1));
        QCOMPARE(goneUnder(host, Farewell::DeleteLater, openDialog, [&] { listOf(*host).setCurrentRow(1); }),
                 1);
        QTRY_VERIFY(host.isGone());
    }

    void underTheBoxThatAGamepadIsTaken()
    {
        store(1);
        store(2, {.deviceName = u"Pad"_s});
        Pads pads;
        pads.plug(0);
        Host host;
        QVERIFY(host.exposed());
        QCOMPARE(
            goneUnder(host, Farewell::DeleteLater, openDialog, [&] { comboOf(*host).setCurrentIndex(0); }),
            1);
        QTRY_VERIFY(host.isGone());
    }

    void underTheBoxOfALinkThatCannotBeSaved()
    {
        const QString folder = store(1);
        Pads pads;
        pads.plug(0);
        pads.plug(1, u"Libre"_s);
        Host host;
        QVERIFY(host.exposed());
        const BlockedFile blocked(folder + "/meta.json"_L1);
        QCOMPARE(
            goneUnder(host, Farewell::DeleteLater, openDialog, [&] { comboOf(*host).setCurrentIndex(0); }),
            1);
        QTRY_VERIFY(host.isGone());
    }

    void underTheBoxOfAnAutoSave_data() { addFarewells(); }
    void underTheBoxOfAnAutoSave()
    {
        const QString folder = store(1);
        const Pads pads;
        Host host;
        QVERIFY(host.exposed());
        addPastille(*host, u"Neuve"_s);
        QVERIFY(goneUnderTheBoxOfASave(host, farewell(), folder + "/meta.json"_L1,
                                       [&] { expire(saveTimerOf(*host)); }));
        QTRY_VERIFY(host.isGone());
        // The destructor's save made up for it.
        QCOMPARE(titlesIn(folder), (QStringList{u"Start"_s, u"Neuve"_s}));
    }

    void underTheQuestionAboutATrigger_data() { addFarewells(); }
    void underTheQuestionAboutATrigger()
    {
        store(1);
        const Pads pads;
        Host host;
        QVERIFY(host.exposed());
        listen(*host);
        host->onAxisChanged(1, 90.0);
        host->onButtonChanged(1, true);
        QCOMPARE(goneUnder(host, farewell(), openDialog, [&] { expire(triggerTimerOf(*host)); }), 1);
        QTRY_VERIFY(host.isGone());
    }

    void underTheNoticeOfCoverage_data() { addFarewells(); }
    void underTheNoticeOfCoverage()
    {
        store(1, {.deviceName = u"Pad"_s});
        Pads pads;
        Host host;
        QVERIFY(host.exposed());
        QCOMPARE(goneUnder(host, farewell(), openDialog, [&] { pads.plug(0); }), 1);
        QTRY_VERIFY(host.isGone());
        pads.unplug(0);
        pads.plug(0);
    }

    void underTheMenu_data() { addFarewells(); }
    void underTheMenu()
    {
        store(1);
        const Pads pads;
        Host host;
        QVERIFY(host.exposed());
        QCOMPARE(
            goneUnder<QMenu>(host, farewell(), openPopup, [&] { host->showListContextMenu(QPoint(60, 60)); }),
            1);
        QTRY_VERIFY(host.isGone());
    }

    void underTheBoxOfAClosingThatIsRefused_data() { addFarewells(); }
    void underTheBoxOfAClosingThatIsRefused()
    {
        const QString folder = store(1);
        const Pads pads;
        Host host;
        QVERIFY(host.exposed());
        addPastille(*host, u"Neuve"_s);
        saveTimerOf(*host).stop();
        QVERIFY(goneUnderTheBoxOfASave(host, farewell(), folder + "/meta.json"_L1, [&] { host->close(); }));
        QTRY_VERIFY(host.isGone());
    }

    void underADialogOfTheKeys_data()
    {
        QTest::addColumn<QKeySequence>("key");
        QTest::newRow("new") << QKeySequence(QKeySequence::New);
        QTest::newRow("delete") << QKeySequence(QKeySequence::Delete);
        QTest::newRow("rename") << QKeySequence(Qt::Key_F2);
        QTest::newRow("paste") << QKeySequence(QKeySequence::Paste);
        QTest::newRow("export") << QKeySequence(Qt::CTRL | Qt::Key_E);
    }
    void underADialogOfTheKeys()
    {
        QFETCH(QKeySequence, key);
        store(1);
        const Pads pads;
        Host host;
        QVERIFY(host.exposed());
        QWindow *window = host->window()->windowHandle();
        QCOMPARE(goneUnder(host, Farewell::DeleteLater, openDialog, [&] { QTest::keySequence(window, key); }),
                 1);
        QTRY_VERIFY(host.isGone());
    }

    // Listeners of the signals.

    void insideASignal_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("currentGamepadChanged") << 0;
        QTest::newRow("deviceSelectionChanged") << 1;
    }
    void insideASignal()
    {
        QFETCH(int, signal);
        store(1);
        const Pads pads;
        auto *editor = new GamepadDefinder;
        const QPointer<GamepadDefinder> watched = editor;
        const auto die = [editor] { delete editor; };
        if (signal == 0)
            connect(editor, &GamepadDefinder::currentGamepadChanged, this, die);
        else
            connect(editor, &GamepadDefinder::deviceSelectionChanged, this, die);
        editor->emitCurrentSelection();
        QVERIFY(!watched);
    }

    void insideTheSignalOfTheGamepads()
    {
        store(1);
        Pads pads;
        auto *editor = new GamepadDefinder;
        const QPointer<GamepadDefinder> watched = editor;
        connect(editor, &GamepadDefinder::realGamepadsChanged, this, [editor] { delete editor; });
        pads.plug(0);
        QVERIFY(!watched);
    }

    void whileAGamepadStartsOrStops_data()
    {
        QTest::addColumn<bool>("atStart");
        QTest::newRow("start") << true;
        QTest::newRow("stop") << false;
    }
    void whileAGamepadStartsOrStops()
    {
        QFETCH(bool, atStart);
        store(1);
        store(2, {.deviceName = u"Pad"_s});
        Pads pads;
        ControlManette *pad = pads.plug(0);
        auto *editor = new GamepadDefinder;
        const QPointer<GamepadDefinder> watched = editor;
        if (!atStart) {
            listOf(*editor).setCurrentRow(1);
            pad->setConnected(true);
        } else {
            pad->setConnected(false);
        }
        connect(pad, &ControlManette::connectedChanged, this, [watched] {
            if (watched)
                watched->deleteLater();
            settle();
        });
        listOf(*editor).setCurrentRow(atStart ? 1 : -1);
        QTRY_VERIFY(!watched);
    }

    void aGamepadMayGoWhileItStarts()
    {
        store(1);
        store(2, {.deviceName = u"Pad"_s});
        Pads pads;
        ControlManette *pad = pads.plug(0);
        GamepadDefinder editor;
        pad->setConnected(false);
        connect(pad, &ControlManette::connectedChanged, this, [pad] { delete pad; });
        listOf(editor).setCurrentRow(1);
        QCOMPARE(editor.currentRow(), 1);
        listOf(editor).setCurrentRow(0);
        QVERIFY(!triggerTimerOf(editor).isActive());
    }

    void theNextManagerIsFollowed_data()
    {
        QTest::addColumn<bool>("byLink");
        QTest::newRow("row") << false;
        QTest::newRow("link") << true;
    }
    void theNextManagerIsFollowed()
    {
        QFETCH(bool, byLink);
        store(1);
        store(2, {.deviceName = u"Pad"_s});
        auto pads = std::make_unique<Pads>();
        pads->plug(0);
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(1);
        QVERIFY(pads->isRunning(0));
        pads.reset();
        pads = std::make_unique<Pads>();
        // The editor has not made one meanwhile, which would have no parent.
        QVERIFY(GamepadManager::instance()->parent());
        pads->plug(0);
        QCOMPARE(editor.realGamepads().size(), 0);

        if (byLink) {
            editor.onDeviceComboChanged({});
            QCOMPARE(namesIn(comboOf(editor)), QStringList{u"Pad"_s});
            comboOf(editor).setCurrentIndex(0);
        } else {
            listOf(editor).setCurrentRow(0);
            listOf(editor).setCurrentRow(1);
        }
        QCOMPARE(comboOf(editor).currentText(), u"Pad"_s);
        QVERIFY(isFramed(editor, 1));
        QVERIFY(pads->isRunning(0));
        // From here on by itself.
        pads->plug(1, u"Autre"_s);
        QCOMPARE(namesIn(comboOf(editor)), (QStringList{u"Autre"_s, u"Pad"_s}));
    }

    void theManagerMayGoWithTheEditorsWindow_data()
    {
        QTest::addColumn<bool>("managerFirst");
        QTest::newRow("manager first") << true;
        QTest::newRow("editor first") << false;
    }
    void theManagerMayGoWithTheEditorsWindow()
    {
        QFETCH(bool, managerFirst);
        store(1);
        store(2, {.deviceName = u"Pad"_s});
        Host host;
        QVERIFY(host.exposed());
        GamepadManager *manager = GamepadManager::instance();
        manager->stopTimers();
        manager->setParent(host->window());
        if (managerFirst)
            host->raise(); // the last of the window's children
        const Boxes boxes; // each gamepad has its profile
        scripted::plug(0, scripted::restingPad("Pad"));
        QMetaObject::invokeMethod(manager, "discoverDevices");
        listOf(*host).setCurrentRow(1);
        QVERIFY(isFramed(*host, 1));
        QCOMPARE(host->window()->children().indexOf(manager) < host->window()->children().indexOf(&*host),
                 managerFirst);
        host.goAway(Farewell::Delete);
        QVERIFY(host.isGone());
    }

    void theManagerMayGo()
    {
        store(1);
        store(2, {.deviceName = u"Pad"_s});
        auto pads = std::make_unique<Pads>();
        pads->plug(0);
        GamepadDefinder editor;
        listOf(editor).setCurrentRow(1);
        QVERIFY(isFramed(editor, 1));
        pads.reset();
        QCOMPARE(editor.realGamepads().size(), 0);
        QCOMPARE(namesIn(comboOf(editor)), QStringList());
        QVERIFY(!isFramed(editor, 1));
        QCOMPARE(editor.entries().at(1).deviceName, u"Pad"_s);

        listOf(editor).setCurrentRow(0);
        listOf(editor).setCurrentRow(1);
        editor.onDeviceComboChanged(u"Pad"_s);
        QCOMPARE(editor.currentRow(), 1);
        QCOMPARE(editor.realGamepads(), GamepadManager::instance()->gamepads());
        delete GamepadManager::instance(); // the editor's own, which would outlive the test
        const Pads others;
        const GamepadDefinder second;
        QCOMPARE(second.realGamepads(), GamepadManager::instance()->gamepads());
    }
};

GAMEPAD_TEST_MAIN(TestEditorLifetime)
#include "tst_editorlifetime.moc"
