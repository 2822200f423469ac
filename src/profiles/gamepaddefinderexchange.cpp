// SPDX-License-Identifier: MIT
// The doors by which profiles come and go. Linked profiles pass none of them.
#include "gamepaddefinder.h"

#include "exchangedocument.h"
#include "filebase.h"
#include "interactiveoverlay.h"
#include "jsonfiles.h"
#include "notice.h"
#include "profileimport.h"
#include "profilestore.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QListWidget>

using namespace Qt::StringLiterals;

namespace
{
QString exchangeFormat()
{
    return u"application/x-velor-gamepad"_s;
}

QString exchangeFilter()
{
    return u"Configuration Velor (*.velor.json)"_s;
}

/// In the exchange's own format, and as text for places that hold nothing else.
QMimeData *mimeDataOf(const QJsonObject &document)
{
    const QByteArray json = QJsonDocument(document).toJson(QJsonDocument::Compact);
    auto *data = new QMimeData;
    data->setData(exchangeFormat(), json);
    data->setText(QString::fromUtf8(json));
    return data;
}
} // namespace

/// What is said at a door by which documents come in.
struct GamepadDefinder::ImportWords
{
    QString title;
    QString linked;
    QString refused;
};

/// Asked after a dialog, under which the rows may have changed.
bool GamepadDefinder::isOnShow(const QString &folder) const
{
    return isRow(m_currentRow) && m_entries.at(m_currentRow).dirPath == folder;
}

void GamepadDefinder::actionExport()
{
    if (!isRow(m_currentRow))
        return;
    const QPointer<GamepadDefinder> self = this;
    const GamepadEntry entry = m_entries.at(m_currentRow);
    const QString proposed = QDir::home().filePath(sanitizedFileBase(entry.name) + ".velor.json"_L1);
    const QString title = u"Export"_s;
    const QString path =
        QFileDialog::getSaveFileName(this, u"Exporter le gamepad"_s, proposed, exchangeFilter());
    if (!self || path.isEmpty() || !isOnShow(entry.dirPath))
        return;

    const QJsonObject document =
        buildExchangeDocument(m_entries.at(m_currentRow), m_widgetOverlay->toJsonBytes(true));
    if (!linkedDevice(document).isEmpty()) {
        showNotice(
            this, QMessageBox::Information, title,
            u"Ce profil est associÃ© Ã  une manette. Le copier/coller nâ€™est disponible que pour les profils non liÃ©s."_s);
        return;
    }
    QString error;
    if (!writeJsonFile(path, document, &error, true))
        showNotice(this, QMessageBox::Warning, title, u"Ã‰chec export : %1"_s.arg(error));
}

void GamepadDefinder::actionCopy()
{
    if (!isRow(m_currentRow))
        return;
    const GamepadEntry &entry = m_entries.at(m_currentRow);
    if (!entry.deviceName.isEmpty()) {
        showNotice(
            this, QMessageBox::Information, u"Copier"_s,
            u"Ce profil est associÃ© Ã  Â« %1 Â». Le copier/coller est rÃ©servÃ© aux profils non liÃ©s."_s
                .arg(entry.deviceName));
        return;
    }
    QGuiApplication::clipboard()->setMimeData(mimeDataOf(buildSavedExchangeDocument(entry)));
}

void GamepadDefinder::actionImport()
{
    const ImportWords words{
        .title = u"Import"_s,
        .linked =
            u"Ce fichier est liÃ© Ã  une manette. Le coller/importe nâ€™est autorisÃ© que pour des profils non liÃ©s."_s,
        .refused = u"Impossible dâ€™importer ce fichier."_s,
    };
    const QPointer<GamepadDefinder> self = this;
    const QString path = QFileDialog::getOpenFileName(this, u"Importer un gamepad"_s, QString(),
                                                      exchangeFilter() + ";;JSON (*.json)"_L1);
    if (!self || path.isEmpty())
        return;
    bool read = false;
    QString error;
    const QJsonObject document = readJsonFile(path, &read, &error);
    if (!read) {
        showNotice(this, QMessageBox::Warning, words.title, error);
        return;
    }
    importUnlinked(document, words);
}

void GamepadDefinder::actionPaste()
{
    const ImportWords words{
        .title = u"Coller"_s,
        .linked =
            u"Ce profil est liÃ© Ã  une manette. Le coller nâ€™est autorisÃ© que pour des profils non liÃ©s."_s,
        .refused = u"Impossible de crÃ©er le gamepad Ã  partir des donnÃ©es."_s,
    };
    const QMimeData *held = QGuiApplication::clipboard()->mimeData();
    QJsonObject document;
    QString error;
    if (held && held->hasFormat(exchangeFormat())) {
        if (!parseExchangeBytes(held->data(exchangeFormat()), &document, &error)) {
            showNotice(this, QMessageBox::Warning, words.title, error);
            return;
        }
    } else if (held && held->hasText()) {
        // What is wrong with a text that was copied for something else is of no use to anyone.
        if (!parseExchangeBytes(held->text().toUtf8(), &document, nullptr)) {
            showNotice(this, QMessageBox::Warning, words.title,
                       u"Le presseâ€‘papier ne contient pas de configuration Velor valide."_s);
            return;
        }
    } else {
        showNotice(this, QMessageBox::Information, words.title,
                   u"Aucune configuration Velor trouvÃ©e dans le presseâ€‘papier."_s);
        return;
    }
    importUnlinked(document, words);
}

void GamepadDefinder::importUnlinked(const QJsonObject &document, const ImportWords &words)
{
    if (!linkedDevice(document).isEmpty()) {
        showNotice(this, QMessageBox::Information, words.title, words.linked);
        return;
    }
    const QPointer<GamepadDefinder> self = this;
    int row = -1;
    const bool imported = importExchangeDocument(document, &row);
    if (!self)
        return;
    if (!imported)
        showNotice(this, QMessageBox::Warning, words.title, words.refused);
    else if (isRow(row))
        m_listWidget->setCurrentRow(row);
}

bool GamepadDefinder::importExchangeDocument(const QJsonObject &document, int *newRow)
{
    const auto profile = readExchangeDocument(document);
    if (!profile)
        return false;
    QString folder;
    if (const auto failure = importProfileFiles(gamepadsRootPath(), *profile, &folder)) {
        const StoreNotice notice = noticeOf(*failure);
        showNotice(this, notice.icon, notice.title, notice.text);
        return false;
    }
    GamepadEntry entry;
    if (!loadEntryFromDir(folder, &entry))
        return false;
    appendEntry(entry);
    *newRow = static_cast<int>(m_entries.size()) - 1;
    return true;
}
