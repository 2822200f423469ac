// SPDX-License-Identifier: MIT
#pragma once

#include "overlaylines.h"

#include <QtGui/QImage>
#include <QtGui/QPaintEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

/// A canvas of 400 by 300 pixels on a shown window, with a plain widget beside it: once that one has been
/// painted, the canvas has been too, if it was asked to.
class WatchedCanvas
{
public:
    class Canvas : public OverlayLines
    {
    public:
        using OverlayLines::OverlayLines;

        int filtered = 0;
        int wholePaints = 0;

        bool eventFilter(QObject *watched, QEvent *event) override
        {
            ++filtered;
            return OverlayLines::eventFilter(watched, event);
        }

    protected:
        void paintEvent(QPaintEvent *event) override
        {
            if (event->region() == QRegion(rect()))
                ++wholePaints;
            OverlayLines::paintEvent(event);
        }
    };

    WatchedCanvas()
    {
        m_window.resize(440, 300);
        m_canvas->setGeometry(0, 0, 400, 300);
        m_neighbour.setGeometry(410, 0, 20, 20);
        m_window.show();
        m_exposed = QTest::qWaitForWindowExposed(&m_window);
        settle();
    }
    ~WatchedCanvas() { delete m_canvas; }
    Q_DISABLE_COPY_MOVE(WatchedCanvas)

    [[nodiscard]] bool exposed() const { return m_exposed; }
    [[nodiscard]] Canvas *canvas() const { return m_canvas; }
    QWidget *window() { return &m_window; }

    /// A shown, unpainted child of the canvas.
    QWidget *endpoint(const QRect &geometry)
    {
        auto *widget = new QWidget(m_canvas);
        widget->setGeometry(geometry);
        widget->show();
        settle();
        return widget;
    }

    /// How often the whole canvas is painted because of `act`: several requests are one painting.
    template <typename Act>
    int paintsAfter(Act act)
    {
        settle();
        m_canvas->wholePaints = 0;
        act();
        settle();
        return m_canvas->wholePaints;
    }

    /// How often the canvas is asked about one event of `widget` that it has no business with.
    int timesFiltered(QWidget *widget)
    {
        m_canvas->filtered = 0;
        QEvent event(QEvent::User);
        QApplication::sendEvent(widget, &event);
        return m_canvas->filtered;
    }

    /// The canvas as it shows, on a transparent page.
    QImage image() { return m_canvas->grab().toImage().convertToFormat(QImage::Format_ARGB32); }

    /// Whether a line of `colour`, with a gap of 6, runs under `target`. Takes an underline for a line.
    bool isUnderlined(const QWidget *target, const QColor &colour)
    {
        const QRect below = target->geometry();
        return image().pixelColor(below.center().x(), below.bottom() + 6) == colour;
    }

private:
    class Neighbour : public QWidget
    {
    public:
        using QWidget::QWidget;
        int paints = 0;

    protected:
        void paintEvent(QPaintEvent *) override { ++paints; }
    };

    void settle()
    {
        m_neighbour.paints = 0;
        m_neighbour.update();
        QVERIFY(QTest::qWaitFor([this] { return m_neighbour.paints > 0; }));
    }

    QWidget m_window;
    Canvas *m_canvas = new Canvas(&m_window);
    Neighbour m_neighbour{&m_window};
    bool m_exposed = false;
};
