// SPDX-License-Identifier: MIT
#pragma once

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
