// SPDX-License-Identifier: MIT
// A host that is told of a save may close the window there and then.
#include "shellstage.h"

#include "gamepadmanager.h"
#include "scriptedjoystick.h"

using namespace Qt::StringLiterals;
using namespace stage;

class TestShellLifetime : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
        scripted::reset();
        m_family = std::make_unique<QObject>();
        GamepadManager *manager = GamepadManager::instance(m_family.get());
        manager->stopTimers();
        scripted::plug(0, scripted::restingPad("Pad"));
        QVERIFY(QMetaObject::invokeMethod(manager, "discoverDevices"));
    }
    void cleanup() { m_family.reset(); }

    void theHostMayCloseTheWindowWhenItIsTold_data()
    {
        QTest::addColumn<bool>("unsaved");
        QTest::addColumn<bool>("edited");
        QTest::newRow("of a save ahead of new services") << true << false;
        QTest::newRow("of a save ahead of new actions") << true << true;
        QTest::newRow("of refreshed bridges") << false << true;
    }
    void theHostMayCloseTheWindowWhenItIsTold()
    {
        QFETCH(const bool, unsaved);
        QFETCH(const bool, edited);
        writeActions("[{'name':'Saluer','tasks':[]}]");
        writeProfile();
        Shell shell;
        if (edited)
            shell.widget->setServices({});
        if (unsaved)
            shell.linkersOverlay->applyActionToTitle(u"Saluer"_s, u"but_3"_s);
        QCOMPARE(timerOf(*shell.linker, u"saveTimer"_s).isActive(), unsaved);
        int told = 0;
        connect(GamepadManager::instance()->gamepads().constFirst(), &IComInterface::noCodeAppChanged, this,
                [&] {
                    ++told;
                    delete shell.widget;
                });

        if (edited)
            Q_EMIT shell.designer->actionsChanged(array("[{'name':'Saluer','tasks':[]},{'name':'Partir'}]"));
        else
            shell.widget->setServices({});
        QVERIFY(!shell.widget);
        QCOMPARE(told, 1);
        QCOMPARE(storedBridges().size(), unsaved ? 1 : 0);
    }

private:
    std::unique_ptr<QObject> m_family;
};

GAMEPAD_TEST_MAIN(TestShellLifetime)
#include "tst_shelllifetime.moc"
