// SPDX-License-Identifier: MIT
#include "pastillegeometry.h"
#include "toucharea.h"

#include <QtGui/QMouseEvent>

void TouchArea::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    if (!m_editMode) {
        Q_EMIT activated(m_id, m_title);
        return;
    }
    m_startGeometry = geometry();
    m_pressGlobalPos = event->globalPosition().toPoint();
    if (inResizeHandle(event->position().toPoint())) {
        m_resizing = true;
        setCursor(Qt::SizeFDiagCursor);
    } else {
        m_dragging = true;
        setCursor(Qt::ClosedHandCursor);
    }
    event->accept();
}

void TouchArea::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_editMode || event->button() != Qt::LeftButton || !(m_dragging || m_resizing))
        return;
    m_dragging = false;
    m_resizing = false;
    setCursor(Qt::OpenHandCursor);
}

void TouchArea::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_editMode)
        return;
    const QPoint delta = event->globalPosition().toPoint() - m_pressGlobalPos;
    if (m_resizing) {
        resizeBy(delta);
    } else if (m_dragging) {
        moveBy(delta);
    } else {
        setCursor(inResizeHandle(event->position().toPoint()) ? Qt::SizeFDiagCursor : Qt::OpenHandCursor);
    }
}

void TouchArea::enterEvent(QEnterEvent *)
{
    m_hovered = true;
    update();
}

void TouchArea::leaveEvent(QEvent *)
{
    m_hovered = false;
    update();
}

bool TouchArea::inResizeHandle(const QPoint &pos) const
{
    return resizeHandle(size()).contains(pos);
}

void TouchArea::resizeBy(const QPoint &delta)
{
    setFixedSize(pulled(m_startGeometry.size(), delta, m_freeAspect, QSize(m_minWidth, m_minHeight)));
    clampToParent();
    Q_EMIT resized();
    update();
}

void TouchArea::moveBy(const QPoint &delta)
{
    setGeometry(m_startGeometry.translated(delta));
    clampToParent();
    Q_EMIT moved();
}

void TouchArea::clampToParent()
{
    if (const QWidget *parent = parentWidget())
        setGeometry(clampedInto(geometry(), parent->rect()));
}
