// SPDX-License-Identifier: MIT
#include "backgroundscalemode.h"

using namespace Qt::StringLiterals;

QString scaleModeName(BackgroundScaleMode mode)
{
    switch (mode) {
    case BackgroundScaleMode::Stretch:
        return u"Stretch"_s;
    case BackgroundScaleMode::Contain:
        return u"Contain"_s;
    case BackgroundScaleMode::Cover:
        return u"Cover"_s;
    case BackgroundScaleMode::Center:
        return u"Center"_s;
    }
    return u"Contain"_s;
}

BackgroundScaleMode parseScaleMode(const QString &text)
{
    const QString name = text.trimmed().toLower();
    if (name == "stretch"_L1)
        return BackgroundScaleMode::Stretch;
    if (name == "cover"_L1)
        return BackgroundScaleMode::Cover;
    if (name == "center"_L1)
        return BackgroundScaleMode::Center;
    return BackgroundScaleMode::Contain;
}
