// SPDX-License-Identifier: MIT
// The steps of the action on show: their rows, and the order of these.
#include "actiondesignerwidget.h"

#include "actiontaskblockwidget.h"
#include "taborder.h"

#include <QtWidgets/QScrollArea>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <utility>

void ActionDesignerWidget::addStep(const QJsonObject &task)
{
    const StepRow step = makeStepRow(m_functions, m_stepsPanel);
    connectStep(step);
    if (!task.isEmpty())
        step.block->applyConfig(task);
    m_steps.append(step);
    m_stepsLayout->addWidget(step.row);
}

void ActionDesignerWidget::endSteps()
{
    // Steps are younger than the button below them, and Qt orders tab stops by age.
    if (!m_steps.isEmpty())
        setTabOrder(m_steps.last().deleteButton, m_addStepButton);
}

void ActionDesignerWidget::clearSteps()
{
    // Not to a field of the frame: what is still being typed was meant for a step.
    if (holdsFocus(m_stepsPanel))
        m_stepsScroll->setFocus();
    const QList<StepRow> gone = std::exchange(m_steps, {});
    for (const StepRow &step : gone)
        discard(step);
}

void ActionDesignerWidget::connectStep(const StepRow &step)
{
    QWidget *row = step.row;
    connect(step.block, &ActionTaskBlockWidget::changed, this, &ActionDesignerWidget::noteEdit);
    connect(step.upButton, &QToolButton::clicked, this, [this, row] { shiftStep(row, -1); });
    connect(step.downButton, &QToolButton::clicked, this, [this, row] { shiftStep(row, 1); });
    connect(step.deleteButton, &QToolButton::clicked, this, [this, row] { deleteStep(row); });
}

void ActionDesignerWidget::deleteStep(const QWidget *row)
{
    const qsizetype index = indexOfStep(row);
    if (index < 0)
        return;
    const StepRow step = m_steps.takeAt(index);
    if (holdsFocus(step.row)) {
        QToolButton *next = m_steps.isEmpty() ? m_addStepButton
                                              : m_steps.at(std::min(index, m_steps.size() - 1)).deleteButton;
        next->setFocus();
    }
    discard(step);
    noteEdit();
}

void ActionDesignerWidget::shiftStep(const QWidget *row, int by)
{
    const qsizetype index = indexOfStep(row);
    const qsizetype target = index + by;
    if (index < 0 || target < 0 || target >= m_steps.size())
        return;
    moveStep(index, target);
    noteEdit();
}

void ActionDesignerWidget::moveStep(qsizetype from, qsizetype to)
{
    QWidget *row = m_steps.at(from).row;
    m_steps.move(from, to);
    m_stepsLayout->removeWidget(row);
    m_stepsLayout->insertWidget(static_cast<int>(to), row);
    placeTabStops(to);
    reveal(row);
}

void ActionDesignerWidget::discard(const StepRow &step)
{
    m_stepsLayout->removeWidget(step.row);
    // It lives until the event loop runs, and has no say any more.
    step.block->disconnect(this);
    step.row->hide();
    step.row->deleteLater();
}

qsizetype ActionDesignerWidget::indexOfStep(const QWidget *row) const
{
    const auto found = std::ranges::find(m_steps, row, &StepRow::row);
    return found == m_steps.end() ? -1 : found - m_steps.begin();
}

bool ActionDesignerWidget::holdsFocus(const QWidget *widget) const
{
    return widget->isAncestorOf(window()->focusWidget());
}

void ActionDesignerWidget::placeTabStops(qsizetype index)
{
    QWidget *before = m_stepsScroll;
    if (index > 0)
        before = m_steps.at(index - 1).deleteButton;
    moveTabStops(m_steps.at(index).row, before);
}

void ActionDesignerWidget::reveal(QWidget *row)
{
    // Where it lies is known when the layout has run.
    QTimer::singleShot(0, row, [this, row] { m_stepsScroll->ensureWidgetVisible(row, 0, 0); });
}
