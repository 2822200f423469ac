// SPDX-License-Identifier: MIT
#include "manetteconfigurationwidget.h"

#include "actiondesignerwidget.h"
#include "actionlinker.h"
#include "gamepaddefinder.h"
#include "jsontext.h"
#include "profilesroot.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QFrame>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolButton>

using namespace Qt::StringLiterals;

namespace
{
bool write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) &&
           file.write(text) == text.size();
}

QJsonObject read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

bool writeActions(const QByteArray &list)
{
    return write(profilesRootPath() + u"/actions.json"_s,
                 QByteArray("{'ref':" + list + '}').replace('\'', '"'));
}

bool writeSystemConfig(const QByteArray &text)
{
    return write(profilesBasePath() + u"/system/systemConfig.json"_s, QByteArray(text).replace('\'', '"'));
}

constexpr auto profile = "0b1f4d6e-58cb-4f51-9a0b-3c2d9f1e7a01"_L1;

QString profilePath(const QString &file)
{
    return profilesRootPath() + u'/' + profile + u'/' + file;
}

/// A profile of two pastilles whose first is bound to the action.
bool writeProfile(const QByteArray &bridges)
{
    return write(profilePath(u"meta.json"_s),
                 QByteArray("{'type':'GamepadDefinderMeta','id':'0b1f4d6e-58cb-4f51-9a0b-3c2d9f1e7a01',"
                            "'name':'Manette'}")
                     .replace('\'', '"')) &&
           write(profilePath(u"overlay.json"_s),
                 QByteArray("{'type':'InteractiveOverlay','version':2,'nodes':[{'title':'but_3'},"
                            "{'title':'but_4'}]}")
                     .replace('\'', '"')) &&
           write(profilePath(u"configActionGamepad.json"_s),
                 QByteArray("{'bridges':" + bridges + '}').replace('\'', '"'));
}

struct Shell
{
    ManetteConfigurationWidget widget;
    GamepadDefinder *profiles = widget.findChild<GamepadDefinder *>();
    ActionLinker *linker = widget.findChild<ActionLinker *>();
    ActionDesignerWidget *designer = widget.findChild<ActionDesignerWidget *>();

    [[nodiscard]] QToolButton *button(const QString &text) const
    {
        for (QToolButton *candidate : designer->findChildren<QToolButton *>()) {
            if (candidate->text() == text)
                return candidate;
        }
        return nullptr;
    }
    [[nodiscard]] QLineEdit *name() const { return designer->findChild<QLineEdit *>(u"actionNameEdit"_s); }
};
} // namespace

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
        QCOMPARE(shell.widget.objectName(), u"ManetteConfigurationWidget"_s);
        QCOMPARE(shell.widget.windowTitle(), u"Gamepad"_s);
        QCOMPARE(shell.widget.size(), QSize(1023, 772));

        const auto *outer = qobject_cast<QGridLayout *>(shell.widget.layout());
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

    void theFirstTabIsTheEditor()
    {
        const Shell shell;
        const auto *tabs = shell.widget.findChild<QTabWidget *>();
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
        const auto *tabs = shell.widget.findChild<QTabWidget *>();
        QTEST(tabs->tabText(tab), "text");
        QTEST(tabs->widget(tab)->objectName(), "page");
        const auto *grid = qobject_cast<QGridLayout *>(tabs->widget(tab)->layout());
        QVERIFY(grid);
        QTEST(grid->objectName(), "grid");
        QTEST(grid->itemAtPosition(0, 0)->widget()->objectName(), "content");
    }

    void oneSheetHoldsTheWholeLook_data()
    {
        QTest::addColumn<QString>("rule");
        for (const QString &rule : {u"#ManetteConfigurationWidget"_s,
                                    u"QFrame#vlxBackdrop"_s,
                                    u"qradialgradient"_s,
                                    u"rgba(110, 200, 215, 55)"_s,
                                    u"rgba(18, 30, 40, 220)"_s,
                                    u"rgba(9, 14, 18, 255)"_s,
                                    u"rgba(26, 42, 54, 200)"_s,
                                    u"1px solid #2A4456"_s,
                                    u"#E8F0F5"_s,
                                    u"#243544"_s,
                                    u"#2F4F63"_s,
                                    u"#8FA7B6"_s,
                                    u"#1D2B36"_s,
                                    u"border-radius: 14px"_s,
                                    u"border-radius: 8px"_s,
                                    u"border-radius: 10px"_s,
                                    u"border-radius: 16px"_s,
                                    u"border-top-left-radius: 12px"_s,
                                    u"border-top-right-radius: 12px"_s,
                                    u"rgba(110, 200, 215, 70)"_s,
                                    u"margin-top: 6px"_s,
                                    u"left: 12px"_s,
                                    u"padding: 8px 16px"_s,
                                    u"margin-right: 6px"_s,
                                    u"qlineargradient"_s,
                                    u"rgba(110, 200, 215, 80)"_s})
            QTest::newRow(qPrintable(rule)) << rule;
    }
    void oneSheetHoldsTheWholeLook()
    {
        QFETCH(const QString, rule);
        const Shell shell;
        QVERIFY(shell.widget.styleSheet().contains(rule));
    }

    void theBackdropShowsThroughFromLightToDark()
    {
        Shell shell;
        shell.widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&shell.widget));
        const QImage picture = shell.widget.grab().toImage();
        const QColor top = picture.pixelColor(picture.width() / 2, 3);
        const QColor bottom = picture.pixelColor(3, picture.height() - 3);
        QVERIFY2(top.lightness() > bottom.lightness() + 10, qPrintable(top.name() + bottom.name()));
        QVERIFY(bottom.lightness() < 40);
    }

    void theLinkerFollowsTheProfileOnShow()
    {
        QVERIFY(writeProfile("[]"));
        const Shell shell;
        const auto *overlay = shell.linker->findChild<QWidget *>(u"iteractiveoverlay"_s);
        QCOMPARE(shell.profiles->currentRow(), 0);
        QCOMPARE(overlay->findChildren<QWidget *>().isEmpty(), false);
    }

    void servicesReachTheDesignerBehindWhichTheSystemsStand()
    {
        QVERIFY(writeActions("[{'name':'Saluer','tasks':[]}]"));
        QVERIFY(writeSystemConfig("{'services':{'ref':[{'name':'B'},{'name':' a '}]}}"));
        Shell shell;
        shell.widget.setServices(object("{'ref':[{'name':'A'}]}"));
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
        QVERIFY(writeActions("[{'name':'Saluer','tasks':[]}]"));
        Shell shell;
        QCOMPARE(shell.linker->externalServices(), QJsonArray());
        const QSignalSpy changes(shell.linker, &ActionLinker::externalServicesChanged);
        shell.widget.setServices({});
        QCOMPARE(shell.linker->externalServices(), array("[{'name':'Saluer','tasks':[]}]"));
        QCOMPARE(changes.size(), 1);
        shell.widget.setServices({});
        QCOMPARE(changes.size(), 1); // the same actions are no change
    }

    void servicesOfAnotherTypeCountAsNone()
    {
        Shell shell;
        for (const char *services : {"{}", "{'ref':null}", "{'ref':'x'}", "{'ref':{'name':'A'}}"})
            shell.widget.setServices(object(services));
        QCOMPARE(shell.linker->externalServices(), QJsonArray());
    }

    void anEditedActionReachesTheLinkerAndEveryStoredBridge()
    {
        QVERIFY(writeActions("[{'name':'Saluer','tasks':[{'ref':'F','args':{'p':'param:speed'}}],"
                             "'params':[{'name':'speed','preferedType':'int'}]}]"));
        QVERIFY(
            writeProfile("[{'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_3'},"
                         "'dst':[{'ref':'Old','args':{}}],'action':'Saluer','args':{'speed':7}}]"));
        Shell shell;
        shell.widget.setServices(object("{'ref':[{'name':'F','params':[{'name':'p'}]}]}"));
        shell.widget.show();
        const QSignalSpy saved(shell.designer, &ActionDesignerWidget::actionsChanged);
        QTest::mouseClick(shell.button(u"Dupliquer"_s), Qt::LeftButton);
        QTRY_VERIFY(!saved.isEmpty());
        QCOMPARE(shell.linker->externalServices().size(), 2);
        QCOMPARE(shell.linker->findChild<QListWidget *>(u"mappingActionsList"_s)->count(), 2);
        const QJsonArray bridges = read(profilePath(u"configActionGamepad.json"_s))["bridges"_L1].toArray();
        QCOMPARE(bridges,
                 array("[{'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':"
                       "'but_3'},'dst':[{'ref':'F','args':{'p':7}}],'action':'Saluer','args':{'speed':"
                       "7}}]"));
    }

    void openingTheWindowAloneChangesNoBinding()
    {
        QVERIFY(writeActions("[{'name':'Saluer','tasks':[{'ref':'F','args':{'p':'param:speed'}}],"
                             "'params':[{'name':'speed','preferedType':'int','default':1}]}]"));
        const QByteArray bridges =
            "[{'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_3'},"
            "'dst':[{'ref':'F','args':{'p':7}}],'action':'Saluer','args':{'speed':7}}]";
        QVERIFY(writeProfile(bridges));
        const QJsonObject before = read(profilePath(u"configActionGamepad.json"_s));
        Shell shell;
        shell.widget.show();
        shell.widget.setServices(object("{'ref':[{'name':'F','params':[{'name':'p'}]}]}"));
        shell.widget.setServices(object("{'ref':[{'name':'G'}]}"));
        shell.widget.setServices({});
        QTest::qWait(400); // longer than the linker's delay: what must not happen has had its time
        QCOMPARE(read(profilePath(u"configActionGamepad.json"_s)), before);
    }

    void destroyedWithSavesPendingItLeavesInOrder()
    {
        QVERIFY(writeActions("[{'name':'Saluer','tasks':[]}]"));
        QVERIFY(writeProfile("[]"));
        for (int i = 0; i < 5; ++i) {
            auto shell = std::make_unique<Shell>();
            shell->widget.setServices(object("{'ref':[{'name':'F'}]}"));
            shell->widget.show();
            QTest::mouseClick(shell->button(u"+"_s), Qt::LeftButton);
            QTest::keyClicks(shell->name(), u"x"_s);
        }
        QCOMPARE(read(profilesRootPath() + u"/actions.json"_s)["ref"_L1].toArray().size(), 1);
    }
};

GAMEPAD_TEST_MAIN(TestManetteConfigurationWidget)
#include "tst_manetteconfigurationwidget.moc"
