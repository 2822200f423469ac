// SPDX-License-Identifier: MIT
#include "modelfixture.h"

#include "gamepadmanager.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QLoggingCategory>

#include <sys/stat.h>

#include <functional>

using namespace Qt::StringLiterals;
using namespace fixture;
using Model = LinkerDeviceModel;

namespace
{
/// Everything that a view, a delegate and a host can ask of a model.
void askForEverything(TestedModel &model)
{
    for (int row = -1; row <= model.count(); ++row) {
        for (int role = 0; role < 300; ++role)
            (void)model.at(row, role);
        (void)model.usnForRow(row);
        (void)model.interfaceForRow(row);
    }
    const QList<IComInterface *> selection = model.selection();
    for (IComInterface *iface : selection) {
        (void)iface->deviceJson();
        (void)iface->noCodeApp();
        (void)iface->status();
    }
}

/// Calls `react` from within each signal that tells of a change, but never from within itself.
class Meddler : public QObject
{
    Q_OBJECT

public:
    Meddler(Model *model, const std::function<void()> &react)
        : m_react(react)
    {
        connect(model, &QAbstractItemModel::dataChanged, this, &Meddler::meddle);
        connect(model, &QAbstractItemModel::rowsInserted, this, &Meddler::meddle);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &Meddler::meddle);
        connect(model, &QAbstractItemModel::modelReset, this, &Meddler::meddle);
        connect(model, &Model::countChanged, this, &Meddler::meddle);
        connect(model, &Model::previousCountChanged, this, &Meddler::meddle);
        connect(model, &Model::contextChanged, this, &Meddler::meddle);
        connect(model, &Model::autoDetectChanged, this, &Meddler::meddle);
        connect(model, &Model::selectedInterfacesChanged, this, &Meddler::meddle);
    }

    /// Rows may not come and go between this signal and the reset itself: Qt's rule for any model.
    void hearResetsBegin(const Model *model)
    {
        connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &Meddler::meddle);
    }

    int calls = 0;

private:
    void meddle()
    {
        if (m_meddling)
            return;
        m_meddling = true;
        ++calls;
        m_react();
        m_meddling = false;
    }

    std::function<void()> m_react;
    bool m_meddling = false;
};
} // namespace

/// Bad files, odd contexts, and listeners that change what they listen to.
class TestLinkerDeviceModelHostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules(u"default.debug=false"_s); }
    void init() { startAfresh(); }
    void cleanup() { QCOMPARE(scripted::calls().outsideSlots, 0); }

    void aBadFileGivesAnEmptyListThatWorks_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("broken") << QByteArray(R"({"devices": {"gp:1": )");
        QTest::newRow("array") << QByteArray("[]");
        QTest::newRow("invalid UTF-8") << QByteArray("{\"devices\": {\"\xff\xfe\": {}}}");
        QTest::newRow("nesting") << QByteArray(R"({"devices":)").repeated(1'000'000);
        QTest::newRow("devices is a list") << QByteArray(R"({"devices": [1, 2]})");
    }
    void aBadFileGivesAnEmptyListThatWorks()
    {
        QFETCH(const QByteArray, bytes);
        writeRaw(bytes);
        plug(1);
        TestedModel model;
        QCOMPARE(model.count(), 0);
        QCOMPARE(model.previousCount(), 0);
        settle();
        QCOMPARE(model.count(), 1);
        QCOMPARE(stored().value(u"lastCount"_s), QJsonValue(1));
    }

    void aDeviceThatIsNoObjectIsARowWithoutAnything()
    {
        writeRaw(R"({"devices": {"a": 1, "b": null, "c": [1], "d": "x", "e": {"kv": [true]}}})");
        TestedModel model;
        settle();
        QCOMPARE(model.count(), 5);
        for (int row = 0; row < 5; ++row) {
            QCOMPARE(model.at(row, Model::JsonRole), QVariant(QByteArray(R"({"kv":{}})")));
            QCOMPARE(model.at(row, Model::IpRole), QVariant(u"ID:"_s));
        }
        askForEverything(model);
    }

    void wrongTypesAtEveryKey_data()
    {
        QTest::addColumn<QJsonValue>("value");
        QTest::newRow("null") << QJsonValue(QJsonValue::Null);
        QTest::newRow("true") << QJsonValue(true);
        QTest::newRow("number") << QJsonValue(1e300);
        QTest::newRow("long text") << QJsonValue(QString(100'000, u'%'));
        QTest::newRow("pattern") << QJsonValue(u"%1%2%99"_s);
        QTest::newRow("end of text within") << QJsonValue(u"a"_s + QChar::Null + u'b');
        QTest::newRow("list") << QJsonValue(QJsonArray{1});
        QTest::newRow("object") << QJsonValue(QJsonObject{{u"selected"_s, true}});
    }
    void wrongTypesAtEveryKey()
    {
        QFETCH(const QJsonValue, value);
        QJsonObject device;
        for (const QString &key :
             {u"deviceId"_s, u"vendorIdHex"_s, u"productIdHex"_s, u"name"_s, u"imagePath"_s})
            device[key] = value;
        QJsonObject kv;
        for (const QString &key : {u"selected"_s, u"nameOverride"_s, u"product"_s, u"imagePath"_s})
            kv[key] = value;
        device[u"kv"_s] = kv;
        const QJsonObject devices{{u"gp:3"_s, device}, {u"not a slot"_s, device}, {u"gp:99"_s, device}};
        remember(devices);
        TestedModel model;
        settle();
        QCOMPARE(model.count(), 3);
        askForEverything(model);
        model.setUniqSelection(false);
        for (int row = 0; row < 3; ++row) {
            QVERIFY(model.setData(model.index(row), false, Model::SelectedRole));
            QVERIFY(model.setData(model.index(row), true, Model::SelectedRole));
        }
        askForEverything(model);
        QCOMPARE(model.selection().size(), 3);
        const QStringList keys = devices.keys();
        for (const QString &usn : keys) {
            kv[u"selected"_s] = true;
            device[u"kv"_s] = kv;
            QCOMPARE(storedDevice(usn), device);
            QVERIFY(model.deleteDevice(usn));
        }
    }

    void aSlotThatSfmlDoesNotHaveNeverReachesIt()
    {
        QJsonObject devices;
        for (const QString &id : {u"8"_s, u"42"_s, u"-7"_s, u"4294967297"_s, u"99999999999"_s}) {
            QJsonObject device = rememberedDevice(0, selectedKv());
            device[u"deviceId"_s] = id;
            devices[u"gp:"_s + id] = device;
        }
        remember(devices);
        TestedModel model;
        settle();
        askForEverything(model);
        const QList<IComInterface *> selection = model.selection();
        QCOMPARE(selection.size(), 5);
        // A host that starts what it was given finds nothing there.
        for (IComInterface *iface : selection) {
            iface->start({});
            QCOMPARE(iface->status(), int(IComInterface::noCom));
        }
        QCOMPARE(scripted::calls().outsideSlots, 0);
    }

    void anyContextWorks_data()
    {
        QTest::addColumn<QString>("context");
        QTest::newRow("empty") << u""_s;
        QTest::newRow("upwards") << u"../.."_s;
        QTest::newRow("absolute") << u"/nowhere/to/be/found"_s;
        QTest::newRow("too long") << QString(5000, u'x');
        QTest::newRow("separators") << u"////"_s;
        QTest::newRow("pattern") << u"%1%2"_s;
        QTest::newRow("not ASCII") << u"é 漢 🎮"_s;
        QTest::newRow("half a character") << u"a"_s + QChar(0xD800);
        QTest::newRow("end of text within") << u"a"_s + QChar::Null + u'b';
    }
    void anyContextWorks()
    {
        QFETCH(const QString, context);
        plug(1);
        TestedModel model(u"host"_s);
        settle();
        model.setContext(context);
        settle();
        discover();
        askForEverything(model);
        QCOMPARE(model.context(), context);
        model.syncSelected();
        model.setContext(u"host"_s);
        QCOMPARE(model.count(), 1);
        QVERIFY(!QFileInfo::exists(u"/nowhere"_s));
        const TestedModel other(context);
        settle();
    }

    // Whoever opens a pipe waits for the one at its other end.
    void aPipeInPlaceOfTheFileKeepsNobodyWaiting()
    {
        QVERIFY(QDir().mkpath(folderOf(u"host"_s)));
        const QByteArray path = QFile::encodeName(folderOf(u"host"_s)) + "/gamepads.json";
        QCOMPARE(mkfifo(path.constData(), 0600), 0);
        QCOMPARE(mkfifo((path + ".tmp").constData(), 0600), 0);
        plug(1);
        TestedModel model;
        QCOMPARE(model.count(), 0);
        settle();
        QCOMPARE(model.count(), 1);
        QCOMPARE(stored().value(u"lastCount"_s), QJsonValue(1));
    }

    void aPipeInPlaceOfThePictureKeepsNobodyWaiting()
    {
        const QString pipe = temporaryHome() + u"/pipe.png"_s;
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QJsonObject device = rememberedDevice(3);
        device[u"imagePath"_s] = pipe;
        remember({{u"gp:3"_s, device}});
        const TestedModel model;
        QCOMPARE(model.at(0, Model::ImageRole), QVariant(pipe));
        const QVariant decoration = model.at(0, Qt::DecorationRole);
        QCOMPARE(decoration.typeId(), int(QMetaType::QIcon));
        QVERIFY(decoration.value<QIcon>().isNull());
    }

    void aListenerMayDeleteRows_data() { whoMeddles(); }
    void aListenerMayDeleteRows()
    {
        meddle(
            [](TestedModel &model) {
                if (model.count() > 0)
                    model.deleteDevice(model.usnForRow(0));
            },
            Meddling::ChangesRows);
    }

    void aListenerMayChangeTheSelection_data() { whoMeddles(); }
    void aListenerMayChangeTheSelection()
    {
        meddle([](TestedModel &model) {
            for (int row = 0; row < model.count(); ++row)
                model.setSelected(model.usnForRow(row), !model.isSelected(model.usnForRow(row)));
        });
    }

    void aListenerMayRenameRows_data() { whoMeddles(); }
    void aListenerMayRenameRows()
    {
        meddle([round = 0](TestedModel &model) mutable {
            for (int row = 0; row < model.count(); ++row)
                model.setData(model.index(row), u"name %1"_s.arg(++round), Model::NameRole);
        });
    }

    void aListenerMayChangeTheContext_data() { whoMeddles(); }
    void aListenerMayChangeTheContext()
    {
        meddle([](TestedModel &model) {
            model.setContext(model.context() == "host"_L1 ? u"other"_s : u"host"_s);
        });
    }

    void aListenerMayDestroyInterfaces_data() { whoMeddles(); }
    void aListenerMayDestroyInterfaces()
    {
        meddle([](TestedModel &model) {
            for (int row = 0; row < model.count(); ++row)
                delete model.interfaceForRow(row);
        });
    }

    void aListenerMayDiscover_data() { whoMeddles(); }
    void aListenerMayDiscover()
    {
        // Each device that goes makes the model speak once more, so this would never end by itself.
        meddle(
            [slot = 2, roundsLeft = 20](TestedModel &) mutable {
                if (roundsLeft-- <= 0)
                    return;
                unplug(slot);
                slot = 2 + (slot + 1) % 6;
                plug(slot);
                discover();
            },
            Meddling::ChangesRows);
    }

    // But not from within the end of a device: no object survives that its parent goes while it goes.
    void aListenerMayDestroyTheManager_data() { whoMeddles(EndOfADevice::LeftOut); }
    void aListenerMayDestroyTheManager()
    {
        meddle([roundsLeft = 3](TestedModel &) mutable {
            if (roundsLeft-- > 0)
                delete GamepadManager::instance();
        });
    }

    void aDeviceThatIsDeselectedWhileItStartsStaysStopped()
    {
        plug(0);
        TestedModel model;
        settle();
        const Meddler meddler(&model, [&model] { model.setSelected(u"gp:0"_s, false); });
        model.setSelected(u"gp:0"_s, true);
        QVERIFY(!model.isSelected(u"gp:0"_s));
        QVERIFY(!model.interfaceForRow(0));
        QCOMPARE(liveDevice(0)->status(), int(IComInterface::noCom));
        QCOMPARE(model.at(0, Model::LinkStateRole), QVariant(0));
    }

    void aDeviceThatIsSelectedAgainWhileItStopsRuns()
    {
        plug(0);
        TestedModel model;
        settle();
        model.setSelected(u"gp:0"_s, true);
        const Meddler meddler(&model, [&model] { model.setSelected(u"gp:0"_s, true); });
        model.setSelected(u"gp:0"_s, false);
        QVERIFY(model.isSelected(u"gp:0"_s));
        QCOMPARE(model.interfaceForRow(0), liveDevice(0));
        QCOMPARE(model.selection(), QList<IComInterface *>{liveDevice(0)});
    }

private:
    enum class EndOfADevice { Included, LeftOut };

    /// The ways in which a model can be made to speak.
    static void whoMeddles(EndOfADevice endOfADevice = EndOfADevice::Included)
    {
        QTest::addColumn<int>("occasion");
        QTest::newRow("loading") << 0;
        QTest::newRow("merging") << 1;
        QTest::newRow("unplugging") << 2;
        QTest::newRow("selecting") << 3;
        QTest::newRow("deselecting") << 4;
        QTest::newRow("deleting") << 5;
        QTest::newRow("renaming") << 6;
        QTest::newRow("detecting") << 7;
        if (endOfADevice == EndOfADevice::Included)
            QTest::newRow("device lost") << 8;
    }

    enum class Meddling { KeepsRows, ChangesRows };

    static void meddle(const std::function<void(TestedModel &)> &react,
                       Meddling meddling = Meddling::KeepsRows)
    {
        QFETCH(const int, occasion);
        plug(0);
        plug(1);
        const QJsonObject devices{{u"gp:0"_s, rememberedDevice(0, selectedKv())},
                                  {u"gp:1"_s, rememberedDevice(1, selectedKv())},
                                  {u"gp:6"_s, rememberedDevice(6, selectedKv())},
                                  {u"gp:7"_s, rememberedDevice(7)}};
        remember(devices);
        remember(devices, u"other"_s);
        remember(devices, u"third"_s);
        TestedModel model;
        settle();
        Meddler meddler(&model, [&] { react(model); });
        if (meddling == Meddling::KeepsRows)
            meddler.hearResetsBegin(&model);
        switch (occasion) {
        case 0:
            model.setContext(u"third"_s);
            break;
        case 1:
            plug(3);
            discover();
            break;
        case 2:
            unplug(0);
            discover();
            break;
        case 3:
            model.setSelected(u"gp:7"_s, true);
            break;
        case 4:
            model.setSelected(u"gp:0"_s, false);
            break;
        case 5:
            QVERIFY(model.deleteDevice(u"gp:0"_s));
            break;
        case 6:
            QVERIFY(model.setData(model.index(0), u"x"_s, Model::NameRole));
            break;
        case 7:
            model.setAutoDetect(false);
            model.setAutoDetect(true);
            break;
        default:
            delete liveDevice(1);
            break;
        }
        QVERIFY(meddler.calls > 0);
        settle();
        askForEverything(model);
        settle();

        // The rows, the selection and the file still tell one story.
        QObject::disconnect(&model, nullptr, &meddler, nullptr);
        const int row = model.rowCount() - 1;
        if (row >= 0)
            QVERIFY(model.setData(model.index(row), u"last word"_s, Model::NameRole));
        QStringList keys;
        for (int i = 0; i < model.count(); ++i)
            keys << model.usnForRow(i);
        keys.sort();
        keys.removeDuplicates();
        QCOMPARE(keys.size(), model.count());
        if (row >= 0)
            QCOMPARE(stored(model.context()).value(u"devices"_s).toObject().keys(), keys);
        qsizetype selected = 0;
        for (const QString &usn : std::as_const(keys))
            selected += model.isSelected(usn) ? 1 : 0;
        QCOMPARE(model.selection().size(), selected);
    }
};

GAMEPAD_TEST_MAIN(TestLinkerDeviceModelHostile)
#include "tst_linkerdevicemodel_hostile.moc"
