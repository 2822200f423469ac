// SPDX-License-Identifier: MIT
#include "profileimport.h"

#include "jsonfiles.h"
#include "profilestore.h"

using namespace Qt::StringLiterals;

namespace
{
QString textOf(ImportStep step)
{
    switch (step) {
    case ImportStep::Picture:
        return u"Ã‰chec Ã©criture image : %1"_s;
    case ImportStep::Overlay:
        return u"Ã‰chec Ã©criture overlay.json : %1"_s;
    case ImportStep::Meta:
        return u"Ã‰chec Ã©criture meta.json : %1"_s;
    case ImportStep::Mapping:
        return u"Echec ecriture mapping : %1"_s;
    }
    Q_UNREACHABLE_RETURN({});
}
} // namespace

std::optional<ImportFailure> importProfileFiles(const QString &root, const ExchangedProfile &profile,
                                                QString *folder)
{
    GamepadEntry entry = makeProfileFolder(root);
    *folder = entry.dirPath;
    entry.name = profile.name;
    entry.imagePath = entry.dirPath + u'/' + profile.imageFile;
    entry.overlayPath = entry.dirPath + "/overlay.json"_L1;

    QString error;
    if (!writeBytesFile(entry.imagePath, profile.image, &error))
        return ImportFailure{ImportStep::Picture, error};
    if (!writeJsonFile(entry.overlayPath, profile.overlay, &error, true))
        return ImportFailure{ImportStep::Overlay, error};
    if (!writeNewMeta(entry, &error))
        return ImportFailure{ImportStep::Meta, error};
    if (!ensureMapping(entry.dirPath, &error))
        return ImportFailure{ImportStep::Mapping, error};
    return std::nullopt;
}

StoreNotice noticeOf(const ImportFailure &failure)
{
    return {
        .icon = QMessageBox::Warning, .title = u"Import"_s, .text = textOf(failure.step).arg(failure.error)};
}
