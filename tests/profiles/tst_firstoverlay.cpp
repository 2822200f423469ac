// SPDX-License-Identifier: MIT
#include "firstoverlay.h"

#include "interactiveoverlay.h"
#include "testmain.h"

using namespace Qt::StringLiterals;

class TestFirstOverlay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void itHasOnePastilleToStartFrom()
    {
        const QJsonObject json = firstOverlay(QSize(800, 400));
        const auto read = readOverlayDocument(
            json, {.pixmap = {}, .mode = BackgroundScaleMode::Contain, .widget = {800, 400}});
        QVERIFY(read);
        QCOMPARE(read->overlaySize, QSize(800, 400));
        QCOMPARE(read->bgMode, BackgroundScaleMode::Contain);
        QCOMPARE(read->nodes.size(), 1);
        QCOMPARE(read->nodes.first().title, u"Start"_s);
        // 56 by 56 pixels around (200, 150).
        const PictureFractions place = read->nodes.first().pastille;
        QCOMPARE(place.x * 800 + place.w * 800 / 2, 200.0);
        QCOMPARE(place.y * 400 + place.h * 400 / 2, 150.0);
    }
};

GAMEPAD_TEST_MAIN(TestFirstOverlay)
#include "tst_firstoverlay.moc"
