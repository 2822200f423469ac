// SPDX-License-Identifier: MIT
#include "sampleprofile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

using namespace Qt::StringLiterals;

namespace
{
constexpr auto profileId = "5d1f7a40-3c55-4b7e-9d59-6f0b8c2a7e11"_L1;

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray sample(const QString &name)
{
    QFile file(u":/sampleprofile/"_s + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

QString writeSampleProfile(const QString &data, const QString &deviceName)
{
    const QString folder = data + "/data/velor/gamepad-host/Gamepads/"_L1 + profileId;
    if (!QDir().mkpath(folder))
        return {};
    const QJsonObject meta{{"type"_L1, "GamepadDefinderMeta"_L1},
                           {"version"_L1, 2},
                           {"id"_L1, profileId},
                           {"name"_L1, "Demonstration"_L1},
                           {"image"_L1, "image.png"_L1},
                           {"overlayFile"_L1, "overlay.json"_L1},
                           {"config"_L1, "configActionGamepad.json"_L1},
                           {"deviceName"_L1, deviceName}};
    bool written = write(folder + "/meta.json"_L1, QJsonDocument(meta).toJson());
    for (const QString &name : {u"image.png"_s, u"overlay.json"_s, u"configActionGamepad.json"_s})
        written = written && write(folder + u'/' + name, sample(name));
    return written ? folder + "/configActionGamepad.json"_L1 : QString();
}
