// SPDX-License-Identifier: MIT
#include "storenotices.h"

using namespace Qt::StringLiterals;

namespace
{
StoreNotice warning(const QString &title, const QString &text)
{
    return {.icon = QMessageBox::Warning, .title = title, .text = text};
}

StoreNotice critical(const QString &title, const QString &text)
{
    return {.icon = QMessageBox::Critical, .title = title, .text = text};
}

QString metaText(const QString &error)
{
    return u"Impossible dâ€™Ã©crire meta.json : %1"_s.arg(error);
}

QString mappingText(const QString &error)
{
    return u"Echec ecriture mapping : %1"_s.arg(error);
}
} // namespace

StoreNotice noticeOf(const StoreFailure &failure)
{
    const QString &error = failure.error;
    const QString create = u"CrÃ©ation"_s;
    const QString save = u"Sauvegarde"_s;
    const QString duplicate = u"Dupliquer"_s;
    const QString image = u"Image"_s;

    switch (failure.step) {
    case StoreStep::CreatePicture:
        return warning(create, error);
    case StoreStep::CreateOverlay:
        return warning(create, u"Impossible dâ€™Ã©crire la configuration par dÃ©faut : %1"_s.arg(error));
    case StoreStep::CreateMeta:
        return warning(create, metaText(error));
    case StoreStep::CreateMapping:
        return warning(u"Creation"_s, mappingText(error));
    case StoreStep::SaveOverlay:
        return critical(save, u"Ã‰chec sauvegarde config : %1"_s.arg(error));
    case StoreStep::SaveMapping:
        return critical(save, u"Echec sauvegarde mapping : %1"_s.arg(error));
    case StoreStep::SaveMeta:
        return critical(save, u"Ã‰chec sauvegarde meta : %1"_s.arg(error));
    case StoreStep::DuplicatePicture:
        return warning(duplicate, error);
    case StoreStep::DuplicateOverlay:
        return warning(duplicate, u"Impossible de copier la configuration."_s);
    case StoreStep::DuplicateMappingCopy:
        return warning(duplicate, u"Echec copie mapping : %1"_s.arg(error));
    case StoreStep::DuplicateDefaultMapping:
        return warning(duplicate, mappingText(error));
    case StoreStep::DuplicateMeta:
        return warning(duplicate, metaText(error));
    case StoreStep::RenameMeta:
        return warning(u"Renommer"_s, metaText(error));
    case StoreStep::ImagePicture:
        return warning(image, error);
    case StoreStep::ImageMeta:
        return warning(image, metaText(error));
    }
    Q_UNREACHABLE_RETURN({});
}

StoreNotice deviceTakenNotice()
{
    return warning(u"Association"_s, u"Cette manette est dÃ©jÃ  associÃ©e Ã  un autre profil."_s);
}
