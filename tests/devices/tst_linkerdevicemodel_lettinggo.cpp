// SPDX-License-Identifier: MIT
// A host that lets go of the model while the model speaks.
#include "actingatsignal.h"
#include "gamepadmanager.h"
#include "modelfixture.h"
#include "scriptedjoystick.h"
#include "testmain.h"
#include "tickdriver.h"

#include <QtCore/QTimer>
#include <QtWidgets/QDialog>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace fixture;
using Model = LinkerDeviceModel;

using Deed = std::function<void(Model &)>;
Q_DECLARE_METATYPE(Deed)

namespace
{
/// The model goes by `deleteLater` while a dialog runs the event loop.
void deleteInADialog(const QPointer<Model> &model)
{
    QDialog dialog;
    QObject::connect(model, &QObject::destroyed, &dialog, &QDialog::reject);
    QTimer::singleShot(0, model, &QObject::deleteLater);
    QTimer::singleShot(10'000, &dialog, &QDialog::reject);
    dialog.exec();
}

/// Two pads, and a list in which one is selected, with rows of each kind.
void prepare()
{
    scripted::reset();
    clearTemporaryHome();
    plug(0);
    plug(1);
    const QJsonObject devices{{u"gp:0"_s, rememberedDevice(0, selectedKv())},
                              {u"gp:6"_s, rememberedDevice(6, selectedKv())},
                              {u"gp:7"_s, rememberedDevice(7)}};
    remember(devices);
    QJsonObject others = devices;
    others[u"gp:5"_s] = rememberedDevice(5);
    remember(others, u"other"_s);
}

void joystickGoes(int slot)
{
    unplug(slot);
    tick(*liveDevice(slot));
}
} // namespace

class TestLinkerDeviceModelLettingGo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { prepareForHundredsOfManagers(); }
    void init() { startAfresh(); }
    void cleanup() { QCOMPARE(scripted::calls().outsideSlots, 0); }

    void theModelMayGoInsideEachOfItsSignals_data()
    {
        QTest::addColumn<Deed>("deed");
        const auto row = [](const char *name, const Deed &deed) { QTest::newRow(name) << deed; };
        row("unique selection off", [](Model &model) { model.setUniqSelection(false); });
        row("detection off", [](Model &model) { model.setAutoDetect(false); });
        row("detection on", [](Model &model) {
            const QPointer<Model> self(&model);
            model.setAutoDetect(false);
            plug(4);
            if (self)
                model.setAutoDetect(true);
        });
        row("other context", [](Model &model) { model.setContext(u"other"_s); });
        row("the delayed merge", [](Model &) { settle(); });
        row("selection told", [](Model &model) { model.syncSelected(); });
        row("a pad comes", [](Model &) {
            plug(4);
            discover();
        });
        row("a known pad comes", [](Model &) {
            plug(7);
            discover();
        });
        row("a selected pad comes", [](Model &) {
            plug(6);
            discover();
        });
        row("a selected pad goes", [](Model &) {
            unplug(0);
            discover();
        });
        row("a pad goes", [](Model &) {
            unplug(1);
            discover();
        });
        row("the tick finds the pad gone", [](Model &) { joystickGoes(0); });
        row("selecting", [](Model &model) { model.setSelected(u"gp:1"_s, true); });
        row("selecting an absent row", [](Model &model) { model.setSelected(u"gp:7"_s, true); });
        row("deselecting", [](Model &model) { model.setSelected(u"gp:0"_s, false); });
        row("selecting the selected", [](Model &model) { model.setSelected(u"gp:0"_s, true); });
        row("deleting", [](Model &model) { QVERIFY(model.deleteDevice(u"gp:0"_s)); });
        row("deleting an absent row", [](Model &model) { QVERIFY(model.deleteDevice(u"gp:6"_s)); });
        row("renaming",
            [](Model &model) { QVERIFY(model.setData(model.index(0), u"x"_s, Model::NameRole)); });
        row("product",
            [](Model &model) { QVERIFY(model.setData(model.index(0), u"x"_s, Model::ProductRole)); });
        row("picture",
            [](Model &model) { QVERIFY(model.setData(model.index(0), u"x"_s, Model::ImageRole)); });
    }
    void theModelMayGoInsideEachOfItsSignals()
    {
        QFETCH(const Deed, deed);
        const bool beforeTheMerge = qstrcmp(QTest::currentDataTag(), "the delayed merge") == 0;
        const auto directly = [](const QPointer<Model> &model) { delete model; };
        for (const bool ownsManager : {true, false}) {
            const int signals = letGo(deed, beforeTheMerge, ownsManager, directly);
            QVERIFY(signals > 0);
            QCOMPARE(letGo(deed, beforeTheMerge, ownsManager, deleteInADialog), signals);
        }
    }

    // A context is told of before its file is read, and the rows are still those of the other file then.
    void rowsStayInTheFileThatTheyCameFrom()
    {
        prepare();
        TestedModel model;
        settle();
        connect(&model, &Model::contextChanged, &model, [&model] {
            QVERIFY(model.setData(model.index(model.indexOfUsn(u"gp:7"_s)), u"Mine"_s, Model::NameRole));
        });
        model.setContext(u"other"_s);
        QCOMPARE(storedDevice(u"gp:5"_s, u"other"_s), rememberedDevice(5));
        QCOMPARE(storedDevice(u"gp:7"_s, u"other"_s), rememberedDevice(7));
        QCOMPARE(storedDevice(u"gp:7"_s), rememberedDevice(7, {{u"nameOverride"_s, u"Mine"_s}}));
        QVERIFY(model.indexOfUsn(u"gp:5"_s) >= 0);
    }

    // The rows that a reset announces are read only when everybody has heard of it.
    void aContextThatIsSetAsTheResetBeginsIsTheOneThatIsRead()
    {
        prepare();
        const QJsonObject third{{u"gp:3"_s, rememberedDevice(3)}, {u"gp:4"_s, rememberedDevice(4)}};
        remember(third, u"third"_s);
        const QJsonObject other = stored(u"other"_s);
        TestedModel model;
        settle();
        connect(&model, &Model::modelAboutToBeReset, &model, [&model] { model.setContext(u"third"_s); });
        model.setContext(u"other"_s);
        QCOMPARE(model.context(), u"third"_s);
        QCOMPARE(model.count(), 2);
        QCOMPARE(model.usnForRow(0), u"gp:3"_s);
        QCOMPARE(model.usnForRow(1), u"gp:4"_s);
        QVERIFY(model.setData(model.index(0), u"Mine"_s, Model::NameRole));
        QCOMPARE(stored(u"other"_s), other);
        QCOMPARE(storedDevice(u"gp:3"_s, u"third"_s), rememberedDevice(3, {{u"nameOverride"_s, u"Mine"_s}}));
        QCOMPARE(storedDevice(u"gp:4"_s, u"third"_s), rememberedDevice(4));
    }

private:
    /// Lets go of a model in each signal of `deed`, one after the other. Returns how many there are.
    static int letGo(const Deed &deed, bool beforeTheMerge, bool ownsManager,
                     const std::function<void(const QPointer<Model> &)> &end)
    {
        for (int number = 0;; ++number) {
            prepare();
            QObject owner;
            if (!ownsManager)
                GamepadManager::instance(&owner);
            const QPointer<Model> model(new Model(u"host"_s, nullptr));
            if (!beforeTheMerge)
                settle();
            stopManager();
            const ActingAtSignal listener(model, number, [&] { end(model); });
            deed(*model);
            if (!listener.hasActed()) {
                delete model;
                return number;
            }
            if (model) {
                QTest::qFail("the model is still there", __FILE__, __LINE__);
                delete model;
                return -1;
            }
            settle();
            check(ownsManager ? nullptr : &owner);
            if (QTest::currentTestFailed())
                return -1;
        }
    }

    /// Nothing that was remembered is lost, and a manager of somebody else's works on.
    static void check(QObject *owner)
    {
        QCOMPARE(storedDevice(u"gp:5"_s, u"other"_s), rememberedDevice(5));
        QCOMPARE(storedDevice(u"gp:5"_s), QJsonObject());
        for (const QString &context : {u"host"_s, u"other"_s})
            QCOMPARE(storedDevice(u"gp:7"_s, context).value(u"vendorIdHex"_s).isString(), true);
        if (!owner)
            return;
        QCOMPARE(GamepadManager::instance()->parent(), owner);
        unplug(0);
        unplug(1);
        plug(3);
        discover();
        settle();
        QVERIFY(liveDevice(3));
        QVERIFY(!liveDevice(0) && !liveDevice(1));
    }
};

GAMEPAD_TEST_MAIN(TestLinkerDeviceModelLettingGo)
#include "tst_linkerdevicemodel_lettinggo.moc"
