// SPDX-License-Identifier: MIT
#include "imagefile.h"

#include "failure.h"
#include "openfile.h"
#include "plainfilename.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QImageReader>
#include <QtGui/QImageWriter>

using namespace Qt::StringLiterals;

namespace
{
/// Qt limits what a picture takes as it is stored; one of few colours takes up to 32 times that when painted.
bool fitsWhenPainted(QSize size)
{
    const qint64 limit = qint64{QImageReader::allocationLimit()} * 1024 * 1024;
    return limit == 0 || qint64{size.width()} * size.height() <= limit / 4;
}

QByteArray formatForSuffix(const QString &suffix)
{
    if (suffix == "jpg"_L1 || suffix == "jpeg"_L1)
        return "jpeg"_ba;
    if (suffix == "bmp"_L1)
        return "bmp"_ba;
    return "png"_ba;
}

bool copies(const QString &source, const QString &destination)
{
    const QFileInfo from(source);
    // Looked at before the old file goes: a source that is not there must not cost the picture that is.
    if (!from.isFile() || !from.isReadable())
        return false;
    if (from == QFileInfo(destination))
        return true;
    QFile::remove(destination);
    return QFile::copy(source, destination);
}
} // namespace

QImage readImageFile(const QString &path)
{
    if (!QFileInfo(path).isFile()) // a pipe would be waited for
        return {};
    QImageReader reader(path);
    return fitsWhenPainted(reader.size()) ? reader.read() : QImage();
}

bool copyOrConvertImage(const QString &source, const QString &destination, QString *error)
{
    const QImage image = readImageFile(source);
    if (image.isNull()) {
        return copies(source, destination) ||
               fails(error, u"Impossible de copier lâ€™image %1 vers %2"_s.arg(source, destination));
    }

    QFile file(destination);
    QImageWriter writer(&file, formatForSuffix(QFileInfo(destination).suffix().toLower()));
    // The writer tries again what did not open, and says why. What was not even tried is no place for it.
    if ((openToWrite(file) || file.error() != QFileDevice::NoError) && writer.write(image))
        return true;
    return fails(error, u"Ã‰chec Ã©criture image %1 (%2)"_s.arg(destination, writer.errorString()));
}

QString pictureFileName(const QString &suffix)
{
    const QString name = "image."_L1 + suffix.toLower();
    return !suffix.isEmpty() && isPlainFileName(name) ? name : u"image.png"_s;
}
