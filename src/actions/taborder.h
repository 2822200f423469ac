// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// Moves the tab stops in `group` behind `before`, in the order that they have. They must follow each other,
/// the oldest first. Qt orders tab stops by age, wherever a layout shows them.
void moveTabStops(QWidget *group, QWidget *before);
