// SPDX-License-Identifier: MIT
// The menus of the overlay and of its pastilles.
#include "overlaymenus.h"

#include "testmain.h"

using namespace Qt::StringLiterals;

class TestInteractiveOverlayMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theEntriesFollowTheMode()
    {
        OverlayStage stage;
        QVERIFY(stage.exposed());
        QCOMPARE(choose(stage, QString()), QStringList({addition}));
        stage->setMode(InteractiveOverlay::Normal);
        QCOMPARE(choose(stage, QString()), QStringList({addition, u"-"_s, loading, exporting}));
        // No entry chosen: nothing happens.
        QVERIFY(stage.pastilles().isEmpty());
        QCOMPARE(stage.takeDirty(), 0);
    }

    void theMenuIsTheOverlaysAndOpensAtTheMouse()
    {
        OverlayStage stage;
        QWidget *parent = nullptr;
        QPoint corner;
        rightClick(stage, freeSurface, [&](const QMenu *menu) {
            parent = menu->parentWidget();
            corner = menu->pos();
        });
        QCOMPARE(parent, stage.overlay());
        QCOMPARE(corner, stage->mapToGlobal(freeSurface));
    }

    void noMenuIsLeftBehind()
    {
        OverlayStage stage;
        for (int i = 0; i < 3; ++i)
            choose(stage, QString());
        QTRY_VERIFY(stage->findChildren<QMenu *>().isEmpty());
    }

    void aPastilleIsAddedWhereTheMenuWasAskedFor_data()
    {
        QTest::addColumn<InteractiveOverlay::Mode>("mode");
        QTest::newRow("edit") << InteractiveOverlay::Edit;
        QTest::newRow("normal") << InteractiveOverlay::Normal;
    }

    void aPastilleIsAddedWhereTheMenuWasAskedFor()
    {
        QFETCH(const InteractiveOverlay::Mode, mode);
        OverlayStage stage;
        stage->setMode(mode);
        choose(stage, addition);
        QCOMPARE(stage.pastilles().size(), 1);
        QCOMPARE(stage.pastille(0)->geometry().topLeft() + QPoint(28, 28), freeSurface);
        QCOMPARE(stage.titles(), QStringList({u"Bouton 1"_s}));
        QCOMPARE(stage.takeDirty(), 2);
    }

    void aPastillesOwnMenuComesFirstInEditMode()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"a"_s);
        QVERIFY(!choose(stage, QString(), QPoint(100, 100)).contains(addition));
        stage->setMode(InteractiveOverlay::Normal);
        // Out of edit mode a pastille leaves it to the overlay, with the place of the mouse.
        QVERIFY(choose(stage, addition, QPoint(90, 110)).contains(addition));
        QCOMPARE(stage.pastille(1)->geometry().topLeft() + QPoint(28, 28), QPoint(90, 110));
    }

    void aPastilleIsRemovedByItsMenu()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"a"_s);
        stage.takeDirty();
        choose(stage, u"Supprimer"_s, QPoint(100, 100));
        QCOMPARE(stage.takeDirty(), 2);
        QTRY_VERIFY(stage.pastilles().isEmpty());
    }

    void aPastilleListensByItsMenu()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"a"_s);
        choose(stage, u"Écouter un nom (vert)"_s, QPoint(100, 100));
        QCOMPARE(stage->listeningPastille(), stage.pastille(0));
        choose(stage, u"Arrêter l'écoute"_s, QPoint(100, 100));
        QVERIFY(!stage->listeningPastille());
    }

    void anActivePastilleIsSetAndResetByItsMenu()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"a"_s);
        stage.takeDirty();
        choose(stage, u"Activer (unique, gris)"_s, QPoint(100, 100));
        QCOMPARE(stage.pastille(0)->state(), TouchArea::Active);
        QCOMPARE(stage.takeDirty(), 3);
        choose(stage, u"Désactiver (gris)"_s, QPoint(100, 100));
        QCOMPARE(stage.pastille(0)->state(), TouchArea::Normal);
        QCOMPARE(stage.takeDirty(), 3);
    }

    // What may happen while one is open.

    void theOverlayMayGoUnderItsMenu_data()
    {
        QTest::addColumn<bool>("later");
        QTest::newRow("at once") << false;
        QTest::newRow("by deferred deletion") << true;
    }

    void theOverlayMayGoUnderItsMenu()
    {
        QFETCH(const bool, later);
        OverlayStage stage;
        stage->setMode(InteractiveOverlay::Normal);
        rightClick(stage, freeSurface, [&](QMenu *) { removeOverlay(stage, later); });
        QVERIFY(!stage.overlay());
    }

    void anotherDocumentMayBeLoadedUnderAPastillesMenu()
    {
        OverlayStage stage;
        stage->addPastille(QPoint(100, 100), u"a"_s);
        rightClick(stage, QPoint(100, 100), [&](QMenu *menu) {
            QVERIFY(
                stage->fromJson(object("{'type':'InteractiveOverlay','version':2,'nodes':[{'title':'b'}]}")));
            stage.takeDirty();
            click(menu, u"Supprimer"_s);
        });
        QTRY_COMPARE(stage.titles(), QStringList({u"b"_s}));
        QCOMPARE(stage.takeDirty(), 0);
    }
};

GAMEPAD_TEST_MAIN(TestInteractiveOverlayMenu)
#include "tst_interactiveoverlaymenu.moc"
