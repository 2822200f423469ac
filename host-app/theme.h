// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QPalette>

class QString;
class QWidget;

/// The look of this host: dark and quiet, beside the plugin's own cards. The palette is for the whole
/// program; the style sheet only for this host's widgets, since the plugin's window brings its own.
namespace theme
{
inline constexpr QColor ground{13, 17, 22};
inline constexpr QColor panel{21, 28, 36};
inline constexpr QColor raised{29, 38, 48};
inline constexpr QColor line{42, 54, 67};
inline constexpr QColor text{230, 238, 244};
inline constexpr QColor quiet{139, 160, 178};
inline constexpr QColor faint{88, 105, 121};
inline constexpr QColor accent{110, 200, 215};
inline constexpr QColor good{72, 200, 128};
inline constexpr QColor warm{236, 178, 86};

/// A colour of its own for each of the eight axes.
[[nodiscard]] QColor axisColour(int axis);

[[nodiscard]] QPalette palette();
/// A style sheet for the widgets below `root`, by the object names "panel", "title", "quiet" and "pill".
void dress(QWidget &root);

/// Words in the middle of an empty `widget`, from its own `paintEvent`.
void paintInvitation(QWidget &widget, const QString &words);

/// `base`, larger by `steps` points, in the weight for headings when `strong`.
[[nodiscard]] QFont resized(QFont base, int steps, bool strong = false);
/// The platform's font of equal widths, a little smaller than the text.
[[nodiscard]] QFont figures(const QFont &base);
} // namespace theme
