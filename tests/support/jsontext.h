// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cstdio>
#include <cstdlib>

/// JSON as a person writes it, with single quotes in place of double ones. A test that holds broken JSON
/// ends.
inline QJsonDocument parsed(QByteArray text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text.replace('\'', '"'), &error);
    if (error.error != QJsonParseError::NoError) {
        std::fprintf(stderr, "%s in %s\n", qPrintable(error.errorString()), text.constData());
        std::abort();
    }
    return document;
}

inline QJsonObject object(const QByteArray &text)
{
    return parsed(text).object();
}

inline QJsonArray array(const QByteArray &text)
{
    return parsed(text).array();
}
