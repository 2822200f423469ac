// SPDX-License-Identifier: MIT
#pragma once

#include "editorstage.h"
#include "exchangefiles.h"
#include "testhome.h"

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>

namespace stage
{
/// The folder that the tests exchange files through.
inline QString workFolder()
{
    return temporaryHome() + QStringLiteral("/desk");
}

inline QString workFile(const QString &name)
{
    return workFolder() + QLatin1Char('/') + name;
}

/// An empty home with an empty work folder, and Qt's own dialogs.
inline void startExchange()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    startAfresh();
    QDir(workFolder()).removeRecursively();
    QVERIFY(QDir().mkpath(workFolder()));
}

inline QLineEdit *nameFieldOf(const QFileDialog *dialog)
{
    return dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
}

/// In the file dialog that opens while this object lives, goes to the path's folder and types the name in it;
/// without a path, presses Escape.
class FileChoice
{
public:
    explicit FileChoice(const QString &path, const std::function<void(QFileDialog *)> &look = {})
        : m_answer(openDialog, [path, look](QFileDialog *dialog) {
            if (look)
                look(dialog);
            if (path.isEmpty()) {
                QTest::keyClick(dialog, Qt::Key_Escape);
                return;
            }
            dialog->setDirectory(QFileInfo(path).path());
            QLineEdit *field = nameFieldOf(dialog);
            field->selectAll();
            QTest::keyClicks(field, QFileInfo(path).fileName());
            // What the dialog offers to complete it with would take the Return.
            if (field->completer())
                field->completer()->popup()->hide();
            QTest::keyClick(field, Qt::Key_Return);
        })
    {}

    [[nodiscard]] int given() const { return m_answer.given(); }

private:
    Answer<QFileDialog> m_answer;
};

/// An exchange document with one pastille, "Venue", and a picture.
inline QJsonObject travellingDocument()
{
    return {
        {QStringLiteral("type"), QStringLiteral("VelorGamepad")},
        {QStringLiteral("version"), 2},
        {QStringLiteral("name"), QStringLiteral("Voyageuse")},
        {QStringLiteral("overlay"), ::overlayOf(QStringLiteral("Venue"))},
        {QStringLiteral("imageBase64"), QString::fromLatin1(pngOf({40, 30}, Qt::green).toBase64())},
        {QStringLiteral("imageExt"), QStringLiteral("png")},
        {QStringLiteral("deviceName"), QString()},
    };
}

/// The columns and rows of a test in which `file` of a profile that comes in is the first to have no place on
/// a disk for so many files and folders, and is told of in the words of `text`.
inline void addFilesThatDoNotFit()
{
    QTest::addColumn<int>("places");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("file");
    QTest::newRow("picture") << 2 << QStringLiteral("Ã‰chec Ã©criture image : %1")
                             << QStringLiteral("image.png");
    QTest::newRow("overlay") << 3 << QStringLiteral("Ã‰chec Ã©criture overlay.json : %1")
                             << QStringLiteral("overlay.json");
    QTest::newRow("meta") << 4 << QStringLiteral("Ã‰chec Ã©criture meta.json : %1")
                          << QStringLiteral("meta.json");
    QTest::newRow("mapping") << 5 << QStringLiteral("Echec ecriture mapping : %1")
                             << QStringLiteral("configActionGamepad.json");
}

inline QJsonObject with(QJsonObject document, const QString &key, const QJsonValue &value)
{
    document[key] = value;
    return document;
}

inline QByteArray textOf(const QJsonObject &document)
{
    return QJsonDocument(document).toJson(QJsonDocument::Compact);
}

inline QStringList namesOf(const GamepadDefinder &editor)
{
    QStringList names;
    for (const GamepadEntry &entry : editor.entries())
        names.append(entry.name);
    return names;
}
} // namespace stage
