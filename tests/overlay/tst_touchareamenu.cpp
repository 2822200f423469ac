// SPDX-License-Identifier: MIT
#include "pastillestage.h"

#include "testmain.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;

namespace
{
const QPoint body(120, 100);

QWidget *openPopup()
{
    return QApplication::activePopupWidget();
}

QWidget *openDialog()
{
    return QApplication::activeModalWidget();
}

/// Each entry's text, "-" for a separator.
QStringList entries(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions())
        texts.append(action->isSeparator() ? u"-"_s : action->text());
    return texts;
}

/// Clicks the entry, or Escape if there is none of that text.
void click(QMenu *menu, const QString &text)
{
    for (QAction *action : menu->actions()) {
        if (action->text() == text) {
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
            return;
        }
    }
    QTest::keyClick(menu, Qt::Key_Escape);
}

/// A right click on the pastille; what the platform makes of it opens the menu, which `answer` gets after
/// the button was let go over it. Returns whether a menu came.
bool rightClick(PastilleStage &stage, const std::function<void(QMenu *)> &answer)
{
    bool released = false;
    const auto release = [&] {
        if (!std::exchange(released, true))
            stage.release(body, Qt::RightButton);
    };
    const Answer<QMenu> menu(openPopup, [&](QMenu *open) {
        release();
        answer(open);
    });
    // From elsewhere, as the pointer still stands where the last test left it.
    stage.moveTo(QPoint(0, 0));
    stage.moveTo(body);
    stage.press(body, Qt::RightButton);
    release();
    return menu.given() == 1;
}
} // namespace

class TestTouchAreaMenu : public QObject
{
    Q_OBJECT

private:
    /// Opens the menu by a right click and chooses the entry with `text`. Returns the entries that it had.
    QStringList choose(PastilleStage &stage, const QString &text)
    {
        QStringList seen;
        rightClick(stage, [&](QMenu *menu) {
            seen = entries(menu);
            click(menu, text);
        });
        return seen;
    }

    /// Chooses the renaming and answers its dialog.
    bool rename(PastilleStage &stage, const std::function<void(QInputDialog *)> &reply)
    {
        const Answer<QInputDialog> answer(openDialog, reply);
        choose(stage, u"Renommer…"_s);
        return answer.given() == 1;
    }

    static void typeName(QInputDialog *dialog, const QString &name)
    {
        auto *edit = dialog->findChild<QLineEdit *>();
        // What is there is selected, so that a person types over it.
        QVERIFY(!edit->text().isEmpty());
        QCOMPARE(edit->selectedText(), edit->text());
        if (name.isEmpty())
            QTest::keyClick(edit, Qt::Key_Backspace);
        QTest::keyClicks(edit, name);
    }

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theEntriesFollowStateAndShape_data()
    {
        QTest::addColumn<TouchArea::State>("state");
        QTest::addColumn<bool>("oval");
        QTest::addColumn<QStringList>("expected");
        const QString listen = u"Écouter un nom (vert)"_s;
        const QString listenNoMore = u"Arrêter l'écoute"_s;
        const QString activate = u"Activer (unique, gris)"_s;
        const QString deactivate = u"Désactiver (gris)"_s;
        const QString oval = u"Forme ovale"_s;
        const QString round = u"Forme circulaire"_s;
        const QString rename = u"Renommer…"_s;
        const QString remove = u"Supprimer"_s;
        QTest::newRow("normal, round")
            << TouchArea::Normal << false << QStringList{listen, activate, u"-"_s, oval, rename, remove};
        QTest::newRow("normal, oval")
            << TouchArea::Normal << true << QStringList{listen, activate, u"-"_s, round, rename, remove};
        QTest::newRow("listening, round")
            << TouchArea::Listening << false
            << QStringList{listenNoMore, activate, u"-"_s, oval, rename, remove};
        QTest::newRow("listening, oval")
            << TouchArea::Listening << true
            << QStringList{listenNoMore, activate, u"-"_s, round, rename, remove};
        QTest::newRow("active, round")
            << TouchArea::Active << false << QStringList{listen, deactivate, u"-"_s, oval, rename, remove};
        QTest::newRow("active, oval")
            << TouchArea::Active << true << QStringList{listen, deactivate, u"-"_s, round, rename, remove};
    }

    void theEntriesFollowStateAndShape()
    {
        QFETCH(const TouchArea::State, state);
        QFETCH(const bool, oval);
        QFETCH(const QStringList, expected);
        PastilleStage stage;
        QVERIFY(stage.exposed());
        stage.pastille()->setFreeAspect(oval);
        stage.pastille()->setState(state);
        stage.takeJournal();
        QCOMPARE(choose(stage, QString()), expected);
        // No entry chosen: nothing happens.
        QCOMPARE(stage.takeJournal(), QStringList());
        QCOMPARE(stage.pastille()->state(), state);
        QCOMPARE(stage.ground()->menusAsked, QList<QPoint>());
    }

    void theMenuIsThePastillesAndOpensAtTheMouse()
    {
        PastilleStage stage;
        QWidget *parent = nullptr;
        QPoint corner;
        QVERIFY(rightClick(stage, [&](const QMenu *menu) {
            parent = menu->parentWidget();
            corner = menu->pos();
        }));
        QCOMPARE(parent, stage.pastille());
        QCOMPARE(corner, stage.ground()->mapToGlobal(body));
    }

    void noMenuIsLeftBehind()
    {
        PastilleStage stage;
        for (int i = 0; i < 3; ++i)
            choose(stage, u"Activer (unique, gris)"_s);
        QTRY_VERIFY(stage.pastille()->findChildren<QMenu *>().isEmpty());
    }

    void outOfEditModeTheOverlayHasTheMenu()
    {
        PastilleStage stage;
        stage.pastille()->setEditMode(false);
        QVERIFY(!rightClick(stage, [](QMenu *) {}));
        QCOMPARE(stage.ground()->menusAsked, QList<QPoint>({stage.ground()->mapToGlobal(body)}));
        QVERIFY(!QApplication::activePopupWidget());
        QCOMPARE(stage.takeJournal(), QStringList());
    }

    void listeningIsAskedForAndNotBegun()
    {
        PastilleStage stage;
        choose(stage, u"Écouter un nom (vert)"_s);
        QCOMPARE(stage.takeJournal(), QStringList({u"requestStartListening self"_s}));
        QCOMPARE(stage.pastille()->state(), TouchArea::Normal);
        stage.pastille()->setState(TouchArea::Active);
        stage.takeJournal();
        choose(stage, u"Écouter un nom (vert)"_s);
        QCOMPARE(stage.takeJournal(), QStringList({u"requestStartListening self"_s}));
        QCOMPARE(stage.pastille()->state(), TouchArea::Active);
    }

    void listeningIsStoppedAtOnce()
    {
        PastilleStage stage;
        stage.pastille()->startListening();
        stage.takeJournal();
        choose(stage, u"Arrêter l'écoute"_s);
        QCOMPARE(stage.takeJournal(), QStringList({u"stateChanged 0 1"_s}));
        QCOMPARE(stage.pastille()->state(), TouchArea::Normal);
    }

    void activityIsAskedFor_data()
    {
        QTest::addColumn<TouchArea::State>("state");
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("asked");
        QTest::newRow("from normal") << TouchArea::Normal << u"Activer (unique, gris)"_s
                                     << u"requestSetActive self 1"_s;
        QTest::newRow("from listening")
            << TouchArea::Listening << u"Activer (unique, gris)"_s << u"requestSetActive self 1"_s;
        QTest::newRow("from active") << TouchArea::Active << u"Désactiver (gris)"_s
                                     << u"requestSetActive self 0"_s;
    }

    void activityIsAskedFor()
    {
        QFETCH(const TouchArea::State, state);
        QFETCH(const QString, entry);
        QFETCH(const QString, asked);
        PastilleStage stage;
        stage.pastille()->setState(state);
        stage.takeJournal();
        choose(stage, entry);
        QCOMPARE(stage.takeJournal(), QStringList({asked}));
        QCOMPARE(stage.pastille()->state(), state);
    }

    void theShapeFlips()
    {
        PastilleStage stage;
        choose(stage, u"Forme ovale"_s);
        QVERIFY(stage.pastille()->freeAspect());
        QCOMPARE(stage.pastille()->size(), QSize(56, 56));
        stage.pastille()->setFixedSize(90, 40);
        choose(stage, u"Forme circulaire"_s);
        QVERIFY(!stage.pastille()->freeAspect());
        QCOMPARE(stage.pastille()->size(), QSize(90, 90));
        QCOMPARE(stage.takeJournal(), QStringList({u"freeAspectChanged 1"_s, u"freeAspectChanged 0"_s}));
    }

    void deletionIsAskedFor()
    {
        PastilleStage stage;
        choose(stage, u"Supprimer"_s);
        QCOMPARE(stage.takeJournal(), QStringList({u"requestDelete self"_s}));
        QVERIFY(stage.pastille());
    }

    void theDialogAsksForAName()
    {
        PastilleStage stage;
        stage.pastille()->setTitle(u"Croix"_s);
        QVERIFY(rename(stage, [&](const QInputDialog *dialog) {
            QCOMPARE(dialog->windowTitle(), u"Renommer la pastille"_s);
            QCOMPARE(dialog->labelText(), u"Nom :"_s);
            QCOMPARE(dialog->textValue(), u"Croix"_s);
            QCOMPARE(dialog->textEchoMode(), QLineEdit::Normal);
            QCOMPARE(dialog->parentWidget(), stage.pastille());
        }));
        QCOMPARE(stage.pastille()->title(), u"Croix"_s);
    }

    void aTypedNameIsTaken_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("title");
        QTest::newRow("a name") << u"Triangle"_s << u"Triangle"_s;
        QTest::newRow("trimmed") << u"  L 1 "_s << u"L 1"_s;
        QTest::newRow("the same") << u"Bouton"_s << u"Bouton"_s;
        QTest::newRow("blank") << u"   "_s << u"Bouton"_s;
        QTest::newRow("empty") << QString() << u"Bouton"_s;
    }

    void aTypedNameIsTaken()
    {
        QFETCH(const QString, typed);
        PastilleStage stage;
        QVERIFY(rename(stage, [&](QInputDialog *dialog) {
            typeName(dialog, typed);
            QTest::keyClick(dialog, Qt::Key_Return);
        }));
        QTEST(stage.pastille()->title(), "title");
        QCOMPARE(stage.takeJournal(), QStringList());
    }

    void aRefusedNameIsNotTaken()
    {
        PastilleStage stage;
        QVERIFY(rename(stage, [&](QInputDialog *dialog) {
            typeName(dialog, u"Triangle"_s);
            QTest::keyClick(dialog, Qt::Key_Escape);
        }));
        QCOMPARE(stage.pastille()->title(), u"Bouton"_s);
        QVERIFY(rename(stage, [&](QInputDialog *dialog) {
            typeName(dialog, u"Triangle"_s);
            QTest::mouseClick(dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel),
                              Qt::LeftButton);
        }));
        QCOMPARE(stage.pastille()->title(), u"Bouton"_s);
    }

    void renamingEndsListening()
    {
        PastilleStage stage;
        stage.pastille()->startListening();
        stage.takeJournal();
        const auto accept = [](const QString &name) {
            return [name](QInputDialog *dialog) {
                typeName(dialog, name);
                QTest::mouseClick(dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok),
                                  Qt::LeftButton);
            };
        };
        QVERIFY(rename(stage, accept(u" "_s)));
        QCOMPARE(stage.takeJournal(), QStringList());
        QCOMPARE(stage.pastille()->state(), TouchArea::Listening);
        QVERIFY(rename(stage, accept(u"Start"_s)));
        QCOMPARE(stage.takeJournal(), QStringList({u"stateChanged 0 1"_s, u"listeningCompleted Start"_s}));
    }

    void whatAnOpenMenuSaysIsDone()
    {
        // An input is learned between the opening of the menu and the click.
        PastilleStage stage;
        stage.pastille()->startListening();
        QVERIFY(rightClick(stage, [&](QMenu *menu) {
            stage.pastille()->setTitle(u"but_4"_s);
            stage.takeJournal();
            click(menu, u"Arrêter l'écoute"_s);
        }));
        QCOMPARE(stage.takeJournal(), QStringList());
        QCOMPARE(stage.pastille()->state(), TouchArea::Normal);
    }

    void aPastilleMayGoUnderItsOpenMenu_data()
    {
        QTest::addColumn<bool>("later");
        QTest::newRow("at once") << false;
        QTest::newRow("by deferred deletion") << true;
    }

    void aPastilleMayGoUnderItsOpenMenu()
    {
        QFETCH(const bool, later);
        PastilleStage stage;
        QPointer<QMenu> seen;
        QVERIFY(rightClick(stage, [&](QMenu *menu) {
            seen = menu;
            if (later) {
                stage.pastille()->deleteLater();
                QTRY_VERIFY(!stage.pastille());
            } else {
                delete stage.pastille();
            }
        }));
        QVERIFY(!stage.pastille());
        QVERIFY(!seen);
        QCOMPARE(stage.takeJournal(), QStringList());
    }

    void aPastilleMayGoUnderItsOpenDialog_data() { aPastilleMayGoUnderItsOpenMenu_data(); }

    void aPastilleMayGoUnderItsOpenDialog()
    {
        QFETCH(const bool, later);
        PastilleStage stage;
        QVERIFY(rename(stage, [&](QInputDialog *) {
            if (later) {
                stage.pastille()->deleteLater();
                QTRY_VERIFY(!stage.pastille());
            } else {
                delete stage.pastille();
            }
        }));
        QVERIFY(!stage.pastille());
        QCOMPARE(stage.takeJournal(), QStringList());
    }

    void aPastilleMayGoWhenItsDeletionIsAskedFor()
    {
        PastilleStage stage;
        connect(stage.pastille(), &TouchArea::requestDelete, this, [](TouchArea *self) { delete self; });
        choose(stage, u"Supprimer"_s);
        QVERIFY(!stage.pastille());
    }
};

GAMEPAD_TEST_MAIN(TestTouchAreaMenu)
#include "tst_touchareamenu.moc"
