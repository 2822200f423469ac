// SPDX-License-Identifier: MIT
// What the shell is made of, and how it joins what it holds.
#include "shellstage.h"

#include <QtTest/QSignalSpy>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFrame>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTabWidget>

using namespace Qt::StringLiterals;
using namespace stage;

class TestManetteConfigurationWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
    }

    void theFormIsBuiltFromTheOutsideIn()
    {
        const Shell shell;
        QCOMPARE(shell.widget->objectName(), u"ManetteConfigurationWidget"_s);
        QCOMPARE(shell.widget->windowTitle(), u"Gamepad"_s);
        QCOMPARE(shell.widget->size(), QSize(1023, 772));

        const auto *outer = qobject_cast<QGridLayout *>(shell.widget->layout());
        QVERIFY(outer);
        QCOMPARE(outer->objectName(), u"gridLayout"_s);
        QCOMPARE(outer->contentsMargins(), QMargins());
        const auto *backdrop = qobject_cast<QFrame *>(outer->itemAtPosition(0, 0)->widget());
        QVERIFY(backdrop);
        QCOMPARE(backdrop->objectName(), u"vlxBackdrop"_s);
        QCOMPARE(backdrop->frameShape(), QFrame::NoFrame);

        const auto *inner = qobject_cast<QGridLayout *>(backdrop->layout());
        QVERIFY(inner);
        QCOMPARE(inner->objectName(), u"gridLayoutContent"_s);
        QCOMPARE(inner->contentsMargins(), QMargins(16, 16, 16, 16));
        QCOMPARE(inner->spacing(), 14);
        const auto *tabs = qobject_cast<QTabWidget *>(inner->itemAtPosition(0, 0)->widget());
        QVERIFY(tabs);
        QCOMPARE(tabs->objectName(), u"tabWidget_4"_s);
        QCOMPARE(tabs->currentIndex(), 0);
        QCOMPARE(tabs->count(), 3);
    }

    void itHasNoSignalSlotOrPropertyOfItsOwn()
    {
        const QMetaObject &meta = ManetteConfigurationWidget::staticMetaObject;
        QCOMPARE(QLatin1StringView(meta.className()), "ManetteConfigurationWidget"_L1);
        QCOMPARE(meta.methodCount(), meta.methodOffset());
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    }

    void theFirstTabIsTheEditor()
    {
        const Shell shell;
        const auto *tabs = shell.widget->findChild<QTabWidget *>();
        QCOMPARE(tabs->tabText(0), u"Configuration"_s);
        QCOMPARE(tabs->widget(0), shell.profiles);
        QCOMPARE(shell.profiles->objectName(), u"ManageGamepade"_s);
    }

    void theOtherTabsHoldLinkerAndDesigner_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("grid");
        QTest::addColumn<QString>("content");
        QTest::newRow("linker") << 1 << u"Mapping"_s << u"tab_7"_s << u"gridLayout_2"_s
                                << u"actionLinkerWidget"_s;
        QTest::newRow("designer") << 2 << u"Action designer"_s << u"tab_actions"_s << u"gridLayout_actions"_s
                                  << u"actionDesignerWidget"_s;
    }
    void theOtherTabsHoldLinkerAndDesigner()
    {
        QFETCH(const int, tab);
        const Shell shell;
        const auto *tabs = shell.widget->findChild<QTabWidget *>();
        QTEST(tabs->tabText(tab), "text");
        QTEST(tabs->widget(tab)->objectName(), "page");
        const auto *grid = qobject_cast<QGridLayout *>(tabs->widget(tab)->layout());
        QVERIFY(grid);
        QTEST(grid->objectName(), "grid");
        QTEST(grid->itemAtPosition(0, 0)->widget()->objectName(), "content");
    }

    void theLinkerFollowsTheProfileOnShow()
    {
        writeProfile();
        const QString second = profilesRootPath() + u"/1b1f4d6e-58cb-4f51-9a0b-3c2d9f1e7a01/"_s;
        write(second + u"meta.json"_s,
              "{'type':'GamepadDefinderMeta','id':'1b1f4d6e-58cb-4f51-9a0b-3c2d9f1e7a01'}");
        write(second + u"overlay.json"_s,
              "{'type':'InteractiveOverlay','version':2,'nodes':[{'title':'joy_1'}]}");
        const Shell shell;
        QCOMPARE(shell.profiles->currentRow(), 0);
        QCOMPARE(titlesOn(*shell.linkersOverlay), (QStringList{u"but_3"_s, u"but_4"_s}));
        shell.profiles->findChild<QListWidget *>(u"listWidget"_s)->setCurrentRow(1);
        QCOMPARE(titlesOn(*shell.linkersOverlay), QStringList{u"joy_1"_s});
    }

    void servicesReachTheDesignerBehindWhichTheSystemsStand()
    {
        writeActions("[{'name':'Saluer','tasks':[]}]");
        writeSystemConfig("{'services':{'ref':[{'name':'B'},{'name':' a '}]}}");
        Shell shell;
        shell.widget->setServices(object("{'ref':[{'name':'A'}]}"));
        QTest::mouseClick(shell.button(u"+ Etape"_s), Qt::LeftButton);
        const auto *combo = shell.designer->findChild<QWidget *>(u"stepsPanel"_s)->findChild<QComboBox *>();
        QVERIFY(combo);
        QStringList offered;
        for (int i = 0; i < combo->count(); ++i)
            offered.append(combo->itemText(i).section(u'(', 0, 0).trimmed());
        offered.removeAll(QString());
        QCOMPARE(offered.last(2), QStringList({u"A"_s, u"B"_s}));
        QVERIFY(!offered.contains(u"a"_s));
    }

    void actionsReachTheLinkerWithTheServices()
    {
        writeActions("[{'name':'Saluer','tasks':[]}]");
        Shell shell;
        QCOMPARE(shell.linker->externalServices(), QJsonArray());
        const QSignalSpy changes(shell.linker, &ActionLinker::externalServicesChanged);
        shell.widget->setServices({});
        QCOMPARE(shell.linker->externalServices(), array("[{'name':'Saluer','tasks':[]}]"));
        QCOMPARE(changes.size(), 1);
        shell.widget->setServices({});
        QCOMPARE(changes.size(), 1); // the same actions are no change
    }

    // Locked, the overlay takes no functions from a mapping into what it offers.
    void theLinkersServicesAreLocked_data()
    {
        QTest::addColumn<QString>("by");
        QTest::newRow("nobody") << u"nobody"_s;
        QTest::newRow("services") << u"services"_s;
        QTest::newRow("actions") << u"actions"_s;
    }
    void theLinkersServicesAreLocked()
    {
        QFETCH(const QString, by);
        writeActions("[{'name':'Saluer','tasks':[]}]");
        const Shell shell;
        shell.widget->setServices({});
        shell.linker->setServicesLocked(false);
        if (by == u"services"_s) {
            shell.widget->setServices({});
        } else if (by == u"actions"_s) {
            const QSignalSpy saved(shell.designer, &ActionDesignerWidget::actionsChanged);
            shell.edit();
            QTRY_COMPARE(saved.size(), 1);
        }
        const QJsonArray before = shell.linkersOverlay->externalServices();
        shell.linkersOverlay->applyMapping(object("{'ref':[{'name':'Neuve'}],'bridges':[]}"));
        QCOMPARE(shell.linkersOverlay->externalServices() == before, by != u"nobody"_s);
    }

    void servicesOfAnotherTypeCountAsNone()
    {
        Shell shell;
        for (const char *services : {"{}", "{'ref':null}", "{'ref':'x'}", "{'ref':{'name':'A'}}"})
            shell.widget->setServices(object(services));
        QCOMPARE(shell.linker->externalServices(), QJsonArray());
    }

    void anEditedActionReachesTheLinkerAndEveryStoredBridge()
    {
        writeActions("[{'name':'Saluer','tasks':[{'ref':'F','args':{'p':'param:speed'}}],"
                     "'params':[{'name':'speed','preferedType':'int'}]}]");
        writeProfile("[{'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_3'},"
                     "'dst':[{'ref':'Old','args':{}}],'action':'Saluer','args':{'speed':7}}]");
        Shell shell;
        shell.widget->setServices(object("{'ref':[{'name':'F','params':[{'name':'p'}]}]}"));
        shell.widget->show();
        const QSignalSpy saved(shell.designer, &ActionDesignerWidget::actionsChanged);
        shell.edit();
        QTRY_VERIFY(!saved.isEmpty());
        QCOMPARE(shell.linker->externalServices().size(), 2);
        QCOMPARE(shell.linker->findChild<QListWidget *>(u"mappingActionsList"_s)->count(), 2);
        QCOMPARE(storedBridges(),
                 array("[{'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':"
                       "'but_3'},'dst':[{'ref':'F','args':{'p':7}}],'action':'Saluer','args':{'speed':"
                       "7}}]"));
    }

    void openingTheWindowAloneChangesNoBinding()
    {
        writeActions("[{'name':'Saluer','tasks':[{'ref':'F','args':{'p':'param:speed'}}],"
                     "'params':[{'name':'speed','preferedType':'int','default':1}]}]");
        const QByteArray bridges =
            "[{'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_3'},"
            "'dst':[{'ref':'F','args':{'p':7}}],'action':'Saluer','args':{'speed':7}}]";
        writeProfile(bridges);
        const QJsonObject before = read(profilePath(u"configActionGamepad.json"_s));
        Shell shell;
        shell.widget->show();
        shell.widget->setServices(object("{'ref':[{'name':'F','params':[{'name':'p'}]}]}"));
        shell.widget->setServices(object("{'ref':[{'name':'G'}]}"));
        shell.widget->setServices({});
        QCoreApplication::processEvents();
        QVERIFY(!timerOf(*shell.linker, u"saveTimer"_s).isActive());
        QCOMPARE(read(profilePath(u"configActionGamepad.json"_s)), before);
    }

    void destroyedWithSavesPendingItLeavesInOrder()
    {
        writeActions("[{'name':'Saluer','tasks':[]}]");
        writeProfile("[]");
        for (int i = 0; i < 5; ++i) {
            auto shell = std::make_unique<Shell>();
            shell->widget->setServices(object("{'ref':[{'name':'F'}]}"));
            shell->widget->show();
            QTest::mouseClick(shell->button(u"+"_s), Qt::LeftButton);
            QTest::keyClicks(shell->name(), u"x"_s);
        }
        QCOMPARE(read(profilesRootPath() + u"/actions.json"_s)["ref"_L1].toArray().size(), 1);
    }
};

GAMEPAD_TEST_MAIN(TestManetteConfigurationWidget)
#include "tst_manetteconfigurationwidget.moc"
