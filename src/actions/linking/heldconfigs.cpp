// SPDX-License-Identifier: MIT
#include "heldconfigs.h"

#include "actiontoolbox.h"
#include "interactiveoverlay.h"

HeldConfigs::HeldConfigs(const InteractiveOverlay &overlay)
{
    const auto boxes = overlay.findChildren<ActionToolBox *>(Qt::FindDirectChildrenOnly);
    for (ActionToolBox *box : boxes) {
        if (const QJsonObject config = box->config(); !config.isEmpty())
            m_held.emplaceBack(box, config);
    }
}

void HeldConfigs::giveBack() const
{
    for (const auto &[box, config] : m_held) {
        if (box && box->config().isEmpty())
            box->applyConfig(config);
    }
}
