// SPDX-License-Identifier: MIT
#include "writtenfiles.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QThread>

#include <chrono>

using namespace Qt::StringLiterals;

namespace
{
// Far beyond what any save takes: only a fault is as late.
constexpr std::chrono::seconds patience{20};
constexpr std::chrono::milliseconds between{10};

template <typename Look>
auto await(Look look)
{
    const QDeadlineTimer deadline(patience);
    auto seen = look();
    while (!seen && !deadline.hasExpired()) {
        QThread::sleep(between);
        seen = look();
    }
    return seen;
}
} // namespace

std::optional<QJsonObject> written::document(const QString &path,
                                             const std::function<bool(const QJsonObject &)> &condition)
{
    return await([&]() -> std::optional<QJsonObject> {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return std::nullopt;
        const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
        if (!document.isObject() || !condition(document.object()))
            return std::nullopt;
        return document.object();
    });
}

QString written::folderWith(const QString &folder, const QString &file)
{
    return await([&]() -> std::optional<QString> {
               const QStringList names = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
               for (const QString &name : names) {
                   if (QFile::exists(folder + u'/' + name + u'/' + file))
                       return folder + u'/' + name;
               }
               return std::nullopt;
           })
        .value_or(QString());
}

qint64 written::size(const QString &path)
{
    return await([&]() -> std::optional<qint64> {
               const qint64 size = QFileInfo(path).size();
               return size > 0 ? std::optional(size) : std::nullopt;
           })
        .value_or(0);
}
