// SPDX-License-Identifier: MIT
#include "profilemapping.h"

#include "bridgerefresh.h"
#include "mappingfile.h"
#include "plainfilename.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>

using namespace Qt::StringLiterals;

namespace
{
std::optional<QJsonObject> readObject(const QString &path)
{
    bool ok = false;
    const QJsonObject object = readMappingFile(path, &ok, nullptr);
    return ok ? std::optional(object) : std::nullopt;
}

std::optional<QJsonObject> readMeta(const QString &folder)
{
    return readObject(folder + "/meta.json"_L1);
}

void refreshMapping(const QString &path, const FunctionIndex &actions)
{
    auto mapping = readObject(path);
    if (!mapping)
        return;
    const auto bridges = refreshedBridges(mapping->value("bridges"_L1).toArray(), actions);
    if (!bridges)
        return;
    mapping->insert("bridges"_L1, *bridges);
    // What cannot be written now is brought up to date by the next change of an action.
    [[maybe_unused]] const bool written = writeMappingFile(path, *mapping, nullptr);
}
} // namespace

QString mappingFileName(const QString &config)
{
    const bool usable = !config.trimmed().isEmpty() && isPlainFileName(config);
    return usable ? config : u"configActionGamepad.json"_s;
}

QString mappingFilePath(const QString &root, const QUuid &id)
{
    if (id.isNull())
        return {};
    const QString folder = root + u'/' + id.toString(QUuid::WithoutBraces);
    const QJsonObject meta = readMeta(folder).value_or(QJsonObject());
    return folder + u'/' + mappingFileName(meta["config"_L1].toString());
}

QJsonObject readMappingFile(const QString &path, bool *ok, QString *error)
{
    QJsonDocument document;
    bool read = loadMappingFile(path, &document, error);
    if (read && !document.isObject()) {
        read = false;
        if (error)
            *error = u"Invalid JSON in %1 (%2)"_s.arg(path, QJsonParseError().errorString());
    }
    if (ok)
        *ok = read;
    return read ? document.object() : QJsonObject();
}

void refreshMappings(const QString &root, const QJsonArray &actions)
{
    const FunctionIndex index(actions);
    const QStringList folders = QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QString &name : folders) {
        const QString folder = root + u'/' + name;
        if (const auto meta = readMeta(folder)) {
            const QString config = meta->value("config"_L1).toString().trimmed();
            refreshMapping(folder + u'/' + mappingFileName(config), index);
        }
    }
}
