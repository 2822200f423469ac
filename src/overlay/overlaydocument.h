// SPDX-License-Identifier: MIT
#pragma once

#include "backgroundscalemode.h"
#include "inputsource.h"
#include "toucharea.h"

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QRectF>
#include <QtCore/QSize>
#include <QtCore/QUuid>

#include <optional>

/// A rectangle in fractions of the picture. Unlike `QRectF` it tells apart all that a document can.
struct PictureFractions
{
    double x = 0.0;
    double y = 0.0;
    double w = 0.0;
    double h = 0.0;

    bool operator==(const PictureFractions &) const = default;
};

[[nodiscard]] inline PictureFractions fractionsOf(const QRectF &rect)
{
    return {.x = rect.x(), .y = rect.y(), .w = rect.width(), .h = rect.height()};
}

[[nodiscard]] inline QRectF rectOf(const PictureFractions &place)
{
    return {place.x, place.y, place.w, place.h};
}

/// One node of an overlay document: a pastille, the place of its tool box, and its input.
struct OverlayDocumentNode
{
    QUuid id; ///< null: a new pastille keeps its own
    QString title = QStringLiteral("Bouton");
    TouchArea::State state = TouchArea::Normal;
    bool freeAspect = false;
    PictureFractions pastille;
    PictureFractions toolbox;
    NodeInput input; ///< an empty `stringKey`: a new node keeps its own

    bool operator==(const OverlayDocumentNode &) const = default;
};

/// An overlay as it is stored: geometry, names, states and inputs, and no action.
struct OverlayDocument
{
    QSize overlaySize; ///< of the widget that it was written from
    BackgroundScaleMode bgMode = BackgroundScaleMode::Contain;
    QList<OverlayDocumentNode> nodes;

    bool operator==(const OverlayDocument &) const = default;
};

/// What an overlay shows when it reads a document: older documents are converted by it, and stand-ins for
/// missing parts come from it.
struct OverlayFrame
{
    QSize pixmap; ///< empty without a picture
    BackgroundScaleMode mode = BackgroundScaleMode::Contain;
    QSize widget;
};

/// Reads a document of version 1 or 2. Nothing where `type` is not "InteractiveOverlay"; all else that is
/// missing or of a wrong type takes its default, and numbers saturate. The result is always in fractions of
/// the picture: those of version 1 are of the saved widget, and are converted by `frame`.
[[nodiscard]] std::optional<OverlayDocument> readOverlayDocument(const QJsonObject &json,
                                                                 const OverlayFrame &frame);

/// The document in version 2.
[[nodiscard]] QJsonObject overlayDocumentJson(const OverlayDocument &document);

/// "Normal", "Listening" or "Active"; a value outside the enumeration is "Normal".
[[nodiscard]] QString stateName(TouchArea::State state);

/// The state of a name, without regard to case and to blanks around it. Any other text is `Normal`.
[[nodiscard]] TouchArea::State parseState(const QString &text);
