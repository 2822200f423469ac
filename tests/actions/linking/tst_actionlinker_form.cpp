// SPDX-License-Identifier: MIT
// How the tab is built, and what its meta-object says.
#include "linkerstage.h"

#include "gamepaddefinder.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtWidgets/QGridLayout>

using namespace Qt::StringLiterals;

class TestActionLinkerForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theFormIsAsTold()
    {
        const ActionLinker linker;
        QCOMPARE(linker.objectName(), u"ActionLinker"_s);
        QCOMPARE(linker.windowTitle(), u"Form"_s);
        QCOMPARE(linker.size(), QSize(514, 405));
        const auto *grid = linker.findChild<QGridLayout *>(u"gridLayout"_s);
        QVERIFY(grid);
        QCOMPARE(linker.layout(), grid);
        QCOMPARE(grid->itemAtPosition(0, 0)->widget()->objectName(), u"mappingActionsPanel"_s);
        QCOMPARE(grid->itemAtPosition(0, 1)->widget()->objectName(), u"iteractiveoverlay"_s);
        QCOMPARE(grid->columnStretch(0), 0);
        QCOMPARE(grid->columnStretch(1), 1);
        QCOMPARE(grid->count(), 2);
    }

    void theOverlayIsSetUp()
    {
        LinkerStage stage;
        QCOMPARE(stage.overlay().mode(), InteractiveOverlay::Normal);
        QCOMPARE(stage.overlay().backgroundScaleMode(), BackgroundScaleMode::Contain);
        QVERIFY(stage.overlay().externalServices().isEmpty());
    }

    void thePanelStartsHiddenAndSaysThatThereIsNoAction()
    {
        LinkerStage stage;
        QVERIFY(stage.exposed());
        QVERIFY(!stage.panel().isVisible());
        QCOMPARE(stage.list().count(), 1);
        QCOMPARE(stage.list().item(0)->text(), u"Aucune action"_s);
        QVERIFY(!stage.armed());
    }

    void theTimerIsAsTold()
    {
        LinkerStage stage;
        QVERIFY(stage.saveTimer().isSingleShot());
        QCOMPARE(stage.saveTimer().interval(), 250);
        QVERIFY(!stage.saveTimer().isActive());
    }

    void theMetaObjectDeclaresWhatIsTold()
    {
        const QMetaObject &meta = ActionLinker::staticMetaObject;
        QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 1);
        const QMetaProperty property = meta.property(meta.propertyOffset());
        QCOMPARE(property.name(), "externalServices");
        QCOMPARE(property.metaType(), QMetaType::fromType<QJsonArray>());
        QVERIFY(property.isReadable() && property.isWritable());
        QCOMPARE(property.notifySignal().methodSignature(), "externalServicesChanged()");

        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            methods.append(QString::fromLatin1(meta.method(i).methodSignature()));
        QCOMPARE(methods, QStringList({
                              u"externalServicesChanged()"_s,
                              u"loadGamepadSnapshot(QUuid,QString,QString,QJsonObject,QString)"_s,
                              u"onDeviceSelectionChanged(QString)"_s,
                              u"onInputButtonChanged(int,bool)"_s,
                              u"onInputAxisChanged(int,double)"_s,
                          }));
        QCOMPARE(meta.method(meta.methodOffset() + 1).access(), QMetaMethod::Public);
        QCOMPARE(meta.method(meta.methodOffset() + 2).access(), QMetaMethod::Public);
        QCOMPARE(meta.method(meta.methodOffset() + 3).access(), QMetaMethod::Private);
        QCOMPARE(meta.method(meta.methodOffset() + 4).access(), QMetaMethod::Private);
    }

    void thePropertyTellsOfChangesAlone()
    {
        LinkerStage stage;
        const QSignalSpy changed(&stage.linker(), &ActionLinker::externalServicesChanged);
        stage->setExternalServices({});
        QCOMPARE(changed.count(), 0);
        QVERIFY(stage->setProperty("externalServices", someActions()));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(stage->property("externalServices").toJsonArray(), someActions());
        stage->setExternalServices(someActions());
        QCOMPARE(changed.count(), 1);
    }

    void theOverlayAndThePanelFollowTheProperty()
    {
        LinkerStage stage;
        stage->setExternalServices(someActions());
        QCOMPARE(stage.overlay().externalServices(), someActions());
        QStringList names;
        for (int row = 0; row < stage.list().count(); ++row)
            names.append(stage.list().item(row)->text());
        QCOMPARE(names, QStringList({u"A"_s, u"B"_s, u"C"_s, u"Vide"_s}));
        stage->setExternalServices({});
        QVERIFY(stage.overlay().externalServices().isEmpty());
        QCOMPARE(stage.list().item(0)->text(), u"Aucune action"_s);
    }

    void ofNamesThatDifferByCaseTheFirstIsListed()
    {
        LinkerStage stage;
        stage->setExternalServices(array("[{'name':'Tir'},{'name':' TIR '}]"));
        QCOMPARE(stage.list().count(), 1);
        QCOMPARE(stage.list().item(0)->text(), u"Tir"_s);
    }

    void theLockReachesTheOverlay()
    {
        LinkerStage stage;
        writeMapping("{'ref':[{'name':'foreign'}],'bridges':[]}");
        stage.show(oneProfile, {}, {u"but_1"_s});
        QVERIFY(stage.overlay().externalServices().isEmpty());
        stage->setServicesLocked(false);
        stage.show(oneProfile, {}, {u"but_1"_s});
        QCOMPARE(stage.overlay().externalServices().size(), 1);
    }
};

GAMEPAD_TEST_MAIN(TestActionLinkerForm)
#include "tst_actionlinker_form.moc"
