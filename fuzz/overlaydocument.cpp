// SPDX-License-Identifier: MIT
// An overlay document, from its bytes to the widgets and back: whatever it says, it is taken or refused as a
// whole, and what is written for it reads as the same again.
#include "fuzzing.h"
#include "interactiveoverlay.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{
// Widgets are slow here, and a long document says no more than a short one.
constexpr qsizetype mostNodes = 12;

QJsonArray someParams()
{
    QJsonArray params;
    for (const QString &type : {u"int"_s, u"bool"_s, u"int"_s, u"bool"_s})
        params.append(QJsonObject{{u"name"_s, u"p%1"_s.arg(params.size())}, {u"preferredType"_s, type}});
    return params;
}

QJsonObject throughText(const QJsonObject &json)
{
    return QJsonDocument::fromJson(QJsonDocument(json).toJson(QJsonDocument::Compact)).object();
}

bool checkStructs(const QJsonObject &json, const OverlayFrame &frame)
{
    const auto document = readOverlayDocument(json, frame);
    if (!document)
        return false;
    const auto again = readOverlayDocument(throughText(overlayDocumentJson(*document)), frame);
    mustHold(again == document, "the structs change when they are written and read");
    return true;
}

qsizetype countInState(const QJsonObject &json, QLatin1StringView state)
{
    const QJsonArray nodes = json["nodes"_L1].toArray();
    return std::ranges::count_if(nodes,
                                 [state](const QJsonValue &node) { return node["state"_L1] == state; });
}

/// The document without what its first reading settles: a kind of input that contradicts the input's key.
QJsonObject withoutKinds(QJsonObject json)
{
    const QJsonArray nodes = json["nodes"_L1].toArray();
    QJsonArray settled;
    for (const QJsonValue &value : nodes) {
        QJsonObject node = value.toObject();
        QJsonObject src = node["src"_L1].toObject();
        src.remove("isJoy"_L1);
        node["src"_L1] = src;
        settled.append(node);
    }
    json["nodes"_L1] = settled;
    return json;
}

void checkWidgets(const QJsonObject &json, InteractiveOverlay &overlay, bool readable)
{
    const QJsonObject before = overlay.toJson();
    mustHold(overlay.fromJson(json) == readable, "the overlay and the structs disagree on a document");
    const QJsonObject written = overlay.toJson();
    if (!readable) {
        mustHold(written == before, "a refused document changed the overlay");
        return;
    }
    mustHold(written["nodes"_L1].toArray().size() == json["nodes"_L1].toArray().size(), "a node was lost");
    mustHold(countInState(written, "Listening"_L1) <= 1, "more than one pastille listens");
    mustHold(countInState(written, "Active"_L1) <= 1, "more than one pastille is active");

    mustHold(overlay.fromJson(throughText(written)), "the overlay refuses its own document");
    const QJsonObject rewritten = overlay.toJson();
    mustHold(withoutKinds(rewritten) == withoutKinds(written),
             "the overlay changes its document by reading it");
    mustHold(overlay.fromJson(rewritten), "the overlay refuses its own document");
    mustHold(overlay.toJson() == rewritten, "the overlay's document drifts from load to load");

    const QSize size = overlay.size();
    overlay.resize(77, 3000);
    overlay.resize(size);
    mustHold(overlay.toJson() == rewritten, "a resize moves what is stored");
    if (overlay.backgroundScaleMode() == BackgroundScaleMode::Cover)
        overlay.grab(); // painting costs more than all the rest, and once shows enough
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QJsonObject json = jsonOf(data, size).object();
    if (json["nodes"_L1].toArray().size() > mostNodes)
        return 0;

    static const QPixmap picture = [] {
        QPixmap pixmap(300, 100);
        pixmap.fill(Qt::gray);
        return pixmap;
    }();
    using enum BackgroundScaleMode;
    // Where a document cannot be converted, that fails for a widget without an area only.
    const std::pair<QPixmap, BackgroundScaleMode> backgrounds[] = {
        {QPixmap(), Contain}, {picture, Contain}, {picture, Cover}};
    for (const auto &[pixmap, mode] : backgrounds) {
        InteractiveOverlay overlay;
        overlay.resize(320, 240);
        overlay.setBackgroundScaleMode(mode);
        overlay.setBackgroundPixmap(pixmap);
        // With a function of this name tool boxes are bound from the start, and like-titled ones in turn.
        if (mode == Cover)
            overlay.setExternalServices({QJsonObject{{u"name"_s, u"none"_s}, {u"params"_s, someParams()}}});
        const bool readable = checkStructs(json, {pixmap.size(), mode, overlay.size()});
        checkWidgets(json, overlay, readable);
        checkStructs(json, {pixmap.size(), mode, QSize(0, 0)});
    }
    settle();
    return 0;
}
