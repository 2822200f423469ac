// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QScrollArea>

/// A scroll area that wants the room that its content wants now: Qt's own keeps the hint that the content
/// had when it was first asked.
class FormScrollArea : public QScrollArea
{
    Q_OBJECT

public:
    using QScrollArea::QScrollArea;

    /// The content's hint within Qt's bounds for scroll areas, with room for the bar where these cut it.
    [[nodiscard]] QSize sizeHint() const override;
};
