// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QtClassHelperMacros>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define GAMEPAD_LEAKS_ARE_WATCHED
#include <sanitizer/lsan_interface.h>
#endif
#endif

/// While it lives, what is allocated may leak: around a call whose leak is another library's.
class LeakPause
{
public:
#ifdef GAMEPAD_LEAKS_ARE_WATCHED
    LeakPause() { __lsan_disable(); }
    ~LeakPause() { __lsan_enable(); }
#else
    LeakPause() {} // as little as there is to pause
    ~LeakPause() {}
#endif
    Q_DISABLE_COPY_MOVE(LeakPause)
};
