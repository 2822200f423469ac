// SPDX-License-Identifier: MIT
// The hidden window as the X server sees it. The display is this program's own.
#include "gamepadmanager.h"
#include "testmain.h"
#include "tickdriver.h"
#include "xwindows.h"

using namespace Qt::StringLiterals;

class TestPumpWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theManagerHasOneHiddenWindow()
    {
        QCOMPARE(xWindowsTitled("sfml-joy-pump").size(), 0);
        QObject parent;
        const GamepadManager *manager = GamepadManager::instance(&parent);
        const auto windows = xWindowsTitled("sfml-joy-pump");
        QCOMPARE(windows.size(), 1);
        QCOMPARE(windows.front().width, 1);
        QCOMPARE(windows.front().height, 1);
        QVERIFY(!windows.front().shown);

        for (int i = 0; i < 5; ++i)
            expire(timerOf(*manager, u"pumpTimer"_s));
        QCOMPARE(xWindowsTitled("sfml-joy-pump").size(), 1);
        QVERIFY(!xWindowsTitled("sfml-joy-pump").front().shown);
    }

    void theWindowGoesWithTheManagerAndANewManagerHasItsOwn()
    {
        for (int i = 0; i < 3; ++i) {
            QObject parent;
            (void)GamepadManager::instance(&parent);
            QCOMPARE(xWindowsTitled("sfml-joy-pump").size(), 1);
        }
        QCOMPARE(xWindowsTitled("sfml-joy-pump").size(), 0);
    }
};

GAMEPAD_TEST_MAIN(TestPumpWindow)
#include "tst_pumpwindow.moc"
