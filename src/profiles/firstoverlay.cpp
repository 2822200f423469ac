// SPDX-License-Identifier: MIT
#include "firstoverlay.h"

#include "interactiveoverlay.h"

using namespace Qt::StringLiterals;

QJsonObject firstOverlay(const QSize &size)
{
    InteractiveOverlay overlay;
    overlay.resize(size);
    overlay.setBackgroundScaleMode(OverlayLines::BackgroundScaleMode::Contain);
    overlay.setMode(InteractiveOverlay::Edit);
    overlay.addPastille(QPoint(200, 150), u"Start"_s);
    return overlay.toJson();
}
