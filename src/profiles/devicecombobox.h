// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QComboBox>

/// The combo of connected gamepads. It has its arrow under a style sheet, too.
class DeviceComboBox : public QComboBox
{
    Q_OBJECT

public:
    using QComboBox::QComboBox;

protected:
    void paintEvent(QPaintEvent *event) override;
};
