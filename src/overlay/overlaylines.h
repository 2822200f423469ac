// SPDX-License-Identifier: MIT
#pragma once

#include "backgroundscalemode.h"

#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtGui/QColor>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

/// One connector: from under a widget to the lower corners of another one.
struct OverlayLine
{
    int id = 0;
    QPointer<QWidget> from;
    QPointF fallbackStart{-1.0, -1.0}; ///< in fractions of the canvas, for a start that is gone or hidden
    QPointer<QWidget> to;
    double sideBias = 0.1; ///< its sign chooses the corner when the start is above the target
    int gap = 0;           ///< pixels between a widget's bottom edge and the line
    QColor color;
    double width = 1.0; ///< of the pen
};

/// The layer under the pastilles: a background picture and, above it, lines between pairs of child widgets,
/// drawn anew whenever one of these moves, resizes, shows or hides.
class OverlayLines : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QPixmap backgroundPixmap READ backgroundPixmap WRITE setBackgroundPixmap NOTIFY
                   backgroundPixmapChanged)
    Q_PROPERTY(BackgroundScaleMode backgroundScaleMode READ backgroundScaleMode WRITE setBackgroundScaleMode
                   NOTIFY backgroundScaleModeChanged)

public:
    using BackgroundScaleMode = ::BackgroundScaleMode;

    explicit OverlayLines(QWidget *parent = nullptr);

    [[nodiscard]] QPixmap backgroundPixmap() const { return m_backgroundPixmap; }
    /// Emits `backgroundPixmapChanged` each time, for the same picture too. A null picture draws nothing.
    void setBackgroundPixmap(const QPixmap &pixmap);

    [[nodiscard]] BackgroundScaleMode backgroundScaleMode() const { return m_backgroundScaleMode; }
    void setBackgroundScaleMode(BackgroundScaleMode mode);

    /// Joins two descendants of this canvas and returns the line's id, above all earlier ones. The line goes
    /// with either of them; neither is owned. A null `from` starts the line outside the canvas, a null `to`
    /// leaves it undrawn.
    int addLine(QWidget *from, QWidget *to, int gap, const QColor &color, double width);
    /// Removes the line with `id`, and with it every other line on its two widgets. Unknown ids are ignored.
    void removeLine(int id);
    void clearLines();

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void backgroundPixmapChanged();
    void backgroundScaleModeChanged();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void watch(QWidget *widget);
    void removeLinesOf(QWidget *widget);
    void paintPicture(QPainter &painter) const;
    void paintLine(QPainter &painter, const OverlayLine &line) const;

    QPixmap m_backgroundPixmap;
    BackgroundScaleMode m_backgroundScaleMode = BackgroundScaleMode::Contain;
    QList<OverlayLine> m_lines;
    int m_nextLineId = 1;
};
