// SPDX-License-Identifier: MIT
#include "actiondesignerwidget.h"

#include "actionsdocument.h"
#include "actionsfile.h"
#include "actiontaskblockwidget.h"
#include "installationfolders.h"
#include "makepath.h"
#include "wholetext.h"

#include <QtCore/QFileInfo>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{
// Far beyond what a person writes. A document of a hundred thousand steps would keep the host busy for
// minutes, so that what lies behind these is kept as it was found and not shown.
constexpr qsizetype mostShownSteps = 200;
} // namespace

ActionDesignerWidget::ActionDesignerWidget(QWidget *parent)
    : QWidget(parent)
{
    setUpFrame();
    connectFrame();
    m_saveTimer.setSingleShot(true);
    m_saveTimer.setInterval(300ms);
    connect(&m_saveTimer, &QTimer::timeout, this, &ActionDesignerWidget::onSaveTimeout);
    load();
    refreshList();
}

void ActionDesignerWidget::setFunctions(const QJsonArray &functions)
{
    // Cards without a catalogue hold no tasks: committing them would empty the action.
    if (!m_updating && !m_functions.isEmpty())
        commitAction(m_selectedIndex);
    m_functions = functions;
    loadAction(m_selectedIndex);
}

void ActionDesignerWidget::onAddAction()
{
    appendAction(newAction());
}

void ActionDesignerWidget::onDuplicateAction()
{
    if (!isAction(m_selectedIndex))
        return;
    QJsonObject copy = m_actions.at(m_selectedIndex).toObject();
    copy["name"_L1] = displayName(storedName(m_actions, m_selectedIndex), m_selectedIndex) + " (copy)"_L1;
    appendAction(copy);
}

void ActionDesignerWidget::onDeleteAction()
{
    if (!isAction(m_selectedIndex))
        return;
    m_actions.removeAt(m_selectedIndex);
    refreshList();
    noteEdit();
}

void ActionDesignerWidget::onActionSelectionChanged()
{
    if (m_updating)
        return;
    commitAction(m_selectedIndex);
    m_selectedIndex = m_actionsList->currentRow();
    loadAction(m_selectedIndex);
}

void ActionDesignerWidget::onActionNameEdited(const QString &name)
{
    if (m_updating || !isAction(m_selectedIndex))
        return;
    QJsonObject action = m_actions.at(m_selectedIndex).toObject();
    const QString shown = displayName(name, m_selectedIndex);
    action["name"_L1] = shown;
    m_actions.replace(m_selectedIndex, action);
    m_actionsList->item(m_selectedIndex)->setText(shown);
    noteEdit();
}

void ActionDesignerWidget::onAddStep()
{
    addStep({});
    endSteps();
    reveal(m_steps.last().row);
    noteEdit();
}

void ActionDesignerWidget::onSaveTimeout()
{
    commitAction(m_selectedIndex);
    if (m_storagePath.isEmpty()) {
        m_storagePath = userActionsPath();
        if (m_storagePath.isEmpty())
            return;
        makePath(QFileInfo(m_storagePath).path());
    }
    writeActions(m_storagePath, m_actions);
    // A copy: who listens may edit the actions or destroy the widget, and goes on with what it was told.
    Q_EMIT actionsChanged(actions());
}

void ActionDesignerWidget::load()
{
    const LoadedActions loaded = loadActions(userActionsPath(), installationFolders());
    m_actions = loaded.actions;
    m_storagePath = loaded.storagePath;
    Q_EMIT actionsChanged(m_actions);
}

void ActionDesignerWidget::refreshList()
{
    const QScopedValueRollback filling(m_updating, true);
    const auto count = static_cast<int>(m_actions.size());
    {
        const QSignalBlocker quiet(m_actionsList);
        m_actionsList->clear();
        for (int i = 0; i < count; ++i)
            m_actionsList->addItem(displayName(storedName(m_actions, i), i));
    }
    m_selectedIndex = std::min(std::max(m_selectedIndex, 0), count - 1);
    m_actionsList->setCurrentRow(m_selectedIndex);
    loadAction(m_selectedIndex);
}

void ActionDesignerWidget::loadAction(int index)
{
    const QScopedValueRollback filling(m_updating, true);
    clearSteps();
    m_unshownTasks = {};
    if (!isAction(index)) {
        m_nameEdit->clear();
        return;
    }
    showWhole(m_nameEdit, storedName(m_actions, index));
    const QJsonArray tasks = m_actions.at(index).toObject().value("tasks"_L1).toArray();
    for (const QJsonValue &task : tasks) {
        if (m_steps.size() == mostShownSteps)
            m_unshownTasks.append(task);
        else if (task.isObject())
            addStep(task.toObject());
    }
    endSteps();
}

void ActionDesignerWidget::appendAction(const QJsonObject &action)
{
    m_actions.append(action);
    refreshList();
    m_actionsList->setCurrentRow(m_actionsList->count() - 1);
    noteEdit();
}

void ActionDesignerWidget::commitAction(int index)
{
    if (m_updating || !isAction(index))
        return;
    QList<QJsonObject> shown;
    shown.reserve(m_steps.size());
    for (const StepRow &step : std::as_const(m_steps))
        shown.append(step.block->config());
    QJsonArray tasks = storedTasks(shown);
    for (const QJsonValue &task : std::as_const(m_unshownTasks))
        tasks.append(task);
    QJsonObject action = m_actions.at(index).toObject();
    action["name"_L1] = displayName(wholeText(m_nameEdit), index);
    action["tasks"_L1] = tasks;
    m_actions.replace(index, action);
}

void ActionDesignerWidget::noteEdit()
{
    if (m_updating)
        return;
    commitAction(m_selectedIndex);
    m_saveTimer.start();
}
