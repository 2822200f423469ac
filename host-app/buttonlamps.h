// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QSet>
#include <QtWidgets/QWidget>

/// A row of lamps, one per button, that wraps where the width ends. A lamp is lit while its button is down.
class ButtonLamps : public QWidget
{
    Q_OBJECT

public:
    explicit ButtonLamps(QWidget *parent = nullptr);

    /// How many lamps there are at least; a button beyond that gets one when it is heard of.
    void setCount(int count);
    [[nodiscard]] int count() const { return m_count; }
    void setPressed(int button, bool pressed);
    void clear();

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] int columns(int width) const;

    int m_count = 0;
    QSet<int> m_pressed;
};
