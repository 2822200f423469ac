// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtWidgets/QWidget>

class ActionDesignerWidget;
class ActionLinker;
class GamepadDefinder;

/// The whole of the configuration surface: three tabs, of the profiles, of the linker and of the designer,
/// over one dark backdrop. It joins the three and holds no state of its own.
class ManetteConfigurationWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ManetteConfigurationWidget(QWidget *parent = nullptr);

    /// Offers the functions under `ref` of `services`, with those of the system's configuration behind them,
    /// to the designer, and the designer's actions to the linker. May be called as often as one likes.
    void setServices(const QJsonObject &services);

private:
    void setUpForm();
    /// False where the window was closed meanwhile, and this object with it.
    [[nodiscard]] bool offerActions(const QJsonArray &actions);

    GamepadDefinder *m_profiles = nullptr;
    ActionLinker *m_linker = nullptr;
    ActionDesignerWidget *m_designer = nullptr;
};
