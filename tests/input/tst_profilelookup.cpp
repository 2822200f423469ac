// SPDX-License-Identifier: MIT
#include "profilefolder.h"
#include "profilelookup.h"
#include "profilesroot.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QProcess>

using namespace Qt::StringLiterals;

namespace
{
constexpr uint vendor = 0x046d;
constexpr uint product = 0xc21d;

QString below(const QString &path)
{
    return profilesRootPath() + u'/' + path;
}

QString find()
{
    return findConfigFile(u"Blue Pad"_s, vendor, product);
}

/// A profile in `folder` with its document, linked to `deviceName`.
QString linkedProfile(const QString &folder, const QString &deviceName)
{
    writeMeta(folder, {{u"deviceName"_s, deviceName}});
    return writeBelowRoot(folder + "/configActionGamepad.json"_L1);
}
} // namespace

class TestProfileLookup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
    }

    void withoutARootThereIsNothing()
    {
        QVERIFY(!QDir(profilesRootPath()).exists());
        QCOMPARE(find(), QString());
        QCOMPARE(findProfileImage(u"Blue Pad"_s), QString());
        QVERIFY(!QDir(profilesRootPath()).exists());
    }

    void aRootThatIsAFileHoldsNothing()
    {
        QDir().mkpath(QFileInfo(profilesRootPath()).path());
        QFile file(profilesRootPath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(find(), QString());
        QCOMPARE(findProfileImage(u"Blue Pad"_s), QString());
    }

    void anEmptyRootHoldsNothing()
    {
        QVERIFY(QDir().mkpath(profilesRootPath()));
        QCOMPARE(find(), QString());
        QCOMPARE(findProfileImage(u"Blue Pad"_s), QString());
    }

    void aProfileServesByItsMeta_data()
    {
        QTest::addColumn<QJsonObject>("meta");
        QTest::addColumn<bool>("serves");
        const auto row = [](const char *name, const QJsonObject &meta, bool serves) {
            QTest::newRow(name) << meta << serves;
        };
        const auto ids = [](const QJsonValue &vendorId, const QJsonValue &productId) {
            return QJsonObject{{u"vendorId"_s, vendorId}, {u"productId"_s, productId}};
        };
        row("nothing that matches", {}, false);
        row("same name", {{u"deviceName"_s, u"Blue Pad"_s}}, true);
        row("name in another case", {{u"deviceName"_s, u"bLUE pAD"_s}}, true);
        row("another name", {{u"deviceName"_s, u"Red Pad"_s}}, false);
        row("beginning of the name", {{u"deviceName"_s, u"Blue"_s}}, false);
        row("empty name", {{u"deviceName"_s, u""_s}}, false);
        row("name that is no text", {{u"deviceName"_s, 5}}, false);
        row("any luid serves any device", {{u"luid"_s, u"whatever"_s}, {u"deviceName"_s, u"Red Pad"_s}},
            true);
        row("empty luid", {{u"luid"_s, u""_s}}, false);
        row("null luid", {{u"luid"_s, QJsonValue::Null}}, false);
        row("luid that is no text", {{u"luid"_s, 12}}, false);
        row("ids with a prefix", ids(u"0x046d"_s, u"0xc21d"_s), true);
        row("ids without a prefix", ids(u"46d"_s, u"c21d"_s), true);
        row("ids in capitals", ids(u"0X046D"_s, u"C21D"_s), true);
        row("one id differs", ids(u"0x046d"_s, u"0xc21e"_s), false);
        row("vendor alone", {{u"vendorId"_s, u"0x046d"_s}}, false);
        row("product alone", {{u"productId"_s, u"0xc21d"_s}}, false);
        row("ids as numbers", ids(int(vendor), int(product)), false);
        row("ids in words", ids(u"logi"_s, u"pad"_s), false);
        row("ids beyond 32 bits", ids(u"0x10000046d"_s, u"0x10000c21d"_s), false);
        row("negative ids", ids(u"-46d"_s, u"-c21d"_s), false);
        row("another type", {{u"type"_s, u"Other"_s}, {u"deviceName"_s, u"Blue Pad"_s}}, false);
        row("type in another case", {{u"type"_s, u"gamepaddefindermeta"_s}, {u"deviceName"_s, u"Blue Pad"_s}},
            false);
        row("type that is no text", {{u"type"_s, true}, {u"deviceName"_s, u"Blue Pad"_s}}, false);
    }
    void aProfileServesByItsMeta()
    {
        QFETCH(const QJsonObject, meta);
        QFETCH(const bool, serves);
        writeMeta(u"profile"_s, meta);
        const QString document = writeBelowRoot(u"profile/configActionGamepad.json"_s);
        QCOMPARE(find(), serves ? document : QString());
    }

    void idsOfZeroNeverMatch_data()
    {
        QTest::addColumn<uint>("vendorId");
        QTest::addColumn<uint>("productId");
        QTest::newRow("both") << 0U << 0U;
        QTest::newRow("vendor") << 0U << product;
        QTest::newRow("product") << vendor << 0U;
    }
    void idsOfZeroNeverMatch()
    {
        QFETCH(const uint, vendorId);
        QFETCH(const uint, productId);
        const auto text = [](uint id) { return QString::number(id, 16); };
        writeMeta(u"profile"_s, {{u"vendorId"_s, text(vendorId)}, {u"productId"_s, text(productId)}});
        (void)writeBelowRoot(u"profile/configActionGamepad.json"_s);
        QCOMPARE(findConfigFile(u"Pad"_s, vendorId, productId), QString());
    }

    void aDeviceWithoutANameIsServedByLuidOrIds()
    {
        (void)linkedProfile(u"named"_s, u"Blue Pad"_s);
        (void)linkedProfile(u"unlinked"_s, {}); // no name is not the same name
        QCOMPARE(findConfigFile({}, vendor, product), QString());
        writeMeta(u"with luid"_s, {{u"luid"_s, u"x"_s}});
        const QString document = writeBelowRoot(u"with luid/configActionGamepad.json"_s);
        QCOMPARE(findConfigFile({}, vendor, product), document);
    }

    void theDocumentsNameComesFromTheMeta()
    {
        writeMeta(u"profile"_s, {{u"deviceName"_s, u"Blue Pad"_s}, {u"config"_s, u"mine.json"_s}});
        (void)writeBelowRoot(u"profile/configActionGamepad.json"_s);
        QCOMPARE(find(), QString());
        const QString mine = writeBelowRoot(u"profile/mine.json"_s);
        QCOMPARE(find(), mine);
    }

    void aNameThatIsNoPlainFileNameGivesWayToTheDefault_data()
    {
        QTest::addColumn<QJsonValue>("name");
        QTest::newRow("empty") << QJsonValue(u""_s);
        QTest::newRow("this folder") << QJsonValue(u"."_s);
        QTest::newRow("folder above") << QJsonValue(u".."_s);
        QTest::newRow("a path") << QJsonValue(u"../other/secret.json"_s);
        QTest::newRow("a path inside") << QJsonValue(u"sub/secret.json"_s);
        QTest::newRow("backslash") << QJsonValue(u"..\\secret.json"_s);
        QTest::newRow("absolute") << QJsonValue(u"/etc/passwd"_s);
        QTest::newRow("NUL") << QJsonValue(u"a\0b"_s);
        QTest::newRow("number") << QJsonValue(3);
        QTest::newRow("null") << QJsonValue(QJsonValue::Null);
        QTest::newRow("list") << QJsonValue(QJsonArray{u"secret.json"_s});
    }
    void aNameThatIsNoPlainFileNameGivesWayToTheDefault()
    {
        QFETCH(const QJsonValue, name);
        writeMeta(u"profile"_s, {{u"deviceName"_s, u"Blue Pad"_s}, {u"config"_s, name}, {u"image"_s, name}});
        (void)writeBelowRoot(u"other/secret.json"_s);
        (void)writeBelowRoot(u"profile/sub/secret.json"_s);
        const QString document = writeBelowRoot(u"profile/configActionGamepad.json"_s);
        const QString picture = writeBelowRoot(u"profile/image.png"_s);
        QCOMPARE(find(), document);
        QCOMPARE(findProfileImage(u"Blue Pad"_s), picture);
    }

    void foldersAreSearchedByNameWhateverTheCase()
    {
        const QString c = linkedProfile(u"c"_s, u"Blue Pad"_s);
        const QString b = linkedProfile(u"B"_s, u"Blue Pad"_s);
        QCOMPARE(find(), b);
        const QString a = linkedProfile(u"a"_s, u"Blue Pad"_s);
        QCOMPARE(find(), a);
        QVERIFY(QFile::remove(a));
        QVERIFY(QFile::remove(b));
        QCOMPARE(find(), c);
    }

    // The wide match of a luid wins over a name that fits, where its folder comes first.
    void theFirstProfileThatServesWinsByWhicheverRule()
    {
        (void)linkedProfile(u"b"_s, u"Blue Pad"_s);
        writeMeta(u"a"_s, {{u"luid"_s, u"x"_s}});
        const QString wide = writeBelowRoot(u"a/configActionGamepad.json"_s);
        QCOMPARE(find(), wide);
    }

    void aMatchWithoutItsDocumentDoesNotEndTheSearch()
    {
        writeMeta(u"a"_s, {{u"deviceName"_s, u"Blue Pad"_s}});
        const QString document = linkedProfile(u"b"_s, u"Blue Pad"_s);
        QCOMPARE(find(), document);
    }

    void aFolderInPlaceOfTheDocumentIsNoDocument()
    {
        writeMeta(u"a"_s, {{u"deviceName"_s, u"Blue Pad"_s}});
        QVERIFY(QDir().mkpath(below(u"a/configActionGamepad.json"_s)));
        QVERIFY(QDir().mkpath(below(u"a/image.png"_s)));
        QCOMPARE(find(), QString());
        QCOMPARE(findProfileImage(u"Blue Pad"_s), QString());
    }

    void aBrokenMetaIsPassedOver_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no JSON") << QByteArray("deviceName = Blue Pad");
        QTest::newRow("cut off") << QByteArray(R"({"type":"GamepadDefinderMeta","deviceName":"Blue Pad")");
        QTest::newRow("list") << QByteArray(R"([{"type":"GamepadDefinderMeta","deviceName":"Blue Pad"}])");
        QTest::newRow("text") << QByteArray(R"("GamepadDefinderMeta")");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("invalid UTF-8") << QByteArray(
            "{\"type\":\"GamepadDefinderMeta\",\"deviceName\":\"Blue Pad\",\"x\":\"\xff\xfe\"}");
        QTest::newRow("wrong types everywhere")
            << QByteArray(R"({"type":{"a":1},"luid":[1],"deviceName":{},"vendorId":[],"productId":null,)"
                          R"("config":{},"image":7})");
        QTest::newRow("numbers out of range")
            << QByteArray(R"({"type":1e400,"luid":-1e400,"vendorId":1e99,"productId":99999999999999999999})");
        QTest::newRow("ten megabytes of nesting") << QByteArray(10'000'000, '[');
        QTest::newRow("ten megabytes of objects") << QByteArray(R"({"type":"GamepadDefinderMeta","x":)")
                                                         .append(QByteArray(R"({"a":)").repeated(2'000'000));
    }
    void aBrokenMetaIsPassedOver()
    {
        QFETCH(const QByteArray, content);
        (void)writeBelowRoot(u"a/meta.json"_s, content);
        (void)writeBelowRoot(u"a/configActionGamepad.json"_s);
        (void)writeBelowRoot(u"a/image.png"_s);
        QCOMPARE(find(), QString());
        QCOMPARE(findProfileImage(u"Blue Pad"_s), QString());
        const QString document = linkedProfile(u"b"_s, u"Blue Pad"_s);
        const QString picture = writeBelowRoot(u"b/image.png"_s);
        QCOMPARE(find(), document);
        QCOMPARE(findProfileImage(u"Blue Pad"_s), picture);
    }

    void aMetaThatIsNoFileIsPassedOver()
    {
        QVERIFY(QDir().mkpath(below(u"a/meta.json"_s)));
        const QString document = linkedProfile(u"b"_s, u"Blue Pad"_s);
        QCOMPARE(find(), document);
    }

    void aMetaThatFillsTheMemoryIsPassedOver()
    {
        QFile file(writeBelowRoot(u"a/meta.json"_s));
        QVERIFY(file.resize(1LL << 42)); // takes no room on the disk
        const QString document = linkedProfile(u"b"_s, u"Blue Pad"_s);
        QCOMPARE(find(), document);
    }

#ifdef Q_OS_UNIX
    // Opening such a pipe would wait for a writer, and the host with it.
    void aMetaThatIsAPipeIsPassedOver()
    {
        QVERIFY(QDir().mkpath(below(u"a"_s)));
        QCOMPARE(QProcess::execute(u"mkfifo"_s, {below(u"a/meta.json"_s)}), 0);
        const QString document = linkedProfile(u"b"_s, u"Blue Pad"_s);
        QCOMPARE(find(), document);
        QVERIFY(QFile::remove(below(u"a/meta.json"_s)));
    }
#endif

    void withoutAProfileTheFolderOfTheIdsServes_data()
    {
        QTest::addColumn<uint>("vendorId");
        QTest::addColumn<uint>("productId");
        QTest::addColumn<QString>("folder");
        QTest::newRow("padded to four digits") << 0x46dU << 0x1U << u"046d_0001"_s;
        QTest::newRow("lower case") << 0xABCDU << 0xC21DU << u"abcd_c21d"_s;
        QTest::newRow("zeros") << 0U << 0U << u"0000_0000"_s;
        QTest::newRow("longer ids stay whole") << 0x12345U << 0xffffffffU << u"12345_ffffffff"_s;
    }
    void withoutAProfileTheFolderOfTheIdsServes()
    {
        QFETCH(const uint, vendorId);
        QFETCH(const uint, productId);
        QFETCH(const QString, folder);
        (void)writeBelowRoot(u"configActionGamepad.json"_s);
        const QString document = writeBelowRoot(folder + "/configActionGamepad.json"_L1);
        QCOMPARE(findConfigFile(u"Pad"_s, vendorId, productId), document);
    }

    void afterAllTheDocumentInTheRootServes()
    {
        const QString common = writeBelowRoot(u"configActionGamepad.json"_s);
        QCOMPARE(find(), common);
        QCOMPARE(commonConfigPath(), common);
        const QString linked = linkedProfile(u"a"_s, u"Blue Pad"_s);
        QCOMPARE(find(), linked);
    }

    void hiddenFoldersHoldNoProfiles()
    {
        (void)linkedProfile(u".hidden"_s, u"Blue Pad"_s);
        QCOMPARE(find(), QString());
    }

    void thePictureIsThatOfTheLinkedProfile()
    {
        writeMeta(u"a"_s, {{u"deviceName"_s, u"blue pad"_s}, {u"image"_s, u"image.jpg"_s}});
        QCOMPARE(findProfileImage(u"Blue Pad"_s), QString()); // the file is not there
        const QString picture = writeBelowRoot(u"a/image.jpg"_s);
        QCOMPARE(findProfileImage(u"Blue Pad"_s), picture);
        QCOMPARE(findProfileImage({}), QString());
    }

    void aLinkedProfileWithoutAPictureDoesNotEndTheSearch()
    {
        writeMeta(u"a"_s, {{u"deviceName"_s, u"Blue Pad"_s}});
        writeMeta(u"b"_s, {{u"deviceName"_s, u"Blue Pad"_s}});
        const QString picture = writeBelowRoot(u"b/image.png"_s);
        QCOMPARE(findProfileImage(u"Blue Pad"_s), picture);
    }

    void onlyTheNameServesForThePicture_data()
    {
        QTest::addColumn<QJsonObject>("meta");
        QTest::newRow("luid") << QJsonObject{{u"luid"_s, u"x"_s}};
        QTest::newRow("ids") << QJsonObject{{u"vendorId"_s, u"046d"_s}, {u"productId"_s, u"c21d"_s}};
        QTest::newRow("empty name") << QJsonObject{{u"deviceName"_s, u""_s}};
        QTest::newRow("another type")
            << QJsonObject{{u"type"_s, u"Other"_s}, {u"deviceName"_s, u"Blue Pad"_s}};
    }
    void onlyTheNameServesForThePicture()
    {
        QFETCH(const QJsonObject, meta);
        writeMeta(u"a"_s, meta);
        (void)writeBelowRoot(u"a/image.png"_s);
        QCOMPARE(findProfileImage(u"Blue Pad"_s), QString());
        QCOMPARE(findProfileImage({}), QString());
    }

    void nothingIsCached()
    {
        const QString document = linkedProfile(u"a"_s, u"Blue Pad"_s);
        QCOMPARE(find(), document);
        writeMeta(u"a"_s, {{u"deviceName"_s, u"Red Pad"_s}});
        QCOMPARE(find(), QString());
        QCOMPARE(findConfigFile(u"Red Pad"_s, 0, 0), document);
    }
};

GAMEPAD_TEST_MAIN(TestProfileLookup)
#include "tst_profilelookup.moc"
