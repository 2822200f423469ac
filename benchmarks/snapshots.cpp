// SPDX-License-Identifier: MIT
// Each snapshot takes widgets of its own, which are made, rendered and encoded; the rest of a run, its
// documents, pictures and names, may cost little beside that.
#include "gamepaddefinder.h"
#include "interactiveoverlay.h"
#include "pair.h"
#include "profilesroot.h"
#include "subjects.h"
#include "testhome.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QUuid>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{
constexpr int profileCount = 100;
constexpr int pastilleCount = 16; ///< two sticks, two triggers, a cross and eight buttons
constexpr QSize snapshotPixels(900, 440);

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s cannot be written", qUtf8Printable(path));
}

/// A drawing of a gamepad, more or less: shades and edges, as an encoder meets them.
QImage drawnPad()
{
    QImage image(800, 400, QImage::Format_RGB32);
    image.fill(QColor(30, 34, 40));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient shade(0, 0, 0, 400);
    shade.setColorAt(0, QColor(120, 130, 140));
    shade.setColorAt(1, QColor(60, 65, 70));
    const QBrush body(shade);
    painter.setBrush(body);
    painter.drawRoundedRect(60, 60, 680, 280, 130, 130);
    for (int i = 0; i < pastilleCount; ++i)
        painter.drawEllipse(100 + 42 * i % 600, 110 + 37 * i % 180, 36, 36);
    return image;
}

QByteArray pngOf(const QImage &image)
{
    QByteArray png;
    QBuffer buffer(&png);
    if (!image.save(&buffer, "PNG"))
        qFatal("a picture cannot be encoded");
    return png;
}

QJsonObject overlayOf(const QPixmap &picture)
{
    InteractiveOverlay overlay;
    overlay.resize(snapshotPixels);
    overlay.setBackgroundPixmap(picture);
    for (int i = 0; i < pastilleCount; ++i)
        overlay.addPastille(QPoint(60 + 190 * (i % 4), 60 + 100 * (i / 4)), u"but_%1"_s.arg(i));
    return overlay.toJson();
}

/// A data location of its own with a hundred profiles.
class StoredProfiles
{
public:
    StoredProfiles()
        : m_overlay(overlayOf(QPixmap::fromImage(drawnPad())))
    {
        QCoreApplication::setApplicationName(u"benchmarks-of-snapshots"_s);
        const QByteArray overlay = QJsonDocument(m_overlay).toJson(QJsonDocument::Indented);
        const QByteArray picture = pngOf(drawnPad());
        for (int i = 0; i < profileCount; ++i) {
            const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
            const QString folder = profilesRootPath() + u'/' + id;
            if (!QDir().mkpath(folder))
                qFatal("%s cannot be made", qUtf8Printable(folder));
            write(folder + "/image.png"_L1, picture);
            write(folder + "/overlay.json"_L1, overlay);
            write(folder + "/meta.json"_L1, QJsonDocument(QJsonObject{
                                                              {u"type"_s, u"GamepadDefinderMeta"_s},
                                                              {u"id"_s, id},
                                                              {u"name"_s, u"Gamepad %1"_s.arg(i)},
                                                          })
                                                .toJson());
        }
    }
    ~StoredProfiles()
    {
        QDir(profilesRootPath()).removeRecursively();
        QCoreApplication::setApplicationName(m_applicationName);
    }
    Q_DISABLE_COPY_MOVE(StoredProfiles)

    [[nodiscard]] const QJsonObject &overlay() const { return m_overlay; }

private:
    QString m_applicationName = QCoreApplication::applicationName();
    QJsonObject m_overlay;
};

/// The widgets of one snapshot as `renderOverlaySnapshot` makes them, of a document and a picture in memory.
std::unique_ptr<InteractiveOverlay> shownWidgets(const QJsonObject &overlay, const QPixmap &picture)
{
    auto widgets = std::make_unique<InteractiveOverlay>();
    widgets->setAttribute(Qt::WA_DontShowOnScreen);
    widgets->resize(snapshotPixels);
    widgets->setBackgroundPixmap(picture);
    if (!widgets->fromJson(overlay))
        qFatal("the overlay cannot be read");
    widgets->setMode(InteractiveOverlay::Normal);
    widgets->show();
    return widgets;
}

void writeRendered(InteractiveOverlay &widgets, const QString &path)
{
    QPixmap picture(widgets.size());
    picture.fill(Qt::transparent);
    widgets.render(&picture, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    if (!picture.save(path, "PNG"))
        qFatal("%s cannot be written", qUtf8Printable(path));
}

QString pathIn(const QString &folder, int i)
{
    return u"%1/Gamepad %2.png"_s.arg(folder).arg(i);
}

QString emptied(const QString &folder)
{
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    return folder;
}

/// The pictures in a folder, by name.
QList<QImage> picturesIn(const QString &folder)
{
    QList<QImage> pictures;
    const QDir dir(folder);
    const QStringList files = dir.entryList(QDir::Files, QDir::Name);
    for (const QString &file : files)
        pictures.append(QImage(dir.filePath(file)));
    return pictures;
}

/// What both sides write, and whether they wrote it.
class Outputs
{
public:
    explicit Outputs(const StoredProfiles &profiles)
        : m_overlay(profiles.overlay())
    {}

    /// Our side of a pair, over `bare`, which writes a hundred pictures into the folder that it is given.
    template <typename Bare>
    void compareOver(benchmark::State &state, Bare bare)
    {
        int written = 0;
        compare(state,
                timed([&] { written = m_editor.exportSnapshotsToDir(m_ours); }, [&] { emptied(m_ours); }),
                timed([&] { bare(m_bare); }, [&] { emptied(m_bare); }));
        require(state, written == profileCount, "not every profile was written");
        const QList<QImage> ours = picturesIn(m_ours);
        const QList<QImage> theirs = picturesIn(m_bare);
        require(state, ours.size() == profileCount && theirs.size() == profileCount, "a picture is missing");
        require(state, ours.count(theirs.constFirst()) >= profileCount - 1, // the one on show is being edited
                "the two sides do not make the same picture");
    }

    [[nodiscard]] const QJsonObject &overlay() const { return m_overlay; }

private:
    QJsonObject m_overlay;
    GamepadDefinder m_editor;
    QString m_ours = temporaryHome() + "/snapshots"_L1;
    QString m_bare = temporaryHome() + "/rendered"_L1;
};

void measureRun(benchmark::State &state)
{
    const StoredProfiles profiles;
    Outputs outputs(profiles);
    const QPixmap picture = QPixmap::fromImage(drawnPad());
    outputs.compareOver(state, [&](const QString &folder) {
        for (int i = 0; i < profileCount; ++i)
            writeRendered(*shownWidgets(outputs.overlay(), picture), pathIn(folder, i));
    });
}

void measureOverReadyWidgets(benchmark::State &state)
{
    const StoredProfiles profiles;
    Outputs outputs(profiles);
    const QPixmap picture = QPixmap::fromImage(drawnPad());
    std::vector<std::unique_ptr<InteractiveOverlay>> ready;
    ready.reserve(profileCount);
    for (int i = 0; i < profileCount; ++i)
        ready.push_back(shownWidgets(outputs.overlay(), picture));
    outputs.compareOver(state, [&](const QString &folder) {
        for (int i = 0; i < profileCount; ++i)
            writeRendered(*ready[static_cast<size_t>(i)], pathIn(folder, i));
    });
}
} // namespace

void addSnapshotPairs(const Suite &suite)
{
    suite.add(
        {.name = "snapshots/hundred",
         .what = "exportSnapshotsToDir over 100 profiles, over making, rendering and encoding their widgets",
         .limit = 1.3,
         .rounds = 7},
        measureRun);
    suite.add({.name = "snapshots/hundred-ready",
               .what = "the same, over rendering and encoding widgets that are there already",
               .limit = {},
               .rounds = 7},
              measureOverReadyWidgets);
}
