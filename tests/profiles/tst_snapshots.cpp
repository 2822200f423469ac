// SPDX-License-Identifier: MIT
#include "snapshots.h"

#include "exchangefiles.h"
#include "interactiveoverlay.h"
#include "machine.h"
#include "testmain.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QScopeGuard>
#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

namespace
{
QDir folder()
{
    return {temporaryHome() + "/desk"_L1};
}

QString below(const QString &name)
{
    return folder().filePath(name);
}

QJsonObject sized(const QJsonValue &w, const QJsonValue &h)
{
    return {{u"overlaySize"_s, QJsonObject{{u"w"_s, w}, {u"h"_s, h}}}};
}

/// `place` of a node, in fractions of the picture.
QJsonObject rectJson(const QRectF &place)
{
    return {{u"x"_s, place.x()}, {u"y"_s, place.y()}, {u"w"_s, place.width()}, {u"h"_s, place.height()}};
}

QImage snapshotOf(const QJsonObject &overlay, const QString &picture = {}, const QSize &fallback = {400, 300})
{
    QString error;
    const QPixmap pixmap = renderOverlaySnapshot(overlay, picture, fallback, &error);
    return error.isEmpty() ? pixmap.toImage().convertToFormat(QImage::Format_ARGB32) : QImage();
}

/// The part of `image` that is not wholly transparent.
QRect paintedIn(const QImage &image)
{
    QRect painted;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 0)
                painted |= QRect(x, y, 1, 1);
        }
    }
    return painted;
}

/// A stored document of a profile, whose path is returned.
QString stored(const QString &name, const QJsonObject &overlay)
{
    write(below(name), QJsonDocument(overlay).toJson());
    return below(name);
}
} // namespace

class TestSnapshots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        folder().removeRecursively();
        QVERIFY(QDir().mkpath(folder().path()));
    }

    // The name.

    void aNameWithoutSuffixGetsOne_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("written");
        QTest::newRow("empty") << u""_s << u""_s;
        QTest::newRow("blanks") << u"  "_s << u"  "_s;
        QTest::newRow("none") << u"a"_s << u"a.png"_s;
        QTest::newRow("a dot alone") << u"a."_s << u"a..png"_s;
        QTest::newRow("another") << u"a.jpg"_s << u"a.jpg"_s;
        QTest::newRow("of the folder") << u"/d.ir/a"_s << u"/d.ir/a.png"_s;
    }

    void aNameWithoutSuffixGetsOne()
    {
        QFETCH(const QString, path);
        QTEST(withPngSuffix(path), "written");
    }

    // The size.

    void theSizeIsThatOfTheDocument_data()
    {
        QTest::addColumn<QJsonObject>("overlay");
        QTest::addColumn<QSize>("fallback");
        QTest::addColumn<QSize>("size");
        const QSize editor(400, 300);
        const QSize none(0, 0);
        QTest::newRow("stored") << sized(640, 480) << editor << QSize(640, 480);
        QTest::newRow("one") << sized(1, 1) << editor << QSize(1, 1);
        QTest::newRow("missing") << QJsonObject() << editor << editor;
        QTest::newRow("zero") << sized(0, 0) << editor << editor;
        QTest::newRow("negative width") << sized(-5, 480) << editor << QSize(400, 480);
        QTest::newRow("no height") << object("{'overlaySize':{'w':640}}") << editor << QSize(640, 300);
        QTest::newRow("missing, no editor") << QJsonObject() << none << QSize(800, 600);
        QTest::newRow("zero, no editor") << sized(0, 0) << none << QSize(800, 600);
        QTest::newRow("width, no editor") << sized(640, 0) << none << QSize(640, 600);
        QTest::newRow("negative editor") << sized(0, 480) << QSize(-1, -1) << QSize(800, 480);
        QTest::newRow("half a pixel") << sized(640.9, 0.9) << editor << QSize(640, 300);

        QTest::newRow("64 megapixels") << sized(8000, 8000) << editor << QSize(8000, 8000);
        QTest::newRow("more") << sized(8001, 8000) << editor << editor;
        QTest::newRow("beyond int, as a product") << sized(65536, 65536) << editor << editor;
        QTest::newRow("beyond int") << sized(1e300, 1) << editor << editor;
        QTest::newRow("beyond int both ways") << sized(1e300, -1e300) << editor << editor;
        QTest::newRow("too large, no editor") << sized(1e9, 1e9) << none << QSize(800, 600);
        QTest::newRow("too large an editor") << QJsonObject() << QSize(100'000, 100'000) << QSize(800, 600);
        for (const QJsonValue &wrong : {QJsonValue(QJsonValue::Null), QJsonValue(u"640"_s), QJsonValue(true),
                                        QJsonValue(QJsonArray{640}), QJsonValue(QJsonObject())}) {
            QTest::addRow("sides of type %d", int(wrong.type())) << sized(wrong, wrong) << editor << editor;
            QTest::addRow("size of type %d", int(wrong.type()))
                << QJsonObject{{u"overlaySize"_s, wrong}} << editor << editor;
        }
    }

    void theSizeIsThatOfTheDocument()
    {
        QFETCH(const QJsonObject, overlay);
        QFETCH(const QSize, fallback);
        QTEST(snapshotSize(overlay, fallback), "size");
    }

    // One picture.

    void anEmptyOverlayIsSaid()
    {
        QString error;
        QVERIFY(renderOverlaySnapshot({}, {}, {400, 300}, &error).isNull());
        QCOMPARE(error, u"Overlay vide."_s);
        QVERIFY(renderOverlaySnapshot({}, {}, {400, 300}, nullptr).isNull());
    }

    void anotherDocumentIsSaid_data()
    {
        QTest::addColumn<QJsonObject>("overlay");
        QTest::newRow("no type") << sized(640, 480);
        QTest::newRow("lower case") << object("{'type':'interactiveoverlay'}");
        QTest::newRow("number") << object("{'type':1}");
    }

    void anotherDocumentIsSaid()
    {
        QFETCH(const QJsonObject, overlay);
        QString error;
        QVERIFY(renderOverlaySnapshot(overlay, {}, {400, 300}, &error).isNull());
        QCOMPARE(error, u"Format de configuration non reconnu."_s);
        QVERIFY(renderOverlaySnapshot(overlay, {}, {400, 300}, nullptr).isNull());
    }

    void theGroundIsTransparentBesideThePicture()
    {
        // Twice as wide as high, on a square: contained, with a quarter of the height free on each side.
        write(below(u"p.png"_s), pngOf({80, 40}, Qt::red));
        QJsonObject overlay = overlayOf(u"A"_s, {400, 400});
        overlay["nodes"_L1] = QJsonArray();
        const QImage image = snapshotOf(overlay, below(u"p.png"_s));
        QCOMPARE(image.size(), QSize(400, 400));
        QCOMPARE(paintedIn(image), QRect(0, 100, 400, 200));
        QCOMPARE(image.pixel(0, 99), qRgba(0, 0, 0, 0));
        QCOMPARE(image.pixel(0, 100), QColor(Qt::red).rgba());
        QCOMPARE(image.pixel(399, 299), QColor(Qt::red).rgba());
        QCOMPARE(image.pixel(399, 300), qRgba(0, 0, 0, 0));
    }

    void thePictureIsContainedWhateverTheDocumentSays_data()
    {
        QTest::addColumn<QString>("mode");
        for (const char *mode : {"Stretch", "Contain", "Cover", "Center"})
            QTest::newRow(mode) << QString::fromLatin1(mode);
    }

    void thePictureIsContainedWhateverTheDocumentSays()
    {
        QFETCH(const QString, mode);
        write(below(u"p.png"_s), pngOf({80, 40}, Qt::red));
        QJsonObject overlay = overlayOf(u"A"_s, {400, 400});
        overlay["nodes"_L1] = QJsonArray();
        overlay["bgMode"_L1] = mode;
        QCOMPARE(paintedIn(snapshotOf(overlay, below(u"p.png"_s))), QRect(0, 100, 400, 200));
    }

    void withoutPictureThePastillesStandOnATransparentGround_data()
    {
        QTest::addColumn<QString>("picture");
        QTest::newRow("none") << QString();
        QTest::newRow("missing") << below(u"missing.png"_s);
        QTest::newRow("no picture") << below(u"text.png"_s);
        QTest::newRow("folder") << folder().path();
    }

    void withoutPictureThePastillesStandOnATransparentGround()
    {
        QFETCH(const QString, picture);
        write(below(u"text.png"_s), "no picture");
        const QImage image = snapshotOf(overlayOf(u"A"_s), picture);
        QCOMPARE(image.size(), QSize(400, 300));
        for (const QPoint &corner : {QPoint(0, 0), QPoint(399, 0), QPoint(0, 299), QPoint(399, 299)})
            QCOMPARE(qAlpha(image.pixel(corner)), 0);
        // From the pastille to the right of the tool box, which is never higher than 36, and the line below.
        const QRect painted = paintedIn(image);
        QVERIFY2(QRect(40, 60, 320, 133).contains(painted), "too far");
        QVERIFY2(painted.contains(QRect(45, 65, 310, 125)), "not far enough");
    }

    void pastillesAndToolBoxesStandWhereTheDocumentPutsThem()
    {
        write(below(u"p.png"_s), pngOf({80, 40}, Qt::red));
        QJsonObject overlay = overlayOf(u""_s, {400, 400}); // the picture covers (0, 100) to (400, 300)
        QJsonObject node = overlay["nodes"_L1][0].toObject();
        node["pastille"_L1] = rectJson({0.1, 0.25, 0.1, 0.2});
        node["toolbox"_L1] = rectJson({0.5, 0.25, 0.45, 0.25});
        overlay["nodes"_L1] = QJsonArray{node};
        const QImage image = snapshotOf(overlay, below(u"p.png"_s));
        const QRect pastille(40, 150, 40, 40);
        const QRect toolBox(200, 150, 180, 36); // its height is its own

        // Blue and white on red: the round pastille, not its corners.
        QVERIFY(QColor(image.pixel(pastille.center())).blue() > 128);
        QVERIFY(QColor(image.pixel(pastille.left() + 4, pastille.center().y())).blue() > 128);
        QCOMPARE(image.pixel(pastille.topLeft()), QColor(Qt::red).rgba());
        QCOMPARE(image.pixel(pastille.left() - 3, pastille.center().y()), QColor(Qt::red).rgba());
        QVERIFY(image.pixel(toolBox.center()) != QColor(Qt::red).rgba());
        QCOMPARE(image.pixel(toolBox.left() - 3, toolBox.center().y()), QColor(Qt::red).rgba());

        // The line: six pixels below the pastille, to as much below the near corner, and along the box.
        const int underline = toolBox.bottom() + 6;
        for (const int x : {toolBox.left() + 3, toolBox.center().x(), toolBox.right() - 3}) {
            QVERIFY(QColor(image.pixel(x, underline)).green() > 200);
            QCOMPARE(image.pixel(x, underline + 4), QColor(Qt::red).rgba());
        }
        const QPoint start(pastille.center().x(), pastille.bottom() + 6);
        const QPoint middle = (start + QPoint(toolBox.left(), underline)) / 2;
        QVERIFY(QColor(image.pixel(middle)).green() > 128);
    }

    void itIsTheOverlayInItsNormalMode()
    {
        write(below(u"p.png"_s), pngOf({80, 60}, Qt::red));
        const QJsonObject overlay = overlayOf(u"A"_s);
        const auto shownIn = [&](InteractiveOverlay::Mode mode) {
            InteractiveOverlay shown;
            shown.resize(400, 300);
            shown.setBackgroundPixmap(QPixmap(below(u"p.png"_s)));
            shown.fromJson(overlay);
            shown.setMode(mode);
            shown.show();
            if (!QTest::qWaitForWindowExposed(&shown))
                return QImage();
            if (QWidget *focused = shown.focusWidget())
                focused->clearFocus(); // which only a window on screen has
            return shown.grab().toImage().convertToFormat(QImage::Format_ARGB32);
        };
        const QImage image = snapshotOf(overlay, below(u"p.png"_s));
        // The picture covers all, so the ground does not count.
        QCOMPARE(image, shownIn(InteractiveOverlay::Normal));
        // A pastille that can be edited shows its handle.
        QVERIFY(image != shownIn(InteractiveOverlay::Edit));
    }

    void statesAreShown()
    {
        const auto withState = [](const QString &state) {
            QJsonObject overlay = overlayOf(u"A"_s);
            QJsonObject node = overlay["nodes"_L1][0].toObject();
            node["state"_L1] = state;
            overlay["nodes"_L1] = QJsonArray{node};
            return snapshotOf(overlay);
        };
        QVERIFY(withState(u"Normal"_s) != withState(u"Listening"_s));
        QVERIFY(withState(u"Normal"_s) != withState(u"Active"_s));
    }

    void anOlderDocumentIsConvertedByThePicture()
    {
        // Fractions of the saved widget, 400 by 400: the same place as that of the newer document.
        write(below(u"p.png"_s), pngOf({80, 40}, Qt::red));
        QJsonObject newer = overlayOf(u"A"_s, {400, 400});
        QJsonObject node = newer["nodes"_L1][0].toObject();
        node["pastille"_L1] = rectJson({0.1, 0.5, 0.1, 0.2});
        node["toolbox"_L1] = rectJson({0.5, 0.5, 0.4, 0.25});
        newer["nodes"_L1] = QJsonArray{node};
        QJsonObject older = newer;
        older.remove("coordSpace"_L1);
        older["version"_L1] = 1;
        node["pastille"_L1] = rectJson({0.1, 0.5, 0.1, 0.1});
        node["toolbox"_L1] = rectJson({0.5, 0.5, 0.4, 0.125});
        older["nodes"_L1] = QJsonArray{node};
        QCOMPARE(snapshotOf(older, below(u"p.png"_s)), snapshotOf(newer, below(u"p.png"_s)));
    }

    void wrongTypesAreNoHarm_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QJsonValue>("value");
        for (const char *key : {"version", "coordSpace", "overlaySize", "bgMode", "nodes"}) {
            for (const QJsonValue &value :
                 {QJsonValue(QJsonValue::Null), QJsonValue(true), QJsonValue(-1e300), QJsonValue(u"x"_s),
                  QJsonValue(QJsonArray{1, u"x"_s, QJsonValue::Null}), QJsonValue(object("{'w':'x'}"))})
                QTest::addRow("%s: %d", key, int(value.type())) << QString::fromLatin1(key) << value;
        }
    }

    void wrongTypesAreNoHarm()
    {
        QFETCH(const QString, key);
        QFETCH(const QJsonValue, value);
        QJsonObject overlay = overlayOf(u"A"_s);
        overlay[key] = value;
        QCOMPARE(snapshotOf(overlay).size(), QSize(400, 300));
    }

    void aHugeDocumentIsNoHarm()
    {
        QJsonObject overlay = overlayOf(u"A"_s, {1'000'000, 1'000'000});
        QJsonObject node = overlay["nodes"_L1][0].toObject();
        node["pastille"_L1] = rectJson({1e300, -1e300, 1e300, 1e300});
        node["title"_L1] = QString(10'000, u'W');
        overlay["nodes"_L1] = QJsonArray{node, overlay["nodes"_L1][0]};
        QCOMPARE(snapshotOf(overlay).size(), QSize(400, 300));
        // As wide as it gets; a widget has its own limit.
        QVERIFY(!snapshotOf(overlayOf(u"A"_s, {60'000'000, 1})).isNull());
    }

    void aPictureBeyondTheLimitOfQtIsLeftOut()
    {
        QImage huge(30'000, 30'000, QImage::Format_Mono);
        huge.fill(0);
        QVERIFY(huge.save(below(u"huge.png"_s), "PNG"));
        huge = QImage();
        QCOMPARE(snapshotOf(overlayOf(u"A"_s), below(u"huge.png"_s)), snapshotOf(overlayOf(u"A"_s)));
    }

    void nothingIsShownOnScreenOrLeftBehind()
    {
        QWidgetList before = QApplication::topLevelWidgets();
        QVERIFY(!snapshotOf(overlayOf(u"A"_s)).isNull());
        for (const QWindow *window : QGuiApplication::topLevelWindows())
            QVERIFY(!window->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(QApplication::topLevelWidgets(), before);
    }

    // Saving.

    void aFreeNameIsCounted()
    {
        const QString path = folder().path();
        QCOMPARE(freeSnapshotPath(path, u"A"_s), below(u"A.png"_s));
        write(below(u"A.png"_s), "1");
        QCOMPARE(freeSnapshotPath(path, u"A"_s), below(u"A_1.png"_s));
        write(below(u"A_1.png"_s), "2");
        QVERIFY(QDir().mkpath(below(u"A_2.png"_s)));
        QCOMPARE(freeSnapshotPath(path, u"A"_s), below(u"A_3.png"_s));
        QCOMPARE(freeSnapshotPath(path, u"A_1"_s), below(u"A_1_1.png"_s));
        QCOMPARE(freeSnapshotPath(path, u"B"_s), below(u"B.png"_s));
    }

    void aPictureIsSavedOverAFile()
    {
        QPixmap picture(3, 2);
        picture.fill(QColor(10, 20, 30, 128));
        write(below(u"a.txt"_s), QByteArray(10'000, 'x'));
        QVERIFY(saveSnapshot(picture, below(u"a.txt"_s)));
        QVERIFY(bytesIn(below(u"a.txt"_s)).startsWith("\x89PNG"));
        const QImage saved = QImage::fromData(bytesIn(below(u"a.txt"_s)), "PNG");
        QCOMPARE(saved.size(), QSize(3, 2));
        QCOMPARE(qAlpha(saved.pixel(1, 1)), 128);
    }

    void whatCannotBeSavedIsSaid_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("folder") << folder().path();
        QTest::newRow("no folder") << below(u"missing/a.png"_s);
        QTest::newRow("no name") << QString();
        QTest::newRow("full disk") << fullDevice();
    }

    void whatCannotBeSavedIsSaid()
    {
        QFETCH(const QString, path);
        if (path == fullDevice())
            GAMEPAD_NEED_FULL_DEVICE();
        QPixmap picture(3, 2);
        picture.fill(Qt::red);
        QVERIFY(!saveSnapshot(picture, path));
    }

    // Many.

    void oneFileIsWrittenForEach()
    {
        write(below(u"p.png"_s), pngOf({80, 60}, Qt::red));
        const QJsonObject live = overlayOf(u"live"_s, {200, 100});
        const QList<SnapshotSubject> subjects{
            {u"A"_s, below(u"p.png"_s), stored(u"a.json"_s, overlayOf(u"a"_s, {300, 200})), std::nullopt},
            {u"é/B"_s, {}, stored(u"b.json"_s, overlayOf(u"b"_s)), std::nullopt},
            {u"Live"_s, {}, below(u"missing.json"_s), live},
        };
        const QString out = below(u"out"_s);
        QVERIFY(QDir().mkpath(out));
        const SnapshotRun run = writeSnapshots(subjects, out, {50, 40});
        QCOMPARE(run.count, 3);
        QCOMPARE(run.errors, QStringList());
        QCOMPARE(treeOf(out), QStringList({u"A.png"_s, u"Live.png"_s, u"__B.png"_s}));
        const auto written = [&out](const QString &name) {
            return QImage(out + u'/' + name).convertToFormat(QImage::Format_ARGB32);
        };
        QCOMPARE(written(u"A.png"_s), snapshotOf(overlayOf(u"a"_s, {300, 200}), below(u"p.png"_s)));
        QCOMPARE(written(u"Live.png"_s), snapshotOf(live));
        QCOMPARE(written(u"Live.png"_s).size(), QSize(200, 100));
    }

    void theFallbackServesAll()
    {
        QJsonObject unsized = overlayOf(u"a"_s);
        unsized.remove("overlaySize"_L1);
        const SnapshotRun run = writeSnapshots({{u"A"_s, {}, stored(u"a.json"_s, unsized), std::nullopt}},
                                               folder().path(), {50, 40});
        QCOMPARE(run.count, 1);
        QCOMPARE(QImage(below(u"A.png"_s)).size(), QSize(50, 40));
    }

    void failuresAreListedAndTheOthersWritten()
    {
        write(below(u"broken.json"_s), "{");
        QJsonParseError reason;
        QJsonDocument::fromJson("{", &reason);
        const QString good = stored(u"good.json"_s, overlayOf(u"a"_s));
        const QString out = below(u"out"_s);
        QVERIFY(QDir().mkpath(out));
        const SnapshotRun run = writeSnapshots(
            {
                {u"Missing %2"_s, {}, below(u"missing.json"_s), std::nullopt},
                {u"First"_s, {}, good, std::nullopt},
                {u"Broken"_s, {}, below(u"broken.json"_s), std::nullopt},
                {u"Empty"_s, {}, stored(u"empty.json"_s, {}), std::nullopt},
                {u"Other"_s, {}, stored(u"other.json"_s, object("{'type':'X'}")), std::nullopt},
                {u"Live"_s, {}, good, QJsonObject()},
                {u"Last"_s, {}, good, std::nullopt},
            },
            out, {50, 40});
        QCOMPARE(run.count, 2);
        QCOMPARE(run.errors,
                 QStringList({
                     "Missing %2 : "_L1 + u"Impossible dâ€™ouvrir %1"_s.arg(below(u"missing.json"_s)),
                     "Broken : "_L1 +
                         u"JSON invalide dans %1 (%2)"_s.arg(below(u"broken.json"_s), reason.errorString()),
                     u"Empty : Overlay vide."_s,
                     u"Other : Format de configuration non reconnu."_s,
                     u"Live : Overlay vide."_s,
                 }));
        QCOMPARE(treeOf(out), QStringList({u"First.png"_s, u"Last.png"_s}));
    }

    void aFailedSaveIsListed()
    {
        const QString good = stored(u"good.json"_s, overlayOf(u"a"_s));
        const SnapshotRun run =
            writeSnapshots({{u"A"_s, {}, good, std::nullopt}, {u"B"_s, {}, good, std::nullopt}},
                           below(u"missing"_s), {50, 40});
        QCOMPARE(run.count, 0);
        QCOMPARE(run.errors, QStringList({u"A : Ã‰chec sauvegarde PNG"_s, u"B : Ã‰chec sauvegarde PNG"_s}));
    }

    void nothingIsOverwritten()
    {
        const QString good = stored(u"good.json"_s, overlayOf(u"a"_s));
        const QList<SnapshotSubject> twins{{u"Twin"_s, {}, good, std::nullopt},
                                           {u"Twin"_s, {}, good, std::nullopt}};
        const QString out = below(u"out"_s);
        write(out + "/Twin_1.png"_L1, "somebody's");
        QCOMPARE(writeSnapshots(twins, out, {50, 40}).count, 2);
        QCOMPARE(treeOf(out), QStringList({u"Twin.png"_s, u"Twin_1.png"_s, u"Twin_2.png"_s}));
        QCOMPARE(bytesIn(out + "/Twin_1.png"_L1), "somebody's");
        QCOMPARE(writeSnapshots(twins, out, {50, 40}).count, 2);
        QCOMPARE(treeOf(out).size(), 5);
        QVERIFY(QFileInfo::exists(out + "/Twin_4.png"_L1));
    }
};

GAMEPAD_TEST_MAIN(TestSnapshots)
#include "tst_snapshots.moc"
