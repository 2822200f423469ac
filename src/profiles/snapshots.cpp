// SPDX-License-Identifier: MIT
#include "snapshots.h"

#include "filebase.h"
#include "interactiveoverlay.h"
#include "jsonfiles.h"
#include "jsonnumbers.h"
#include "profileicon.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace
{
constexpr QSize lastResort(800, 600);
/// Beyond it the snapshot of a broken document would cost the host gigabytes.
constexpr qint64 mostPixels = 64'000'000;

QPixmap fails(QString *error, const QString &reason)
{
    if (error)
        *error = reason;
    return {};
}

bool isTooLarge(const QSize &size)
{
    return qint64{size.width()} * size.height() > mostPixels;
}

int atLeastOne(int length, int otherwise)
{
    return length < 1 ? otherwise : length;
}

QSize atLeastOne(const QSize &size, const QSize &otherwise)
{
    return {atLeastOne(size.width(), otherwise.width()), atLeastOne(size.height(), otherwise.height())};
}

QPixmap render(InteractiveOverlay &overlay)
{
    QPixmap picture(overlay.size());
    picture.fill(Qt::transparent);
    overlay.render(&picture, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    return picture;
}

/// Writes the snapshot of one subject. False with the reason in `error`.
bool writeSnapshot(const SnapshotSubject &subject, const QString &folder, const QSize &fallback,
                   QString *error)
{
    bool read = true;
    const QJsonObject overlay =
        subject.shownOverlay ? *subject.shownOverlay : readJsonFile(subject.overlayPath, &read, error);
    if (!read)
        return false;
    const QPixmap picture = renderOverlaySnapshot(overlay, subject.imagePath, fallback, error);
    if (picture.isNull())
        return false;
    if (saveSnapshot(picture, freeSnapshotPath(folder, sanitizedFileBase(subject.name))))
        return true;
    *error = u"Ã‰chec sauvegarde PNG"_s;
    return false;
}
} // namespace

QSize snapshotSize(const QJsonObject &overlay, const QSize &fallback)
{
    const QJsonObject stored = overlay["overlaySize"_L1].toObject();
    const QSize saved(wholeNumber(stored["w"_L1]).value_or(fallback.width()),
                      wholeNumber(stored["h"_L1]).value_or(fallback.height()));
    const QSize wanted = atLeastOne(saved, fallback);
    const QSize size = atLeastOne(isTooLarge(wanted) ? fallback : wanted, lastResort);
    return isTooLarge(size) ? lastResort : size;
}

QPixmap renderOverlaySnapshot(const QJsonObject &overlay, const QString &imagePath, const QSize &fallback,
                              QString *error)
{
    if (overlay.isEmpty())
        return fails(error, u"Overlay vide."_s);
    InteractiveOverlay shown;
    shown.setAttribute(Qt::WA_DontShowOnScreen);
    shown.resize(snapshotSize(overlay, fallback));
    if (!imagePath.isEmpty())
        shown.setBackgroundPixmap(readPicture(imagePath));
    if (!shown.fromJson(overlay))
        return fails(error, u"Format de configuration non reconnu."_s);
    shown.setMode(InteractiveOverlay::Normal);
    shown.show();
    const QPixmap picture = render(shown);
    shown.hide();
    return picture;
}

QString withPngSuffix(const QString &path)
{
    const bool asItStands = path.trimmed().isEmpty() || !QFileInfo(path).suffix().isEmpty();
    return asItStands ? path : path + ".png"_L1;
}

bool saveSnapshot(const QPixmap &picture, const QString &path)
{
    // Encoded first: into a file, the encoder would write piece by piece, or not say what a full disk
    // refused.
    QByteArray png;
    QBuffer buffer(&png);
    return picture.save(&buffer, "PNG") && writeBytesFile(path, png, nullptr);
}

QString freeSnapshotPath(const QString &folder, const QString &base)
{
    const QDir dir(folder);
    QString path = dir.filePath(base + ".png"_L1);
    for (int i = 1; QFileInfo::exists(path); ++i)
        path = dir.filePath(u"%1_%2.png"_s.arg(base).arg(i));
    return path;
}

SnapshotRun writeSnapshots(const QList<SnapshotSubject> &subjects, const QString &folder,
                           const QSize &fallback)
{
    SnapshotRun run;
    for (const SnapshotSubject &subject : subjects) {
        QString reason;
        if (writeSnapshot(subject, folder, fallback, &reason))
            ++run.count;
        else
            run.errors.append(u"%1 : %2"_s.arg(subject.name, reason));
    }
    return run;
}
