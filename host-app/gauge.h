// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QWidget>

#include <optional>

/// One axis: its key, its value as a number and as a bar. A stick's bar grows from the middle to both sides,
/// a trigger's from the left end. Until a first value comes, the gauge is faint.
class Gauge : public QWidget
{
    Q_OBJECT

public:
    explicit Gauge(int axis, QWidget *parent = nullptr);

    void setValue(double value);
    /// `rest` is what the device has learned: near -100 or 100 it is a trigger.
    void setRest(double rest);
    /// Back to having heard nothing.
    void silence();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_axis;
    std::optional<double> m_value;
    double m_rest = 0.0;
};
