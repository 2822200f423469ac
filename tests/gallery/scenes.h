// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>

#include <memory>

class QPixmap;
class QWidget;

// What the pictures show: windows as a user would have them, ready to be shown.

/// A gamepad's picture, `side` pixels wide and high.
[[nodiscard]] QPixmap gamepadPicture(int side);

/// Each state of a pastille: round, oval, and in edit mode.
[[nodiscard]] std::unique_ptr<QWidget> pastilleScene();

/// A pastille to the left of its tool box, one to the right, and one above.
[[nodiscard]] std::unique_ptr<QWidget> connectorScene();

/// Tool boxes: without a function, with one, and with one that the catalogue does not have.
[[nodiscard]] std::unique_ptr<QWidget> toolBoxScene();

/// An overlay whose first tool box has arguments to open.
[[nodiscard]] std::unique_ptr<QWidget> settingsScene();

/// A task with ten parameters above one without any.
[[nodiscard]] std::unique_ptr<QWidget> taskCardScene();
