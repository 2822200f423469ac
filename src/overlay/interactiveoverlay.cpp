// SPDX-License-Identifier: MIT
#include "interactiveoverlay.h"

#include "actionsheets.h"
#include "inputkey.h"
#include "manychildren.h"
#include "picturegeometry.h"
#include "sharedsheet.h"

#include <QtGui/QResizeEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr QPoint boxOffset(120, 20);
constexpr int connectorGap = 6;
constexpr double connectorWidth = 2.0;

/// Qt paints siblings by a recursion that goes a level deeper for each of them, some 300 bytes of stack. What
/// is beyond this is kept and saved, but not shown, so that no document takes the host down.
constexpr qsizetype mostShown = 5000;
} // namespace

InteractiveOverlay::InteractiveOverlay(QWidget *parent)
    : OverlayLines(parent)
{
    setAttribute(Qt::WA_StyledBackground, false);
    setAttribute(Qt::WA_MouseTracking, true);
    // Here once, instead of on every tool box.
    carrySheet(this, toolBoxSheet());
    connect(this, &OverlayLines::backgroundPixmapChanged, this, &InteractiveOverlay::relayout);
    connect(this, &OverlayLines::backgroundScaleModeChanged, this, &InteractiveOverlay::relayout);
}

InteractiveOverlay::~InteractiveOverlay()
{
    // The children go after this part of the object: what they emit then must not reach it.
    for (const OverlayNode &node : std::as_const(m_nodes)) {
        if (node.area)
            node.area->disconnect(this);
        if (node.box)
            node.box->disconnect(this);
    }
}

void InteractiveOverlay::setMode(Mode mode)
{
    if (mode == m_mode)
        return;
    m_mode = mode;
    const ManyChildren many(this);
    for (const OverlayNode &node : std::as_const(m_nodes)) {
        if (node.area)
            node.area->setEditMode(mode == Edit);
        if (node.box)
            node.box->setEditable(mode == Edit);
    }
}

TouchArea *InteractiveOverlay::addPastille(const QPoint &centre, const QString &title)
{
    auto *area = new TouchArea(this);
    area->move(centre - QPoint(area->width() / 2, area->height() / 2));
    area->setEditMode(m_mode == Edit);

    auto *box = new ActionToolBox(this);
    box->move(area->pos() + boxOffset);
    box->setEditable(m_mode == Edit);
    if (!m_servicesCache.isEmpty())
        box->setExternalServices(m_servicesCache);

    OverlayNode node;
    node.area = area;
    node.box = box;
    node.lineId = addLine(area, box, connectorGap, Qt::white, connectorWidth);
    node.input.stringKey = inputKey(true, m_nextJoyIndex);
    raiseInputCounter(node.input.stringKey);
    node.autoTitle = title.isEmpty();

    QString shown = title;
    if (shown.isEmpty())
        shown = box->config().value("ref"_L1).toString();
    if (shown.isEmpty())
        shown = u"Bouton %1"_s.arg(m_nextTitleIndex++);
    area->setTitle(shown);
    box->setHeaderText(u"Action"_s);
    if (m_nodes.size() < mostShown) {
        box->show();
        area->show();
    }

    const QRect pic = picture();
    if (!pic.isEmpty()) {
        node.areaNorm = toPicture(area->geometry(), pic);
        node.boxNorm = toPicture(box->geometry(), pic);
    }
    m_nodes.append(node);
    connectNode(area, box);
    update();
    Q_EMIT dirty();
    return area;
}

void InteractiveOverlay::connectNode(TouchArea *area, ActionToolBox *box)
{
    connect(area, &TouchArea::activated, this, [this](const QUuid &id, const QString &title) {
        if (m_mode == Normal)
            Q_EMIT pastilleActivated(id, title);
    });
    connect(area, &TouchArea::requestDelete, this, [this](TouchArea *self) {
        removePastille(self);
        Q_EMIT dirty();
    });
    connect(area, &TouchArea::moved, this, [this, area] { onPastilleMoved(area); });
    connect(area, &TouchArea::resized, this, [this, area] { onPastilleMoved(area); });
    connect(area, &TouchArea::requestStartListening, this, &InteractiveOverlay::onStartListeningRequested);
    connect(area, &TouchArea::requestSetActive, this, &InteractiveOverlay::onSetActiveRequested);
    connect(area, &TouchArea::listeningCompleted, this, [this] { m_listeningArea = nullptr; });
    connect(area, &TouchArea::stateChanged, this,
            [this, area](TouchArea::State state) { onPastilleStateChanged(area, state); });
    connect(box, &ActionToolBox::moved, this, [this, box] { onToolBoxMoved(box); });
    connect(box, &ActionToolBox::durty, this, [this, box] { onToolBoxChanged(box); });
}

void InteractiveOverlay::removePastille(TouchArea *area)
{
    const qsizetype at = area ? positionOf(area) : -1;
    if (at < 0)
        return;
    const OverlayNode node = m_nodes.takeAt(at);
    if (node.lineId >= 0)
        removeLine(node.lineId);
    retire(node);
    if (m_activeArea == area)
        m_activeArea = nullptr;
    if (m_listeningArea == area)
        m_listeningArea = nullptr;
    update();
    Q_EMIT dirty();
}

void InteractiveOverlay::retire(const OverlayNode &node)
{
    // Both live and can be touched until the event loop runs, but are no concern of this overlay any more.
    if (node.box) {
        node.box->disconnect(this);
        node.box->deleteLater();
    }
    if (node.area) {
        node.area->disconnect(this);
        node.area->deleteLater();
    }
}

void InteractiveOverlay::resizeEvent(QResizeEvent *event)
{
    OverlayLines::resizeEvent(event);
    m_lastOverlaySize = event->size();
    relayout();
}

QRect InteractiveOverlay::picture() const
{
    return pictureRect(backgroundPixmap().size(), backgroundScaleMode(), size());
}

void InteractiveOverlay::relayout()
{
    const QRect pic = picture();
    if (pic.isEmpty())
        return;
    for (const OverlayNode &node : std::as_const(m_nodes)) {
        if (node.areaNorm.isValid())
            placeArea(node, pic);
        if (node.boxNorm.isValid())
            placeBox(node, pic);
    }
    update();
}

void InteractiveOverlay::placeArea(const OverlayNode &node, const QRect &pic)
{
    if (!node.area)
        return;
    // Never the layout's size, always the picture's.
    const QRect geometry = fromPicture(node.areaNorm, pic);
    node.area->setFixedSize(geometry.size());
    node.area->move(geometry.topLeft());
}

void InteractiveOverlay::placeBox(const OverlayNode &node, const QRect &pic)
{
    if (node.box)
        node.box->setGeometry(fromPicture(node.boxNorm, pic));
}

void InteractiveOverlay::onPastilleMoved(TouchArea *area)
{
    const QRect pic = picture();
    if (const qsizetype at = positionOf(area); at >= 0 && !pic.isEmpty())
        m_nodes[at].areaNorm = toPicture(area->geometry(), pic);
    update();
    Q_EMIT dirty();
}

void InteractiveOverlay::onToolBoxMoved(ActionToolBox *box)
{
    const QRect pic = picture();
    if (const qsizetype at = positionOf(box); at >= 0 && !pic.isEmpty())
        m_nodes[at].boxNorm = toPicture(box->geometry(), pic);
    update();
    Q_EMIT dirty();
}

// Both look from the back: the node that is asked for while a document loads is the newest.
qsizetype InteractiveOverlay::positionOf(const TouchArea *area) const
{
    const auto found = std::find_if(m_nodes.crbegin(), m_nodes.crend(),
                                    [area](const OverlayNode &node) { return node.area == area; });
    return std::distance(found, m_nodes.crend()) - 1;
}

qsizetype InteractiveOverlay::positionOf(const ActionToolBox *box) const
{
    const auto found = std::find_if(m_nodes.crbegin(), m_nodes.crend(),
                                    [box](const OverlayNode &node) { return node.box == box; });
    return std::distance(found, m_nodes.crend()) - 1;
}

bool InteractiveOverlay::openFirstToolboxSettings()
{
    const auto first = std::ranges::find_if(std::as_const(m_nodes),
                                            [](const OverlayNode &node) { return !node.box.isNull(); });
    if (first == m_nodes.cend())
        return false;
    first->box->openSettings();
    return true;
}
