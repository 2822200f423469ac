// SPDX-License-Identifier: MIT
// How a pastille learns an input from the gamepad of the profile on show.
#include "editorstage.h"
#include "interactiveoverlay.h"
#include "testmain.h"

#include <QtCore/QElapsedTimer>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
constexpr int triggerAxis = 2;
constexpr int triggerButton = 6;
const QString question = u"G\u00c3\u00a2chette d\u00c3\u00a9tect\u00c3\u00a9e"_s;
const QString useAxis = u"Utiliser l\u00e2\u20ac\u2122axe (joy_2)"_s;
const QString useButton = u"Utiliser le bouton (but_6)"_s;

QPushButton *buttonOf(const QMessageBox &box, const QString &text)
{
    const QList<QPushButton *> buttons = box.findChildren<QPushButton *>();
    const auto found = std::ranges::find(buttons, text, &QPushButton::text);
    return found == buttons.end() ? nullptr : *found;
}

void clickIn(QMessageBox *box, const QString &text)
{
    QPushButton *button = buttonOf(*box, text);
    QVERIFY2(button, qPrintable(text));
    QTest::mouseClick(button, Qt::LeftButton);
}

/// A profile that is linked to the pad in slot 0, on show, with its pad publishing and its pastille waiting.
class Capture
{
public:
    explicit Capture(const QString &name = u"Pad"_s)
    {
        folder = store(1);
        store(2, {.deviceName = name});
        pads.plug(0, name);
        editor = std::make_unique<GamepadDefinder>();
        listOf(*editor).setCurrentRow(1);
        stage::listen(*editor);
        pads.calibrate(0);
    }

    [[nodiscard]] QString title() const { return titlesOn(*editor).value(0); }
    [[nodiscard]] bool waits() const { return triggerTimerOf(*editor).isActive(); }
    void resolve() { expire(triggerTimerOf(*editor)); }
    void listen()
    {
        overlayOf(*editor).findChild<TouchArea *>(Qt::FindDirectChildrenOnly)->setTitle(u"Start"_s);
        stage::listen(*editor);
    }
    /// The trigger goes down and up again.
    void pullTrigger()
    {
        pads.move(0, triggerAxis, 80.0F);
        pads.press(0, triggerButton);
        pads.move(0, triggerAxis, 0.0F);
        pads.release(0, triggerButton);
    }

    Pads pads;
    QString folder;
    std::unique_ptr<GamepadDefinder> editor;
};

/// Lets the trigger be asked about, and answers. Returns how many questions came.
int ask(Capture &capture, const std::function<void(QMessageBox *)> &answer)
{
    const Answer<QMessageBox> box(openDialog, answer);
    capture.resolve();
    return box.given();
}
} // namespace

class TestEditorCapture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }

    void anAxisAloneIsLearned()
    {
        Capture capture;
        capture.pads.move(0, 3, -55.0F);
        QVERIFY(capture.waits());
        QCOMPARE(capture.title(), u"Start"_s);
        capture.resolve();
        QCOMPARE(capture.title(), u"joy_3"_s);
        QVERIFY(!overlayOf(*capture.editor).listeningPastille());
        QVERIFY(!capture.waits());
        QVERIFY(capture.editor->isDirty());
        QVERIFY(saveTimerOf(*capture.editor).isActive());
    }

    void aButtonAloneIsLearnedAfterTwoHundredMilliseconds()
    {
        Capture capture;
        QElapsedTimer sincePress;
        sincePress.start();
        capture.pads.press(0, 10);
        QTRY_COMPARE(capture.title(), u"but_10"_s);
        QVERIFY2(sincePress.elapsed() >= 190, qPrintable(QString::number(sincePress.elapsed())));
    }

    void anAxisCountsFromFortyOn()
    {
        Capture capture;
        capture.editor->onAxisChanged(0, 39.9);
        capture.editor->onAxisChanged(0, -39.9);
        QVERIFY(!capture.waits());
        capture.editor->onAxisChanged(4, -40.0);
        QVERIFY(capture.waits());
        capture.editor->onAxisChanged(5, 39.9);
        capture.resolve();
        QCOMPARE(capture.title(), u"joy_4"_s);
    }

    void aReleaseIsNoInput()
    {
        Capture capture;
        capture.editor->onButtonChanged(3, false);
        QVERIFY(!capture.waits());
        capture.pads.press(0, 5);
        capture.pads.release(0, 5);
        capture.editor->onButtonChanged(9, false);
        QVERIFY(capture.waits());
        capture.resolve();
        QCOMPARE(capture.title(), u"but_5"_s);
    }

    void theLastAxisAndButtonWinAndTheSpanIsNotExtended()
    {
        Capture capture;
        GamepadDefinder &editor = *capture.editor;
        QCOMPARE(triggerTimerOf(editor).interval(), 200);
        triggerTimerOf(editor).setInterval(60'000); // ends by `ask` alone, however slow the machine
        editor.onAxisChanged(1, 60.0);
        editor.onButtonChanged(3, true);
        QVERIFY(capture.waits());
        const int id = triggerTimerOf(editor).timerId();
        editor.onAxisChanged(triggerAxis, -70.0);
        editor.onButtonChanged(triggerButton, true);
        // Not started anew.
        QCOMPARE(triggerTimerOf(editor).timerId(), id);
        QCOMPARE(ask(capture, [](QMessageBox *box) { clickIn(box, useAxis); }), 1);
        QCOMPARE(capture.title(), u"joy_2"_s);
    }

    void withoutAPastilleThatWaitsPendingInputIsWiped()
    {
        Capture capture;
        GamepadDefinder &editor = *capture.editor;
        editor.onButtonChanged(3, true);
        overlayOf(editor).listeningPastille()->stopListening();
        editor.onAxisChanged(0, 90.0);
        QVERIFY(!capture.waits());
        stage::listen(editor);
        editor.onAxisChanged(0, 90.0);
        overlayOf(editor).listeningPastille()->stopListening();
        editor.onButtonChanged(4, true);
        QVERIFY(!capture.waits());
        // Of all that nothing is left: the next axis is alone.
        stage::listen(editor);
        editor.onAxisChanged(1, 50.0);
        const Boxes boxes;
        capture.resolve();
        QCOMPARE(capture.title(), u"joy_1"_s);
    }

    void whatIsNoInputWipesNothing()
    {
        Capture capture;
        GamepadDefinder &editor = *capture.editor;
        triggerTimerOf(editor).setInterval(60'000);
        editor.onButtonChanged(3, true);
        overlayOf(editor).listeningPastille()->stopListening();
        editor.onAxisChanged(0, 39.9);
        editor.onButtonChanged(3, false);
        QVERIFY(capture.waits());
        stage::listen(editor);
        capture.resolve();
        QCOMPARE(capture.title(), u"but_3"_s);
    }

    void aPastilleThatGaveUpMeanwhileLearnsNothing()
    {
        Capture capture;
        capture.pullTrigger();
        overlayOf(*capture.editor).listeningPastille()->stopListening();
        QVERIFY(capture.waits());
        QCOMPARE(ask(capture, [](QMessageBox *) {}), 0);
        QCOMPARE(capture.title(), u"Start"_s);
        stage::listen(*capture.editor);
        capture.pads.press(0, 1);
        capture.resolve();
        QCOMPARE(capture.title(), u"but_1"_s);
    }

    void withNothingPendingThePastilleGoesOnWaiting()
    {
        Capture capture;
        capture.resolve();
        QCOMPARE(capture.title(), u"Start"_s);
        QVERIFY(overlayOf(*capture.editor).listeningPastille());
        QVERIFY(!capture.waits());
    }

    void theProfileThatIsLeftTakesItsPendingInputAlong()
    {
        Capture capture;
        capture.pads.press(0, 1);
        QVERIFY(capture.waits());
        listOf(*capture.editor).setCurrentRow(0);
        QVERIFY(!capture.waits());
    }

    void theQuestionNamesBoth()
    {
        Capture capture;
        capture.pullTrigger();
        const int questions = ask(capture, [&](QMessageBox *box) {
            QCOMPARE(box->parentWidget(), capture.editor.get());
            QVERIFY(box->isModal());
            QCOMPARE(box->windowTitle(), question);
            QCOMPARE(box->text(), u"Cette g\u00c3\u00a2chette envoie un axe (joy_2) et un bouton (but_6).\n"
                                  u"Que souhaitez-vous utiliser ?"_s);
            QCOMPARE(box->buttons().size(), 2);
            QCOMPARE(box->buttonRole(buttonOf(*box, useAxis)), QMessageBox::AcceptRole);
            QCOMPARE(box->buttonRole(buttonOf(*box, useButton)), QMessageBox::DestructiveRole);
            QVERIFY(box->checkBox());
            QCOMPARE(box->checkBox()->text(), u"Se souvenir pour \u00c2\u00ab Pad \u00c2\u00bb"_s);
            QVERIFY(!box->checkBox()->isChecked());
            clickIn(box, useAxis);
        });
        QCOMPARE(questions, 1);
        QCOMPARE(capture.title(), u"joy_2"_s);
        QVERIFY(!capture.waits());
    }

    void anAnswerIsRememberedOnlyWhenTheUserSaysSo_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("key");
        QTest::newRow("axis") << useAxis << u"joy_2"_s;
        QTest::newRow("button") << useButton << u"but_6"_s;
    }
    void anAnswerIsRememberedOnlyWhenTheUserSaysSo()
    {
        QFETCH(QString, button);
        QFETCH(QString, key);
        Capture capture;
        capture.pullTrigger();
        QCOMPARE(ask(capture, [&](QMessageBox *box) { clickIn(box, button); }), 1);
        QCOMPARE(capture.title(), key);

        capture.listen();
        capture.pullTrigger();
        QCOMPARE(ask(capture,
                     [&](QMessageBox *box) {
                         QTest::mouseClick(box->checkBox(), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
                         QVERIFY(box->checkBox()->isChecked());
                         clickIn(box, button);
                     }),
                 1);
        QCOMPARE(capture.title(), key);

        capture.listen();
        capture.pullTrigger();
        QCOMPARE(ask(capture, [](QMessageBox *) {}), 0);
        QCOMPARE(capture.title(), key);
    }

    void anotherGamepadAndANewEditorAskAgain()
    {
        Capture capture;
        store(3, {.deviceName = u"Autre"_s});
        capture.editor = std::make_unique<GamepadDefinder>();
        GamepadDefinder &editor = *capture.editor;
        capture.pads.plug(1, u"Autre"_s);
        const auto remembering = [](QMessageBox *box) {
            box->checkBox()->click();
            clickIn(box, useButton);
        };
        const auto pull = [&](unsigned slot) {
            capture.listen();
            capture.pads.calibrate(slot);
            capture.pads.move(slot, triggerAxis, 80.0F);
            capture.pads.press(slot, triggerButton);
            capture.pads.move(slot, triggerAxis, 0.0F);
            capture.pads.release(slot, triggerButton);
            return ask(capture, remembering);
        };
        listOf(editor).setCurrentRow(1);
        QCOMPARE(pull(0), 1);
        listOf(editor).setCurrentRow(2);
        QCOMPARE(pull(1), 1);
        listOf(editor).setCurrentRow(1);
        QCOMPARE(pull(0), 0);
        capture.editor = std::make_unique<GamepadDefinder>();
        listOf(*capture.editor).setCurrentRow(1);
        QCOMPARE(pull(0), 1);
    }

    void aClosedQuestionIsAnAnswerForTheButton_data()
    {
        QTest::addColumn<bool>("byEscape");
        QTest::newRow("Escape") << true;
        QTest::newRow("the window's close") << false;
    }
    void aClosedQuestionIsAnAnswerForTheButton()
    {
        QFETCH(bool, byEscape);
        Capture capture;
        capture.pullTrigger();
        QCOMPARE(ask(capture,
                     [&](QMessageBox *box) {
                         box->checkBox()->click();
                         if (byEscape)
                             QTest::keyClick(box, Qt::Key_Escape);
                         else
                             box->close();
                     }),
                 1);
        QCOMPARE(capture.title(), u"but_6"_s);
        capture.listen();
        capture.pullTrigger();
        QCOMPARE(ask(capture, [](QMessageBox *) {}), 0);
        QCOMPARE(capture.title(), u"but_6"_s);
    }

    void aNameIsShownAsItIs()
    {
        Capture capture(u"A & <b>B</b>"_s);
        capture.pullTrigger();
        QString shown;
        QCOMPARE(ask(capture,
                     [&](QMessageBox *box) {
                         shown = box->checkBox()->text();
                         clickIn(box, useAxis);
                     }),
                 1);
        QCOMPARE(shown, u"Se souvenir pour \u00c2\u00ab A && <b>B</b> \u00c2\u00bb"_s);
    }

    void withoutItsGamepadTheQuestionHasNoName()
    {
        Capture capture;
        listOf(*capture.editor).setCurrentRow(0); // linked to none
        stage::listen(*capture.editor);
        capture.editor->onAxisChanged(triggerAxis, 90.0);
        capture.editor->onButtonChanged(triggerButton, true);
        QString shown;
        QCOMPARE(ask(capture,
                     [&](QMessageBox *box) {
                         shown = box->checkBox()->text();
                         clickIn(box, useButton);
                     }),
                 1);
        QCOMPARE(shown, u"Se souvenir pour \u00c2\u00ab  \u00c2\u00bb"_s);
        QCOMPARE(capture.title(), u"but_6"_s);
    }

    void aGamepadThatVanishesUnderTheQuestionLeavesItToBeAnswered()
    {
        Capture capture;
        capture.pullTrigger();
        QCOMPARE(ask(capture,
                     [&](QMessageBox *box) {
                         capture.pads.unplug(0);
                         clickIn(box, useAxis);
                     }),
                 1);
        QCOMPARE(capture.title(), u"joy_2"_s);
    }

    void aSecondQuestionComesOverTheFirst()
    {
        Capture capture;
        GamepadDefinder &editor = *capture.editor;
        capture.pullTrigger();
        QList<QPointer<QMessageBox>> boxes;
        QTimer watch;
        watch.callOnTimeout(&watch, [&] {
            auto *box = qobject_cast<QMessageBox *>(openDialog());
            if (!box || !box->isVisible())
                return;
            if (!boxes.contains(box)) {
                boxes.append(box);
                if (boxes.size() == 1)
                    editor.onButtonChanged(9, true); // the last axis still stands
                return;
            }
            // The one on top is answered first.
            if (box == boxes.value(1))
                clickIn(box, u"Utiliser le bouton (but_9)"_s);
            else if (boxes.size() == 2)
                clickIn(box, useAxis);
        });
        watch.start(1);
        capture.resolve();
        QCOMPARE(boxes.size(), 2);
        // The first to be answered was learned; nothing waited for the other any more.
        QCOMPARE(capture.title(), u"but_9"_s);
        QVERIFY(!capture.waits());
    }

    void questionsDoNotPileUpWithoutEnd()
    {
        Capture capture;
        GamepadDefinder &editor = *capture.editor;
        capture.pullTrigger();
        triggerTimerOf(editor).setInterval(1);
        qsizetype most = 0;
        int turns = 0;
        QTimer watch;
        watch.callOnTimeout(&watch, [&] {
            const auto open = editor.findChildren<QMessageBox *>(Qt::FindDirectChildrenOnly);
            most = std::max(most, open.size());
            if (open.isEmpty())
                return;
            if (++turns < 200) {
                editor.onAxisChanged(triggerAxis, 90.0);
                editor.onButtonChanged(triggerButton, true);
                return;
            }
            open.last()->close();
        });
        watch.start(1);
        capture.resolve();
        QVERIFY(most > 1);
        QVERIFY2(most <= 8, qPrintable(QString::number(most)));
        QVERIFY(turns >= 200);
        QCOMPARE(capture.title(), u"but_6"_s);
        // And the next trigger is asked about again.
        watch.stop();
        capture.listen();
        capture.pullTrigger();
        QCOMPARE(ask(capture, [](QMessageBox *box) { clickIn(box, useAxis); }), 1);
        QCOMPARE(capture.title(), u"joy_2"_s);
    }

    void whatWasLearnedReachesTheDisk()
    {
        Capture capture;
        const QString folder = capture.editor->entries().at(1).dirPath;
        capture.pads.press(0, 7);
        QTRY_COMPARE(titlesIn(folder), QStringList{u"but_7"_s});
    }
};

GAMEPAD_TEST_MAIN(TestEditorCapture)
#include "tst_editorcapture.moc"
