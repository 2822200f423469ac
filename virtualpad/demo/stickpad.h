// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointF>
#include <QtWidgets/QWidget>

/// A stick: drag the knob, let go and it springs back to its rest.
class StickPad : public QWidget
{
    Q_OBJECT

public:
    /// `rest` is -100 to 100 in both directions, y downwards.
    explicit StickPad(QPointF rest, QWidget *parent = nullptr);

    QSize sizeHint() const override { return {130, 130}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void moved(QPointF position);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void moveTo(QPointF position);
    [[nodiscard]] QRectF range() const;

    QPointF m_rest;
    QPointF m_position;
};
