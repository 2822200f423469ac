// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtTest/QTest>

/// Keeps the documents that a test function has left below `data`, to be judged by their schemas when the
/// test program has ended. For programs that gamepad_judge_documents knows. Of a function that failed none
/// are kept.
inline void keepDocuments(const QString &data)
{
    if (QTest::currentTestFailed())
        return;
    static int number = 0; // apart by this, since a function runs once for each row of data
    QDir kept(QStringLiteral(GAMEPAD_DOCUMENTS));
    if (++number == 1)
        QVERIFY(kept.removeRecursively());
    const QString folder = kept.filePath(
        QStringLiteral("%1-%2").arg(number).arg(QLatin1StringView(QTest::currentTestFunction())));
    QDirIterator documents(data, {QStringLiteral("*.json")}, QDir::Files, QDirIterator::Subdirectories);
    while (documents.hasNext()) {
        const QString document = documents.next();
        const QString copy = folder + u'/' + QDir(data).relativeFilePath(document);
        QVERIFY(QDir().mkpath(QFileInfo(copy).path()));
        QVERIFY(QFile::copy(document, copy));
    }
}
