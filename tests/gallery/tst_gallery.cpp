// SPDX-License-Identifier: MIT
// Makes the pictures of docs/widgets.md from a real screen, and tells whether they show what they are meant
// to.
#include "photograph.h"
#include "scenes.h"

#include "interactiveoverlay.h"
#include "testmain.h"

#include <QtGui/QCursor>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QScrollBar>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{
constexpr QColor toolGround(0x1A, 0x2A, 0x36);
constexpr QColor fieldGround(0x0F, 0x17, 0x20);
constexpr QColor accent(0x5B, 0xBF, 0xD1);

struct Part
{
    QColor colour;
    qsizetype atLeast; ///< pixels
};

/// Shows the scene, waits until the screen shows every part and rests, and keeps the picture.
QImage pictureOf(QWidget &scene, const QString &name, const QList<Part> &parts)
{
    QImage image;
    const auto isWhole = [&] {
        scene.repaint(); // whole, since gradients that are painted piece by piece differ by a rounding
        const QImage before = std::exchange(image, photographOf(scene));
        return image == before && std::ranges::all_of(parts, [&](const Part &part) {
                   return pixelsOf(image, part.colour) >= part.atLeast;
               });
    };
    if (!QTest::qWaitFor(isWhole)) {
        for (const Part &part : parts)
            qWarning("%s: %lld pixels", qPrintable(part.colour.name()),
                     static_cast<long long>(pixelsOf(image, part.colour)));
    }
    if (coloursIn(image) < 32)
        qWarning("the picture is blank, or nearly so");
    if (!hang(image, name))
        qWarning("the picture could not be kept");
    return image;
}

void show(QWidget &scene)
{
    scene.show();
    QVERIFY(QTest::qWaitForWindowExposed(&scene));
}
} // namespace

class TestGallery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // A picture that is not as it should be is a warning, and every warning fails.
    void init()
    {
        failOnUnexpectedWarnings();
        QCursor::setPos(0, 0); // nothing is shown as under the pointer
    }

    void pastilles()
    {
        const auto scene = pastilleScene();
        show(*scene);
        const QImage image = pictureOf(*scene, u"pastilles"_s, {{Qt::white, 100}});
        // Near the rim each state has its own colour: blue, green, grey.
        const auto areas = scene->findChildren<TouchArea *>();
        QCOMPARE(areas.size(), 9);
        for (const TouchArea *area : areas) {
            const QPoint rim = area->geometry().center() - QPoint(area->width() / 2 - 6, 0);
            const QColor colour = image.pixelColor(rim);
            const int spread = std::max({colour.red(), colour.green(), colour.blue()}) -
                               std::min({colour.red(), colour.green(), colour.blue()});
            switch (area->state()) {
            case TouchArea::Normal:
                QVERIFY(colour.blue() > colour.green() && colour.green() > colour.red());
                break;
            case TouchArea::Listening:
                QVERIFY(colour.green() > colour.red() && colour.green() > colour.blue());
                break;
            case TouchArea::Active:
                QVERIFY2(spread < 12, qPrintable(colour.name()));
                break;
            }
        }
    }

    void connectors()
    {
        const auto scene = connectorScene();
        show(*scene);
        const QImage image =
            pictureOf(*scene, u"connectors"_s, {{toolGround, 3000}, {fieldGround, 9000}, {Qt::white, 600}});
        // The line under each tool box, 6 pixels below its lowest row.
        const auto boxes = scene->findChildren<ActionToolBox *>();
        QCOMPARE(boxes.size(), 3);
        for (const ActionToolBox *box : boxes)
            QCOMPARE(image.pixelColor(box->geometry().center().x() - 40, box->geometry().bottom() + 6),
                     QColor(Qt::white));
    }

    void toolBoxes()
    {
        const auto scene = toolBoxScene();
        show(*scene);
        const QImage image = pictureOf(*scene, u"toolboxes"_s, {{toolGround, 3000}, {fieldGround, 10000}});
        // The unknown function stands out.
        QVERIFY(pixelsOf(image, QColor(255, 165, 0)) > 0);
    }

    void settings()
    {
        const auto scene = settingsScene();
        show(*scene);
        const qsizetype before = pixelsOf(photographOf(*scene), fieldGround);
        QVERIFY(scene->findChild<InteractiveOverlay *>()->openFirstToolboxSettings());
        QVERIFY(QApplication::activePopupWidget());
        QVERIFY(scene->geometry().contains(QApplication::activePopupWidget()->geometry()));
        (void)pictureOf(*scene, u"settings"_s, {{toolGround, 8000}, {fieldGround, before + 4000}});
    }

    void taskCard()
    {
        const auto scene = taskCardScene();
        show(*scene);
        const auto combos = scene->findChildren<QComboBox *>();
        QCOMPARE(combos.size(), 2);
        for (const QComboBox *combo : combos)
            QTRY_VERIFY(combo->parentWidget()->contentsRect().contains(combo->geometry()));
        // The bar at the left of each card.
        (void)pictureOf(*scene, u"task-card"_s, {{accent, 1200}});
        const auto bars = scene->findChildren<QScrollBar *>();
        QCOMPARE(std::ranges::count_if(bars, &QWidget::isVisible), 1);
    }
};

GAMEPAD_TEST_MAIN(TestGallery)
#include "tst_gallery.moc"
