// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// The key of an axis, "joy_%1", and of a button, "but_%1", with a decimal index: the name of an input in
/// `dataChanged`, in pastille titles and in bridges. Keys of existing inputs are shared, not built.
[[nodiscard]] QString axisKey(int axis);
[[nodiscard]] QString buttonKey(int button);
