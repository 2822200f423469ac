// SPDX-License-Identifier: MIT
#include "manychildren.h"

#include "testmain.h"

#include <QtGui/QPainter>

namespace
{
/// A widget that counts what reaches it.
class Child : public QWidget
{
public:
    using QWidget::QWidget;

    int presses = 0;
    int paints = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
    void paintEvent(QPaintEvent *) override
    {
        ++paints;
        QPainter(this).fillRect(rect(), Qt::red);
    }
};
} // namespace

class TestManyChildren : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void childrenMadeMeanwhileArePaintedAndTakeTheMouse()
    {
        QWidget window;
        window.resize(200, 100);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QList<Child *> children;
        {
            const ManyChildren many(&window);
            for (int i = 0; i < 10; ++i) {
                children.append(new Child(&window));
                children.last()->setGeometry(i * 20, 0, 18, 18);
                children.last()->show();
            }
        }
        QCOMPARE(window.children().size(), 10);
        for (const Child *child : std::as_const(children))
            QTRY_VERIFY(child->paints > 0);
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(65, 5));
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(65, 5));
        QCOMPARE(children[3]->presses, 1);
    }

    void childrenChangedMeanwhileArePaintedAnew()
    {
        QWidget window;
        window.resize(200, 100);
        Child inside(&window);
        inside.setGeometry(20, 20, 20, 20);
        Child sticksOut(&window);
        sticksOut.setGeometry(-10, -10, 20, 20);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTRY_VERIFY(inside.paints > 0 && sticksOut.paints > 0);
        QCoreApplication::processEvents();
        inside.paints = 0;
        sticksOut.paints = 0;
        {
            const ManyChildren many(&window);
            inside.update();
            sticksOut.update();
        }
        QTRY_VERIFY(inside.paints > 0);
        QTRY_VERIFY(sticksOut.paints > 0);
    }

    void whoIgnoredTheMouseBeforeGoesOn_data()
    {
        QTest::addColumn<bool>("ignores");
        QTest::newRow("takes it") << false;
        QTest::newRow("ignores it") << true;
    }

    void whoIgnoredTheMouseBeforeGoesOn()
    {
        QFETCH(const bool, ignores);
        QWidget parent;
        parent.setAttribute(Qt::WA_TransparentForMouseEvents, ignores);
        {
            const ManyChildren many(&parent);
            const ManyChildren more(&parent);
        }
        QCOMPARE(parent.testAttribute(Qt::WA_TransparentForMouseEvents), ignores);
        QVERIFY(parent.children().isEmpty());
    }

    void aHiddenParentStaysHidden()
    {
        QWidget parent;
        Child child(&parent);
        {
            const ManyChildren many(&parent);
            child.update();
        }
        QVERIFY(!parent.isVisible());
        QVERIFY(!child.isVisible());
    }
};

GAMEPAD_TEST_MAIN(TestManyChildren)
#include "tst_manychildren.moc"
