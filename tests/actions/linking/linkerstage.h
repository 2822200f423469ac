// SPDX-License-Identifier: MIT
#pragma once

#include "actionlinker.h"
#include "gamepadmanager.h"
#include "interactiveoverlay.h"
#include "jsontext.h"
#include "profilefolder.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtTest/QSignalSpy>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>

/// A linker on a shown window, in an empty home, with a manager of gamepads that lives as long as it.
class LinkerStage
{
public:
    LinkerStage();
    ~LinkerStage();
    Q_DISABLE_COPY_MOVE(LinkerStage)

    ActionLinker *operator->() { return m_linker; }
    ActionLinker &linker() { return *m_linker; }
    QWidget &window() { return m_window; }
    [[nodiscard]] bool exposed() const { return m_exposed; }
    /// Destroys the linker ahead of the rest.
    void closeLinker() { delete m_linker; }
    /// Destroys the manager and its devices ahead of the rest.
    void destroyManager() { delete std::exchange(m_family, nullptr); }

    InteractiveOverlay &overlay() { return child<InteractiveOverlay>("iteractiveoverlay"); }
    QWidget &panel() { return child<QWidget>("mappingActionsPanel"); }
    QListWidget &list() { return child<QListWidget>("mappingActionsList"); }
    QString hint() { return child<QLabel>("mappingActionsHint").text(); }
    QTimer &saveTimer() { return timerOf(*m_linker, QStringLiteral("saveTimer")); }

    /// Whether an action is armed, as the person sees it.
    bool armed() { return hint() != QLatin1StringView("Cliquez une action puis appuyez sur un bouton."); }
    void clickAction(const QString &name);
    /// A press and release of the mouse on any widget of the window.
    void click(const QWidget &widget, const QPoint &pos);

    /// The configurations of the overlay's tool boxes that live, in the order of their nodes.
    QJsonArray configs();
    QStringList refs();

    /// Puts a gamepad into a slot, started and with every axis at rest, and lets the manager find it.
    ControlManette &plug(const QString &name, unsigned slot = 0);
    void unplug(unsigned slot = 0);
    ControlManette *device(unsigned slot = 0);
    void press(int button, unsigned slot = 0);
    void release(int button, unsigned slot = 0);
    void push(int axis, double value, unsigned slot = 0);

    /// Shows the profile, with a pastille of each title.
    void show(const QUuid &id, const QString &deviceName, const QStringList &titles);
    /// Lets a pending save happen now.
    void save() { expire(saveTimer()); }

private:
    template <typename Widget>
    Widget &child(const char *name)
    {
        return *m_linker->findChild<Widget *>(QLatin1StringView(name));
    }
    void discover();

    QObject *m_family = nullptr;
    QWidget m_window;
    QPointer<ActionLinker> m_linker;
    bool m_exposed = false;
};

extern const QUuid oneProfile;
extern const QUuid otherProfile;

/// The overlay document of pastilles with these titles, from left to right, each with a source of its own
/// that is told nowhere else.
[[nodiscard]] QJsonObject overlayOf(const QStringList &titles);

/// Where the mapping of a profile lies that names no other file.
[[nodiscard]] QString mappingPath(const QUuid &id = oneProfile);
void writeMapping(const QByteArray &json, const QUuid &id = oneProfile);
[[nodiscard]] QByteArray fileContent(const QString &path);
[[nodiscard]] QJsonObject storedMapping(const QUuid &id = oneProfile);
[[nodiscard]] QJsonArray storedBridges(const QUuid &id = oneProfile);

/// "A" runs "F" with its parameter `speed` (int), on the condition "W"; "B" runs "G" with `text`, `level`
/// (double, 1.5) and `on` (bool); "C" runs "H"; "Vide" runs nothing.
[[nodiscard]] QJsonArray someActions();
