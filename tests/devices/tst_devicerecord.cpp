// SPDX-License-Identifier: MIT
#include "devicerecord.h"

#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QStandardPaths>
#include <QtGui/QPixmap>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{
DeviceRecord absentRecord()
{
    DeviceRecord record;
    record.infoObject = {
        {u"deviceId"_s, u"4"_s},  {u"vendorIdHex"_s, u"45e"_s},  {u"productIdHex"_s, u"28e"_s},
        {u"name"_s, u"Absent"_s}, {u"imagePath"_s, u"/a.png"_s}, {u"unknown"_s, 5},
    };
    return record;
}

QJsonObject objectOf(const DeviceRecord &record)
{
    return QJsonDocument::fromJson(jsonText(record)).object();
}

QIcon redIcon()
{
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    return pixmap;
}
} // namespace

class TestDeviceRecord : public QObject
{
    Q_OBJECT

    std::unique_ptr<ControlManette> m_device;

    DeviceRecord liveRecord()
    {
        scripted::Pad pad = scripted::restingPad("Live pad");
        pad.vendorId = 0x54C;
        pad.productId = 0xCE6;
        scripted::plug(2, pad);
        m_device = std::make_unique<ControlManette>(2, nullptr);
        DeviceRecord record = absentRecord();
        record.live = m_device.get();
        return record;
    }

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        scripted::reset();
        clearTemporaryHome();
    }

    void aNewRecordIsEmpty()
    {
        const DeviceRecord record;
        QVERIFY(!record.live);
        QVERIFY(record.infoObject.isEmpty());
        QVERIFY(record.kv.isEmpty());
        QVERIFY(record.capabilities.isEmpty());
        QVERIFY(record.deviceIcon.isNull());
        QVERIFY(record.productName.isEmpty());
        QVERIFY(!record.isConnected);
        QCOMPARE(int(record.linkState), 0);
        QVERIFY(!record.iface);
        QVERIFY(!record.ifaceIsStub);
    }

    void selectedIsFalseWhenMissingOrOfAnotherType()
    {
        DeviceRecord record;
        QVERIFY(!selectedByUser(record));
        record.kv = {{u"selected"_s, u"true"_s}};
        QVERIFY(!selectedByUser(record));
        record.kv = {{u"selected"_s, 1}};
        QVERIFY(!selectedByUser(record));
        record.kv = {{u"selected"_s, true}};
        QVERIFY(selectedByUser(record));
    }

    void nameIsTheOverrideThenTheDevicesThenTheRememberedOne()
    {
        DeviceRecord record = liveRecord();
        record.kv = {{u"nameOverride"_s, u"Mine"_s}};
        QCOMPARE(nameText(record), u"Mine"_s);
        record.kv = {{u"nameOverride"_s, u""_s}};
        QCOMPARE(nameText(record), u"Live pad"_s);
        record.kv = {};
        QCOMPARE(nameText(record), u"Live pad"_s);
        record.live.clear();
        QCOMPARE(nameText(record), u"Absent"_s);
        QCOMPARE(nameText({}), QString());
    }

    void addressOfALiveDeviceHasItsIds() { QCOMPARE(addressText(liveRecord()), u"VID:54c PID:ce6"_s); }

    void addressOfAnAbsentDeviceHasTheRememberedIds()
    {
        QCOMPARE(addressText(absentRecord()), u"VID:45e PID:28e"_s);
    }

    void addressWithoutOneOfTheIdsIsTheSlot()
    {
        for (const QString &key : {u"vendorIdHex"_s, u"productIdHex"_s}) {
            DeviceRecord record = absentRecord();
            record.infoObject.remove(key);
            QCOMPARE(addressText(record), u"ID:4"_s);
        }
        QCOMPARE(addressText({}), u"ID:"_s);
    }

    void rememberedTextIsNoPatternForWhatFollows()
    {
        DeviceRecord record = absentRecord();
        record.infoObject[u"vendorIdHex"_s] = u"%2"_s;
        QCOMPARE(addressText(record), u"VID:%2 PID:28e"_s);
        QCOMPARE(modelText(record), u"%2-28e"_s);
    }

    void productIsTheRunsThenTheUsersThenTheName()
    {
        DeviceRecord record = liveRecord();
        record.productName = u"Of this run"_s;
        record.kv = {{u"product"_s, u"Of the user"_s}};
        QCOMPARE(productText(record), u"Of this run"_s);
        record.productName.clear();
        QCOMPARE(productText(record), u"Of the user"_s);
        record.kv = {{u"product"_s, u""_s}};
        QCOMPARE(productText(record), u"Live pad"_s);
        record.live.clear();
        QCOMPARE(productText(record), u"Absent"_s);
    }

    void productIsNotTheNameOverride()
    {
        DeviceRecord record = liveRecord();
        record.kv = {{u"nameOverride"_s, u"Mine"_s}};
        QCOMPARE(productText(record), u"Live pad"_s);
    }

    void modelIsVendorAndProduct()
    {
        QCOMPARE(modelText(liveRecord()), u"54c-ce6"_s);
        QCOMPARE(modelText(absentRecord()), u"45e-28e"_s);
    }

    void modelWithoutIdsIsALoneHyphen() { QCOMPARE(modelText({}), u"-"_s); }

    void jsonOfALiveDevice()
    {
        DeviceRecord record = liveRecord();
        record.kv = {{u"selected"_s, true}, {u"unknown"_s, 1}};
        m_device->setConnected(true);
        const QJsonObject expected{
            {u"deviceId"_s, 2},           {u"name"_s, u"Live pad"_s}, {u"vendorId"_s, u"0x54c"_s},
            {u"productId"_s, u"0xce6"_s}, {u"connected"_s, true},     {u"kv"_s, record.kv},
        };
        QCOMPARE(objectOf(record), expected);
        QVERIFY(objectOf(record).value(u"deviceId"_s).isDouble());
    }

    void jsonOfAnAbsentDeviceIsItsIdentityWithKv()
    {
        DeviceRecord record = absentRecord();
        record.kv = {{u"nameOverride"_s, u"Mine"_s}};
        QJsonObject expected = record.infoObject;
        expected[u"kv"_s] = record.kv;
        QCOMPARE(objectOf(record), expected);
        QVERIFY(objectOf(record).value(u"deviceId"_s).isString());
    }

    void jsonHasKvEvenWhenItIsEmpty() { QCOMPARE(jsonText({}), QByteArray(R"({"kv":{}})")); }

    void jsonIsCompact()
    {
        const QByteArray text = jsonText(liveRecord());
        QVERIFY(!text.contains('\n'));
        QCOMPARE(text, QJsonDocument::fromJson(text).toJson(QJsonDocument::Compact));
    }

    void imageIsTheIconFirst()
    {
        DeviceRecord record = liveRecord();
        record.deviceIcon = redIcon();
        QCOMPARE(image(record).typeId(), qMetaTypeId<QIcon>());
        QCOMPARE(decoration(record).value<QIcon>().cacheKey(), record.deviceIcon.cacheKey());
    }

    void imageOfALiveDeviceIsLookedUp()
    {
        QCOMPARE(image(liveRecord()), QVariant(u":/new/prefix1/ressources/menette_id_3302.png"_s));
    }

    void imageOfAnAbsentDeviceIsTheRememberedPath()
    {
        QCOMPARE(image(absentRecord()), QVariant(u"/a.png"_s));
    }

    void imageDoesNotReadTheUsersPath()
    {
        DeviceRecord record;
        record.kv = {{u"imagePath"_s, u"/mine.png"_s}};
        QVERIFY(!image(record).isValid());
        record = absentRecord();
        record.kv = {{u"imagePath"_s, u"/mine.png"_s}};
        QCOMPARE(image(record), QVariant(u"/a.png"_s));
    }

    void decorationWithoutImageIsInvalid() { QVERIFY(!decoration({}).isValid()); }

    void decorationOfAPathThatLeadsNowhereIsANullIcon()
    {
        const QVariant found = decoration(absentRecord());
        QCOMPARE(found.typeId(), qMetaTypeId<QIcon>());
        QVERIFY(found.value<QIcon>().isNull());
    }

    void decorationOfAPictureShowsIt()
    {
        QPixmap pixmap(6, 6);
        pixmap.fill(Qt::blue);
        const QString path = temporaryHome() + u"/data/picture.png"_s;
        QVERIFY(pixmap.save(path));
        DeviceRecord record;
        record.infoObject = {{u"imagePath"_s, path}};
        const QImage shown = decoration(record).value<QIcon>().pixmap(6, 6).toImage();
        QCOMPARE(shown.pixelColor(3, 3), QColor(Qt::blue));
    }
};

GAMEPAD_TEST_MAIN(TestDeviceRecord)
#include "tst_devicerecord.moc"
