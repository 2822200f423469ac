// SPDX-License-Identifier: MIT
// Profiles that leave and come by the clipboard.
#include "exchangestage.h"
#include "interactiveoverlay.h"
#include "profilesroot.h"
#include "profilestore.h"
#include "smalldisk.h"
#include "testmain.h"

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
const QString exchangeFormat = u"application/x-velor-gamepad"_s;

QString refused()
{
    return u"Warning: Coller: Impossible de crÃ©er le gamepad Ã  partir des donnÃ©es."_s;
}

QClipboard &clipboard()
{
    return *QGuiApplication::clipboard();
}

void holdFormat(const QByteArray &bytes, const QString &text = {})
{
    auto *data = new QMimeData;
    data->setData(exchangeFormat, bytes);
    if (!text.isNull())
        data->setText(text);
    clipboard().setMimeData(data);
}

void holdText(const QByteArray &text)
{
    clipboard().setText(QString::fromUtf8(text));
}

QStringList copy(GamepadDefinder &editor)
{
    Boxes boxes;
    editor.actionCopy();
    return boxes.take();
}

QStringList paste(GamepadDefinder &editor)
{
    Boxes boxes;
    editor.actionPaste();
    return boxes.take();
}

QJsonObject copied()
{
    return QJsonDocument::fromJson(clipboard().mimeData()->data(exchangeFormat)).object();
}

QStringList titlesOf(const QJsonObject &document)
{
    QStringList titles;
    const QJsonArray nodes = document["overlay"_L1]["nodes"_L1].toArray();
    for (const QJsonValue &node : nodes)
        titles.append(node["title"_L1].toString());
    return titles;
}
} // namespace

class TestEditorClipboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        startExchange();
        clipboard().clear();
    }

    // Copying.

    void nothingOnShowIsNothingToCopy()
    {
        holdText("kept");
        GamepadDefinder editor;
        QCOMPARE(copy(editor), QStringList());
        QCOMPARE(clipboard().text(), u"kept"_s);
    }

    void theDocumentIsHeldInBothForms()
    {
        const QString folder = store(1, {.name = u"Manette é"_s});
        GamepadDefinder editor;
        QCOMPARE(copy(editor), QStringList());
        const QMimeData *held = clipboard().mimeData();
        const QByteArray bytes = held->data(exchangeFormat);
        QJsonObject document = copied();
        QCOMPARE(bytes, QJsonDocument(document).toJson(QJsonDocument::Compact));
        QCOMPARE(held->text(), QString::fromUtf8(bytes));
        QVERIFY(document.take("createdAt"_L1).toString().endsWith(u'Z'));
        QCOMPARE(document,
                 (QJsonObject{
                     {u"type"_s, u"VelorGamepad"_s},
                     {u"version"_s, 2},
                     {u"name"_s, u"Manette é"_s},
                     {u"overlay"_s, overlayIn(folder)},
                     {u"imageBase64"_s, QString::fromLatin1(bytesIn(folder + "/image.png"_L1).toBase64())},
                     {u"imageExt"_s, u"png"_s},
                     {u"deviceName"_s, QString()},
                 }));
    }

    void aCopyHoldsAnEditOnlyAfterItsSave()
    {
        const QString folder = store(1);
        GamepadDefinder editor;
        addPastille(editor, u"Neuve"_s);
        QCOMPARE(copy(editor), QStringList());
        QCOMPARE(titlesOf(copied()), QStringList({u"Start"_s}));
        QTRY_COMPARE(titlesIn(folder), QStringList({u"Start"_s, u"Neuve"_s}));
        QCOMPARE(copy(editor), QStringList());
        QCOMPARE(titlesOf(copied()), QStringList({u"Start"_s, u"Neuve"_s}));
    }

    void aLinkedProfileIsNotCopied()
    {
        holdText("kept");
        store(1, {.deviceName = u"Pad %1"_s});
        GamepadDefinder editor;
        QCOMPARE(
            copy(editor),
            QStringList(
                {"Information: Copier: "_L1 +
                 u"Ce profil est associÃ© Ã  Â« %1 Â». Le copier/coller est rÃ©servÃ© aux profils non liÃ©s."_s
                     .arg(u"Pad %1"_s)}));
        QCOMPARE(clipboard().text(), u"kept"_s);
    }

    void aCopyWithoutOverlayCannotBePasted()
    {
        const QString folder = store(1);
        GamepadDefinder editor;
        QVERIFY(QFile::remove(folder + "/overlay.json"_L1));
        QCOMPARE(copy(editor), QStringList());
        QCOMPARE(copied()["overlay"_L1], QJsonValue(QJsonObject()));
        QCOMPARE(paste(editor), QStringList({refused()}));
        QCOMPARE(editor.entries().size(), 1);
    }

    // Pasting.

    void aProfileComesInAtTheEndAndIsShown_data()
    {
        QTest::addColumn<bool>("asText");
        QTest::newRow("in its format") << false;
        QTest::newRow("as text") << true;
    }

    void aProfileComesInAtTheEndAndIsShown()
    {
        QFETCH(const bool, asText);
        store(1, {.name = u"Ici"_s});
        GamepadDefinder editor;
        const QJsonObject document = with(travellingDocument(), u"name"_s, u"Été"_s);
        if (asText)
            holdText(QJsonDocument(document).toJson());
        else
            holdFormat(textOf(document));
        QCOMPARE(paste(editor), QStringList());
        QCOMPARE(namesOf(editor), QStringList({u"Ici"_s, u"Été"_s}));
        QCOMPARE(listOf(editor).currentRow(), 1);
        QCOMPARE(titlesOn(editor), QStringList({u"Venue"_s}));
        QCOMPARE(bytesIn(editor.entries().at(1).imagePath), pngOf({40, 30}, Qt::green));
    }

    void pastingTwiceMakesTwoProfilesOfOneName()
    {
        store(1, {.name = u"Modèle"_s});
        GamepadDefinder editor;
        QCOMPARE(copy(editor), QStringList());
        QCOMPARE(paste(editor), QStringList());
        QCOMPARE(paste(editor), QStringList());
        QCOMPARE(namesOf(editor), QStringList({u"Modèle"_s, u"Modèle"_s, u"Modèle"_s}));
        QCOMPARE(editor.currentRow(), 2);
        QVERIFY(editor.entries().at(1).id != editor.entries().at(2).id);
    }

    void theFormatGoesBeforeTheText()
    {
        GamepadDefinder editor;
        holdFormat(textOf(travellingDocument()), u"a text"_s);
        QCOMPARE(paste(editor), QStringList());
        QCOMPARE(namesOf(editor), QStringList({u"Voyageuse"_s}));
        // And is not passed over where it is bad.
        holdFormat("{", QString::fromUtf8(textOf(travellingDocument())));
        QCOMPARE(paste(editor).size(), 1);
        QCOMPARE(editor.entries().size(), 1);
    }

    void badDataInTheFormatAreSaidInTheParsersWords_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray("");
        QTest::newRow("cut short") << QByteArray("{\"type\":\"VelorGamepad\"");
        QTest::newRow("array") << QByteArray("[1]");
    }

    void badDataInTheFormatAreSaidInTheParsersWords()
    {
        QFETCH(const QByteArray, bytes);
        QJsonParseError reason;
        QJsonDocument::fromJson(bytes, &reason);
        holdFormat(bytes);
        GamepadDefinder editor;
        QCOMPARE(paste(editor),
                 QStringList({"Warning: Coller: "_L1 +
                              u"DonnÃ©es presseâ€‘papier invalides (%1)"_s.arg(reason.errorString())}));
        QVERIFY(treeOf(profilesRootPath()).isEmpty());
    }

    void anotherTypeIsSaidForTheFormatAndNotForText()
    {
        GamepadDefinder editor;
        const QByteArray bytes = textOf(with(travellingDocument(), u"type"_s, u"Autre"_s));
        holdFormat(bytes);
        QCOMPARE(paste(editor), QStringList({u"Warning: Coller: Type inattendu dans le presseâ€‘papier."_s}));
        holdText(bytes);
        QCOMPARE(
            paste(editor),
            QStringList(
                {u"Warning: Coller: Le presseâ€‘papier ne contient pas de configuration Velor valide."_s}));
        QVERIFY(editor.entries().isEmpty());
    }

    void aTextThatIsNoDocumentIsSaid_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("words") << QByteArray("bonjour");
        QTest::newRow("array") << QByteArray("[1]");
        QTest::newRow("long") << QByteArray(1'000'000, '[');
    }

    void aTextThatIsNoDocumentIsSaid()
    {
        QFETCH(const QByteArray, text);
        holdText(text);
        GamepadDefinder editor;
        QCOMPARE(
            paste(editor),
            QStringList(
                {u"Warning: Coller: Le presseâ€‘papier ne contient pas de configuration Velor valide."_s}));
    }

    void nothingToPasteIsSaid_data()
    {
        QTest::addColumn<bool>("image");
        QTest::newRow("nothing") << false;
        QTest::newRow("a picture") << true;
    }

    void nothingToPasteIsSaid()
    {
        QFETCH(const bool, image);
        if (image) {
            auto *data = new QMimeData;
            data->setData(u"image/png"_s, pngOf({4, 4}, Qt::red));
            clipboard().setMimeData(data);
        }
        GamepadDefinder editor;
        QCOMPARE(
            paste(editor),
            QStringList(
                {u"Information: Coller: Aucune configuration Velor trouvÃ©e dans le presseâ€‘papier."_s}));
    }

    void aLinkedDocumentIsRefused_data()
    {
        QTest::addColumn<bool>("asText");
        QTest::newRow("in its format") << false;
        QTest::newRow("as text") << true;
    }

    void aLinkedDocumentIsRefused()
    {
        QFETCH(const bool, asText);
        const QByteArray bytes = textOf(with(travellingDocument(), u"deviceName"_s, u"Pad"_s));
        if (asText)
            holdText(bytes);
        else
            holdFormat(bytes);
        GamepadDefinder editor;
        QCOMPARE(
            paste(editor),
            QStringList(
                {u"Information: Coller: Ce profil est liÃ© Ã  une manette. Le coller nâ€™est autorisÃ© que pour des profils non liÃ©s."_s}));
        QVERIFY(treeOf(profilesRootPath()).isEmpty());
    }

    void anEmptyOverlayIsRefusedBeforeAnyFolderIsThere()
    {
        holdFormat(textOf(with(travellingDocument(), u"overlay"_s, QJsonObject())));
        GamepadDefinder editor;
        QCOMPARE(paste(editor), QStringList({refused()}));
        QVERIFY(treeOf(profilesRootPath()).isEmpty());
    }

    void aFailedFileIsSaidTwiceUnderTwoTitles_data() { addFilesThatDoNotFit(); }

    void aFailedFileIsSaidTwiceUnderTwoTitles()
    {
        QFETCH(const int, places);
        QFETCH(const QString, text);
        QFETCH(const QString, file);
        const SmallDisk disk(profilesRootPath(), places);
        GAMEPAD_NEED_MOUNTED(disk);
        GamepadDefinder editor;
        holdFormat(textOf(travellingDocument()));
        const QStringList said = paste(editor);
        const QString folder = profileFolders(profilesRootPath()).value(0);
        const QString error = u"Impossible dâ€™Ã©crire %1"_s.arg(folder + u'/' + file);
        QCOMPARE(said, QStringList({"Warning: Import: "_L1 + text.arg(error), refused()}));
        QVERIFY(editor.entries().isEmpty());
    }

    void theClipboardMayChangeUnderABox()
    {
        GamepadDefinder editor;
        holdFormat(textOf(with(travellingDocument(), u"deviceName"_s, u"Pad"_s)));
        const Answer<QWidget> box(openDialog, [](QWidget *) { clipboard().clear(); });
        editor.actionPaste();
        QCOMPARE(box.given(), 1);
        QVERIFY(editor.entries().isEmpty());
    }
};

GAMEPAD_TEST_MAIN(TestEditorClipboard)
#include "tst_editorclipboard.moc"
