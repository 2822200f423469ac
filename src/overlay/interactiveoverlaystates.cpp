// SPDX-License-Identifier: MIT
// At most one pastille listens and at most one is active. The pastilles hold the states; the overlay keeps a
// reference to each of the two, and keeps it in step.
#include "interactiveoverlay.h"

void InteractiveOverlay::onStartListeningRequested(TouchArea *area)
{
    setListeningArea(area);
    Q_EMIT dirty();
}

void InteractiveOverlay::onSetActiveRequested(TouchArea *area, bool on)
{
    if (area) {
        if (on) {
            setActiveArea(area);
        } else {
            if (m_activeArea == area)
                m_activeArea = nullptr;
            if (area->state() == TouchArea::Active)
                area->setActive(false);
        }
        Q_EMIT dirty();
    }
    Q_EMIT dirty();
}

void InteractiveOverlay::onPastilleStateChanged(TouchArea *area, TouchArea::State state)
{
    switch (state) {
    case TouchArea::Active:
        if (m_activeArea && m_activeArea != area)
            m_activeArea->setActive(false);
        m_activeArea = area;
        if (m_listeningArea == area)
            m_listeningArea = nullptr;
        break;
    case TouchArea::Listening:
        if (m_activeArea == area)
            m_activeArea = nullptr;
        if (m_listeningArea && m_listeningArea != area)
            m_listeningArea->stopListening();
        m_listeningArea = area;
        break;
    case TouchArea::Normal:
        if (m_activeArea == area)
            m_activeArea = nullptr;
        if (m_listeningArea == area)
            m_listeningArea = nullptr;
        break;
    }
    Q_EMIT dirty();
}

void InteractiveOverlay::setListeningArea(TouchArea *area)
{
    if (m_listeningArea && m_listeningArea != area)
        m_listeningArea->stopListening();
    m_listeningArea = area;
    if (area && area->state() != TouchArea::Listening)
        area->startListening();
}

void InteractiveOverlay::setActiveArea(TouchArea *area)
{
    if (m_activeArea && m_activeArea != area)
        m_activeArea->setActive(false);
    m_activeArea = area;
    if (area->state() != TouchArea::Active)
        area->setActive(true);
}

void InteractiveOverlay::applyListenedInput(const QString &key)
{
    if (!m_listeningArea)
        return;
    // This ends the listening, and the reference is gone before the call returns: the node is not looked up
    // any more, and keeps its input. Mappings read the key from the title.
    m_listeningArea->setTitle(key);
    Q_EMIT dirty();
}
