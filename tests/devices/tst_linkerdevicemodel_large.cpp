// SPDX-License-Identifier: MIT
// A list that has grown to a thousand rows.
#include "modelfixture.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QLoggingCategory>

using namespace Qt::StringLiterals;
using namespace fixture;
using Model = LinkerDeviceModel;

namespace
{
constexpr int rows = 1000;

/// Slots 1000 and up, so that their keys sort as they count.
QString key(int number)
{
    return u"gp:%1"_s.arg(number + 1000);
}

QJsonObject thousandDevices()
{
    QJsonObject devices;
    for (int i = 0; i < rows; ++i)
        devices[key(i)] = rememberedDevice(i + 1000, i % 100 == 50 ? selectedKv() : QJsonObject());
    return devices;
}
} // namespace

class TestLinkerDeviceModelLarge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules(u"default.debug=false"_s); }
    void init() { startAfresh(); }
    void cleanup() { QCOMPARE(scripted::calls().outsideSlots, 0); }

    void allRowsAreLoadedAndSaved()
    {
        const QJsonObject devices = thousandDevices();
        remember(devices);
        TestedModel model;
        settle();
        QCOMPARE(model.count(), rows);
        QCOMPARE(model.previousCount(), rows);
        QCOMPARE(model.selection().size(), 10);
        QCOMPARE(model.placeholders(), 10);
        for (int row = 0; row < rows; ++row)
            QCOMPARE(model.usnForRow(row), key(row));
        QCOMPARE(stored().value(u"devices"_s), QJsonValue(devices));
    }

    void oneSelectionReplacesTheMany()
    {
        remember(thousandDevices());
        TestedModel model;
        settle();
        model.setSelected(key(999), true);
        QCOMPARE(model.selection().size(), 1);
        QVERIFY(model.isSelected(key(999)));
        QCOMPARE(stored().value(u"devices"_s)[key(50)][u"kv"_s],
                 QJsonValue(QJsonObject{{u"selected"_s, false}}));
        model.setSelected(key(999), false);
        QVERIFY(model.selection().isEmpty());
        model.setUniqSelection(false);
        for (int i = 0; i < 5; ++i)
            model.setSelected(key(200 * i), true);
        QCOMPARE(model.selection().size(), 5);
    }

    void rowsAreDeletedAnywhere()
    {
        remember(thousandDevices());
        TestedModel model;
        settle();
        QStringList left;
        for (int row = 0; row < rows; ++row)
            left << key(row);
        for (const int row : {0, 998, 500, 50, 150, 1, 0}) {
            QVERIFY(model.deleteDevice(left.at(row)));
            left.removeAt(row);
        }
        QStringList shown;
        for (int row = 0; row < model.count(); ++row)
            shown << model.usnForRow(row);
        QCOMPARE(shown, left);
        QCOMPARE(stored().value(u"devices"_s).toObject().keys(), left);
        settle();
        QCOMPARE(model.placeholders(), model.selection().size());
    }

    void padsJoinAtTheEnd()
    {
        remember(thousandDevices());
        for (int slot = 0; slot < 8; ++slot)
            plug(slot);
        TestedModel model;
        settle();
        QCOMPARE(model.count(), rows + 8);
        for (int slot = 0; slot < 8; ++slot)
            QCOMPARE(model.usnForRow(rows + slot), u"gp:%1"_s.arg(slot));
        stopManager();
        unplug(7);
        discover();
        QCOMPARE(model.count(), rows + 8);
        QCOMPARE(model.at(rows + 7, Model::ConnectedRole), QVariant(false));
        QCOMPARE(model.at(rows + 6, Model::ConnectedRole), QVariant(true));
    }

    void theContextChangesBetweenLargeAndSmall()
    {
        const QJsonObject devices = thousandDevices();
        remember(devices, u"large"_s);
        remember({{u"gp:5"_s, rememberedDevice(5)}}, u"small"_s);
        TestedModel model(u"small"_s);
        settle();
        for (int round = 0; round < 3; ++round) {
            model.setContext(u"large"_s);
            QCOMPARE(model.count(), rows);
            QCOMPARE(model.selection().size(), 10);
            model.setContext(u"small"_s);
            QCOMPARE(model.count(), 1);
            settle();
            QCOMPARE(model.placeholders(), 0);
        }
        QCOMPARE(stored(u"large"_s).value(u"devices"_s), QJsonValue(devices));
    }
};

GAMEPAD_TEST_MAIN(TestLinkerDeviceModelLarge)
#include "tst_linkerdevicemodel_large.moc"
