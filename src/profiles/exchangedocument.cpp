// SPDX-License-Identifier: MIT
#include "exchangedocument.h"

#include "failure.h"
#include "imagefile.h"
#include "openfile.h"
#include "plainfilename.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>

using namespace Qt::StringLiterals;

namespace
{
constexpr auto exchangeType = "VelorGamepad"_L1;
constexpr int writtenVersion = 2;

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return openToRead(file) ? file.readAll() : QByteArray();
}

/// The suffix is asked by itself: what is no name can become one with a name before it.
QString imageFileFor(const QString &suffix)
{
    return pictureFileName(isPlainFileName(suffix) ? suffix : QString());
}
} // namespace

QJsonObject buildExchangeDocument(const GamepadEntry &entry, const QByteArray &overlay)
{
    return {
        {u"type"_s, QString(exchangeType)},
        {u"version"_s, writtenVersion},
        {u"name"_s, entry.name},
        {u"createdAt"_s, QDateTime::currentDateTimeUtc().toString(Qt::ISODate)},
        {u"overlay"_s, QJsonDocument::fromJson(overlay).object()},
        {u"imageBase64"_s, QString::fromLatin1(bytesOf(entry.imagePath).toBase64())},
        {u"imageExt"_s, QFileInfo(entry.imagePath).suffix().toLower()},
        {u"deviceName"_s, entry.deviceName},
    };
}

QJsonObject buildSavedExchangeDocument(const GamepadEntry &entry)
{
    return buildExchangeDocument(entry, bytesOf(entry.overlayPath));
}

bool parseExchangeBytes(const QByteArray &bytes, QJsonObject *document, QString *error)
{
    QJsonParseError parseError;
    const QJsonDocument parsed = QJsonDocument::fromJson(bytes, &parseError);
    if (parseError.error != QJsonParseError::NoError || !parsed.isObject())
        return fails(error, u"DonnÃ©es presseâ€‘papier invalides (%1)"_s.arg(parseError.errorString()));
    const QJsonObject object = parsed.object();
    if (object["type"_L1].toString() != exchangeType)
        return fails(error, u"Type inattendu dans le presseâ€‘papier."_s);
    *document = object;
    return true;
}

std::optional<ExchangedProfile> readExchangeDocument(const QJsonObject &document)
{
    const QJsonObject overlay = document["overlay"_L1].toObject();
    if (document["type"_L1].toString() != exchangeType || overlay.isEmpty())
        return std::nullopt;
    return ExchangedProfile{
        .name = document["name"_L1].toString(u"Gamepad importÃ©"_s),
        .imageFile = imageFileFor(document["imageExt"_L1].toString()),
        .image = QByteArray::fromBase64(document["imageBase64"_L1].toString().toUtf8()),
        .overlay = overlay,
    };
}

QString linkedDevice(const QJsonObject &document)
{
    return document["deviceName"_L1].toString();
}
