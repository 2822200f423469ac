// SPDX-License-Identifier: MIT
// The designer on machines that differ in where things lie: these two functions of Qt are this program's own.
#include "designerstage.h"

#include "actionsdocument.h"
#include "testmain.h"

#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;

namespace
{
struct Places
{
    QString data;
    QString program;
};

Places &places()
{
    static Places instance;
    return instance;
}
} // namespace

QString QStandardPaths::writableLocation(StandardLocation type)
{
    return type == AppDataLocation ? places().data : QString();
}

QString QCoreApplication::applicationDirPath()
{
    return places().program;
}

class TestActionDesignerPlaces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
        places() = {temporaryHome() + u"/data/user"_s, temporaryHome() + u"/data/opt/one/two/three"_s};
        QVERIFY(QDir().mkpath(places().program));
    }

    void theSeedNextToTheProgramIsCopiedAtTheFirstStart()
    {
        QVERIFY(QDir().mkpath(places().data + u"/Gamepads"_s));
        const QStringList programs{u""_s, u"/.."_s, u"/../.."_s, u"/../../.."_s};
        QStringList seeds;
        for (const QString &above : programs) {
            seeds.append(above +
                         u"/plugins/DeviceInterface/GamepadInterface/configuration/Gamepads/actions.json"_s);
            seeds.append(above + u"/configuration/Gamepads/actions.json"_s);
        }
        while (!seeds.isEmpty()) { // the best comes last, so that each wins over the ones before
            const QString seed = seeds.takeLast();
            writeFile(places().program + seed, R"({"refs": [{"name": ")" + seed.toUtf8() + R"("}]})");
            DesignerStage stage;
            QCOMPARE(stage.listed(), QStringList{seed});
            QCOMPARE(readFile(userFile()), actionsJson({QJsonObject{{u"name"_s, seed}}}));
            QVERIFY(QFile::remove(userFile()));
        }
    }

    void withoutAPlaceForTheUserNothingIsSavedOrTold()
    {
        places().data.clear();
        DesignerStage stage;
        stage.show();
        const QSignalSpy changed(&stage.designer(), &ActionDesignerWidget::actionsChanged);
        DesignerStage::click(stage.addButton());
        DesignerStage::type(stage.name(), u"!"_s);
        stage.saveNow();
        QCOMPARE(changed.count(), 0);
        QCOMPARE(stage.nameOf(0), u"Nouvelle action!"_s);
    }

    void aPlaceThatComesLaterIsMadeAndKept()
    {
        const QString data = std::exchange(places().data, {});
        DesignerStage stage;
        stage.show();
        DesignerStage::click(stage.addButton());
        stage.saveNow();
        QVERIFY(!QFileInfo::exists(data));

        places().data = data;
        const QSignalSpy changed(&stage.designer(), &ActionDesignerWidget::actionsChanged);
        stage.saveNow();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(readFile(userFile()), actionsJson(stage.actions()));
        const QString first = userFile();
        places().data += u"-elsewhere"_s;
        DesignerStage::type(stage.name(), u"!"_s);
        stage.saveNow();
        QVERIFY(!QFileInfo::exists(places().data));
        QCOMPARE(readFile(first), actionsJson(stage.actions()));
    }

    void theFolderOfAKnownPlaceIsNotMade()
    {
        DesignerStage stage;
        const QSignalSpy changed(&stage.designer(), &ActionDesignerWidget::actionsChanged);
        stage.saveNow();
        QCOMPARE(changed.count(), 1);
        QVERIFY(!QFileInfo::exists(places().data));
    }
};

GAMEPAD_TEST_MAIN(TestActionDesignerPlaces)
#include "tst_actiondesignerplaces.moc"
