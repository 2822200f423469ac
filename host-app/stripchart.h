// SPDX-License-Identifier: MIT
#pragma once

#include "valuehistory.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

/// The last ten seconds of every axis, newest at the right; below them, when which button was down.
class StripChart : public QWidget
{
    Q_OBJECT

public:
    explicit StripChart(QWidget *parent = nullptr);

    void addAxis(int axis, double value);
    void addButton(int button, bool pressed);
    /// The values end here until they begin again.
    void interrupt();

    QSize sizeHint() const override { return {420, 220}; }
    QSize minimumSizeHint() const override { return {240, 150}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void paintGrid(QPainter &painter, const QRectF &area) const;
    void paintAxes(QPainter &painter, const QRectF &area) const;
    void paintButtons(QPainter &painter, const QRectF &area) const;
    [[nodiscard]] double across(const QRectF &area, qint64 time) const;

    ValueHistory m_axes;
    ValueHistory m_buttons;
    QElapsedTimer m_clock;
    qint64 m_now = 0; ///< the time at the right edge
    QTimer m_frames;
};
