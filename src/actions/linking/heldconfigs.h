// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QPointer>

#include <utility>

class ActionToolBox;
class InteractiveOverlay;

/// What the tool boxes of an overlay hold, to give it back after a mapping was applied anew. A mapping finds
/// pastilles by title, so it does not reach one that is called otherwise than its input.
class HeldConfigs
{
public:
    explicit HeldConfigs(const InteractiveOverlay &overlay);

    /// Configures the tool boxes that have lost what they held.
    void giveBack() const;

private:
    QList<std::pair<QPointer<ActionToolBox>, QJsonObject>> m_held;
};
