// SPDX-License-Identifier: MIT
// What the editor says when every gamepad has its profile, and which gamepad a new profile is linked to.
#include "editorstage.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>

#include <memory>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
const QString coverage = u"Information: Couverture compl\u00c3\u00a8te: Toutes les manettes actuellement "
                         u"connect\u00c3\u00a9es sont "
                         u"d\u00c3\u00a9j\u00c3\u00a0 associ\u00c3\u00a9es \u00c3\u00a0 des profils."_s;
} // namespace

class TestEditorCoverage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void init() { startAfresh(); }

    // The notice that all gamepads are linked.

    void fullCoverageIsSaidOnce()
    {
        store(1, {.deviceName = u"Pad"_s});
        Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        Boxes boxes;
        pads.plug(0);
        QCOMPARE(boxes.take(), QStringList{coverage});
        pads.unplug(0);
        pads.plug(0);
        settle();
        QCOMPARE(boxes.take(), QStringList());
    }

    void theNoticeComesLastAndOnceWhateverComesUnderIt()
    {
        store(1, {.deviceName = u"Pad"_s});
        Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        QStringList names;
        bool framed = false;
        QStringList more;
        const Answer<QMessageBox> notice(openDialog, [&](QMessageBox *) {
            names = namesIn(comboOf(editor));
            framed = isFramed(editor, 0);
            Boxes boxes; // of a second notice, which would open at once
            pads.unplug(0);
            pads.plug(0);
            more = boxes.take();
        });
        pads.plug(0);
        QCOMPARE(notice.given(), 1);
        QCOMPARE(names, QStringList{u"Pad"_s});
        QVERIFY(framed);
        QCOMPARE(more, QStringList());
    }

    void coverageNeedsEveryGamepadByItsExactName()
    {
        store(1, {.deviceName = u"Pad"_s});
        store(2, {.deviceName = u"AUTRE"_s});
        Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        Boxes boxes;
        pads.plug(1, u"Autre"_s);
        pads.plug(0);
        settle();
        QCOMPARE(boxes.take(), QStringList());
        pads.unplug(1);
        QCOMPARE(boxes.take(), QStringList{coverage});
    }

    void hiddenTheEditorSaysNothingOfCoverage()
    {
        store(1, {.deviceName = u"Pad"_s});
        Pads pads;
        pads.plug(0);
        GamepadDefinder editor;
        Boxes boxes;
        pads.unplug(0);
        pads.plug(0);
        settle();
        QCOMPARE(boxes.take(), QStringList());
        // Nor has it used up its one notice by that.
        QVERIFY(present(editor));
        pads.unplug(0);
        pads.plug(0);
        QCOMPARE(boxes.take(), QStringList{coverage});
    }

    void withoutGamepadsThereIsNoCoverage()
    {
        store(1, {.deviceName = u"Pad"_s});
        Pads pads;
        pads.plug(0, u"Libre"_s);
        GamepadDefinder editor;
        QVERIFY(present(editor));
        Boxes boxes;
        pads.unplug(0);
        settle();
        QCOMPARE(boxes.take(), QStringList());
    }

    void aGamepadWithoutANameIsNotCoveredByAnUnlinkedProfile()
    {
        store(1);
        Pads pads;
        GamepadDefinder editor;
        QVERIFY(present(editor));
        Boxes boxes;
        pads.plug(0, u""_s);
        settle();
        QCOMPARE(editor.realGamepads().size(), 1);
        QCOMPARE(boxes.take(), QStringList());
    }

    // The gamepad of a new profile.

    void aNewProfileIsLinkedToAFreeGamepad()
    {
        store(1, {.deviceName = u"Prise"_s});
        Pads pads;
        pads.plug(0, u"beta"_s);
        pads.plug(1, u"Prise"_s);
        pads.plug(2, u"Alpha"_s);
        GamepadDefinder editor;
        QVERIFY(present(editor));
        QStringList offered;
        QString words;
        bool editable = true;
        QWidget *parent = &editor;
        const auto chosen = created(editor, [&](QInputDialog *dialog) {
            offered = dialog->comboBoxItems();
            words = dialog->windowTitle() + u'|' + dialog->labelText() + u'|' + dialog->textValue();
            editable = dialog->isComboBoxEditable();
            parent = dialog->parentWidget();
            dialog->setTextValue(u"beta"_s);
            dialog->accept();
        });
        QCOMPARE(offered, (QStringList{u"Alpha"_s, u"beta"_s}));
        QCOMPARE(words, u"Association manette|Choisir la manette \u00c3\u00a0 lier :|Alpha"_s);
        QVERIFY(!editable);
        QCOMPARE(parent, nullptr);
        QCOMPARE(chosen, u"beta"_s);
        QCOMPARE(comboOf(editor).currentText(), u"beta"_s);
    }

    void aDeadManagersGamepadsAreNotOffered()
    {
        auto pads = std::make_unique<Pads>();
        pads->plug(0, u"Partie"_s);
        GamepadDefinder editor;
        QVERIFY(present(editor));
        pads = nullptr;
        scripted::reset();
        pads = std::make_unique<Pads>();
        pads->plug(0, u"Venue"_s);
        QStringList offered;
        const QString chosen = created(editor, [&](QInputDialog *dialog) {
            offered = dialog->comboBoxItems();
            dialog->accept();
        });
        QCOMPARE(offered, QStringList{u"Venue"_s});
        QCOMPARE(chosen, u"Venue"_s);
        QVERIFY(pads->isRunning(0));
    }

    void cancellingTheGamepadCreatesTheProfileUnlinked()
    {
        Pads pads;
        pads.plug(0);
        GamepadDefinder editor;
        QVERIFY(present(editor));
        bool asked = false;
        const QString chosen = created(editor, [&](QInputDialog *dialog) {
            asked = true;
            QTest::keyClick(dialog, Qt::Key_Escape);
        });
        QVERIFY(asked);
        QCOMPARE(editor.entries().size(), 1);
        QCOMPARE(chosen, QString());
    }

    void withoutAFreeGamepadThatIsSaidAndTheProfileIsUnlinked()
    {
        store(1, {.deviceName = u"Pad"_s});
        Pads pads;
        pads.plug(0);
        GamepadDefinder editor;
        QVERIFY(present(editor));
        const QWidget *parent = &editor;
        Boxes boxes([&](const QMessageBox &box) { parent = box.parentWidget(); });
        const QString chosen = created(editor, [](QInputDialog *) { QFAIL("there is nothing to choose"); });
        QCOMPARE(
            boxes.take(),
            QStringList{u"Information: Association manette: Toutes les manettes connect\u00c3\u00a9es sont "
                        u"d\u00c3\u00a9j\u00c3\u00a0 associ\u00c3\u00a9es.\nVous pouvez cr\u00c3\u00a9er un "
                        u"profil sans "
                        u"liaison et l\u00e2\u20ac\u2122associer plus tard."_s});
        QCOMPARE(parent, nullptr);
        QCOMPARE(editor.entries().size(), 2);
        QCOMPARE(chosen, QString());
    }

private:
    /// Creates a profile as a person does; `gamepad` gets the dialog that offers gamepads. Returns the link
    /// of the last profile then.
    static QString created(GamepadDefinder &editor, const std::function<void(QInputDialog *)> &gamepad)
    {
        const QString picture = temporaryHome() + "/chosen.png"_L1;
        QImage image(20, 20, QImage::Format_RGB32);
        image.fill(Qt::red);
        image.save(picture);
        const Answer<QFileDialog> file(openDialog, [&](QFileDialog *dialog) {
            auto *edit = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
            edit->setText(picture);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        int dialogs = 0;
        QTimer answers;
        answers.callOnTimeout(&answers, [&] {
            auto *dialog = qobject_cast<QInputDialog *>(openDialog());
            if (!dialog || !dialog->isVisible())
                return;
            if (++dialogs == 1)
                QTest::keyClick(dialog, Qt::Key_Return);
            else
                gamepad(dialog);
        });
        answers.start(1);
        editor.actionNew();
        return editor.entries().isEmpty() ? u"none"_s : editor.entries().last().deviceName;
    }
};

GAMEPAD_TEST_MAIN(TestEditorCoverage)
#include "tst_editorcoverage.moc"
