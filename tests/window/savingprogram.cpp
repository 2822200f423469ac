// SPDX-License-Identifier: MIT
// A process that edits and saves in every tab of the window without end, to be killed in the middle of it.
// It takes the home that it is started in as it finds it.
#include "homedocuments.h"
#include "tickdriver.h"
#include "windowstage.h"

#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace
{
/// Says Ok to every box: a document that was cut short is told of.
void answerBoxes()
{
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (box && box->button(QMessageBox::Ok))
        box->button(QMessageBox::Ok)->click();
}

/// An edit of an action, which goes into every mapping too.
void saveAction(WindowStage &stage, int turn)
{
    stage.turnTo(u"Action designer"_s);
    if (stage.actionList().count() == 0)
        stage.press(u"+"_s);
    if (stage.cards().isEmpty())
        WindowStage::type(stage.actionName(), u"Action %1"_s.arg(turn));
    else
        WindowStage::type(stage.conditionOf(0),
                          u"%1 of %2"_s.arg(turn).arg(QCoreApplication::applicationPid()));
    expire(timerOf(stage.designer()));
}

void saveMapping(WindowStage &stage, int turn)
{
    stage.linkerOverlay().applyActionToTitle(turn % 2 ? u"B"_s : u"C"_s, u"but_9"_s);
    expire(timerOf(stage.linker(), u"saveTimer"_s));
}

void saveProfile(WindowStage &stage)
{
    stage.turnTo(u"Configuration"_s);
    stage.editorOverlay().removePastille(stage.editorOverlay().addPastille(QPoint(60, 60), u"passing"_s));
    expire(timerOf(stage.profiles(), u"saveTimer"_s));
}

void switchProfile(WindowStage &stage, int turn)
{
    QListWidget &profiles = stage.profileList();
    if (profiles.count() > 0)
        WindowStage::click(profiles, turn % profiles.count());
}
} // namespace

int main(int argc, char *argv[])
{
    const QApplication app(argc, argv);
    QApplication::setApplicationName(u"gamepad-test"_s);
    QApplication::setOrganizationName(u"velor"_s);
    QTimer boxes;
    boxes.callOnTimeout(&boxes, answerBoxes);
    boxes.start(1);

    WindowStage stage;
    stage.open();
    stage.surface().setServices(home::services());
    for (int turn = 1;; ++turn) {
        saveAction(stage, turn);
        saveMapping(stage, turn);
        saveProfile(stage);
        switchProfile(stage, turn);
        QCoreApplication::processEvents();
        if (turn == 1) {
            std::puts("saving");
            std::fflush(stdout);
        }
    }
}
