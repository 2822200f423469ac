// SPDX-License-Identifier: MIT
#pragma once

class ActionTaskBlockWidget;
class QJsonArray;
class QToolButton;
class QWidget;

/// One step as the designer shows it: a card, and the buttons that move and delete it. All of it belongs to
/// `row`, and that to the panel that it stands on.
struct StepRow
{
    QWidget *row;
    ActionTaskBlockWidget *block;
    QToolButton *upButton;
    QToolButton *downButton;
    QToolButton *deleteButton;
};

/// Makes a row without a task on `panel`. Its card gets `functions`, and no catalogue when there are none.
[[nodiscard]] StepRow makeStepRow(const QJsonArray &functions, QWidget *panel);
