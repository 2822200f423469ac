// SPDX-License-Identifier: MIT
#pragma once

#include "answer.h"
#include "toucharea.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include <functional>
#include <utility>

/// A pastille at (100, 80) on a parent of 400 by 300 pixels, with room for a person's mouse all around it.
class PastilleStage
{
public:
    class Ground : public QWidget
    {
    public:
        using QWidget::QWidget;

        int presses = 0;
        QList<QPoint> menusAsked; ///< global positions

    protected:
        void mousePressEvent(QMouseEvent *) override { ++presses; }
        void contextMenuEvent(QContextMenuEvent *event) override { menusAsked.append(event->globalPos()); }
    };

    PastilleStage()
    {
        m_window.resize(900, 700);
        m_ground->setGeometry(250, 200, 400, 300);
        m_pastille->move(100, 80);
        m_window.show();
        m_exposed = QTest::qWaitForWindowExposed(&m_window);
        record();
    }
    Q_DISABLE_COPY_MOVE(PastilleStage)

    [[nodiscard]] bool exposed() const { return m_exposed; }
    [[nodiscard]] TouchArea *pastille() const { return m_pastille; }
    [[nodiscard]] Ground *ground() const { return m_ground; }
    /// Every signal of the pastille in the order of emission, as text, since the last call.
    QStringList takeJournal() { return std::exchange(m_journal, {}); }

    [[nodiscard]] Qt::CursorShape cursor() const { return m_pastille->cursor().shape(); }

    // Positions are the ground's, as the person sees them.
    void press(const QPoint &pos, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(window(), button, Qt::NoModifier, inWindow(pos));
    }
    void moveTo(const QPoint &pos) { QTest::mouseMove(window(), inWindow(pos)); }
    void release(const QPoint &pos, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(window(), button, Qt::NoModifier, inWindow(pos));
    }
    void drag(const QPoint &from, const QPoint &delta)
    {
        press(from);
        moveTo(from + delta);
        release(from + delta);
    }
    /// A pixel of the pastille's resize handle.
    [[nodiscard]] QPoint handle() const { return m_pastille->geometry().bottomRight() - QPoint(6, 6); }

private:
    QWindow *window() { return m_window.windowHandle(); }
    [[nodiscard]] QPoint inWindow(const QPoint &pos) const { return m_ground->mapTo(&m_window, pos); }

    void record()
    {
        const auto note = [this](const QString &text) { m_journal.append(text); };
        const auto self = [this](const TouchArea *area) {
            return area == m_pastille ? QStringLiteral("self") : QStringLiteral("other");
        };
        QObject *context = m_pastille;
        QObject::connect(
            m_pastille, &TouchArea::activated, context, [=, this](QUuid id, const QString &title) {
                note(QStringLiteral("activated %1 %2")
                         .arg(id == m_pastille->id() ? QStringLiteral("own") : QStringLiteral("foreign"),
                              title));
            });
        QObject::connect(m_pastille, &TouchArea::requestDelete, context,
                         [=](TouchArea *area) { note(QStringLiteral("requestDelete ") + self(area)); });
        QObject::connect(m_pastille, &TouchArea::requestStartListening, context, [=](TouchArea *area) {
            note(QStringLiteral("requestStartListening ") + self(area));
        });
        QObject::connect(m_pastille, &TouchArea::requestSetActive, context, [=](TouchArea *area, bool on) {
            note(QStringLiteral("requestSetActive %1 %2").arg(self(area)).arg(on));
        });
        QObject::connect(m_pastille, &TouchArea::moved, context, [=] { note(QStringLiteral("moved")); });
        QObject::connect(m_pastille, &TouchArea::resized, context, [=] { note(QStringLiteral("resized")); });
        QObject::connect(m_pastille, &TouchArea::stateChanged, context,
                         [=](TouchArea::State newState, TouchArea::State oldState) {
                             note(QStringLiteral("stateChanged %1 %2").arg(newState).arg(oldState));
                         });
        QObject::connect(m_pastille, &TouchArea::freeAspectChanged, context,
                         [=](bool on) { note(QStringLiteral("freeAspectChanged %1").arg(on)); });
        QObject::connect(m_pastille, &TouchArea::listeningCompleted, context,
                         [=](const QString &title) { note(QStringLiteral("listeningCompleted ") + title); });
    }

    QStringList m_journal;
    QWidget m_window;
    Ground *m_ground = new Ground(&m_window);
    QPointer<TouchArea> m_pastille = new TouchArea(m_ground);
    bool m_exposed = false;
};
