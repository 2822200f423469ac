// SPDX-License-Identifier: MIT
#pragma once

#include "gamepadentry.h"

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <optional>

/// A profile as it travels: what an exchange document tells of it, with every default taken.
struct ExchangedProfile
{
    QString name;
    QString imageFile;   ///< plain file name
    QByteArray image;    ///< the picture's file, byte for byte; can be empty
    QJsonObject overlay; ///< the overlay document; never empty

    bool operator==(const ExchangedProfile &) const = default;
};

/// The exchange document of a profile with `overlay`, an overlay document as JSON text. The picture's file is
/// read now; a picture or an overlay that cannot be read is empty in the document.
[[nodiscard]] QJsonObject buildExchangeDocument(const GamepadEntry &entry, const QByteArray &overlay);

/// The same with the overlay as it is on disk.
[[nodiscard]] QJsonObject buildSavedExchangeDocument(const GamepadEntry &entry);

/// Takes an exchange document out of JSON text. False, with the reason in `error` and `document` as it was,
/// where it is none. Only the type is looked at. `error` can be null.
[[nodiscard]] bool parseExchangeBytes(const QByteArray &bytes, QJsonObject *document, QString *error);

/// What a document brings. Nothing where its `type` is another or its `overlay` is missing or empty; all else
/// that is missing or of a wrong type takes its default.
[[nodiscard]] std::optional<ExchangedProfile> readExchangeDocument(const QJsonObject &document);

/// The gamepad that a document's profile is linked to; empty for none. Linked profiles do not travel.
[[nodiscard]] QString linkedDevice(const QJsonObject &document);
