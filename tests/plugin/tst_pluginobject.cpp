// SPDX-License-Identifier: MIT
#include "loadedplugin.h"

#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QDirIterator>
#include <QtCore/QLibrary>
#include <QtCore/QResource>
#include <QtGui/QImage>
#include <QtTest/QAbstractItemModelTester>

#include <QtTest/QSignalSpy>

using namespace Qt::StringLiterals;

/// The plugin object: what it makes, when, how it wires it, and that it outlives all of it.
class TestPluginObject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
        clearTemporaryHome();
        m_parent = std::make_unique<QObject>();
        // One object for the whole process, so each test begins by asking for a fresh one.
        delete m_loader.instance();
        m_provider = qobject_cast<IComInterfaceModelProvider *>(m_loader.instance());
        QVERIFY2(m_provider, qPrintable(m_loader.errorString()));
    }

    void cleanup()
    {
        m_parent.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void creationTouchesNoJoystickAndStartsNoTimer()
    {
        QCOMPARE(scripted::calls().update, 0);
        QCOMPARE(scripted::calls().isConnected, 0);
        QVERIFY(m_provider->findChildren<QObject *>().isEmpty());
        QVERIFY(m_provider->providerName() == u"velor"_s);
        QVERIFY(!m_provider->icon().isNull());
        QCOMPARE(scripted::calls().update, 0);
    }

    void firstModelBringsUpTheInputSide()
    {
        m_provider->model(u"bench"_s, m_parent.get());
        QVERIFY(scripted::calls().update > 0);
        QTRY_VERIFY(scripted::calls().update > 10);
    }

    void entryPointReturnsOneObjectUntilItIsDestroyed()
    {
        QLibrary library(QStringLiteral(GAMEPAD_PLUGIN));
        using Instance = QObject *(*)();
        const auto instance = reinterpret_cast<Instance>(library.resolve("qt_plugin_instance"));
        QVERIFY(instance);
        QVERIFY(library.resolve("qt_plugin_query_metadata_v2"));
        QObject *first = instance();
        QCOMPARE(first, m_provider);
        QCOMPARE(instance(), first);
        const QPointer<QObject> watched(first);
        delete first;
        QVERIFY(!watched);
        QObject *second = instance();
        QVERIFY(second);
        QVERIFY(qobject_cast<IComInterfaceModelProvider *>(second));
        m_provider = qobject_cast<IComInterfaceModelProvider *>(second);
        library.unload(); // gives back this test's own hold on the file
    }

    void delegateIsMadeOnceAndWiredToTheModel()
    {
        plugPad(0);
        auto *model = m_provider->model(u"wired"_s, m_parent.get());
        const QAbstractItemModelTester tester(model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QTRY_COMPARE(model->rowCount(), 1);
        auto *delegate = m_provider->delegate(m_parent.get());
        QObject other;
        QCOMPARE(m_provider->delegate(&other), delegate);

        QVERIFY(QMetaObject::invokeMethod(delegate, "toggledSelect", u"gp:0"_s, true));
        QVERIFY(isSelected(model, u"gp:0"_s));
        QVERIFY(QMetaObject::invokeMethod(delegate, "toggledSelect", u"gp:0"_s, false));
        QVERIFY(!isSelected(model, u"gp:0"_s));
        scripted::unplug(0);
        QVERIFY(QMetaObject::invokeMethod(delegate, "requestDelete", u"gp:0"_s));
        QCOMPARE(model->rowCount(), 0);
    }

    void requestConfigOfTheDelegateStaysUnconnected()
    {
        plugPad(0);
        auto *model = m_provider->model(u"config"_s, m_parent.get());
        QTRY_COMPARE(model->rowCount(), 1);
        auto *delegate = m_provider->delegate(m_parent.get());
        const QWidgetList windows = QApplication::topLevelWidgets();
        scripted::unplug(0); // a row that were deleted would not return
        QVERIFY(QMetaObject::invokeMethod(delegate, "requestConfig", u"gp:0"_s));
        QCOMPARE(model->rowCount(), 1);
        QVERIFY(!isSelected(model, u"gp:0"_s));
        QCOMPARE(QApplication::topLevelWidgets(), windows);
    }

    void delegateBeforeTheModelIsMadeButHasNoReceiver()
    {
        const QRegularExpression complaint(u"QObject::connect.*invalid nullptr parameter"_s);
        QTest::ignoreMessage(QtWarningMsg, complaint);
        QTest::ignoreMessage(QtWarningMsg, complaint);
        auto *delegate = m_provider->delegate(m_parent.get());
        QVERIFY(delegate);

        plugPad(0);
        auto *model = m_provider->model(u"late"_s, m_parent.get());
        QTRY_COMPARE(model->rowCount(), 1);
        QVERIFY(QMetaObject::invokeMethod(delegate, "toggledSelect", u"gp:0"_s, true));
        QVERIFY(QMetaObject::invokeMethod(delegate, "requestDelete", u"gp:0"_s));
        QCOMPARE(model->rowCount(), 1);
        QVERIFY(!isSelected(model, u"gp:0"_s));
    }

    void selectionIsForwardedSignalToSignal()
    {
        plugPad(1);
        auto *model = m_provider->model(u"forward"_s, m_parent.get());
        QTRY_COMPARE(model->rowCount(), 1);
        QList<IComInterface *> received;
        QJsonArray infos;
        connect(m_provider, &IComInterfaceModelProvider::selectedInterfacesChanged, m_parent.get(),
                [&](const QList<IComInterface *> &list, const QJsonArray &info) {
                    received = list;
                    infos = info;
                });
        QMetaObject::invokeMethod(model, "setSelected", u"gp:1"_s, true);
        QCOMPARE(received.size(), 1);
        QCOMPARE(infos.size(), 1);
        QCOMPARE(infos.first().toObject().value("deviceId"_L1).toString(), u"1"_s);

        QList<IComInterface *> asked;
        QJsonArray askedInfos;
        m_provider->selectedInterfaces(asked, askedInfos);
        QCOMPARE(asked, received);
        QCOMPARE(askedInfos, infos);
    }

    void modelThatDiedIsMadeAnewAndServesTheLivingDelegate()
    {
        plugPad(0);
        QObject delegateOwner;
        m_provider->model(u"again"_s, m_parent.get());
        auto *delegate = m_provider->delegate(&delegateOwner);
        m_parent = std::make_unique<QObject>();

        QList<IComInterface *> interfaces{nullptr};
        QJsonArray infos;
        m_provider->selectedInterfaces(interfaces, infos);
        QVERIFY(interfaces.isEmpty());

        auto *model = m_provider->model(u"again"_s, m_parent.get());
        QVERIFY(model);
        QTRY_COMPARE(model->rowCount(), 1);
        QVERIFY(QMetaObject::invokeMethod(delegate, "toggledSelect", u"gp:0"_s, true));
        QVERIFY(isSelected(model, u"gp:0"_s));
    }

    void delegateThatDiedIsMadeAnew()
    {
        plugPad(0);
        auto *model = m_provider->model(u"painter"_s, m_parent.get());
        QTRY_COMPARE(model->rowCount(), 1);
        delete m_provider->delegate(m_parent.get());
        auto *second = m_provider->delegate(m_parent.get());
        QVERIFY(second);
        QVERIFY(QMetaObject::invokeMethod(second, "toggledSelect", u"gp:0"_s, true));
        QVERIFY(isSelected(model, u"gp:0"_s));
    }

    void destroyingThePluginObjectLeavesWhatItHandedOut()
    {
        const QPointer<QAbstractListModel> model = m_provider->model(u"orphan"_s, m_parent.get());
        const QPointer<QAbstractItemDelegate> delegate = m_provider->delegate(m_parent.get());
        QWidget owner;
        const QPointer<QMainWindow> window = m_provider->configWindow(&owner);
        delete m_provider;
        QVERIFY(model);
        QVERIFY(delegate);
        QVERIFY(window);
    }

    void configWindowIsAPlainMainWindowOfItsParent()
    {
        QWidget owner;
        QMainWindow *window = m_provider->configWindow(&owner);
        QCOMPARE(window->metaObject()->className(), "QMainWindow");
        QCOMPARE(window->windowTitle(), u"Gamepad"_s);
        QCOMPARE(window->parentWidget(), &owner);
        QCOMPARE(window->windowFlags(), QMainWindow(&owner).windowFlags());
        QCOMPARE(m_provider->configWindow(nullptr), window);
        delete window;
        QMainWindow *second = m_provider->configWindow(&owner);
        QVERIFY(second);
        QCOMPARE(second->windowTitle(), u"Gamepad"_s);
    }

    void resourcesHoldExactlyFourPlainFilesOfTheToldSizes()
    {
        const QMap<QString, qint64> expected{{u":/icon/ressources/arrow-down.svg"_s, 146},
                                             {u":/icon/ressources/arrow-up.svg"_s, 146},
                                             {u":/icon/ressources/close-red.svg"_s, 222},
                                             {u":/icon/ressources/console-video.png"_s, 29241}};
        QMap<QString, qint64> found;
        QDirIterator files(u":/icon"_s, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            const QResource resource(path);
            QCOMPARE(resource.compressionAlgorithm(), QResource::NoCompression);
            found.insert(path, resource.size());
        }
        QCOMPARE(found, expected);
    }

    void iconIsThePicture()
    {
        const QImage picture(u":/icon/ressources/console-video.png"_s);
        QVERIFY(!picture.isNull());
        QCOMPARE(m_provider->icon().availableSizes(), QList<QSize>{picture.size()});
    }

    void picturesOfTheHostAreNotInThisTree()
    {
        QVERIFY(QPixmap(u":/new/prefix1/ressources/menette_id_1.png"_s).isNull());
    }

    void loadingUnloadingAndLoadingAgainWorks()
    {
        plugPad(0);
        for (int round = 0; round < 3; ++round) {
            auto *model = m_provider->model(u"rounds"_s, m_parent.get());
            m_provider->delegate(m_parent.get());
            QTRY_COMPARE(model->rowCount(), 1);
            m_parent = std::make_unique<QObject>();
            const QPointer<QObject> old(m_provider);
            QVERIFY(m_loader.unload());
            QVERIFY(!old);
            m_provider = qobject_cast<IComInterfaceModelProvider *>(m_loader.instance());
            QVERIFY2(m_provider, qPrintable(m_loader.errorString()));
        }
    }

    void modelGoesOnAfterTheLoaderLetTheLibraryGo()
    {
        plugPad(0);
        auto *model = m_provider->model(u"unloaded"_s, m_parent.get());
        QVERIFY(m_loader.unload());
        QTRY_COMPARE(model->rowCount(), 1);
        QMetaObject::invokeMethod(model, "setSelected", u"gp:0"_s, true);
        QVERIFY(isSelected(model, u"gp:0"_s));
    }

private:
    static void plugPad(unsigned slot)
    {
        scripted::Pad pad;
        pad.buttonCount = 2;
        scripted::plug(slot, pad);
    }

    static bool isSelected(QAbstractItemModel *model, const QString &usn)
    {
        bool selected = false;
        QMetaObject::invokeMethod(model, "isSelected", qReturnArg(selected), usn);
        return selected;
    }

    QPluginLoader m_loader{QStringLiteral(GAMEPAD_PLUGIN)};
    QPointer<IComInterfaceModelProvider> m_provider;
    std::unique_ptr<QObject> m_parent;
};

GAMEPAD_TEST_MAIN(TestPluginObject)
#include "tst_pluginobject.moc"
