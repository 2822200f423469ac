// SPDX-License-Identifier: MIT
#include "profilefolder.h"

#include "profilesroot.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>

using namespace Qt::StringLiterals;

QString writeBelowRoot(const QString &path, const QByteArray &content)
{
    const QString whole = profilesRootPath() + u'/' + path;
    QDir().mkpath(QFileInfo(whole).path());
    QFile file(whole);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(whole));
    return whole;
}

void writeMeta(const QString &folder, QJsonObject meta)
{
    if (!meta.contains("type"_L1))
        meta["type"_L1] = u"GamepadDefinderMeta"_s;
    (void)writeBelowRoot(folder + "/meta.json"_L1, QJsonDocument(meta).toJson());
}
