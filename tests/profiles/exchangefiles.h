// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QImage>
#include <QtTest/QTest>

/// JSON as a person writes it, with single quotes in place of double ones.
inline QJsonObject object(QByteArray text)
{
    return QJsonDocument::fromJson(text.replace('\'', '"')).object();
}

inline void write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    QCOMPARE(file.write(bytes), bytes.size());
}

inline QByteArray bytesIn(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

inline QJsonObject objectIn(const QString &path)
{
    return QJsonDocument::fromJson(bytesIn(path)).object();
}

/// Every file and folder below `folder`, by their paths in it.
inline QStringList treeOf(const QString &folder)
{
    QStringList found;
    QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext())
        found.append(QDir(folder).relativeFilePath(all.next()));
    found.sort();
    return found;
}

/// A picture of one colour, in PNG.
inline QByteArray pngOf(const QSize &size, const QColor &colour)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray png;
    QBuffer buffer(&png);
    image.save(&buffer, "PNG");
    return png;
}

/// An overlay of one pastille with its tool box, in fractions of the picture.
inline QJsonObject overlayOf(const QString &title, const QSize &savedSize = {400, 300})
{
    using namespace Qt::StringLiterals;
    return {
        {u"type"_s, u"InteractiveOverlay"_s},
        {u"version"_s, 2},
        {u"coordSpace"_s, u"background"_s},
        {u"overlaySize"_s, QJsonObject{{u"w"_s, savedSize.width()}, {u"h"_s, savedSize.height()}}},
        {u"bgMode"_s, u"Contain"_s},
        {u"nodes"_s,
         QJsonArray{QJsonObject{
             {u"title"_s, title},
             {u"pastille"_s, QJsonObject{{u"x"_s, 0.1}, {u"y"_s, 0.2}, {u"w"_s, 0.14}, {u"h"_s, 0.2}}},
             {u"toolbox"_s, QJsonObject{{u"x"_s, 0.5}, {u"y"_s, 0.5}, {u"w"_s, 0.4}, {u"h"_s, 0.2}}},
         }}},
    };
}
