// SPDX-License-Identifier: MIT
#include "mappingfile.h"

#include "failure.h"
#include "openfile.h"

#include <QtCore/QFile>

using namespace Qt::StringLiterals;

bool loadMappingFile(const QString &path, QJsonDocument *out, QString *error)
{
    QFile file(path);
    if (!openToRead(file))
        return fails(error, u"Cannot open %1"_s.arg(path));
    const QByteArray text = file.readAll();
    file.close();

    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(text, &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return fails(error, u"Invalid JSON in %1 (%2)"_s.arg(path, parseError.errorString()));
    *out = document;
    return true;
}

bool writeMappingFile(const QString &path, const QJsonObject &doc, QString *error)
{
    QFile file(path);
    if (!openToWrite(file))
        return fails(error, u"Cannot write %1"_s.arg(path));
    const QByteArray text = QJsonDocument(doc).toJson(QJsonDocument::Indented);
    if (file.write(text) < text.size())
        return fails(error, u"Write failed for %1"_s.arg(path));
    return true;
}
