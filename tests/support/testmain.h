// SPDX-License-Identifier: MIT
#pragma once

#include "testhome.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

/// The main function of a test program: a temporary home first, then the application, then the tests of
/// `TestClass`. Call `failOnUnexpectedWarnings` from the class's `init`.
#define GAMEPAD_TEST_MAIN(TestClass)                                                                         \
    int main(int argc, char *argv[])                                                                         \
    {                                                                                                        \
        enterTemporaryHome();                                                                                \
        const QApplication app(argc, argv);                                                                  \
        QApplication::setApplicationName(QStringLiteral("gamepad-test"));                                    \
        QApplication::setOrganizationName(QStringLiteral("velor"));                                          \
        TestClass test;                                                                                      \
        return QTest::qExec(&test, argc, argv);                                                              \
    }

/// Makes every warning that the test did not announce with `QTest::ignoreMessage` a failure of that test.
/// What the offscreen platform says of each menu and tooltip, that it cannot raise or grab, is no concern of
/// ours.
inline void failOnUnexpectedWarnings()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support ).*")));
}
