// SPDX-License-Identifier: MIT
#pragma once

#include "cardmodel.h"
#include "deviceitemdelegate.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>

/// How a test asks for a card. The item stands at the image's top left.
struct Rendering
{
    QSize item{300, 240};
    QStyle::State state = QStyle::State_Enabled;
    QFont font = QApplication::font();
    QSize image{300, 240};
};

inline QImage whitePage(const QSize &size)
{
    QImage page(size, QImage::Format_ARGB32_Premultiplied);
    page.fill(Qt::white);
    return page;
}

inline QStyleOptionViewItem optionFor(const Rendering &wish)
{
    QStyleOptionViewItem option;
    option.rect = QRect(QPoint(), wish.item);
    option.state = wish.state;
    option.font = wish.font;
    return option;
}

/// The card of `row` on a white page.
inline QImage render(const CardRow &row, const Rendering &wish = {})
{
    const CardModel model({row});
    const DeviceItemDelegate delegate;
    QImage page = whitePage(wish.image);
    QPainter painter(&page);
    delegate.paint(&painter, optionFor(wish), model.index(0));
    return page;
}

/// A row that shows no text: the name is blank, since an empty one has a stand-in.
inline CardRow textlessRow()
{
    return {{"name", QStringLiteral(" ")}, {"videoInterfaces", QStringList{QStringLiteral("|plate")}}};
}

/// `colour` painted over `base` with the alpha that it has, or a part of it.
inline QColor over(const QColor &base, const QColor &colour, double coverage = 1.0)
{
    const double alpha = colour.alpha() / 255.0 * coverage;
    const auto mix = [alpha](int below, int above) { return qRound(below * (1 - alpha) + above * alpha); };
    return {mix(base.red(), colour.red()), mix(base.green(), colour.green()),
            mix(base.blue(), colour.blue())};
}

inline bool similar(const QColor &one, const QColor &other, int tolerance = 2)
{
    return qAbs(one.red() - other.red()) <= tolerance && qAbs(one.green() - other.green()) <= tolerance &&
           qAbs(one.blue() - other.blue()) <= tolerance;
}

inline QPixmap plainPixmap(const QSize &size, const QColor &colour)
{
    QPixmap pixmap(size);
    pixmap.fill(colour);
    return pixmap;
}

/// Every pixel of `area` has exactly `colour`.
inline bool isPlain(const QImage &image, const QRect &area, const QColor &colour)
{
    return image.copy(area).convertToFormat(QImage::Format_ARGB32) ==
           plainPixmap(area.size(), colour).toImage().convertToFormat(QImage::Format_ARGB32);
}

#define COMPARE_COLOUR(image, x, y, expected, ...)                                                           \
    do {                                                                                                     \
        const QColor found = (image).pixelColor((x), (y));                                                   \
        const QColor wanted = (expected);                                                                    \
        QVERIFY2(similar(found, wanted __VA_OPT__(, ) __VA_ARGS__),                                          \
                 qPrintable(QStringLiteral("at %1,%2: %3 in place of %4")                                    \
                                .arg(x)                                                                      \
                                .arg(y)                                                                      \
                                .arg(found.name(), wanted.name())));                                         \
    } while (false)
