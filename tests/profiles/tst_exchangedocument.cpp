// SPDX-License-Identifier: MIT
#include "exchangedocument.h"

#include "exchangefiles.h"
#include "testmain.h"

#include <QtCore/QDateTime>
#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace
{
QString below(const QString &name)
{
    return temporaryHome() + "/desk/"_L1 + name;
}

/// Bytes of all values, more than fit on a line of any kind of Base64.
QByteArray manyBytes()
{
    QByteArray bytes(100'001, Qt::Uninitialized);
    QRandomGenerator random(7);
    for (char &byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}

GamepadEntry entryWith(const QString &image)
{
    GamepadEntry entry;
    entry.id = QUuid::createUuid();
    entry.name = u"Manette d'été %1 \"é\""_s;
    entry.dirPath = below(u"."_s);
    entry.imagePath = below(image);
    entry.overlayPath = below(u"overlay.json"_s);
    return entry;
}

QByteArray textOf(const QJsonObject &json)
{
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

/// The smallest document that can be imported.
QJsonObject smallest()
{
    return object("{'type':'VelorGamepad','overlay':{'a':1}}");
}

QJsonObject with(const QString &key, const QJsonValue &value)
{
    QJsonObject json = smallest();
    json[key] = value;
    return json;
}
} // namespace

class TestExchangeDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        QDir(below(u"."_s)).removeRecursively();
        QVERIFY(QDir().mkpath(below(u"."_s)));
    }

    // Building.

    void aDocumentHasItsEightKeys()
    {
        const QByteArray picture = manyBytes();
        write(below(u"image.jpg"_s), picture);
        const GamepadEntry entry = entryWith(u"image.jpg"_s);
        const QDateTime before = QDateTime::currentDateTimeUtc();
        QJsonObject document = buildExchangeDocument(entry, textOf(overlayOf(u"A"_s)));
        const QDateTime after = QDateTime::currentDateTimeUtc();

        const QString createdAt = document.take("createdAt"_L1).toString();
        QVERIFY(createdAt.endsWith(u'Z'));
        const QDateTime moment = QDateTime::fromString(createdAt, Qt::ISODate);
        QVERIFY(moment.secsTo(after) >= 0 && before.secsTo(moment) >= -1);

        QCOMPARE(document["version"_L1].toInteger(), 2);
        QCOMPARE(document, (QJsonObject{
                               {u"type"_s, u"VelorGamepad"_s},
                               {u"version"_s, 2},
                               {u"name"_s, entry.name},
                               {u"overlay"_s, overlayOf(u"A"_s)},
                               {u"imageBase64"_s, QString::fromLatin1(picture.toBase64())},
                               {u"imageExt"_s, u"jpg"_s},
                               {u"deviceName"_s, QString()},
                           }));
    }

    void theDeviceIsNamed()
    {
        GamepadEntry entry = entryWith(u"image.png"_s);
        entry.deviceName = u"Pad"_s;
        const QJsonObject document = buildExchangeDocument(entry, {});
        QCOMPARE(document["deviceName"_L1], QJsonValue(u"Pad"_s));
        QCOMPARE(linkedDevice(document), u"Pad"_s);
    }

    void theSuffixIsThatOfThePicture_data()
    {
        QTest::addColumn<QString>("image");
        QTest::addColumn<QString>("suffix");
        QTest::newRow("lower") << u"image.png"_s << u"png"_s;
        QTest::newRow("upper") << u"image.JPG"_s << u"jpg"_s;
        QTest::newRow("last") << u"image.tar.bmp"_s << u"bmp"_s;
        QTest::newRow("none") << u"image"_s << QString();
    }

    void theSuffixIsThatOfThePicture()
    {
        QFETCH(const QString, image);
        QTEST(buildExchangeDocument(entryWith(image), {})["imageExt"_L1].toString(), "suffix");
    }

    void aPictureThatDoesNotOpenIsEmpty_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"missing", "folder", "pipe", "no name"})
            QTest::newRow(kind) << QString::fromLatin1(kind);
    }

    void aPictureThatDoesNotOpenIsEmpty()
    {
        QFETCH(const QString, kind);
        GamepadEntry entry = entryWith(u"image.png"_s);
        if (kind == "folder"_L1)
            QVERIFY(QDir().mkpath(entry.imagePath));
        if (kind == "no name"_L1)
            entry.imagePath.clear();
#ifdef Q_OS_UNIX
        if (kind == "pipe"_L1)
            QCOMPARE(::mkfifo(QFile::encodeName(entry.imagePath).constData(), 0600), 0);
#endif
        const QJsonObject document = buildExchangeDocument(entry, textOf(overlayOf(u"A"_s)));
        QCOMPARE(document["imageBase64"_L1], QJsonValue(QString()));
        QCOMPARE(document.size(), 8);
    }

    void anOverlayThatDoesNotParseIsEmpty_data()
    {
        QTest::addColumn<QByteArray>("overlay");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("cut short") << QByteArray("{\"type\":");
        QTest::newRow("array") << QByteArray("[1]");
    }

    void anOverlayThatDoesNotParseIsEmpty()
    {
        QFETCH(const QByteArray, overlay);
        const QJsonObject document = buildExchangeDocument(entryWith(u"image.png"_s), overlay);
        QVERIFY(document["overlay"_L1].isObject());
        QVERIFY(document["overlay"_L1].toObject().isEmpty());
    }

    void theSavedOverlayIsReadFromDisk()
    {
        const GamepadEntry entry = entryWith(u"image.png"_s);
        QCOMPARE(buildSavedExchangeDocument(entry)["overlay"_L1], QJsonValue(QJsonObject()));
        write(entry.overlayPath, textOf(overlayOf(u"Saved"_s)));
        QCOMPARE(buildSavedExchangeDocument(entry)["overlay"_L1], QJsonValue(overlayOf(u"Saved"_s)));
        write(entry.overlayPath, "{");
        QCOMPARE(buildSavedExchangeDocument(entry)["overlay"_L1], QJsonValue(QJsonObject()));
    }

    // Parsing.

    void aDocumentIsParsed()
    {
        QJsonObject document;
        QString error = u"untouched"_s;
        QVERIFY(parseExchangeBytes(textOf(smallest()), &document, &error));
        QCOMPARE(document, smallest());
        QCOMPARE(error, u"untouched"_s);
        // Whatever else it holds: only the type is looked at.
        QVERIFY(parseExchangeBytes("{\"type\":\"VelorGamepad\",\"x\":1}", &document, nullptr));
        QCOMPARE(document, object("{'type':'VelorGamepad','x':1}"));
    }

    void whatIsNoObjectIsSaid_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("cut short") << QByteArray("{\"type\":\"VelorGamepad\"");
        QTest::newRow("text") << QByteArray("bonjour %1");
        QTest::newRow("array") << QByteArray("[{\"type\":\"VelorGamepad\"}]");
        QTest::newRow("not UTF-8") << QByteArray("{\"type\":\"\xff\xfe\"}");
        QTest::newRow("nested too deep") << QByteArray(5000, '[') + QByteArray(5000, ']');
    }

    void whatIsNoObjectIsSaid()
    {
        QFETCH(const QByteArray, text);
        QJsonParseError reason;
        const bool isArray = QJsonDocument::fromJson(text, &reason).isArray();
        QCOMPARE(reason.error == QJsonParseError::NoError, isArray);

        QJsonObject document = object("{'kept':1}");
        QString error;
        QVERIFY(!parseExchangeBytes(text, &document, &error));
        QCOMPARE(error, u"DonnÃ©es presseâ€‘papier invalides (%1)"_s.arg(reason.errorString()));
        QCOMPARE(document, object("{'kept':1}"));
        QVERIFY(!parseExchangeBytes(text, &document, nullptr));
    }

    void anotherTypeIsSaid_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("none") << QByteArray("{\"overlay\":{\"a\":1}}");
        QTest::newRow("another") << QByteArray("{\"type\":\"GamepadDefinderMeta\"}");
        QTest::newRow("lower case") << QByteArray("{\"type\":\"velorgamepad\"}");
        QTest::newRow("blank") << QByteArray("{\"type\":\"VelorGamepad \"}");
        QTest::newRow("number") << QByteArray("{\"type\":7}");
        QTest::newRow("null") << QByteArray("{\"type\":null}");
        QTest::newRow("array") << QByteArray("{\"type\":[\"VelorGamepad\"]}");
    }

    void anotherTypeIsSaid()
    {
        QFETCH(const QByteArray, text);
        QJsonObject document = object("{'kept':1}");
        QString error;
        QVERIFY(!parseExchangeBytes(text, &document, &error));
        QCOMPARE(error, u"Type inattendu dans le presseâ€‘papier."_s);
        QCOMPARE(document, object("{'kept':1}"));
    }

    // Reading.

    void defaultsStandForWhatIsMissing()
    {
        QCOMPARE(readExchangeDocument(smallest()),
                 (ExchangedProfile{u"Gamepad importÃ©"_s, u"image.png"_s, {}, object("{'a':1}")}));
    }

    void defaultsStandForWrongTypes_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QJsonValue>("value");
        for (const char *key : {"version", "name", "createdAt", "imageBase64", "imageExt", "deviceName"}) {
            const auto row = [key](const char *what, const QJsonValue &value) {
                QTest::addRow("%s: %s", key, what) << QString::fromLatin1(key) << value;
            };
            row("null", QJsonValue::Null);
            row("bool", true);
            row("number", 1e300);
            row("array", QJsonArray{1, u"x"_s});
            row("object", object("{'a':1}"));
        }
    }

    void defaultsStandForWrongTypes()
    {
        QFETCH(const QString, key);
        QFETCH(const QJsonValue, value);
        QCOMPARE(readExchangeDocument(with(key, value)), readExchangeDocument(smallest()));
        QCOMPARE(linkedDevice(with(key, value)), QString());
    }

    void whatCannotBeImportedIsNothing_data()
    {
        QTest::addColumn<QJsonObject>("document");
        QTest::newRow("nothing") << QJsonObject();
        for (const QJsonValue &type : {QJsonValue(QJsonValue::Null), QJsonValue(u"velorgamepad"_s),
                                       QJsonValue(2), QJsonValue(QJsonArray())})
            QTest::addRow("type %d", int(type.type())) << with(u"type"_s, type);
        for (const QJsonValue &overlay :
             {QJsonValue(QJsonValue::Null), QJsonValue(u"{}"_s), QJsonValue(2), QJsonValue(true),
              QJsonValue(QJsonArray{object("{'a':1}")}), QJsonValue(QJsonObject())})
            QTest::addRow("overlay %d", int(overlay.type())) << with(u"overlay"_s, overlay);
        QTest::newRow("no overlay") << object("{'type':'VelorGamepad'}");
    }

    void whatCannotBeImportedIsNothing()
    {
        QFETCH(const QJsonObject, document);
        QVERIFY(!readExchangeDocument(document));
    }

    void theNameIsTakenAsItStands_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("empty") << QString(u""_s);
        QTest::newRow("blanks") << u"  a \n"_s;
        QTest::newRow("path") << u"../../etc"_s;
        QTest::newRow("long") << QString(10'000, u'é');
    }

    void theNameIsTakenAsItStands()
    {
        QFETCH(const QString, name);
        QCOMPARE(readExchangeDocument(with(u"name"_s, name))->name, name);
    }

    void thePictureIsDecodedWithoutLookingForErrors_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QString() << QByteArray();
        QTest::newRow("bytes") << QString::fromLatin1(manyBytes().toBase64()) << manyBytes();
        QTest::newRow("no padding") << u"aGk"_s << QByteArray("hi");
        QTest::newRow("line breaks") << u"aG\r\nk="_s << QByteArray("hi");
        QTest::newRow("rubbish between") << u"*a é\u4e00G!k=$"_s << QByteArray("hi");
        QTest::newRow("rubbish alone") << u"?!%* é"_s << QByteArray();
    }

    void thePictureIsDecodedWithoutLookingForErrors()
    {
        QFETCH(const QString, text);
        QTEST(readExchangeDocument(with(u"imageBase64"_s, text))->image, "bytes");
    }

    void thePicturesNameNeverLeavesItsFolder_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("file");
        QTest::newRow("png") << u"png"_s << u"image.png"_s;
        QTest::newRow("upper") << u"JPeG"_s << u"image.jpeg"_s;
        QTest::newRow("text") << u"txt"_s << u"image.txt"_s;
        QTest::newRow("empty") << QString() << u"image.png"_s;
        QTest::newRow("dot") << u"."_s << u"image.png"_s;
        QTest::newRow("two dots") << u".."_s << u"image.png"_s;
        QTest::newRow("folder") << u"/png"_s << u"image.png"_s;
        QTest::newRow("way out") << u"/../../../meta.json"_s << u"image.png"_s;
        QTest::newRow("way out, later") << u"png/../../x"_s << u"image.png"_s;
        QTest::newRow("backslash") << u"\\..\\x"_s << u"image.png"_s;
        QTest::newRow("absolute") << u"/etc/passwd"_s << u"image.png"_s;
        QTest::newRow("resource") << u":/icon"_s << u"image.png"_s;
        QTest::newRow("cut by the system") << QString(u"png\0x"_s) << u"image.png"_s;
    }

    void thePicturesNameNeverLeavesItsFolder()
    {
        QFETCH(const QString, suffix);
        QTEST(readExchangeDocument(with(u"imageExt"_s, suffix))->imageFile, "file");
    }

    void whatIsBuiltIsReadBack()
    {
        write(below(u"image.bmp"_s), manyBytes());
        const GamepadEntry entry = entryWith(u"image.bmp"_s);
        QJsonObject document;
        QVERIFY(parseExchangeBytes(textOf(buildExchangeDocument(entry, textOf(overlayOf(u"A"_s)))), &document,
                                   nullptr));
        QCOMPARE(readExchangeDocument(document),
                 (ExchangedProfile{entry.name, u"image.bmp"_s, manyBytes(), overlayOf(u"A"_s)}));
    }

    void aHundredMegabytesAreRead()
    {
        const qsizetype size = 78'643'200; // of which Base64 makes 100 MiB
        QByteArray text = textOf(smallest());
        text.chop(1);
        text += ",\"imageBase64\":\"" + QByteArray(size, 'x').toBase64() + "\"}";
        QVERIFY(text.size() > 100 * 1024 * 1024);
        QJsonObject document;
        QVERIFY(parseExchangeBytes(text, &document, nullptr));
        const auto profile = readExchangeDocument(document);
        QVERIFY(profile);
        QCOMPARE(profile->image.size(), size);
        QCOMPARE(profile->image.back(), 'x');
    }
};

GAMEPAD_TEST_MAIN(TestExchangeDocument)
#include "tst_exchangedocument.moc"
