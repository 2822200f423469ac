// SPDX-License-Identifier: MIT
#include "interactiveoverlay.h"

#include "inputkey.h"
#include "manychildren.h"
#include "picturegeometry.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QScopedValueRollback>

#include <algorithm>
#include <limits>

QJsonObject InteractiveOverlay::toJson() const
{
    QRect pic = picture();
    if (pic.isEmpty())
        pic = rect();

    OverlayDocument document{.overlaySize = size(), .bgMode = backgroundScaleMode(), .nodes = {}};
    document.nodes.reserve(m_nodes.size());
    for (const OverlayNode &node : m_nodes) {
        if (!node.area || !node.box)
            continue;
        const QRectF pastille =
            node.areaNorm.isValid() ? node.areaNorm : toPicture(node.area->geometry(), pic);
        const QRectF toolbox = node.boxNorm.isValid() ? node.boxNorm : toPicture(node.box->geometry(), pic);
        document.nodes.append({
            .id = node.area->id(),
            .title = node.area->title(),
            .state = node.area->state(),
            .freeAspect = node.area->freeAspect(),
            .pastille = fractionsOf(pastille),
            .toolbox = fractionsOf(toolbox),
            .input = node.input,
        });
    }
    return overlayDocumentJson(document);
}

QByteArray InteractiveOverlay::toJsonBytes(bool indented) const
{
    return QJsonDocument(toJson()).toJson(indented ? QJsonDocument::Indented : QJsonDocument::Compact);
}

bool InteractiveOverlay::fromJson(const QJsonObject &json)
{
    const QSize pixmap = backgroundPixmap().size();
    const auto document = readOverlayDocument(json, {pixmap, backgroundScaleMode(), size()});
    if (!document)
        return false;

    clearNodes();
    m_lastOverlaySize = size().expandedTo(QSize(1, 1));
    const QRect pic = pictureRect(pixmap, backgroundScaleMode(), m_lastOverlaySize);

    QPointer<TouchArea> active;
    QPointer<TouchArea> listening;
    ConfigSpreads spreads;
    {
        const ManyChildren many(this);
        const QScopedValueRollback collecting(m_spreads, &spreads);
        for (const OverlayDocumentNode &stored : document->nodes) {
            TouchArea *area = addNode(stored, pic);
            if (stored.state == TouchArea::Active && !active)
                active = area;
            if (stored.state == TouchArea::Listening && !listening)
                listening = area;
        }
    }
    applySpreads(spreads);

    // A listener of `dirty` may have removed them since, and then they only wait for their deletion.
    if (active && positionOf(active) >= 0) {
        setActiveArea(active);
        Q_EMIT dirty();
    }
    if (listening && positionOf(listening) >= 0)
        setListeningArea(listening);
    update();
    return true;
}

void InteractiveOverlay::clearNodes()
{
    std::for_each(m_nodes.crbegin(), m_nodes.crend(), [this](const OverlayNode &node) { retire(node); });
    clearLines();
    m_nodes.clear();
    m_activeArea = nullptr;
    m_listeningArea = nullptr;
}

TouchArea *InteractiveOverlay::addNode(const OverlayDocumentNode &stored, const QRect &pic)
{
    TouchArea *area = addPastille(QPoint(0, 0), stored.title);
    area->setFreeAspect(stored.freeAspect);
    const qsizetype at = positionOf(area);
    if (at < 0) // removed by a listener of `dirty`
        return nullptr;

    OverlayNode &node = m_nodes[at];
    node.areaNorm = rectOf(stored.pastille);
    node.boxNorm = rectOf(stored.toolbox);
    if (!pic.isEmpty()) {
        placeArea(node, pic);
        placeBox(node, pic);
    }
    if (!stored.id.isNull())
        area->setId(stored.id);

    const QString ownKey = node.input.stringKey;
    node.input = stored.input;
    if (node.input.stringKey.isEmpty())
        node.input.stringKey = ownKey;
    else
        raiseInputCounter(node.input.stringKey);
    node.box->setInputKind(inputKind(node.input.isJoy));
    area->setState(TouchArea::Normal);
    return area;
}

void InteractiveOverlay::raiseInputCounter(const QString &key)
{
    bool isJoy = true;
    int index = -1;
    if (!parseInputKey(key, &isJoy, &index) || index < 0)
        return;
    int &counter = isJoy ? m_nextJoyIndex : m_nextButIndex;
    // The last index of all has no next one.
    counter = std::max(counter, index < std::numeric_limits<int>::max() ? index + 1 : index);
}
