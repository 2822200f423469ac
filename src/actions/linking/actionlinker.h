// SPDX-License-Identifier: MIT
#pragma once

#include "controlmanette.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtCore/QUuid>
#include <QtWidgets/QWidget>

#include <array>

class ActionsPanel;
class GamepadDefinder;
class GamepadManager;
class InteractiveOverlay;

/// Binds the inputs of a real gamepad to actions: click an action, press an input, and the pastilles of that
/// input take the action. What changes is written to the profile's mapping a quarter of a second later, and
/// the gamepad tells its host to read it.
class ActionLinker : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QJsonArray externalServices READ externalServices WRITE setExternalServices NOTIFY
                   externalServicesChanged)

public:
    explicit ActionLinker(QWidget *parent = nullptr);

    [[nodiscard]] QJsonArray externalServices() const { return m_externalServices; }
    /// The actions that can be bound, objects with at least `name`. Bindings that are on disk keep their
    /// arguments, and nothing is written but what waited to be.
    void setExternalServices(const QJsonArray &services);

    /// Follows the profile that `definder` shows, at once and from then on, in place of an earlier one; null
    /// follows none.
    void bindGamepadDefinder(GamepadDefinder *definder);
    /// Locked, a mapping adds nothing to the actions; so from the start.
    void setServicesLocked(bool locked);
    /// Brings the mappings of all profiles up to date with `actions`, and tells the host. No actions at all
    /// change nothing.
    void refreshBridgesFromActions(const QJsonArray &actions);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void externalServicesChanged();

public Q_SLOTS:
    /// Shows a profile: its picture, its overlay document and its mapping. A save that is pending is dropped.
    void loadGamepadSnapshot(const QUuid &id, const QString &name, const QString &deviceName,
                             const QJsonObject &overlay, const QString &imagePath);
    /// Takes the inputs of the gamepad of this name; empty for none.
    void onDeviceSelectionChanged(const QString &deviceName);

private Q_SLOTS:
    void onInputButtonChanged(int button, bool pressed);
    void onInputAxisChanged(int axis, double value);

private:
    // The form.
    void setUpForm();
    void setUpSaving();

    // The actions on offer.
    void refreshActionsPanel();
    void mirrorServices();

    // The gamepad and its inputs.
    void followManager();
    void followDevice();
    [[nodiscard]] bool isDeviceConnected() const;
    [[nodiscard]] ControlManette *findDevice(const QString &name) const;
    void updatePanelVisibility();
    void rebindInputDevice();
    void unbindInputDevice();
    void takeInput(const QString &key);

    // The mapping's file.
    [[nodiscard]] QString gamepadsRootPath();
    [[nodiscard]] QString currentMappingPath();
    [[nodiscard]] QJsonObject currentMapping();
    void loadMapping();
    void scheduleMappingSave();
    void saveMapping();
    void publishNoCodeApp();

    InteractiveOverlay *m_overlay = nullptr;
    ActionsPanel *m_actionsPanel = nullptr;
    QJsonArray m_externalServices;
    QUuid m_gamepadId; ///< of the profile on show; null before the first one
    QString m_deviceName;
    QString m_gamepadsRoot; ///< cache of `gamepadsRootPath`
    QTimer m_saveTimer;
    bool m_loading = false;
    bool m_unsaved = false; ///< the overlay holds changes that no file has yet
    QPointer<GamepadManager> m_manager;
    QPointer<ControlManette> m_inputDevice;
    std::array<QMetaObject::Connection, 2> m_definderConnections;
    std::array<QMetaObject::Connection, 3> m_inputConnections;
};
