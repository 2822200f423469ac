// SPDX-License-Identifier: MIT
// The menu and its dialogs run event loops: whatever comes after them asks first whether the overlay is
// there.
#include "interactiveoverlay.h"

#include "mappingdocument.h"
#include "mappingfile.h"
#include "notice.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtGui/QContextMenuEvent>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenu>

using namespace Qt::StringLiterals;

namespace
{
QString jsonFilter()
{
    return u"JSON (*.json)"_s;
}

QString withJsonSuffix(const QString &path)
{
    return QFileInfo(path).suffix().isEmpty() ? path + ".json"_L1 : path;
}
} // namespace

void InteractiveOverlay::contextMenuEvent(QContextMenuEvent *event)
{
    const QPoint centre = event->pos();
    // On the heap, since the overlay can go while its menu is open and takes the menu with it.
    const QPointer<QMenu> menu = new QMenu(this);
    const QAction *addition = menu->addAction(u"Ajouter une pastille ici"_s);
    const QAction *loading = nullptr;
    const QAction *exporting = nullptr;
    if (m_mode == Normal) {
        menu->addSeparator();
        loading = menu->addAction(u"Charger fonctions (ref)..."_s);
        exporting = menu->addAction(u"Exporter mapping JSON..."_s);
    }

    const QAction *chosen = menu->exec(event->globalPos());
    if (!menu)
        return;
    menu->deleteLater();
    if (!chosen)
        return;
    if (chosen == addition) {
        addPastille(centre, QString());
        Q_EMIT dirty();
    } else if (chosen == loading) {
        loadCatalogue();
    } else if (chosen == exporting) {
        exportMapping();
    }
}

void InteractiveOverlay::loadCatalogue()
{
    const QString title = u"Fonctions"_s;
    const QPointer<InteractiveOverlay> self = this;
    const QString path =
        QFileDialog::getOpenFileName(this, u"Charger fonctions (ref)"_s, QDir::currentPath(), jsonFilter());
    if (!self || path.isEmpty())
        return;

    QJsonDocument document;
    QString error;
    if (!loadMappingFile(path, &document, &error)) {
        showNotice(this, QMessageBox::Warning, title, error);
        return;
    }
    const QJsonArray services = refArrayOf(document);
    if (services.isEmpty()) {
        showNotice(this, QMessageBox::Warning, title, u"No 'ref' array found in %1"_s.arg(path));
        return;
    }
    setExternalServices(services);
    if (self)
        showNotice(this, QMessageBox::Information, title, u"Loaded %1 functions"_s.arg(services.size()));
}

void InteractiveOverlay::exportMapping()
{
    const QString title = u"Exporter mapping"_s;
    const QPointer<InteractiveOverlay> self = this;
    const QString chosen =
        QFileDialog::getSaveFileName(this, u"Exporter mapping JSON"_s,
                                     QDir::current().filePath(u"configActionGamepad.json"_s), jsonFilter());
    if (!self || chosen.isEmpty())
        return;

    const QJsonObject document = mappingDocument(exportBridges().value("bridges"_L1).toArray());
    const QString path = chosen.trimmed().isEmpty() ? chosen : withJsonSuffix(chosen);
    QString error;
    if (!writeMappingFile(path, document, &error)) {
        showNotice(this, QMessageBox::Warning, title, error);
        return;
    }
    showNotice(this, QMessageBox::Information, title,
               u"Mapping exported to %1"_s.arg(QDir::toNativeSeparators(path)));
}
