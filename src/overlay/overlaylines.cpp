// SPDX-License-Identifier: MIT
#include "overlaylines.h"

#include <QtCore/QEvent>

#include <algorithm>
#include <utility>

OverlayLines::OverlayLines(QWidget *parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_NoSystemBackground, true);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setAttribute(Qt::WA_AlwaysStackOnTop, true);
    setAttribute(Qt::WA_MouseTracking, true);
}

void OverlayLines::setBackgroundPixmap(const QPixmap &pixmap)
{
    m_backgroundPixmap = pixmap;
    update();
    Q_EMIT backgroundPixmapChanged();
}

void OverlayLines::setBackgroundScaleMode(BackgroundScaleMode mode)
{
    if (mode == m_backgroundScaleMode)
        return;
    m_backgroundScaleMode = mode;
    update();
    Q_EMIT backgroundScaleModeChanged();
}

int OverlayLines::addLine(QWidget *from, QWidget *to, int gap, const QColor &color, double width)
{
    watch(from);
    watch(to);
    OverlayLine line;
    line.id = m_nextLineId++;
    line.from = from;
    line.to = to;
    line.gap = gap;
    line.color = color;
    line.width = width;
    m_lines.append(line);
    update();
    return line.id;
}

void OverlayLines::removeLine(int id)
{
    const auto line = std::ranges::find(m_lines, id, &OverlayLine::id);
    if (line == m_lines.end())
        return;
    const QPointer<QWidget> from = line->from;
    const QPointer<QWidget> to = line->to;
    m_lines.erase(line);
    removeLinesOf(from);
    removeLinesOf(to);
    update();
}

void OverlayLines::clearLines()
{
    for (const OverlayLine &line : std::as_const(m_lines)) {
        for (QWidget *endpoint : {line.from.data(), line.to.data()}) {
            if (endpoint)
                endpoint->removeEventFilter(this);
        }
    }
    m_lines.clear();
    update();
}

bool OverlayLines::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::LayoutRequest:
        update();
        break;
    case QEvent::Destroy: // sent by the widget's destructor while QPointers still know it
        removeLinesOf(qobject_cast<QWidget *>(watched));
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void OverlayLines::watch(QWidget *widget)
{
    if (widget) {
        widget->removeEventFilter(this);
        widget->installEventFilter(this);
    }
}

void OverlayLines::removeLinesOf(QWidget *widget)
{
    const auto endsAt = [widget](const OverlayLine &line) {
        return line.from == widget || line.to == widget;
    };
    if (!widget || m_lines.removeIf(endsAt) == 0)
        return;
    widget->removeEventFilter(this);
    update();
}
