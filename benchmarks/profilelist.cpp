// SPDX-License-Identifier: MIT
// Opening the editor reads every profile and shows its picture in the list, so it may cost little more than
// reading and scaling, and no more for each where there are many.
#include "gamepaddefinder.h"
#include "gamepadmanager.h"
#include "jsonfiles.h"
#include "pair.h"
#include "profilesroot.h"
#include "profilestore.h"
#include "scriptedjoystick.h"
#include "subjects.h"
#include "testhome.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtGui/QImage>
#include <QtGui/QPixmap>

using namespace Qt::StringLiterals;

namespace
{
constexpr QSize iconSize(200, 140);

/// As large as pictures of gamepads are, and with something in it to decode.
QString picture()
{
    const QString path = temporaryHome() + "/gamepad.png"_L1;
    QImage image(640, 480, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x * y / 1200, (x + y) / 5, (x ^ y) / 4));
    }
    if (!image.save(path))
        qFatal("%s cannot be written", qUtf8Printable(path));
    return path;
}

void store(GamepadEntry entry, const QString &image)
{
    entry.name = u"Gamepad"_s;
    entry.imagePath = entry.dirPath + "/image.png"_L1;
    entry.overlayPath = entry.dirPath + "/overlay.json"_L1;
    if (!QFile::copy(image, entry.imagePath) || !writeNewMeta(entry, nullptr) ||
        !writeJsonFile(entry.overlayPath, {{u"type"_s, u"InteractiveOverlay"_s}}, nullptr, true))
        qFatal("%s cannot be written", qUtf8Printable(entry.dirPath));
}

/// A data location of its own with `count` profiles.
class StoredProfiles
{
public:
    explicit StoredProfiles(int count)
        : m_count(count)
    {
        enter();
        const QString image = picture();
        const QString root = makeProfilesRoot();
        for (int i = 0; i < count; ++i)
            store(makeProfileFolder(root), image);
    }
    Q_DISABLE_COPY_MOVE(StoredProfiles)

    ~StoredProfiles()
    {
        enter();
        QDir(profilesRootPath()).removeRecursively();
    }

    /// Makes these the profiles that an editor finds.
    void enter() const { QCoreApplication::setApplicationName(u"%1-listed"_s.arg(m_count)); }

    [[nodiscard]] int count() const { return m_count; }

private:
    int m_count;
};

/// Opens and closes an editor, and returns how many profiles it had.
int openEditor(const StoredProfiles &profiles)
{
    profiles.enter();
    const GamepadDefinder editor;
    return static_cast<int>(editor.entries().size());
}

/// Reads the same documents and pictures, scales the pictures, and returns how many there were. The picture
/// of the first profile is read once more, in its own size, since the editor shows it.
int readAndScale(const StoredProfiles &profiles)
{
    profiles.enter();
    QList<QPixmap> icons;
    const QDir root(profilesRootPath());
    const QStringList folders = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &folder : folders) {
        const QDir dir(root.filePath(folder));
        QFile file(dir.filePath(u"meta.json"_s));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QJsonObject meta = QJsonDocument::fromJson(file.readAll()).object();
        const QPixmap image = QPixmap::fromImage(QImage(dir.filePath(meta["image"_L1].toString())));
        icons.append(image.scaled(iconSize, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        if (icons.constLast().isNull())
            icons.removeLast();
    }
    const QPixmap shown(root.filePath(folders.value(0) + "/image.png"_L1));
    return shown.isNull() ? 0 : static_cast<int>(icons.size());
}

/// `*found` is how many profiles the last round found.
Side opening(const StoredProfiles &profiles, int *found)
{
    return repeated([&profiles, found] { *found = openEditor(profiles); }, profiles.count());
}

Side reading(const StoredProfiles &profiles, int *found)
{
    return repeated([&profiles, found] { *found = readAndScale(profiles); }, profiles.count());
}

/// The manager that editors ask for, for as long as this object lives.
class Manager
{
public:
    Manager()
    {
        scripted::reset();
        GamepadManager::instance(&m_parent);
    }

private:
    QObject m_parent;
};

void measureOverReading(benchmark::State &state, int count)
{
    const Manager manager;
    const StoredProfiles profiles(count);
    int listed = 0;
    int scaled = 0;
    compare(state, opening(profiles, &listed), reading(profiles, &scaled));
    require(state, listed == count, "the editor did not list every profile");
    require(state, scaled == count, "the bare side did not scale every picture");
}

void measureGrowth(benchmark::State &state, int many, int few)
{
    const Manager manager;
    const StoredProfiles manyProfiles(many);
    const StoredProfiles fewProfiles(few);
    int ofMany = 0;
    int ofFew = 0;
    compare(state, opening(manyProfiles, &ofMany), opening(fewProfiles, &ofFew));
    require(state, ofMany == many && ofFew == few, "the editor did not list every profile");
}
} // namespace

void addProfileListPairs(const Suite &suite)
{
    for (const int count : {10, 100, 1000}) {
        suite.add({.name = "profile-list/open-" + std::to_string(count),
                   .what = "an editor opened, over reading the same files and scaling the same pictures",
                   .limit = 1.3,
                   .rounds = count < 100    ? 61
                             : count < 1000 ? 15
                                            : 3},
                  [count](benchmark::State &state) { measureOverReading(state, count); });
    }
    suite.add({.name = "profile-list/growth",
               .what = "an editor opened with 1,000 profiles, over with 100, for each profile",
               .limit = 1.3,
               .rounds = 3},
              [](benchmark::State &state) { measureGrowth(state, 1000, 100); });
}
