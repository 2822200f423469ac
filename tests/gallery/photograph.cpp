// SPDX-License-Identifier: MIT
#include "photograph.h"

#include <QtCore/QDir>
#include <QtCore/QSet>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

using namespace Qt::StringLiterals;

QImage photographOf(const QWidget &window)
{
    const QRect place = window.geometry();
    return window.screen()
        ->grabWindow(0, place.x(), place.y(), place.width(), place.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

qsizetype pixelsOf(const QImage &image, const QColor &colour)
{
    qsizetype count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) == colour.rgb() ? 1 : 0;
    }
    return count;
}

qsizetype coloursIn(const QImage &image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
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
