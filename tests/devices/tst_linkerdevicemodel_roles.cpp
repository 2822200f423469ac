// SPDX-License-Identifier: MIT
#include "modelfixture.h"

#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QJsonDocument>
#include <QtCore/QSize>
#include <QtGui/QIcon>
#include <QtGui/QPixmap>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace fixture;
using Model = LinkerDeviceModel;

namespace
{
QJsonObject jsonAt(const TestedModel &model, int row)
{
    return QJsonDocument::fromJson(model.at(row, Model::JsonRole).toByteArray()).object();
}

QIcon redIcon()
{
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    return pixmap;
}

/// A live pad in slot 1 and a remembered one of slot 2.
void aLiveAndAnAbsentPad()
{
    scripted::Pad pad = scripted::restingPad("Live pad");
    pad.vendorId = 0x54C;
    pad.productId = 0xCE6;
    scripted::plug(1, pad);
    remember({{u"gp:2"_s, rememberedDevice(2)}, {u"gp:1"_s, rememberedDevice(1)}});
}
} // namespace

/// What each role returns and what `setData` changes.
class TestLinkerDeviceModelRoles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { startAfresh(); }
    void cleanup() { QCOMPARE(scripted::calls().outsideSlots, 0); }

    void aLiveRow()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        QCOMPARE(model.at(0, Qt::SizeHintRole), QVariant(QSize(300, 240)));
        QCOMPARE(model.at(0, Qt::DisplayRole), QVariant(u"Live pad"_s));
        QCOMPARE(model.at(0, Model::UsnRole), QVariant(u"gp:1"_s));
        QCOMPARE(model.at(0, Model::NameRole), QVariant(u"Live pad"_s));
        QCOMPARE(model.at(0, Model::IpRole), QVariant(u"VID:54c PID:ce6"_s));
        QCOMPARE(model.at(0, Model::SelectedRole), QVariant(false));
        QCOMPARE(model.at(0, Model::ConnectedRole), QVariant(true));
        QCOMPARE(model.at(0, Model::VideoInterfacesRole),
                 QVariant(QStringList{u"Axes|axis://8"_s, u"Buttons|btn://11"_s}));
        QCOMPARE(model.at(0, Model::JsonRole).typeId(), int(QMetaType::QByteArray));
        QCOMPARE(model.at(0, Model::ProductRole), QVariant(u"Live pad"_s));
        QCOMPARE(model.at(0, Model::ImageRole), QVariant(u":/new/prefix1/ressources/menette_id_3302.png"_s));
        QCOMPARE(model.at(0, Model::ModelRole), QVariant(u"54c-ce6"_s));
        QCOMPARE(model.at(0, Model::LinkStateRole), QVariant(0));
    }

    void anAbsentRow()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        QCOMPARE(model.at(1, Qt::SizeHintRole), QVariant(QSize(300, 240)));
        QCOMPARE(model.at(1, Qt::DisplayRole), QVariant(u"Remembered 2"_s));
        QCOMPARE(model.at(1, Model::UsnRole), QVariant(u"gp:2"_s));
        QCOMPARE(model.at(1, Model::NameRole), QVariant(u"Remembered 2"_s));
        QCOMPARE(model.at(1, Model::IpRole), QVariant(u"VID:45e PID:28e"_s));
        QCOMPARE(model.at(1, Model::SelectedRole), QVariant(false));
        QCOMPARE(model.at(1, Model::ConnectedRole), QVariant(false));
        QCOMPARE(model.at(1, Model::VideoInterfacesRole), QVariant(QStringList()));
        QCOMPARE(model.at(1, Model::ProductRole), QVariant(u"Remembered 2"_s));
        QCOMPARE(model.at(1, Model::ImageRole), QVariant(u"/pictures/2.png"_s));
        QCOMPARE(model.at(1, Model::ModelRole), QVariant(u"45e-28e"_s));
        QCOMPARE(model.at(1, Model::LinkStateRole), QVariant(0));
    }

    void anAbsentRowWithoutIds()
    {
        remember({{u"gp:6"_s, QJsonObject{{u"deviceId"_s, u"6"_s}}}});
        const TestedModel model;
        QCOMPARE(model.at(0, Model::IpRole), QVariant(u"ID:6"_s));
        QCOMPARE(model.at(0, Model::ModelRole), QVariant(u"-"_s));
        QVERIFY(!model.at(0, Model::ImageRole).isValid());
        QVERIFY(!model.at(0, Qt::DecorationRole).isValid());
    }

    void jsonHasTwoShapes()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        QVERIFY(model.setData(model.index(0), u"Mine"_s, Model::NameRole));
        const QJsonObject live{
            {u"deviceId"_s, 1},          {u"name"_s, u"Live pad"_s},
            {u"vendorId"_s, u"0x54c"_s}, {u"productId"_s, u"0xce6"_s},
            {u"connected"_s, false},     {u"kv"_s, QJsonObject{{u"nameOverride"_s, u"Mine"_s}}},
        };
        QCOMPARE(jsonAt(model, 0), live);
        QCOMPARE(jsonAt(model, 1), rememberedDevice(2));
    }

    void whatIsNotThereIsInvalid()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        QVERIFY(!model.data({}, Model::NameRole).isValid());
        for (const int row : {model.count(), 1000}) {
            QVERIFY(!model.data(model.index(row), Model::NameRole).isValid());
            QVERIFY(!model.data(model.forgedIndex(row), Model::NameRole).isValid());
        }
        for (const int role : {int(Qt::EditRole), int(Qt::ToolTipRole), int(Qt::UserRole), 256, 268, -1})
            QVERIFY(!model.at(0, role).isValid());
    }

    void setDataRefusesWhatItDoesNotKnow()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        ModelLog log(&model);
        QVERIFY(!model.setData({}, u"x"_s, Model::NameRole));
        QVERIFY(!model.setData(model.forgedIndex(model.count()), u"x"_s, Model::NameRole));
        QVERIFY(!model.setData(model.forgedIndex(model.count()), true, Model::SelectedRole));
        for (const int role : {int(Qt::EditRole), int(Qt::DisplayRole), int(Model::UsnRole),
                               int(Model::IpRole), int(Model::ConnectedRole), int(Model::VideoInterfacesRole),
                               int(Model::JsonRole), int(Model::ModelRole), int(Model::LinkStateRole), 999}) {
            QVERIFY(!model.setData(model.index(0), u"x"_s, role));
        }
        QVERIFY(!model.setData(model.index(0), u"x"_s));
        QCOMPARE(log.take(), QStringList());
    }

    void aNameIsStoredAnnouncedAndSaved()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        ModelLog log(&model);
        QVERIFY(model.setData(model.index(1), u"Mine"_s, Model::NameRole));
        QCOMPARE(log.take(), (QStringList{u"data gp:2: name json"_s, u"save"_s}));
        QCOMPARE(model.at(1, Model::NameRole), QVariant(u"Mine"_s));
        QCOMPARE(storedDevice(u"gp:2"_s).value(u"kv"_s),
                 QJsonValue(QJsonObject{{u"nameOverride"_s, u"Mine"_s}}));
    }

    void theSameNameSaysNothing()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        QVERIFY(model.setData(model.index(1), u"Mine"_s, Model::NameRole));
        ModelLog log(&model);
        QVERIFY(model.setData(model.index(1), u"Mine"_s, Model::NameRole));
        QVERIFY(model.setData(model.index(0), u""_s, Model::NameRole));
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(storedDevice(u"gp:1"_s).value(u"kv"_s), QJsonValue(QJsonObject()));
    }

    void anEmptyNameShowsTheDevicesOwnAgain()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        QVERIFY(model.setData(model.index(0), u"Mine"_s, Model::NameRole));
        ModelLog log(&model);
        QVERIFY(model.setData(model.index(0), u""_s, Model::NameRole));
        QCOMPARE(model.at(0, Model::NameRole), QVariant(u"Live pad"_s));
        QCOMPARE(log.take(), (QStringList{u"data gp:1: name json"_s, u"save"_s}));
        QCOMPARE(storedDevice(u"gp:1"_s).value(u"kv"_s), QJsonValue(QJsonObject{{u"nameOverride"_s, u""_s}}));
    }

    void aProductIsStoredEachTime()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        ModelLog log(&model);
        for (int i = 0; i < 2; ++i) {
            QVERIFY(model.setData(model.index(0), u"Stick"_s, Model::ProductRole));
            QCOMPARE(log.take(), (QStringList{u"data gp:1: product json"_s, u"save"_s}));
        }
        QCOMPARE(model.at(0, Model::ProductRole), QVariant(u"Stick"_s));
        QCOMPARE(storedDevice(u"gp:1"_s).value(u"kv"_s), QJsonValue(QJsonObject{{u"product"_s, u"Stick"_s}}));
    }

    void aProductComesBackForAnAbsentRowOnly()
    {
        aLiveAndAnAbsentPad();
        {
            TestedModel model;
            settle();
            QVERIFY(model.setData(model.index(0), u"Stick"_s, Model::ProductRole));
            QVERIFY(model.setData(model.index(1), u"Wheel"_s, Model::ProductRole));
        }
        TestedModel model;
        settle();
        // A live device's name takes the place of the product text at each start.
        QCOMPARE(model.at(0, Model::ProductRole), QVariant(u"Live pad"_s));
        QCOMPARE(model.at(1, Model::ProductRole), QVariant(u"Wheel"_s));
    }

    void anEmptyProductFallsBackToTheName()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        QVERIFY(model.setData(model.index(0), u""_s, Model::ProductRole));
        QCOMPARE(model.at(0, Model::ProductRole), QVariant(u"Live pad"_s));
    }

    void anIconLastsForTheRun()
    {
        aLiveAndAnAbsentPad();
        {
            TestedModel model;
            settle();
            ModelLog log(&model);
            const QIcon icon = redIcon();
            QVERIFY(model.setData(model.index(0), icon, Model::ImageRole));
            QCOMPARE(log.take(), (QStringList{u"data gp:1: image"_s, u"save"_s}));
            QCOMPARE(model.at(0, Model::ImageRole).value<QIcon>().cacheKey(), icon.cacheKey());
            QCOMPARE(model.at(0, Qt::DecorationRole).value<QIcon>().cacheKey(), icon.cacheKey());
        }
        TestedModel model;
        settle();
        QCOMPARE(model.at(0, Model::ImageRole).typeId(), int(QMetaType::QString));
    }

    void anIconTakesThePathOutOfKv()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        QVERIFY(model.setData(model.index(1), u"/mine.png"_s, Model::ImageRole));
        QVERIFY(model.setData(model.index(1), redIcon(), Model::ImageRole));
        QCOMPARE(storedDevice(u"gp:2"_s).value(u"kv"_s), QJsonValue(QJsonObject()));
    }

    void aNullIconTakesTheIconAway()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        QVERIFY(model.setData(model.index(1), redIcon(), Model::ImageRole));
        QVERIFY(model.setData(model.index(1), QIcon(), Model::ImageRole));
        QCOMPARE(model.at(1, Model::ImageRole), QVariant(u"/pictures/2.png"_s));
    }

    void aPathIsStoredAndNotShown()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        QVERIFY(model.setData(model.index(1), redIcon(), Model::ImageRole));
        ModelLog log(&model);
        QVERIFY(model.setData(model.index(1), u"/mine.png"_s, Model::ImageRole));
        QCOMPARE(log.take(), (QStringList{u"data gp:2: image"_s, u"save"_s}));
        QCOMPARE(model.at(1, Model::ImageRole), QVariant(u"/pictures/2.png"_s));
        const QJsonObject kv{{u"imagePath"_s, u"/mine.png"_s}};
        QCOMPARE(jsonAt(model, 1).value(u"kv"_s), QJsonValue(kv));
        QCOMPARE(jsonAt(model, 1).value(u"imagePath"_s), QJsonValue(u"/pictures/2.png"_s));
        QCOMPARE(storedDevice(u"gp:2"_s).value(u"kv"_s), QJsonValue(kv));
        QCOMPARE(storedDevice(u"gp:2"_s).value(u"imagePath"_s), QJsonValue(u"/pictures/2.png"_s));
    }

    void anImageThatIsNeitherIconNorPathIsRefused()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        ModelLog log(&model);
        for (const QVariant &value : {QVariant(), QVariant(5), QVariant(QSize(1, 1)),
                                      QVariant(QByteArray("/mine.png")), QVariant(QStringList{u"a"_s})}) {
            QVERIFY(!model.setData(model.index(0), value, Model::ImageRole));
        }
        QCOMPARE(log.take(), QStringList());
    }

    void aPicturePathThatLeadsNowhereDecoratesWithANullIcon()
    {
        aLiveAndAnAbsentPad();
        TestedModel model;
        settle();
        for (int row = 0; row < model.count(); ++row) {
            const QVariant icon = model.at(row, Qt::DecorationRole);
            QCOMPARE(icon.typeId(), qMetaTypeId<QIcon>());
            QVERIFY(icon.value<QIcon>().isNull());
        }
    }

    void settingsSurviveWithKeysThatAreNotKnown()
    {
        QJsonObject device = rememberedDevice(2, {{u"colour"_s, u"red"_s}});
        device[u"firmware"_s] = 7;
        remember({{u"gp:2"_s, device}});
        TestedModel model;
        settle();
        QVERIFY(model.setData(model.index(0), u"Mine"_s, Model::NameRole));
        device[u"kv"_s] = QJsonObject{{u"colour"_s, u"red"_s}, {u"nameOverride"_s, u"Mine"_s}};
        QCOMPARE(storedDevice(u"gp:2"_s), device);
    }

    void aRowCostsTheSameHoweverManyThereAre()
    {
        const auto fastestReading = [](int rows) {
            QJsonObject devices;
            for (int i = 0; i < rows; ++i)
                devices[u"gp:%1"_s.arg(i + 100)] = rememberedDevice(i + 100);
            const QString context = u"rows%1"_s.arg(rows);
            remember(devices, context);
            const LinkerDeviceModel model(context, nullptr);
            qint64 fastest = std::numeric_limits<qint64>::max();
            for (int round = 0; round < 20; ++round) {
                QElapsedTimer timer;
                timer.start();
                for (int i = 0; i < 2000; ++i) {
                    const QModelIndex index = model.index(rows - 1 - i % 8);
                    for (const int role :
                         {Model::NameRole, Model::IpRole, Model::JsonRole, Model::LinkStateRole})
                        (void)model.data(index, role);
                }
                fastest = std::min(fastest, timer.nsecsElapsed());
            }
            return fastest;
        };
        const qint64 few = fastestReading(10);
        const qint64 many = fastestReading(2000);
        QVERIFY2(many < 4 * few, qPrintable(u"%1 ns against %2 ns"_s.arg(many).arg(few)));
    }
};

GAMEPAD_TEST_MAIN(TestLinkerDeviceModelRoles)
#include "tst_linkerdevicemodel_roles.moc"
