// SPDX-License-Identifier: MIT
// Pictures of profiles for people, of the one on show or of all.
#include "gamepaddefinder.h"

#include "filebase.h"
#include "interactiveoverlay.h"
#include "makepath.h"
#include "notice.h"
#include "snapshots.h"

#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QStandardPaths>
#include <QtWidgets/QFileDialog>

using namespace Qt::StringLiterals;

namespace
{
QString picturesFolder()
{
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return pictures.isEmpty() ? QDir::homePath() : pictures;
}
} // namespace

void GamepadDefinder::actionSnapshot()
{
    if (!isRow(m_currentRow))
        return;
    const QString title = u"Snapshot PNG"_s;
    const QPointer<GamepadDefinder> self = this;
    const GamepadEntry entry = m_entries.at(m_currentRow);
    const QString proposed = QDir(picturesFolder()).filePath(sanitizedFileBase(entry.name) + ".png"_L1);
    const QString chosen =
        QFileDialog::getSaveFileName(this, u"Exporter snapshot PNG"_s, proposed, u"Images PNG (*.png)"_s);
    if (!self || chosen.isEmpty() || !isOnShow(entry.dirPath))
        return;

    const QString path = withPngSuffix(chosen);
    QString error;
    const QPixmap picture = renderOverlaySnapshot(
        m_widgetOverlay->toJson(), m_entries.at(m_currentRow).imagePath, m_widgetOverlay->size(), &error);
    if (picture.isNull())
        showNotice(this, QMessageBox::Warning, title,
                   u"Impossible de gÃ©nÃ©rer le snapshot : %1"_s.arg(error));
    else if (!saveSnapshot(picture, path))
        showNotice(this, QMessageBox::Warning, title, u"Ã‰chec sauvegarde PNG : %1"_s.arg(path));
}

void GamepadDefinder::actionSnapshotAll()
{
    if (m_entries.isEmpty())
        return;
    const QString title = u"Snapshots PNG"_s;
    const QPointer<GamepadDefinder> self = this;
    const QString folder = QFileDialog::getExistingDirectory(this, u"Choisir un dossier pour les snapshots"_s,
                                                             picturesFolder(), QFileDialog::ShowDirsOnly);
    if (!self || folder.isEmpty())
        return;

    int written = 0;
    QStringList errors;
    const bool ran = exportAllSnapshots(folder, &written, &errors);
    if (!self)
        return;
    const QString reasons = errors.join(u'\n');
    if (!ran) {
        showNotice(this, QMessageBox::Warning, title,
                   errors.isEmpty() ? u"Impossible de gÃ©nÃ©rer les snapshots."_s : reasons);
    } else if (errors.isEmpty()) {
        showNotice(this, QMessageBox::Information, title, u"Snapshots gÃ©nÃ©rÃ©s : %1"_s.arg(written));
    } else {
        showNotice(this, QMessageBox::Warning, title,
                   u"Snapshots gÃ©nÃ©rÃ©s : %1\nErreurs :\n%2"_s.arg(QString::number(written), reasons));
    }
}

bool GamepadDefinder::exportAllSnapshots(const QString &outDir, int *written, QStringList *errors)
{
    const auto refuses = [errors](const QString &reason) {
        if (errors)
            errors->append(reason);
        return false;
    };
    if (written)
        *written = 0;
    const QString folder = outDir.trimmed();
    if (folder.isEmpty())
        return refuses(u"Dossier de sortie vide."_s);

    if (!flush())
        return refuses(u"Impossible de sauvegarder la configuration en cours."_s);
    if (!QDir(folder).exists() && !makePath(folder))
        return refuses(u"Impossible de crÃ©er le dossier : %1"_s.arg(folder));

    const SnapshotRun run = writeSnapshots(snapshotSubjects(), folder, m_widgetOverlay->size());
    if (written)
        *written = run.count;
    if (errors)
        errors->append(run.errors);
    return true;
}

QList<SnapshotSubject> GamepadDefinder::snapshotSubjects() const
{
    QList<SnapshotSubject> subjects;
    subjects.reserve(m_entries.size());
    for (const GamepadEntry &entry : m_entries)
        subjects.append({entry.name, entry.imagePath, entry.overlayPath, std::nullopt});
    if (isRow(m_currentRow))
        subjects[m_currentRow].shownOverlay = m_widgetOverlay->toJson();
    return subjects;
}

int GamepadDefinder::exportSnapshotsToDir(const QString &outDir)
{
    int written = 0;
    QStringList errors;
    if (!exportAllSnapshots(outDir, &written, &errors))
        return -1;
    for (const QString &error : std::as_const(errors))
        qWarning() << "snapshot:" << error;
    return written;
}
