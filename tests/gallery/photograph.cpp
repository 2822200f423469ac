// SPDX-License-Identifier: MIT
#include "photograph.h"

#include <QtCore/QDir>
#include <QtCore/QSet>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <span>

using namespace Qt::StringLiterals;

QImage photographOf(const QWidget &window)
{
    const QRect place = window.geometry();
    return window.screen()
        ->grabWindow(0, place.x(), place.y(), place.width(), place.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

namespace
{
std::span<const QRgb> rowOf(const QImage &image, int y)
{
    return {reinterpret_cast<const QRgb *>(image.constScanLine(y)), static_cast<size_t>(image.width())};
}
} // namespace

qsizetype pixelsOf(const QImage &image, const QColor &colour)
{
    qsizetype count = 0;
    for (int y = 0; y < image.height(); ++y)
        count += std::ranges::count(rowOf(image, y), colour.rgb());
    return count;
}

qsizetype coloursIn(const QImage &image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        QRgb last = 0; // no pixel of a photograph: those are opaque
        for (const QRgb pixel : rowOf(image, y)) {
            if (pixel != last)
                colours.insert(pixel);
            last = pixel;
        }
    }
    return colours.size();
}

bool hang(const QImage &image, const QString &name)
{
    const QString folder = QStringLiteral(GAMEPAD_GALLERY);
    const QString path = folder + u'/' + name + ".png"_L1;
    if (!QDir().mkpath(folder) || !image.save(path))
        return false;
    return QImage(path).convertToFormat(image.format()) == image;
}
