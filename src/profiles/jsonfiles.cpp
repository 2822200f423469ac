// SPDX-License-Identifier: MIT
#include "jsonfiles.h"

#include "failure.h"
#include "openfile.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

using namespace Qt::StringLiterals;

QJsonObject readJsonFile(const QString &path, bool *ok, QString *error)
{
    if (ok)
        *ok = false;
    QFile file(path);
    if (!openToRead(file)) {
        fails(error, u"Impossible dâ€™ouvrir %1"_s.arg(path));
        return {};
    }
    const QByteArray text = file.readAll();
    file.close();

    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(text, &parseError);
    if (parseError.error != QJsonParseError::NoError || !document.isObject()) {
        fails(error, u"JSON invalide dans %1 (%2)"_s.arg(path, parseError.errorString()));
        return {};
    }
    if (ok)
        *ok = true;
    return document.object();
}

bool writeJsonFile(const QString &path, const QJsonObject &object, QString *error, bool indented)
{
    QFile file(path);
    if (!openToWrite(file))
        return fails(error, u"Impossible dâ€™Ã©crire %1"_s.arg(path));
    file.write(QJsonDocument(object).toJson(indented ? QJsonDocument::Indented : QJsonDocument::Compact));
    return true;
}

bool writeBytesFile(const QString &path, const QByteArray &bytes, QString *error)
{
    QFile file(path);
    if (!openToWrite(file))
        return fails(error, u"Impossible dâ€™Ã©crire %1"_s.arg(path));
    if (file.write(bytes) != bytes.size())
        return fails(error, u"Ã‰criture incomplÃ¨te dans %1"_s.arg(path));
    return true;
}
