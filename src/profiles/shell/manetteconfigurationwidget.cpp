// SPDX-License-Identifier: MIT
#include "manetteconfigurationwidget.h"

#include "actiondesignerwidget.h"
#include "actionlinker.h"
#include "functionrefs.h"
#include "gamepaddefinder.h"
#include "shellsheet.h"
#include "systemconfig.h"

#include <QtCore/QPointer>
#include <QtWidgets/QFrame>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QTabWidget>

using namespace Qt::StringLiterals;

namespace
{
QGridLayout *addGrid(QWidget *parent, const QString &name)
{
    auto *grid = new QGridLayout(parent);
    grid->setObjectName(name);
    return grid;
}

/// A page of `tabs` that holds one widget, which its caller gives a name.
template <typename Content>
Content *addPage(QTabWidget *tabs, const QString &title, const QString &pageName, const QString &gridName)
{
    auto *page = new QWidget;
    page->setObjectName(pageName);
    tabs->addTab(page, title);
    auto *content = new Content(page);
    addGrid(page, gridName)->addWidget(content, 0, 0);
    return content;
}
} // namespace

ManetteConfigurationWidget::ManetteConfigurationWidget(QWidget *parent)
    : QWidget(parent)
{
    setUpForm();
    m_linker->bindGamepadDefinder(m_profiles);
    connect(m_designer, &ActionDesignerWidget::actionsChanged, this, [this](const QJsonArray &actions) {
        if (offerActions(actions))
            m_linker->refreshBridgesFromActions(actions);
    });
}

void ManetteConfigurationWidget::setUpForm()
{
    setObjectName("ManetteConfigurationWidget");
    setWindowTitle(u"Gamepad"_s);
    resize(1023, 772);
    setStyleSheet(shellSheet());

    QGridLayout *outer = addGrid(this, u"gridLayout"_s);
    outer->setContentsMargins(0, 0, 0, 0);
    auto *backdrop = new QFrame(this);
    backdrop->setObjectName("vlxBackdrop");
    backdrop->setFrameShape(QFrame::NoFrame);
    outer->addWidget(backdrop, 0, 0);

    QGridLayout *inner = addGrid(backdrop, u"gridLayoutContent"_s);
    inner->setSpacing(14);
    inner->setContentsMargins(16, 16, 16, 16);
    auto *tabs = new QTabWidget(backdrop);
    tabs->setObjectName("tabWidget_4");
    inner->addWidget(tabs, 0, 0);

    m_profiles = new GamepadDefinder(tabs);
    m_profiles->setObjectName("ManageGamepade");
    tabs->addTab(m_profiles, u"Configuration"_s);
    m_linker = addPage<ActionLinker>(tabs, u"Mapping"_s, u"tab_7"_s, u"gridLayout_2"_s);
    m_linker->setObjectName("actionLinkerWidget");
    m_designer =
        addPage<ActionDesignerWidget>(tabs, u"Action designer"_s, u"tab_actions"_s, u"gridLayout_actions"_s);
    m_designer->setObjectName("actionDesignerWidget");
    tabs->setCurrentIndex(0);
}

void ManetteConfigurationWidget::setServices(const QJsonObject &services)
{
    m_designer->setFunctions(mergeRefs(services["ref"_L1].toArray(), loadSystemConfigRefs()));
    (void)offerActions(m_designer->actions());
}

bool ManetteConfigurationWidget::offerActions(const QJsonArray &actions)
{
    // A mapping that waits to be saved is saved first, and the host, which is told of that, may close the
    // window.
    const QPointer<ActionLinker> linker = m_linker;
    linker->setExternalServices(actions);
    if (!linker)
        return false;
    linker->setServicesLocked(true);
    return true;
}
