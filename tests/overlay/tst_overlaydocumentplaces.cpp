// SPDX-License-Identifier: MIT
// Where a stored rectangle lies on the picture, in documents of both versions.
#include "overlaydocument.h"

#include "jsontext.h"
#include "testmain.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace
{
// A picture twice as wide as high.
const OverlayFrame wide{
    .pixmap = QSize(200, 100), .mode = BackgroundScaleMode::Contain, .widget = QSize(50, 50)};

PictureFractions pastille(const QByteArray &keys, const QByteArray &place, const OverlayFrame &shown)
{
    QJsonObject json = object("{" + keys + "'nodes':[{'pastille':" + place + ",'toolbox':" + place + "}]}");
    json["type"_L1] = u"InteractiveOverlay"_s;
    const auto document = readOverlayDocument(json, shown);
    const OverlayDocumentNode node = document.value().nodes.value(0);
    // Both rectangles of a node are read alike.
    return node.pastille == node.toolbox ? node.pastille : PictureFractions{-99, -99, -99, -99};
}

const QByteArray somewhere = "{'x':0.25,'y':0.5,'w':0.1,'h':0.2}";
} // namespace

class TestOverlayDocumentPlaces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void picturePlacesAreTakenAsTheyStand_data()
    {
        QTest::addColumn<QByteArray>("keys");
        QTest::newRow("as written") << QByteArray("'version':2,'coordSpace':'background',");
        QTest::newRow("version 2 in another space") << QByteArray("'version':2,'coordSpace':'pixels',");
        QTest::newRow("version 2 in no space") << QByteArray("'version':2,");
        QTest::newRow("version 1 by its space") << QByteArray("'version':1,'coordSpace':'BACKGROUND',");
        QTest::newRow("no version, by its space") << QByteArray("'coordSpace':'Background',");
        QTest::newRow("a later version") << QByteArray("'version':7,");
        QTest::newRow("a version beyond int") << QByteArray("'version':1e300,");
    }

    void picturePlacesAreTakenAsTheyStand()
    {
        QFETCH(const QByteArray, keys);
        QCOMPARE(pastille(keys + "'overlaySize':{'w':1000,'h':1000},", somewhere, wide),
                 (PictureFractions{0.25, 0.5, 0.1, 0.2}));
    }

    void olderPlacesAreOfTheSavedWidget_data()
    {
        QTest::addColumn<QByteArray>("keys");
        QTest::newRow("version 1") << QByteArray("'version':1,");
        QTest::newRow("no version") << QByteArray();
        QTest::newRow("version of a wrong type") << QByteArray("'version':'2',");
        QTest::newRow("version 0") << QByteArray("'version':0,");
        QTest::newRow("negative version") << QByteArray("'version':-1e300,");
        QTest::newRow("space of a wrong type") << QByteArray("'coordSpace':1,");
        QTest::newRow("another space") << QByteArray("'coordSpace':'widget',");
        QTest::newRow("blanks around the space") << QByteArray("'coordSpace':' background ',");
    }

    void olderPlacesAreOfTheSavedWidget()
    {
        QFETCH(const QByteArray, keys);
        // In a widget of 1000 by 1000 the picture is 1000 by 500, 250 from the top. The pastille is at
        // (250, 500), 100 by 200.
        const PictureFractions place =
            pastille(keys + "'overlaySize':{'w':1000,'h':1000},'bgMode':'Contain',", somewhere, wide);
        QCOMPARE(place, (PictureFractions{0.25, 0.5, 0.1, 0.4}));
    }

    void olderPlacesFollowTheSavedMode_data()
    {
        QTest::addColumn<QByteArray>("mode");
        QTest::addColumn<double>("x");
        QTest::addColumn<double>("y");
        QTest::addColumn<double>("w");
        QTest::addColumn<double>("h");
        // The pastille of the row above: (250, 500), 100 by 200, in 1000 by 1000.
        QTest::newRow("stretch") << QByteArray("Stretch") << 0.25 << 0.5 << 0.1 << 0.2;
        QTest::newRow("cover: 2000 by 1000 from -500")
            << QByteArray("Cover") << 750.0 / 2000 << 0.5 << 100.0 / 2000 << 0.2;
        QTest::newRow("center: 200 by 100 from (400, 450)")
            << QByteArray("Center") << -150.0 / 200 << 50.0 / 100 << 0.5 << 2.0;
        QTest::newRow("the overlay's own: contain") << QByteArray() << 0.25 << 0.5 << 0.1 << 0.4;
    }

    void olderPlacesFollowTheSavedMode()
    {
        QFETCH(const QByteArray, mode);
        const PictureFractions place =
            pastille("'bgMode':'" + mode + "','overlaySize':{'w':1000,'h':1000},", somewhere, wide);
        QTEST(place.x, "x");
        QTEST(place.y, "y");
        QTEST(place.w, "w");
        QTEST(place.h, "h");
    }

    void olderPlacesAreRoundedToPixelsFirst()
    {
        // 1.5, -2.5, 1.4 and 0.4 pixels of 10: half away from zero, and at least one pixel large.
        const OverlayFrame bare{
            .pixmap = QSize(), .mode = BackgroundScaleMode::Contain, .widget = QSize(10, 10)};
        QCOMPARE(pastille({}, "{'x':0.15,'y':-0.25,'w':0.14,'h':0.04}", bare),
                 (PictureFractions{0.2, -0.3, 0.1, 0.1}));
    }

    void withoutAPictureOlderPlacesAreFractionsOfTheWidget()
    {
        const OverlayFrame bare{
            .pixmap = QSize(), .mode = BackgroundScaleMode::Cover, .widget = QSize(70, 30)};
        QCOMPARE(pastille("'overlaySize':{'w':100,'h':100},", somewhere, bare),
                 (PictureFractions{0.25, 0.5, 0.1, 0.2}));
    }

    void aSavedPictureWithoutAreaLeavesThemAsTheyStand()
    {
        // 5000 by 1 pixels in a widget of 100 by 100: no row of it is left.
        const OverlayFrame thin{
            .pixmap = QSize(5000, 1), .mode = BackgroundScaleMode::Contain, .widget = QSize(100, 100)};
        QCOMPARE(pastille({}, somewhere, thin), (PictureFractions{0.25, 0.5, 0.1, 0.2}));
    }

    void aMissingPlaceOfAnOlderDocumentIsOnePixelOfTheWidget()
    {
        const OverlayFrame bare{
            .pixmap = QSize(), .mode = BackgroundScaleMode::Contain, .widget = QSize(10, 20)};
        QCOMPARE(pastille({}, "null", bare), (PictureFractions{0.0, 0.0, 0.1, 0.05}));
    }

    void hugePlacesSaturate_data()
    {
        QTest::addColumn<QByteArray>("keys");
        QTest::newRow("version 1") << QByteArray("'version':1,");
        QTest::newRow("version 2") << QByteArray("'version':2,");
        QTest::newRow("version 1, huge widget")
            << QByteArray("'version':1,'overlaySize':{'w':2147483647,'h':2147483647},");
    }

    void hugePlacesSaturate()
    {
        QFETCH(const QByteArray, keys);
        const PictureFractions place = pastille(keys, "{'x':1e308,'y':-1e308,'w':1e308,'h':1e308}", wide);
        for (const double number : {place.x, place.y, place.w, place.h})
            QVERIFY(qIsFinite(number));
        QVERIFY(place.x >= 1);
        QVERIFY(place.y < -1);
        QVERIFY(place.w >= 1);
        QVERIFY(place.h >= 1);
    }

    void whatIsNoFiniteNumberCountsAsZero()
    {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        const QJsonObject place{{u"x"_s, infinity}, {u"y"_s, -infinity}, {u"w"_s, qQNaN()}, {u"h"_s, 0.5}};
        QJsonObject json = object("{'type':'InteractiveOverlay','version':2}");
        json["nodes"_L1] = QJsonArray{QJsonObject{{u"pastille"_s, place}}};
        QCOMPARE(readOverlayDocument(json, wide).value().nodes.value(0).pastille,
                 (PictureFractions{0.0, 0.0, 0.0, 0.5}));
    }
};

GAMEPAD_TEST_MAIN(TestOverlayDocumentPlaces)
#include "tst_overlaydocumentplaces.moc"
