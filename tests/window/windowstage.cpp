// SPDX-License-Identifier: MIT
#include "windowstage.h"

#include "argumentform.h"
#include "gamepadmanager.h"
#include "scriptedjoystick.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QScrollArea>

#include <algorithm>

using namespace Qt::StringLiterals;

WindowStage::WindowStage()
{
    scripted::reset();
    // An editor would make a manager that outlives the stage.
    GamepadManager::instance(&m_family)->stopTimers();
}

WindowStage::~WindowStage()
{
    m_window.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void WindowStage::open()
{
    m_window = std::make_unique<QMainWindow>();
    auto surface = std::make_unique<ManetteConfigurationWidget>();
    m_surface = surface.release();
    m_window->setCentralWidget(m_surface);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

QList<ActionTaskBlockWidget *> WindowStage::cards()
{
    QList<ActionTaskBlockWidget *> cards;
    const QLayout *rows = designer().findChild<QScrollArea *>(u"stepsScrollArea"_s)->widget()->layout();
    for (int i = 0; i < rows->count(); ++i)
        cards.append(rows->itemAt(i)->widget()->findChild<ActionTaskBlockWidget *>());
    return cards;
}

QList<QLineEdit *> WindowStage::argumentsOf(qsizetype card)
{
    QList<QLineEdit *> edits;
    const auto &fields = cards().at(card)->findChild<ArgumentForm *>()->fields();
    for (const ParamField &field : fields)
        edits.append(field.edit);
    return edits;
}

QLineEdit &WindowStage::conditionOf(qsizetype card)
{
    return *cards().at(card)->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
}

void WindowStage::turnTo(const QString &tab)
{
    auto *tabs = m_surface->findChild<QTabWidget *>();
    for (int i = 0; i < tabs->count(); ++i) {
        if (tabs->tabText(i) == tab) {
            tabs->setCurrentIndex(i);
            return;
        }
    }
    QFAIL(qPrintable(tab));
}

void WindowStage::click(QListWidget &list, int row)
{
    list.scrollToItem(list.item(row));
    const QRect rect = list.visualItemRect(list.item(row));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(rect.left() + 20, rect.center().y()));
}

void WindowStage::press(const QString &text)
{
    const auto buttons = designer().findChildren<QToolButton *>();
    const auto button = std::ranges::find(buttons, text, &QToolButton::text);
    QVERIFY2(button != buttons.end(), qPrintable(text));
    QTest::mouseClick(*button, Qt::LeftButton);
}

void WindowStage::type(QLineEdit &field, const QString &text)
{
    field.setFocus();
    field.selectAll();
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
}

bool WindowStage::rests()
{
    const auto timers = m_surface->findChildren<QTimer *>();
    return std::ranges::none_of(
        timers, [](const QTimer *timer) { return timer->isSingleShot() && timer->isActive(); });
}

QJsonArray WindowStage::linkedBridges()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return linkerOverlay().exportBridges()["bridges"_L1].toArray();
}
