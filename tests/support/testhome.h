// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// Moves this process into a temporary home: every folder that `QStandardPaths` names lies below it, and it
/// goes when the process ends. Called by `GAMEPAD_TEST_MAIN` before the application object exists.
void enterTemporaryHome();

/// The home of this process.
QString temporaryHome();

/// Empties the home, for a test that needs a first run.
void clearTemporaryHome();
