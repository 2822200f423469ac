// SPDX-License-Identifier: MIT
#pragma once

#include "padshape.h"

#include <QtWidgets/QWidget>

class QGridLayout;
class QPushButton;
class VirtualPad;

/// What drives one virtual pad: sticks, triggers, the hat, its buttons, and the plug.
class PadPanel : public QWidget
{
    Q_OBJECT

public:
    /// `pad` outlives the panel; `shape` is what is plugged in.
    PadPanel(VirtualPad &pad, PadShape shape, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    QWidget *stick(const QString &name, PadAxis across, PadAxis along);
    QWidget *trigger(const QString &name, PadAxis axis);
    QWidget *hat();
    QWidget *buttons();
    void showPlug();

    VirtualPad &m_pad;
    PadShape m_shape;
    QPushButton *m_plug;
    QWidget *m_controls;
};
