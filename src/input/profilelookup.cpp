// SPDX-License-Identifier: MIT
#include "profilelookup.h"

#include "profilemeta.h"
#include "profilesroot.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint64 largestMeta = 64LL * 1024 * 1024; // a host cannot be made to hold whatever lies there

bool isFile(const QString &path)
{
    return QFileInfo(path).isFile();
}

std::optional<ProfileMeta> readMeta(const QString &folder)
{
    const QFileInfo info(folder + "/meta.json"_L1);
    // What is no file, a pipe say, could keep the host waiting.
    if (!info.isFile() || info.size() > largestMeta)
        return std::nullopt;
    // Every profile is read at each lookup, so the size that is known is not asked for again, and what is
    // read in one piece is not buffered.
    QFile file(info.filePath());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::nullopt;
    return ProfileMeta::fromJson(file.read(info.size()));
}

/// The path that `candidate` makes of the first profile for which that names an existing file. A candidate
/// is a file name in the profile's folder, empty where the profile does not match.
template <typename Candidate>
QString firstInProfiles(Candidate candidate)
{
    const QString root = profilesRootPath();
    const QStringList folders = QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &name : folders) {
        const QString folder = root + u'/' + name;
        const auto meta = readMeta(folder);
        const QString file = meta ? candidate(*meta) : QString();
        if (!file.isEmpty() && isFile(folder + u'/' + file))
            return folder + u'/' + file;
    }
    return {};
}

QString hexadecimal(uint id)
{
    return u"%1"_s.arg(id, 4, 16, u'0');
}
} // namespace

QString findConfigFile(const QString &name, uint vendorId, uint productId)
{
    const QString ofProfile = firstInProfiles([&](const ProfileMeta &meta) {
        return meta.serves(name, vendorId, productId) ? meta.config() : QString();
    });
    if (!ofProfile.isEmpty())
        return ofProfile;

    const QString folder = u"%1_%2"_s.arg(hexadecimal(vendorId), hexadecimal(productId));
    const QString ofIds = profilesRootPath() + u'/' + folder + "/configActionGamepad.json"_L1;
    if (isFile(ofIds))
        return ofIds;
    return isFile(commonConfigPath()) ? commonConfigPath() : QString();
}

QString findProfileImage(const QString &name)
{
    if (name.isEmpty())
        return {};
    return firstInProfiles(
        [&](const ProfileMeta &meta) { return meta.isLinkedTo(name) ? meta.image() : QString(); });
}

QString commonConfigPath()
{
    return profilesRootPath() + "/configActionGamepad.json"_L1;
}
