// SPDX-License-Identifier: MIT
#include "services.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

using namespace Qt::StringLiterals;

ServicesFile readServices(const QString &path)
{
    QFile file(path.isEmpty() ? u":/host/sampleservices.json"_s : path);
    if (!file.open(QIODevice::ReadOnly))
        return {.object = {}, .problem = u"%1 cannot be read: %2"_s.arg(file.fileName(), file.errorString())};
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (!document.isObject()) {
        const QString why =
            error.error == QJsonParseError::NoError ? u"it holds no object"_s : error.errorString();
        return {.object = {}, .problem = u"%1 is no services file: %2"_s.arg(file.fileName(), why)};
    }
    return {.object = document.object(), .problem = {}};
}
