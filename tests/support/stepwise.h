// SPDX-License-Identifier: MIT
#pragma once

#include <QtTest/QTest>

/// Runs `step`, a call of a function with checks, and ends the test with it when one of them failed: a step
/// that did not succeed leaves nothing for the next one to work on.
#define GO(step)                                                                                             \
    do {                                                                                                     \
        step;                                                                                                \
        if (QTest::currentTestFailed())                                                                      \
            return;                                                                                          \
    } while (false)
