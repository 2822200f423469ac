// SPDX-License-Identifier: MIT
#pragma once

// Included ahead of everything in the plugin's own sources. A newer Qt turns functions that it used to export
// into inline ones that call newer symbols, and code compiled against it then no longer loads into the
// oldest Qt that the plugin serves. The old symbols stay exported, so what became inline after Qt 6.9 is
// declared here as it was before, and the call goes to the symbol that every Qt from 6.9 on has. Only QtGui
// did so until now; the test of the plugin's symbols tells when another module follows.

#include <QtGui/qtguiexports.h>

#undef QT_GUI_INLINE_SINCE
#undef QT_GUI_INLINE_IMPL_SINCE

#define QT_GUI_INLINE_SINCE(major, minor) GAMEPAD_INLINE_##major##_##minor
#define QT_GUI_INLINE_IMPL_SINCE(major, minor) ((major) == 6 && (minor) <= 9)

#define GAMEPAD_INLINE_6_0 inline
#define GAMEPAD_INLINE_6_1 inline
#define GAMEPAD_INLINE_6_2 inline
#define GAMEPAD_INLINE_6_3 inline
#define GAMEPAD_INLINE_6_4 inline
#define GAMEPAD_INLINE_6_5 inline
#define GAMEPAD_INLINE_6_6 inline
#define GAMEPAD_INLINE_6_7 inline
#define GAMEPAD_INLINE_6_8 inline
#define GAMEPAD_INLINE_6_9 inline
#define GAMEPAD_INLINE_6_10
#define GAMEPAD_INLINE_6_11
#define GAMEPAD_INLINE_6_12
#define GAMEPAD_INLINE_6_13
#define GAMEPAD_INLINE_6_14
#define GAMEPAD_INLINE_6_15
