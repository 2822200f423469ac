// SPDX-License-Identifier: MIT
#include "toolboxstage.h"

#include "entries.h"
#include "testmain.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QWindow>
#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;

namespace
{
// Remembers which mouse events came through to it.
class Surface : public QObject
{
public:
    explicit Surface(QWidget *watched) { watched->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() >= QEvent::MouseButtonPress && event->type() <= QEvent::MouseMove)
            reached.append(event->type());
        return QObject::eventFilter(watched, event);
    }

    QList<QEvent::Type> reached;
};
} // namespace

// Events go to the window, as from a real mouse: who gets them is part of what is tested.
class TestActionToolBoxMouse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }
    void cleanup() { runDeferred(); }

    void aDragMovesTheFrameAndSaysSoAtEachStep()
    {
        ToolBoxStage stage;
        stage.show();
        QWindow *window = stage.window().windowHandle();
        const QSignalSpy moved(&stage.box(), &ActionToolBox::moved);
        const QSignalSpy durty(&stage.box(), &ActionToolBox::durty);
        const QRect start = stage.box().geometry();
        const QPoint grip = stage.handle();

        QTest::mousePress(window, Qt::LeftButton, {}, grip);
        QCOMPARE(stage.box().cursor().shape(), Qt::ClosedHandCursor);
        QCOMPARE(moved.count(), 0);
        QTest::mouseMove(window, grip + QPoint(10, 5));
        QCOMPARE(stage.box().geometry(), start.translated(10, 5));
        QCOMPARE(moved.count(), 1);
        QTest::mouseMove(window, grip + QPoint(-30, 40));
        QCOMPARE(stage.box().geometry(), start.translated(-30, 40));
        QCOMPARE(moved.count(), 2);
        QTest::mouseRelease(window, Qt::LeftButton, {}, grip + QPoint(-30, 40));
        QCOMPARE(stage.box().cursor().shape(), Qt::OpenHandCursor);
        QTest::mouseMove(window, grip);
        QCOMPARE(stage.box().geometry(), start.translated(-30, 40));
        QCOMPARE(moved.count(), 2);
        QCOMPARE(durty.count(), 0);
    }

    void aDragLeavesTheParentUnclamped()
    {
        ToolBoxStage stage;
        stage.show();
        QWindow *window = stage.window().windowHandle();
        const QRect start = stage.box().geometry();
        const QPoint grip = stage.handle();
        QTest::mousePress(window, Qt::LeftButton, {}, grip);
        QTest::mouseMove(window, grip - QPoint(500, 300));
        QTest::mouseRelease(window, Qt::LeftButton, {}, grip - QPoint(500, 300));
        QCOMPARE(stage.box().geometry(), start.translated(-500, -300));
    }

    void theLabelIsAHandleAndTheComboIsNot()
    {
        ToolBoxStage stage;
        stage.show();
        QWindow *window = stage.window().windowHandle();
        const QSignalSpy moved(&stage.box(), &ActionToolBox::moved);
        const auto drag = [&](const QWidget &from) {
            const QPoint grip = from.mapTo(&stage.window(), from.rect().center());
            QTest::mousePress(window, Qt::LeftButton, {}, grip);
            QTest::mouseMove(window, grip + QPoint(7, 7));
            QTest::mouseRelease(window, Qt::LeftButton, {}, grip + QPoint(7, 7));
        };
        drag(stage.header());
        QCOMPARE(moved.count(), 1);
        drag(stage.combo());
        QCOMPARE(moved.count(), 1);
    }

    void otherButtonsDoNotDrag_data()
    {
        QTest::addColumn<Qt::MouseButton>("button");
        QTest::newRow("right") << Qt::RightButton;
        QTest::newRow("middle") << Qt::MiddleButton;
    }

    void otherButtonsDoNotDrag()
    {
        QFETCH(Qt::MouseButton, button);
        ToolBoxStage stage;
        const Surface surface(&stage.window());
        stage.show();
        QWindow *window = stage.window().windowHandle();
        const QSignalSpy moved(&stage.box(), &ActionToolBox::moved);
        const QRect start = stage.box().geometry();
        QTest::mousePress(window, button, {}, stage.handle());
        QTest::mouseMove(window, stage.handle() + QPoint(10, 5));
        QTest::mouseRelease(window, button, {}, stage.handle() + QPoint(10, 5));
        QCOMPARE(stage.box().geometry(), start);
        QCOMPARE(moved.count(), 0);
        QCOMPARE(stage.box().cursor().shape(), Qt::OpenHandCursor);
        QCOMPARE(surface.reached,
                 (QList{QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease}));
    }

    void anotherButtonDoesNotEndADrag()
    {
        ToolBoxStage stage;
        stage.show();
        QWindow *window = stage.window().windowHandle();
        const QRect start = stage.box().geometry();
        const QPoint grip = stage.handle();
        QTest::mousePress(window, Qt::LeftButton, {}, grip);
        QTest::mousePress(window, Qt::RightButton, {}, grip);
        QTest::mouseRelease(window, Qt::RightButton, {}, grip);
        QCOMPARE(stage.box().cursor().shape(), Qt::ClosedHandCursor);
        QTest::mouseMove(window, grip + QPoint(4, 4));
        QCOMPARE(stage.box().geometry(), start.translated(4, 4));
        QTest::mouseRelease(window, Qt::LeftButton, {}, grip + QPoint(4, 4));
    }

    void aDragTakesItsEventsForItself()
    {
        ToolBoxStage stage;
        const Surface surface(&stage.window());
        stage.show();
        QWindow *window = stage.window().windowHandle();
        QTest::mousePress(window, Qt::LeftButton, {}, stage.handle());
        QTest::mouseRelease(window, Qt::LeftButton, {}, stage.handle());
        QCOMPARE(surface.reached, QList<QEvent::Type>());
    }

    void whatIsNotEditableIsNotDragged()
    {
        ToolBoxStage stage;
        const Surface surface(&stage.window());
        stage.box().setEditable(false);
        stage.show();
        QWindow *window = stage.window().windowHandle();
        const QRect start = stage.box().geometry();
        QTest::mousePress(window, Qt::LeftButton, {}, stage.handle());
        QTest::mouseMove(window, stage.handle() + QPoint(10, 5));
        QTest::mouseRelease(window, Qt::LeftButton, {}, stage.handle() + QPoint(10, 5));
        QCOMPARE(stage.box().geometry(), start);
        QCOMPARE(stage.box().cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(surface.reached,
                 (QList{QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease}));
    }

    void aDragEndsWhenEditingDoes()
    {
        ToolBoxStage stage;
        stage.show();
        QWindow *window = stage.window().windowHandle();
        const QPoint grip = stage.handle();
        QTest::mousePress(window, Qt::LeftButton, {}, grip);
        QTest::mouseMove(window, grip + QPoint(4, 4));
        const QRect left = stage.box().geometry();
        stage.box().setEditable(false);
        QTest::mouseMove(window, grip + QPoint(20, 20));
        QTest::mouseRelease(window, Qt::LeftButton, {}, grip + QPoint(20, 20));
        stage.box().setEditable(true);
        QTest::mousePress(window, Qt::RightButton, {}, grip);
        QTest::mouseMove(window, grip + QPoint(30, 30));
        QTest::mouseRelease(window, Qt::RightButton, {}, grip);
        QCOMPARE(stage.box().geometry(), left);
    }

    void aDoubleClickOpensTheSettings()
    {
        ToolBoxStage stage;
        const Surface surface(&stage.window());
        stage.show();
        QTest::mouseDClick(stage.window().windowHandle(), Qt::LeftButton, {}, stage.handle());
        QVERIFY(ToolBoxStage::panel());
        QVERIFY(ToolBoxStage::panel()->isVisible());
        QCOMPARE(stage.box().cursor().shape(), Qt::OpenHandCursor);
        QVERIFY(!surface.reached.contains(QEvent::MouseButtonDblClick));
    }

    void aDoubleClickOnTheLabelOpensTheSettings()
    {
        ToolBoxStage stage;
        stage.show();
        QTest::mouseDClick(stage.window().windowHandle(), Qt::LeftButton, {},
                           stage.header().mapTo(&stage.window(), stage.header().rect().center()));
        QVERIFY(ToolBoxStage::panel() && ToolBoxStage::panel()->isVisible());
    }

    void aDoubleClickLeavesNoDragBehind()
    {
        ToolBoxStage stage;
        stage.show();
        QWindow *window = stage.window().windowHandle();
        const QRect start = stage.box().geometry();
        QTest::mouseDClick(window, Qt::LeftButton, {}, stage.handle());
        ToolBoxStage::panel()->close();
        QTest::mousePress(window, Qt::RightButton, {}, stage.handle());
        QTest::mouseMove(window, stage.handle() + QPoint(10, 5));
        QTest::mouseRelease(window, Qt::RightButton, {}, stage.handle());
        QCOMPARE(stage.box().geometry(), start);
    }

    void aDoubleClickEndsADragThatHasNoReleaseYet()
    {
        ToolBoxStage stage;
        stage.show();
        QWindow *window = stage.window().windowHandle();
        ActionToolBox &box = stage.box();
        const QSignalSpy moved(&box, &ActionToolBox::moved);
        const QRect start = box.geometry();
        const QPoint grip = stage.handle();
        const auto send = [&](QEvent::Type type, Qt::MouseButton button, const QPoint &at) {
            QMouseEvent event(type, box.mapFrom(&stage.window(), at), stage.window().mapToGlobal(at), button,
                              Qt::LeftButton, {});
            QCoreApplication::sendEvent(&box, &event);
        };

        QTest::mousePress(window, Qt::LeftButton, {}, grip);
        QCOMPARE(box.cursor().shape(), Qt::ClosedHandCursor);
        send(QEvent::MouseButtonDblClick, Qt::LeftButton, grip);
        QCOMPARE(box.cursor().shape(), Qt::OpenHandCursor);
        QVERIFY(ToolBoxStage::panel() && ToolBoxStage::panel()->isVisible());
        ToolBoxStage::panel()->close();
        send(QEvent::MouseMove, Qt::NoButton, grip + QPoint(10, 5));
        QCOMPARE(box.geometry(), start);
        QCOMPARE(moved.count(), 0);
        QTest::mouseRelease(window, Qt::LeftButton, {}, grip);
    }

    void otherDoubleClicksOpenNothing_data()
    {
        QTest::addColumn<bool>("editable");
        QTest::addColumn<Qt::MouseButton>("button");
        QTest::newRow("not editable") << false << Qt::LeftButton;
        QTest::newRow("right button") << true << Qt::RightButton;
    }

    void otherDoubleClicksOpenNothing()
    {
        QFETCH(bool, editable);
        QFETCH(Qt::MouseButton, button);
        ToolBoxStage stage;
        const Surface surface(&stage.window());
        stage.box().setEditable(editable);
        stage.show();
        QTest::mouseDClick(stage.window().windowHandle(), button, {}, stage.handle());
        QVERIFY(!ToolBoxStage::panel());
        QVERIFY(surface.reached.contains(QEvent::MouseButtonDblClick));
    }
};

GAMEPAD_TEST_MAIN(TestActionToolBoxMouse)
#include "tst_actiontoolboxmouse.moc"
