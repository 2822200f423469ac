// SPDX-License-Identifier: MIT
#include "actionlinker.h"

#include "actionspanel.h"
#include "gamepaddefinder.h"
#include "interactiveoverlay.h"
#include "listedactions.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QGridLayout>

using namespace Qt::StringLiterals;

ActionLinker::ActionLinker(QWidget *parent)
    : QWidget(parent)
    , m_saveTimer(this)
{
    setUpForm();

    m_overlay->setBackgroundScaleMode(BackgroundScaleMode::Contain);
    m_overlay->setMode(InteractiveOverlay::Normal);
    m_overlay->setServicesLocked(true);
    m_overlay->setExternalServices(m_externalServices);
    connect(this, &ActionLinker::externalServicesChanged, this, &ActionLinker::mirrorServices);
    connect(this, &ActionLinker::externalServicesChanged, this, &ActionLinker::refreshActionsPanel);
    connect(m_overlay, &InteractiveOverlay::dirty, this, &ActionLinker::scheduleMappingSave);
    setUpSaving();
    followManager();
    refreshActionsPanel();
    updatePanelVisibility();
    QCoreApplication::instance()->installEventFilter(this);
}

void ActionLinker::setUpForm()
{
    if (objectName().isEmpty())
        setObjectName(u"ActionLinker"_s);
    setWindowTitle(u"Form"_s);
    resize(514, 405);

    m_overlay = new InteractiveOverlay(this);
    m_overlay->setObjectName(u"iteractiveoverlay"_s);
    m_actionsPanel = new ActionsPanel(this);
    m_actionsPanel->hide();

    auto *grid = new QGridLayout(this);
    grid->setObjectName(u"gridLayout"_s);
    grid->addWidget(m_actionsPanel, 0, 0);
    grid->addWidget(m_overlay, 0, 1);
    grid->setColumnStretch(0, 0);
    grid->setColumnStretch(1, 1);
}

void ActionLinker::bindGamepadDefinder(GamepadDefinder *definder)
{
    for (QMetaObject::Connection &connection : m_definderConnections) {
        if (connection)
            disconnect(connection);
        connection = {};
    }
    if (!definder)
        return;
    m_definderConnections = {
        connect(definder, &GamepadDefinder::currentGamepadChanged, this, &ActionLinker::loadGamepadSnapshot),
        connect(definder, &GamepadDefinder::deviceSelectionChanged, this,
                &ActionLinker::onDeviceSelectionChanged),
    };
    definder->emitCurrentSelection();
}

void ActionLinker::setExternalServices(const QJsonArray &services)
{
    if (services == m_externalServices)
        return;
    m_externalServices = services;
    Q_EMIT externalServicesChanged();
}

void ActionLinker::setServicesLocked(bool locked)
{
    m_overlay->setServicesLocked(locked);
}

void ActionLinker::refreshActionsPanel()
{
    m_actionsPanel->setActions(listedActions(m_externalServices));
}
