// SPDX-License-Identifier: MIT
#include "overlaydocument.h"

#include "inputkey.h"
#include "jsonnumbers.h"
#include "picturegeometry.h"

#include <QtCore/QJsonArray>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr auto documentType = "InteractiveOverlay"_L1;
constexpr auto pictureSpace = "background"_L1;
constexpr int writtenVersion = 2;

/// Turns a stored rectangle into fractions of the picture, or leaves it where it is that already.
class Conversion
{
public:
    static Conversion none() { return {}; }

    Conversion(const QSize &savedSize, const QRect &savedPicture)
        : m_savedWidget(QPoint(0, 0), savedSize)
        , m_savedPicture(savedPicture)
    {}

    [[nodiscard]] PictureFractions operator()(const PictureFractions &stored) const
    {
        if (m_savedPicture.isEmpty())
            return stored;
        return fractionsOf(toPicture(fromPicture(rectOf(stored), m_savedWidget), m_savedPicture));
    }

private:
    Conversion() = default;

    QRect m_savedWidget;
    QRect m_savedPicture;
};

PictureFractions readFractions(const QJsonObject &rect)
{
    return {
        .x = finiteNumber(rect["x"_L1]),
        .y = finiteNumber(rect["y"_L1]),
        .w = finiteNumber(rect["w"_L1]),
        .h = finiteNumber(rect["h"_L1]),
    };
}

QJsonObject fractionsJson(const PictureFractions &place)
{
    return {{u"x"_s, place.x}, {u"y"_s, place.y}, {u"w"_s, place.w}, {u"h"_s, place.h}};
}

int savedLength(const QJsonValue &value, int current)
{
    const int saved = wholeNumber(value).value_or(0);
    return saved < 1 ? current : std::min(saved, farthestPixel);
}

QSize readSize(const QJsonObject &size, const QSize &current)
{
    const QSize least = current.expandedTo(QSize(1, 1));
    return {savedLength(size["w"_L1], least.width()), savedLength(size["h"_L1], least.height())};
}

/// Documents from before inputs were stored have the input in the title.
NodeInput inputFromTitle(const QString &title)
{
    NodeInput input;
    int index = -1;
    if (parseInputKey(title, &input.isJoy, &index))
        input.stringKey = inputKey(input.isJoy, index);
    return input;
}

NodeInput readInput(const QJsonObject &src, const QString &title)
{
    if (src.isEmpty())
        return inputFromTitle(title);
    const InputSource source = readInputSource(src);
    NodeInput input;
    input.stringKey = source.stringKey;
    input.isJoy = standsForAxis(source);
    takeDevice(input, source);
    return input;
}

OverlayDocumentNode readNode(const QJsonObject &json, const Conversion &converted)
{
    OverlayDocumentNode node;
    node.id = QUuid::fromString(json["id"_L1].toString());
    node.title = json["title"_L1].toString(node.title);
    node.state = parseState(json["state"_L1].toString());
    node.freeAspect = json["freeAspect"_L1].toBool();
    node.pastille = converted(readFractions(json["pastille"_L1].toObject()));
    node.toolbox = converted(readFractions(json["toolbox"_L1].toObject()));
    node.input = readInput(json["src"_L1].toObject(), node.title);
    return node;
}

QJsonObject nodeJson(const OverlayDocumentNode &node)
{
    QJsonObject src = inputSourceJson(node.input);
    src["isJoy"_L1] = node.input.isJoy;
    return {
        {u"id"_s, node.id.toString(QUuid::WithoutBraces)},
        {u"title"_s, node.title},
        {u"state"_s, stateName(node.state)},
        {u"freeAspect"_s, node.freeAspect},
        {u"pastille"_s, fractionsJson(node.pastille)},
        {u"toolbox"_s, fractionsJson(node.toolbox)},
        {u"src"_s, src},
    };
}

bool isInPictureSpace(const QJsonObject &json)
{
    const QString space = json["coordSpace"_L1].toString();
    return space.compare(pictureSpace, Qt::CaseInsensitive) == 0 ||
           wholeNumber(json["version"_L1]).value_or(1) > 1;
}
} // namespace

std::optional<OverlayDocument> readOverlayDocument(const QJsonObject &json, const OverlayFrame &frame)
{
    if (json["type"_L1].toString() != documentType)
        return std::nullopt;

    OverlayDocument document;
    document.overlaySize = readSize(json["overlaySize"_L1].toObject(), frame.widget);
    const QString mode = json["bgMode"_L1].toString();
    document.bgMode = mode.isEmpty() ? frame.mode : parseScaleMode(mode);

    const Conversion conversion =
        isInPictureSpace(json) ? Conversion::none()
                               : Conversion(document.overlaySize,
                                            pictureRect(frame.pixmap, document.bgMode, document.overlaySize));
    const QJsonArray nodes = json["nodes"_L1].toArray();
    document.nodes.reserve(nodes.size());
    for (const QJsonValue &node : nodes)
        document.nodes.append(readNode(node.toObject(), conversion));
    return document;
}

QJsonObject overlayDocumentJson(const OverlayDocument &document)
{
    QJsonArray nodes;
    for (const OverlayDocumentNode &node : document.nodes)
        nodes.append(nodeJson(node));
    const QSize size = document.overlaySize;
    return {
        {u"type"_s, QString(documentType)},
        {u"version"_s, writtenVersion},
        {u"coordSpace"_s, QString(pictureSpace)},
        {u"overlaySize"_s, QJsonObject{{u"w"_s, size.width()}, {u"h"_s, size.height()}}},
        {u"bgMode"_s, scaleModeName(document.bgMode)},
        {u"nodes"_s, nodes},
    };
}

QString stateName(TouchArea::State state)
{
    switch (state) {
    case TouchArea::Normal:
        return u"Normal"_s;
    case TouchArea::Listening:
        return u"Listening"_s;
    case TouchArea::Active:
        return u"Active"_s;
    }
    return u"Normal"_s;
}

TouchArea::State parseState(const QString &text)
{
    const QString name = text.trimmed().toLower();
    if (name == "listening"_L1)
        return TouchArea::Listening;
    if (name == "active"_L1)
        return TouchArea::Active;
    return TouchArea::Normal;
}
