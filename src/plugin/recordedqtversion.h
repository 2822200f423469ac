// SPDX-License-Identifier: MIT
#pragma once

// A plugin records the Qt it was built with, and an older Qt refuses to load it. This plugin needs nothing
// newer than Qt 6.9 (a test compares its symbols), so it records 6.9 whichever Qt 6 builds it. The version
// is read where qplugin.h is first parsed; this header is therefore the first include of the file that
// holds the plugin's metadata.

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/qtversionchecks.h>

#ifdef QPLUGIN_H
#error "qplugin.h was parsed before the recorded version was set"
#endif

#pragma push_macro("QT_VERSION_MINOR")
#undef QT_VERSION_MINOR
#define QT_VERSION_MINOR 9
#include <QtCore/qplugin.h>
#pragma pop_macro("QT_VERSION_MINOR")
