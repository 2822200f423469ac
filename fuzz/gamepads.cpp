// SPDX-License-Identifier: MIT
// A "gamepads.json": what is written for it reads as the same again, with every key that it came with, and
// each device has texts for its card.
#include "devicerecord.h"
#include "fuzzing.h"
#include "gamepadsdocument.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace
{
void checkTexts(const StoredDevice &device)
{
    DeviceRecord record;
    record.infoObject = device.infoObject;
    record.kv = device.kv;
    const QString name = device.infoObject["name"_L1].toString();
    for (const auto &[text, key] : {std::pair(nameText(record), UserKey::nameOverride),
                                    std::pair(productText(record), UserKey::product)}) {
        const QString chosen = device.kv[key].toString();
        mustHold(text == (chosen.isEmpty() ? name : chosen), "a text that nobody gave");
    }
    mustHold(addressText(record).startsWith("ID:"_L1) || addressText(record).startsWith("VID:"_L1),
             "an address of no kind");
    mustHold(modelText(record).contains(u'-'), "a model of no kind");
    const QString picture = device.infoObject["imagePath"_L1].toString();
    mustHold(image(record) == (picture.isEmpty() ? QVariant() : QVariant(picture)), "another picture");

    QJsonObject told = device.infoObject;
    told["kv"_L1] = device.kv;
    mustHold(QJsonDocument::fromJson(jsonText(record)).object() == told, "the host is told something else");
}

/// Every key of the document is somewhere in what was read.
void checkKept(const QJsonObject &root, const GamepadsDocument &document)
{
    QJsonObject others = root;
    others.remove("devices"_L1);
    others.remove("lastCount"_L1);
    mustHold(document.otherKeys == others, "a key of the document was lost");

    QJsonObject devices;
    for (const StoredDevice &device : document.devices) {
        QJsonObject stored = device.infoObject;
        mustHold(!stored.contains("kv"_L1), "settings count as description");
        stored["kv"_L1] = device.kv;
        devices[device.usn] = stored;
    }
    mustHold(devices.size() == document.devices.size(), "a device stands twice");
    QJsonObject found = root["devices"_L1].toObject();
    found.remove(QString());
    for (auto it = found.begin(); it != found.end(); ++it) {
        QJsonObject device = it.value().toObject();
        device["kv"_L1] = device["kv"_L1].toObject();
        it.value() = device;
    }
    mustHold(devices == found, "a device, or a key of one, was lost");
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    GamepadsDocument document = parseGamepads(bytes);
    checkKept(jsonOf(data, size).object(), document);
    for (const StoredDevice &device : std::as_const(document.devices))
        checkTexts(device);

    document.lastCount = static_cast<int>(document.devices.size());
    const QByteArray written = gamepadsJson(document);
    mustHold(parseGamepads(written) == document, "the file says something else");
    mustHold(gamepadsJson(parseGamepads(written)) == written, "the file changes from save to save");
    return 0;
}
