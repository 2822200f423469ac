// SPDX-License-Identifier: MIT
#include "mappingfile.h"

#include <QtCore/QFile>

using namespace Qt::StringLiterals;

namespace
{
bool fails(QString *error, const QString &reason)
{
    if (error)
        *error = reason;
    return false;
}

/// Qt prints a warning of its own where it is asked to open a file without a name.
bool opens(QFile &file, QIODevice::OpenMode mode)
{
    return !file.fileName().isEmpty() && file.open(mode);
}
} // namespace

bool loadMappingFile(const QString &path, QJsonDocument *out, QString *error)
{
    QFile file(path);
    if (!opens(file, QIODevice::ReadOnly))
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
    // Buffered, a write that a full disk refuses would count as done.
    if (!opens(file, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return fails(error, u"Cannot write %1"_s.arg(path));
    const QByteArray text = QJsonDocument(doc).toJson(QJsonDocument::Indented);
    if (file.write(text) < text.size())
        return fails(error, u"Write failed for %1"_s.arg(path));
    return true;
}
