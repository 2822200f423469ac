// SPDX-License-Identifier: MIT
// The mapping of the profile on show: read with the profile, written after each change, and kept through a
// change of the actions.
#include "actionlinker.h"

#include "gamepadmanager.h"
#include "heldconfigs.h"
#include "interactiveoverlay.h"
#include "knownnames.h"
#include "makepath.h"
#include "mappingfile.h"
#include "mappingmerge.h"
#include "profileicon.h"
#include "profilemapping.h"
#include "profilesroot.h"

#include <QtCore/QDebug>
#include <QtCore/QFileInfo>
#include <QtCore/QScopedValueRollback>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

void ActionLinker::setUpSaving()
{
    m_saveTimer.setObjectName(u"saveTimer"_s);
    m_saveTimer.setSingleShot(true);
    m_saveTimer.setInterval(250ms);
    connect(&m_saveTimer, &QTimer::timeout, this, &ActionLinker::saveMapping);
}

void ActionLinker::loadGamepadSnapshot(const QUuid &id, const QString & /*name*/, const QString &deviceName,
                                       const QJsonObject &overlay, const QString &imagePath)
{
    const QScopedValueRollback loading(m_loading, true);
    m_saveTimer.stop();
    m_unsaved = false;
    m_gamepadId = id;
    m_deviceName = deviceName;
    m_overlay->setBackgroundPixmap(readPicture(imagePath));
    // What is no overlay leaves the one before on show.
    m_overlay->fromJson(overlay);
    loadMapping();
    followManager();
    followDevice();
}

void ActionLinker::loadMapping()
{
    const QString path = currentMappingPath();
    if (path.isEmpty() || !QFileInfo::exists(path))
        return;
    bool ok = false;
    QString error;
    const QJsonObject mapping = readMappingFile(path, &ok, &error);
    if (ok)
        m_overlay->applyMapping(withKnownNames(mapping, m_overlay->externalServices()));
    else
        qWarning() << "[ActionLinker] mapping load failed:" << error;
}

void ActionLinker::mirrorServices()
{
    if (m_saveTimer.isActive()) {
        m_saveTimer.stop();
        // The host, which is told of the save, may close the window.
        const QPointer<ActionLinker> self(this);
        saveMapping();
        if (!self)
            return;
    }

    // New actions empty the fields of every tool box, and a name that they do not know loses its arguments.
    // So the mapping is applied once more, and none of it is a change that would be saved.
    const QScopedValueRollback loading(m_loading, true);
    const QJsonObject mapping = currentMapping();
    const HeldConfigs held(*m_overlay);
    m_overlay->setExternalServices(withTrimmedNames(m_externalServices));
    m_overlay->applyMapping(withKnownNames(mapping, m_overlay->externalServices()));
    held.giveBack();
}

QJsonObject ActionLinker::currentMapping()
{
    bool ok = false;
    // What could not be saved is nowhere but in the overlay.
    const QJsonObject stored =
        m_unsaved ? QJsonObject() : readMappingFile(currentMappingPath(), &ok, nullptr);
    return ok ? stored : m_overlay->exportBridges();
}

void ActionLinker::scheduleMappingSave()
{
    if (m_loading || m_gamepadId.isNull())
        return;
    m_unsaved = true;
    // Never started anew, so that a steady flow of changes is saved too.
    if (!m_saveTimer.isActive())
        m_saveTimer.start();
}

void ActionLinker::saveMapping()
{
    const QString path = m_loading ? QString() : currentMappingPath();
    if (path.isEmpty())
        return;
    const QJsonObject stored = readMappingFile(path, nullptr, nullptr);
    const QJsonArray bridges = m_overlay->exportBridges().value("bridges"_L1).toArray();
    makePath(QFileInfo(path).path());
    QString error;
    if (!writeMappingFile(path, mergedMapping(stored, bridges), &error)) {
        qWarning() << "[ActionLinker] mapping save failed:" << error;
        return;
    }
    m_unsaved = false;
    publishNoCodeApp();
}

void ActionLinker::publishNoCodeApp()
{
    if (m_deviceName.isEmpty())
        return;
    followManager();
    if (ControlManette *device = findDevice(m_deviceName))
        device->refreshNoCodeApp();
}

void ActionLinker::refreshBridgesFromActions(const QJsonArray &actions)
{
    if (actions.isEmpty())
        return;
    refreshMappings(gamepadsRootPath(), actions);
    publishNoCodeApp();
}

QString ActionLinker::gamepadsRootPath()
{
    if (m_gamepadsRoot.isEmpty()) {
        m_gamepadsRoot = profilesRootPath();
        makePath(m_gamepadsRoot);
    }
    return m_gamepadsRoot;
}

QString ActionLinker::currentMappingPath()
{
    return mappingFilePath(gamepadsRootPath(), m_gamepadId);
}
