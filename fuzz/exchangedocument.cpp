// SPDX-License-Identifier: MIT
// An exchange document, from its bytes to a profile on disk and back: whatever it says, it is refused or
// becomes one folder of four files, nothing is touched beside that, and the profile leaves as it came.
#include "fuzzing.h"
#include "plainfilename.h"
#include "profileimport.h"
#include "profilestore.h"
#include "snapshots.h"
#include "testhome.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace
{
QByteArray textOf(const QJsonObject &json)
{
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

/// All entries, hidden ones included.
QStringList entriesOf(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

void checkSize(const QJsonObject &overlay)
{
    for (const QSize &fallback : {QSize(640, 480), QSize(0, -1)}) {
        const QSize size = snapshotSize(overlay, fallback);
        mustHold(size.width() >= 1 && size.height() >= 1, "a snapshot without pixels");
        mustHold(qint64{size.width()} * size.height() <= 64'000'000, "a snapshot beyond all bounds");
    }
}

void checkProfile(const ExchangedProfile &profile, const QString &folder)
{
    mustHold(entriesOf(folder).size() == 4, "a profile is four files");
    GamepadEntry entry;
    mustHold(loadEntryFromDir(folder, &entry), "what was imported is no profile");
    mustHold(entry.name == profile.name && entry.deviceName.isEmpty(), "an import changes the record");

    QJsonObject document;
    mustHold(parseExchangeBytes(textOf(buildSavedExchangeDocument(entry)), &document, nullptr),
             "what is exported does not parse");
    const auto again = readExchangeDocument(document);
    mustHold(again && again->name == profile.name && again->image == profile.image &&
                 again->overlay == profile.overlay,
             "a profile leaves otherwise than it came");
}

void checkImport(const ExchangedProfile &profile)
{
    mustHold(isPlainFileName(profile.imageFile) && profile.imageFile.startsWith("image."_L1),
             "the picture's name leads away");
    mustHold(!profile.overlay.isEmpty(), "an empty overlay came in");

    const QString root = temporaryHome() + "/fuzzed/root"_L1;
    QDir().mkpath(root);
    QString folder;
    const auto failure = importProfileFiles(root, profile, &folder);
    mustHold(QFileInfo(folder).path() == root, "the profile's folder lies elsewhere");
    mustHold(entriesOf(root) == QStringList{QFileInfo(folder).fileName()},
             "an import left more than its folder");
    mustHold(entriesOf(temporaryHome() + "/fuzzed"_L1) == QStringList{u"root"_s}, "an import left the root");
    if (failure)
        mustHold(failure->step == ImportStep::Picture && entriesOf(folder).isEmpty(),
                 "only a picture's name can fail here");
    else
        checkProfile(profile, folder);
    QDir(root).removeRecursively();
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QJsonObject document;
    QString error;
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (!parseExchangeBytes(bytes, &document, &error)) {
        mustHold(!error.isEmpty() && document.isEmpty(), "a refusal without a reason");
        return 0;
    }
    checkSize(document["overlay"_L1].toObject());
    if (const auto profile = readExchangeDocument(document))
        checkImport(*profile);
    return 0;
}
