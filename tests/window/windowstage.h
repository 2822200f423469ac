// SPDX-License-Identifier: MIT
#pragma once

#include "actiondesignerwidget.h"
#include "actionlinker.h"
#include "actiontaskblockwidget.h"
#include "gamepaddefinder.h"
#include "interactiveoverlay.h"
#include "manetteconfigurationwidget.h"

#include <QtCore/QPointer>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolButton>

#include <memory>

/// The configuration window, in a main window as the plugin places it, with its own timers. Without
/// gamepads, and over what lies in the home.
class WindowStage
{
public:
    WindowStage();
    ~WindowStage();
    Q_DISABLE_COPY_MOVE(WindowStage)

    /// Makes and shows the window. A host may hand over its services later, or never.
    void open();
    /// Destroys it.
    void destroy() { m_window.reset(); }

    QMainWindow &window() { return *m_window; }
    ManetteConfigurationWidget &surface() { return *m_surface; }
    GamepadDefinder &profiles() { return *m_surface->findChild<GamepadDefinder *>(); }
    ActionLinker &linker() { return *m_surface->findChild<ActionLinker *>(); }
    ActionDesignerWidget &designer() { return *m_surface->findChild<ActionDesignerWidget *>(); }
    InteractiveOverlay &linkerOverlay() { return *linker().findChild<InteractiveOverlay *>(); }
    InteractiveOverlay &editorOverlay() { return *profiles().findChild<InteractiveOverlay *>(); }
    QListWidget &profileList() { return *profiles().findChild<QListWidget *>(QStringLiteral("listWidget")); }
    QListWidget &actionList() { return *designer().findChild<QListWidget *>(QStringLiteral("actionsList")); }
    QLineEdit &actionName() { return *designer().findChild<QLineEdit *>(QStringLiteral("actionNameEdit")); }

    /// The cards on show, from top to bottom.
    QList<ActionTaskBlockWidget *> cards();
    QList<QLineEdit *> argumentsOf(qsizetype card);
    QLineEdit &conditionOf(qsizetype card);

    void turnTo(const QString &tab);
    /// A person's click on the row of a list.
    static void click(QListWidget &list, int row);
    /// A person's click on the designer's button of that text.
    void press(const QString &text);
    static void type(QLineEdit &field, const QString &text);

    /// Whether no save is pending anywhere in the window.
    bool rests();
    /// The bridges that the linker would write.
    QJsonArray linkedBridges();

private:
    QObject m_family; ///< of the gamepads' manager
    std::unique_ptr<QMainWindow> m_window;
    QPointer<ManetteConfigurationWidget> m_surface;
};
