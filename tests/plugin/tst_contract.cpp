// SPDX-License-Identifier: MIT
#include "loadedplugin.h"

#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QMetaEnum>
#include <QtCore/QMetaMethod>
#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;

namespace
{
/// The names of a class's own signals, in the order of their indices, each with its argument types.
QList<QByteArray> ownSignals(const QMetaObject *meta)
{
    QList<QByteArray> found;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        if (meta->method(i).methodType() == QMetaMethod::Signal)
            found.append(meta->method(i).methodSignature());
    }
    return found;
}

const QMetaObject *superClassNamed(const QMetaObject *meta, const char *name)
{
    while (meta && qstrcmp(meta->className(), name) != 0)
        meta = meta->superClass();
    return meta;
}

QMap<QString, int> entriesOf(const QMetaEnum &meta)
{
    QMap<QString, int> entries;
    for (int i = 0; i < meta.keyCount(); ++i)
        entries.insert(QString::fromLatin1(meta.key(i)), meta.value(i));
    return entries;
}
} // namespace

/// The plugin as a host meets it that was compiled against its own copy of the contract.
class TestContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
        clearTemporaryHome();
        QVERIFY2(m_plugin.provider, qPrintable(m_plugin.loader.errorString()));
    }

    void cleanup()
    {
        // Whatever a test selected goes with the model.
        m_parent = std::make_unique<QObject>();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void objectAnswersToItsNamesAndToTheInterfaceId()
    {
        QObject *object = m_plugin.instance;
        QCOMPARE(object->metaObject()->className(), "GamepadComPlugin");
        QVERIFY(object->inherits("GamepadComPlugin"));
        QVERIFY(object->inherits("IComInterfaceModelProvider"));
        QVERIFY(object->qt_metacast("GamepadComPlugin"));
        QVERIFY(object->qt_metacast("fr.velor.IComInterfaceModelProvider/1.0"));
        QVERIFY(object->qt_metacast("IComInterfaceModelProvider"));
        QVERIFY(object->qt_metacast("QObject"));
        QVERIFY(!object->qt_metacast("IComInterface"));
        QVERIFY(!object->parent());
    }

    void pluginObjectAddsNothingToItsMetaObject()
    {
        const QMetaObject *meta = m_plugin.instance->metaObject();
        QCOMPARE(meta->methodCount(), meta->methodOffset());
        QCOMPARE(meta->propertyCount(), meta->propertyOffset());
    }

    void providerSignalsStandInOrder()
    {
        const QMetaObject *meta =
            superClassNamed(m_plugin.instance->metaObject(), "IComInterfaceModelProvider");
        QVERIFY(meta);
        QCOMPARE(ownSignals(meta),
                 (QList<QByteArray>{"selectedInterfacesChanged(QList<IComInterface*>,QJsonArray)",
                                    "servicesChanged(QJsonObject)"}));
        QCOMPARE(ownSignals(meta), ownSignals(&IComInterfaceModelProvider::staticMetaObject));
        QCOMPARE(meta->method(meta->methodOffset()).parameterNames(),
                 (QList<QByteArray>{"selectedIfaces", "info"}));
        QCOMPARE(meta->method(meta->methodOffset() + 1).parameterNames(), (QList<QByteArray>{"services"}));
        QCOMPARE(meta->propertyCount() - meta->propertyOffset(), 0);
    }

    void everyProviderOperationStandsInItsSlot()
    {
        auto *provider = m_plugin.provider;
        QCOMPARE(provider->providerName(), u"velor"_s);
        QCOMPARE(provider->interfaceName(), u"Gamepad"_s);
        QAbstractListModel *model = provider->model(u"bench"_s, m_parent.get());
        QVERIFY(model);
        QVERIFY(model->inherits("LinkerDeviceModel"));
        QCOMPARE(model->parent(), m_parent.get());
        QAbstractItemDelegate *delegate = provider->delegate(m_parent.get());
        QVERIFY(delegate);
        QVERIFY(delegate->inherits("DeviceItemDelegate"));
        QCOMPARE(delegate->parent(), m_parent.get());
        QList<IComInterface *> interfaces{nullptr};
        QJsonArray infos{1};
        provider->selectedInterfaces(interfaces, infos);
        QVERIFY(interfaces.isEmpty());
        QVERIFY(infos.isEmpty());
        QWidget window;
        QMainWindow *config = provider->configWindow(&window);
        QVERIFY(config);
        QCOMPARE(config->windowTitle(), u"Gamepad"_s);
        QCOMPARE(config->parent(), &window);
        QCOMPARE(provider->reservedFlagA(), 0);
        QCOMPARE(provider->reservedFlagB(), 0);
        QCOMPARE(provider->info(), QJsonObject());
        provider->setServices({{u"ref"_s, QJsonArray{}}});
        QVERIFY(!provider->icon().isNull());
        QCOMPARE(provider->icon().availableSizes().size(), 1);
    }

    void everyInterfaceOperationStandsInItsSlot()
    {
        IComInterface *device = selectedDevice();
        QVERIFY(device);
        QSignalSpy status(device, &IComInterface::statusChanged);
        QSignalSpy finished(device, &IComInterface::finished);

        device->stop();
        QCOMPARE(status.takeFirst().first().value<IComInterface::ComStatus>(), IComInterface::noCom);
        QCOMPARE(device->status(), int(IComInterface::noCom));
        device->start(u"ignored"_s);
        QCOMPARE(status.takeFirst().first().value<IComInterface::ComStatus>(), IComInterface::connected);
        QCOMPARE(device->status(), int(IComInterface::connected));
        QCOMPARE(device->reservedFlag(), 0);
        QVERIFY(device->deviceJson().startsWith(u"{\"axes\":["_s));
        device->reservedHook();
        QTimer *timer = device->findChild<QTimer *>();
        QVERIFY(timer);
        device->setValue(2, 0, u"pollingInterval"_s, 20);
        QCOMPARE(timer->interval(), 20);
        QCOMPARE(device->deviceType(), int(IComInterface::gamepade));
        QCOMPARE(device->noCodeApp().size(), 1);
        QVERIFY(device->noCodeApp().first().endsWith(u"/Gamepads/configActionGamepad.json"_s));
        QVERIFY(!device->value().isValid());
        QCOMPARE(device->fonctions(), QJsonArray());
        QVERIFY(finished.isEmpty());
        device->quit();
        QCOMPARE(finished.size(), 1);
        QCOMPARE(device->status(), int(IComInterface::noCom));
    }

    void interfaceSignalsStandInOrder()
    {
        IComInterface *device = selectedDevice();
        QVERIFY(device);
        const QMetaObject *meta = superClassNamed(device->metaObject(), "IComInterface");
        QVERIFY(meta);
        QVERIFY(device->qt_metacast("IComInterface"));
        QCOMPARE(ownSignals(meta),
                 (QList<QByteArray>{"finished()", "statusChanged(ComStatus)", "noCodeAppChanged(QStringList)",
                                    "fonctionsChanged(QJsonArray)",
                                    "dataChanged(int,int,QStringList,QVariantList)",
                                    "dataChanged(QString,QString,QStringList,QVariantList)"}));
        QCOMPARE(ownSignals(meta), ownSignals(&IComInterface::staticMetaObject));
        QCOMPARE(meta->methodCount() - meta->methodOffset(), 6);
        QCOMPARE(meta->propertyCount() - meta->propertyOffset(), 0);
        const auto names = [meta](int i) { return meta->method(meta->methodOffset() + i).parameterNames(); };
        QCOMPARE(names(1), (QList<QByteArray>{"status"}));
        QCOMPARE(names(2), (QList<QByteArray>{""}));
        QCOMPARE(names(3), (QList<QByteArray>{""}));
        QCOMPARE(names(4), (QList<QByteArray>{"deviceId", "catId", "propertyName", "values"}));
        QCOMPARE(names(5), (QList<QByteArray>{"deviceName", "catName", "propertyName", "values"}));
    }

    void enumsCarryTheHostsNamesAndValues()
    {
        IComInterface *device = selectedDevice();
        QVERIFY(device);
        const QMetaObject *meta = superClassNamed(device->metaObject(), "IComInterface");
        const QMetaEnum types = meta->enumerator(meta->indexOfEnumerator("DeviceType"));
        QVERIFY(types.isValid());
        QVERIFY(!types.isFlag());
        QCOMPARE(entriesOf(types), (QMap<QString, int>{{u"gimbal"_s, 0},
                                                       {u"videoprocessing"_s, 1},
                                                       {u"gps"_s, 2},
                                                       {u"controler"_s, 3},
                                                       {u"gamepade"_s, 4},
                                                       {u"motor"_s, 5},
                                                       {u"userType"_s, 6},
                                                       {u"mavlink"_s, 7}}));
        const QMetaEnum states = meta->enumerator(meta->indexOfEnumerator("ComStatus"));
        QVERIFY(states.isValid());
        QVERIFY(!states.isFlag());
        QCOMPARE(
            entriesOf(states),
            (QMap<QString, int>{
                {u"noCom"_s, 0}, {u"waitingForEngagment"_s, 1}, {u"degraded"_s, 2}, {u"connected"_s, 3}}));
    }

    void liveValuesReachBothFormsThroughTheHostsOwnClass()
    {
        IComInterface *device = selectedDevice();
        QVERIFY(device);
        int numeric = 0;
        QStringList keys;
        QVariantList values;
        connect(device, qOverload<int, int, QStringList, QVariantList>(&IComInterface::dataChanged), this,
                [&](int deviceId, int catId, const QStringList &names, const QVariantList &data) {
                    QCOMPARE(deviceId, 0);
                    QCOMPARE(catId, 1);
                    keys = names;
                    values = data;
                    ++numeric;
                });
        int textual = 0;
        connect(device, qOverload<QString, QString, QStringList, QVariantList>(&IComInterface::dataChanged),
                this,
                [&](const QString &deviceName, const QString &catName, const QStringList &names,
                    const QVariantList &data) {
                    QCOMPARE(deviceName, u"gamepad"_s);
                    QCOMPARE(catName, u"gamepad"_s);
                    QCOMPARE(names, keys);
                    QCOMPARE(data, values);
                    ++textual;
                    QCOMPARE(textual, numeric);
                });
        // The button goes down only after calibration, so that it is a press.
        QTRY_VERIFY([&] {
            auto &pad = scripted::pad(2);
            pad.buttons.flip(3);
            return numeric > 0;
        }());
        QCOMPARE(keys, QStringList{u"but_3"_s});
        QCOMPARE(values.size(), 1);
        QCOMPARE(values.first().typeId(), int(QMetaType::Bool));
    }

    void interfaceListCanBeWalkedInsideAVariant()
    {
        IComInterface *device = selectedDevice();
        QVERIFY(device);
        QSignalSpy selection(m_plugin.instance,
                             SIGNAL(selectedInterfacesChanged(QList<IComInterface *>, QJsonArray)));
        QVERIFY(selection.isValid());
        auto *model = m_plugin.provider->model({}, nullptr);
        QVERIFY(QMetaObject::invokeMethod(model, "syncSelected"));
        QCOMPARE(selection.size(), 1);
        const QVariant list = selection.first().first();
        QVERIFY(list.canConvert<QVariantList>());
        const auto walked = list.value<QVariantList>();
        QCOMPARE(walked.size(), 1);
        QCOMPARE(walked.first().value<QObject *>(), device);
    }

    void selectedInterfacesBeforeTheModelEmptiesBoth()
    {
        QList<IComInterface *> interfaces{nullptr, nullptr};
        QJsonArray infos{1, 2};
        m_plugin.provider->selectedInterfaces(interfaces, infos);
        QVERIFY(interfaces.isEmpty());
        QVERIFY(infos.isEmpty());
    }

    void secondModelCallReturnsTheFirstModelAndKeepsItsContext()
    {
        QAbstractListModel *first = m_plugin.provider->model(u"first"_s, m_parent.get());
        QObject other;
        QCOMPARE(m_plugin.provider->model(u"second"_s, &other), first);
        QCOMPARE(first->property("context").toString(), u"first"_s);
        QCOMPARE(first->parent(), m_parent.get());
    }

private:
    /// Plugs a pad into slot 2, waits for its row, selects it and returns the interface that the host is
    /// given.
    IComInterface *selectedDevice()
    {
        scripted::Pad pad;
        pad.name = "Contract Pad";
        pad.buttonCount = 4;
        scripted::plug(2, pad);
        QList<IComInterface *> selected;
        connect(m_plugin.provider, &IComInterfaceModelProvider::selectedInterfacesChanged, m_parent.get(),
                [&selected](const QList<IComInterface *> &list) { selected = list; });
        QAbstractListModel *model = m_plugin.provider->model(u"contract"_s, m_parent.get());
        if (!QTest::qWaitFor([model] { return model->rowCount() == 1; }))
            return nullptr;
        QMetaObject::invokeMethod(model, "setSelected", u"gp:2"_s, true);
        m_plugin.provider->disconnect(m_parent.get());
        return selected.isEmpty() ? nullptr : selected.first();
    }

    LoadedPlugin m_plugin;
    std::unique_ptr<QObject> m_parent = std::make_unique<QObject>();
};

GAMEPAD_TEST_MAIN(TestContract)
#include "tst_contract.moc"
