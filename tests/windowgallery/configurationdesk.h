// SPDX-License-Identifier: MIT
#pragma once

#include "editorstage.h"
#include "manetteconfigurationwidget.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

#include <memory>

class ActionDesignerWidget;
class ActionLinker;
class QTabWidget;

/// The configuration window on a screen, with gamepads that exist only here. What lies on disk is laid out
/// before it is opened.
class ConfigurationDesk
{
public:
    struct Profile
    {
        QString name;
        QString deviceName{};
        bool hasPicture = true;
        bool isBound = true; ///< its four pastilles run actions
    };

    /// An empty home, and no gamepad.
    ConfigurationDesk();
    ~ConfigurationDesk();
    Q_DISABLE_COPY_MOVE(ConfigurationDesk)

    /// Rows come in the order of these calls.
    void store(const Profile &profile);
    /// What `actions.json` holds.
    void store(const QJsonArray &actions);
    stage::Pads &pads() { return *m_pads; }

    /// Shows the window, served with the functions of the example host. False where it does not appear.
    [[nodiscard]] bool open(const QSize &size = {1023, 772});

    QWidget &window() { return *m_window; }
    GamepadDefinder &profiles() { return *m_profiles; }
    ActionLinker &linker() { return *m_linker; }
    ActionDesignerWidget &designer() { return *m_designer; }
    /// Brings the tab with this text to the front.
    void turnTo(const QString &tab);
    /// A person's click on the entry of the list in front that has this text.
    void clickEntry(const QString &text);
    /// A person's click on the tool button of the designer that has this text.
    void clickButton(const QString &text);

private:
    std::unique_ptr<stage::Pads> m_pads;
    int m_stored = 0;
    std::unique_ptr<ManetteConfigurationWidget> m_window;
    QTabWidget *m_tabs = nullptr;
    GamepadDefinder *m_profiles = nullptr;
    ActionLinker *m_linker = nullptr;
    ActionDesignerWidget *m_designer = nullptr;
};

/// The actions that the stored profiles are bound to: "Pan", "Stop", "Take a picture" with a parameter,
/// "Zoom".
[[nodiscard]] QJsonArray someActions();
