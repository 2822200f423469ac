// SPDX-License-Identifier: MIT
#include "toucharea.h"

#include "pastillepainter.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

TouchArea::TouchArea(QWidget *parent)
    : QWidget(parent)
    , m_title(u"Bouton"_s)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setCursor(Qt::PointingHandCursor);
    setFixedSize(56, 56);
}

void TouchArea::setTitle(const QString &title)
{
    const bool listened = m_state == Listening;
    m_title = title;
    update();
    if (listened) {
        setState(Normal);
        Q_EMIT listeningCompleted(m_title);
    }
}

void TouchArea::setState(State state)
{
    if (state == m_state)
        return;
    const State old = std::exchange(m_state, state);
    showRestingCursor();
    update();
    Q_EMIT stateChanged(m_state, old);
}

void TouchArea::setActive(bool on)
{
    setState(on ? Active : Normal);
}

void TouchArea::startListening()
{
    setState(Listening);
}

void TouchArea::stopListening()
{
    if (m_state == Listening)
        setState(Normal);
}

void TouchArea::setFreeAspect(bool on)
{
    if (on == m_freeAspect)
        return;
    m_freeAspect = on;
    if (!on) {
        const int side = std::max(height(), width());
        setFixedSize(side, side);
    }
    update();
    Q_EMIT freeAspectChanged(m_freeAspect);
}

void TouchArea::setEditMode(bool on)
{
    m_editMode = on;
    showRestingCursor();
    update();
}

void TouchArea::showRestingCursor()
{
    setCursor(m_editMode ? Qt::OpenHandCursor : Qt::PointingHandCursor);
}

void TouchArea::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintPastille(
        painter,
        {.size = size(), .state = m_state, .title = m_title, .hasHandle = m_editMode, .hovered = m_hovered});
}
