// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QWidget>

// What a person would see of a widget.

/// The colour of a widget's own pixel.
inline QColor pixel(QWidget &widget, const QPoint &at)
{
    return widget.grab().toImage().pixelColor(at);
}

/// How many pixels have exactly this colour.
inline int pixelsOf(const QImage &image, const QColor &colour)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == colour ? 1 : 0;
    }
    return count;
}

/// What a translucent colour makes of the one below it.
inline QColor over(const QColor &below, const QColor &above)
{
    const auto mix = [&above](int under, int upper) { return under + (upper - under) * above.alpha() / 255; };
    return {mix(below.red(), above.red()), mix(below.green(), above.green()),
            mix(below.blue(), above.blue())};
}

/// Equal up to the rounding of translucent layers.
inline bool isNear(const QColor &a, const QColor &b)
{
    return qAbs(a.red() - b.red()) <= 2 && qAbs(a.green() - b.green()) <= 2 && qAbs(a.blue() - b.blue()) <= 2;
}

/// Moves the mouse over the middle of a widget.
inline void hover(const QWidget &widget)
{
    const QWidget *window = widget.window();
    QTest::mouseMove(window->windowHandle(), widget.mapTo(window, widget.rect().center()));
    QTRY_VERIFY(widget.underMouse());
}

/// The ground of a tool tip over `widget`.
inline QColor toolTipGround(QWidget &widget)
{
    QToolTip::showText(widget.mapToGlobal(QPoint(5, 5)), QStringLiteral("text"), &widget);
    const auto shownTip = []() -> QWidget * {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (window->inherits("QTipLabel") && window->isVisible())
                return window;
        }
        return nullptr;
    };
    if (!QTest::qWaitFor([&] { return shownTip() != nullptr; }))
        return {};
    const QColor ground = pixel(*shownTip(), {2, 2});
    QToolTip::hideText();
    return QTest::qWaitFor([] { return !QToolTip::isVisible(); }) ? ground : QColor();
}
