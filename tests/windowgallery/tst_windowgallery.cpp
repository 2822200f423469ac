// SPDX-License-Identifier: MIT
// Makes the pictures of the user's guide: the configuration window in its main states, as it comes off a
// screen. Each picture must show what it is for.
#include "configurationdesk.h"
#include "dialogs.h"
#include "photograph.h"

#include "actiondesignerwidget.h"
#include "actionlinker.h"
#include "gamepadmanager.h"
#include "interactiveoverlay.h"
#include "testmain.h"

#include <QtGui/QCursor>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>

using namespace Qt::StringLiterals;

namespace
{
constexpr QColor connected(0, 180, 0);           ///< the frame of a profile whose gamepad is there
constexpr QColor noPicture(128, 128, 128);       ///< what the list shows for a picture that is missing
constexpr QColor armed(0x2F, 0x7A, 0x43);        ///< the action that the next input takes
constexpr QColor chosenAction(0x24, 0x41, 0x52); ///< the action that the designer shows
constexpr QColor cardBar(0x5B, 0xBF, 0xD1);      ///< left edge of a step

constexpr QColor surface(0x1A, 0x2A, 0x36); ///< ground of menus and boxes
constexpr QColor checkBoxRim(0x8F, 0xA7, 0xB6);

const QString pad = u"Flight Pad"_s;

struct Part
{
    QColor colour;
    qsizetype atLeast = 1;
    qsizetype atMost = std::numeric_limits<qsizetype>::max();
};

constexpr Part none(QColor colour)
{
    return {.colour = colour, .atLeast = 0, .atMost = 0};
}

bool shows(const QImage &image, const Part &part)
{
    const qsizetype pixels = pixelsOf(image, part.colour);
    return pixels >= part.atLeast && pixels <= part.atMost;
}

/// Waits until the screen stands still and shows every part, and keeps the picture. What is missing is a
/// warning, and every warning fails.
void takePicture(const QWidget &window, const QString &name, const QList<Part> &parts = {})
{
    QImage image;
    const auto isWhole = [&] {
        const QImage before = std::exchange(image, photographOf(window));
        return image == before &&
               std::ranges::all_of(parts, [&](const Part &part) { return shows(image, part); });
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
}

/// The smallest rectangle around all pixels of the colour.
QRect boundsOf(const QImage &image, const QColor &colour)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == colour.rgb())
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

/// Whether anything light is drawn on the dark ground.
bool hasLight(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) > 128)
                return true;
        }
    }
    return false;
}

QWidget *openMenu()
{
    return QApplication::activePopupWidget();
}

/// Opens a menu by a right click at `place`, calls `look` while it is open, and closes it.
void lookAtMenu(QWidget *widget, const QPoint &place, const std::function<void(QMenu *)> &look)
{
    const Answer<QMenu> answer(openMenu, [&](QMenu *menu) {
        look(menu);
        menu->close();
    });
    QContextMenuEvent click(QContextMenuEvent::Mouse, place, widget->mapToGlobal(place));
    QCoreApplication::sendEvent(widget, &click);
    QCOMPARE(answer.given(), 1);
}

void storeMany(ConfigurationDesk &desk)
{
    desk.store({.name = u"Flight deck"_s, .deviceName = pad});
    desk.store({.name = u"Camera crane"_s, .deviceName = u"Arcade Stick"_s});
    desk.store({.name = u"Spare pad"_s, .hasPicture = false});
    for (int i = 1; i <= 9; ++i)
        desk.store({.name = u"Bench %1"_s.arg(i)});
    QJsonArray actions = someActions();
    for (int i = 1; i <= 30; ++i) {
        QJsonArray tasks;
        for (int step = 1; step <= i % 8; ++step)
            tasks.append(
                QJsonObject{{u"ref"_s, u"motor.setSpeed"_s},
                            {u"args"_s, QJsonObject{{u"motor"_s, step}, {u"percent"_s, 12.5 * step}}}});
        actions.append(QJsonObject{{u"name"_s, u"Drive %1"_s.arg(i)}, {u"tasks"_s, tasks}});
    }
    desk.store(actions);
}

const QStringList tabs{u"Configuration"_s, u"Mapping"_s, u"Action designer"_s};
const QStringList tabFiles{u"configuration"_s, u"mapping"_s, u"designer"_s};
} // namespace

class TestWindowGallery : public QObject
{
    Q_OBJECT

    static void takeEveryTab(ConfigurationDesk &desk, const QString &state)
    {
        for (qsizetype i = 0; i < tabs.size(); ++i) {
            desk.turnTo(tabs[i]);
            takePicture(desk.window(), tabFiles[i] + u'-' + state);
        }
    }

private Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void init()
    {
        QCursor::setPos(0, 0); // nothing is shown as under the pointer
    }

    void empty()
    {
        ConfigurationDesk desk;
        QVERIFY(desk.open());
        takeEveryTab(desk, u"empty"_s);
    }

    void oneItem()
    {
        ConfigurationDesk desk;
        desk.store({.name = u"Flight deck"_s, .deviceName = pad});
        desk.store(someActions());
        desk.pads().plug(0, pad);
        QVERIFY(desk.open());
        takePicture(desk.window(), u"configuration"_s, {{connected, 2000}, none(noPicture)});
        const QImage image = photographOf(desk.window());
        // The frame is whole: it has its right side, and the shape of the picture.
        const QRect frame = boundsOf(image, connected);
        QCOMPARE(image.pixelColor(frame.right(), frame.center().y()), connected);
        QVERIFY2(qAbs(frame.width() * 140 - frame.height() * 200) < 400,
                 qPrintable(u"%1 by %2"_s.arg(frame.width()).arg(frame.height())));
        // The combo of gamepads is seen to be one by its arrow.
        const QComboBox &combo = stage::comboOf(desk.profiles());
        const QRect place(combo.mapTo(&desk.window(), QPoint()), combo.size());
        QVERIFY(hasLight(image.copy(place.adjusted(place.width() - 30, 6, -6, -6))));
        QVERIFY(!hasLight(image.copy(place.adjusted(place.width() - 60, 6, -36, -6))));
        desk.turnTo(u"Mapping"_s);
        takePicture(desk.window(), u"mapping"_s, {none(armed)});
        desk.turnTo(u"Action designer"_s);
        desk.clickEntry(u"Take a picture"_s);
        takePicture(desk.window(), u"designer"_s, {{chosenAction, 500}, {cardBar, 200}});
    }

    void manyItems()
    {
        ConfigurationDesk desk;
        storeMany(desk);
        desk.pads().plug(0, pad);
        QVERIFY(desk.open());
        // One gamepad is there, one is away, and one profile has no picture.
        takePicture(desk.window(), u"configuration-many"_s, {{connected, 2000}, {noPicture, 10000}});
        desk.turnTo(u"Mapping"_s);
        takePicture(desk.window(), u"mapping-many"_s);
        desk.turnTo(u"Action designer"_s);
        desk.clickEntry(u"Drive 7"_s);
        takePicture(desk.window(), u"designer-many"_s, {{chosenAction, 500}, {cardBar, 500}});
    }

    void anArmedAction()
    {
        ConfigurationDesk desk;
        desk.store({.name = u"Flight deck"_s, .deviceName = pad});
        desk.store(someActions());
        desk.pads().plug(0, pad);
        QVERIFY(desk.open());
        desk.turnTo(u"Mapping"_s);
        desk.clickEntry(u"Take a picture"_s);
        takePicture(desk.window(), u"mapping-armed"_s, {{armed, 2000}});
        desk.clickEntry(u"Take a picture"_s);
        takePicture(desk.window(), u"mapping-disarmed"_s, {none(armed)});
    }

    void aGamepadThatIsAway()
    {
        ConfigurationDesk desk;
        desk.store({.name = u"Flight deck"_s, .deviceName = pad});
        desk.store(someActions());
        QVERIFY(desk.open());
        takePicture(desk.window(), u"configuration-away"_s, {none(connected)});
        desk.turnTo(u"Mapping"_s);
        QVERIFY(!desk.linker().findChild<QWidget *>(u"mappingActionsPanel"_s)->isVisible());
        takePicture(desk.window(), u"mapping-away"_s);
    }

    void longNames()
    {
        const QString longName =
            u"A rather long name that somebody gave without thinking of lists, number "_s;
        ConfigurationDesk desk;
        desk.store({.name = longName + u'1', .deviceName = pad});
        desk.store({.name = longName + u'2'});
        QJsonArray actions;
        for (int i = 1; i <= 3; ++i)
            actions.append(QJsonObject{{u"name"_s, longName + QString::number(i)},
                                       {u"tasks"_s, QJsonArray{QJsonObject{{u"ref"_s, u"camera.home"_s}}}}});
        desk.store(actions);
        desk.pads().plug(0, pad);
        QVERIFY(desk.open());
        takeEveryTab(desk, u"longnames"_s);
    }

    void aSmallWindow()
    {
        ConfigurationDesk desk;
        storeMany(desk);
        desk.pads().plug(0, pad);
        QVERIFY(desk.open({640, 480}));
        takeEveryTab(desk, u"small"_s);
    }

    void aPastilleThatListens()
    {
        ConfigurationDesk desk;
        desk.store({.name = u"Flight deck"_s});
        QVERIFY(desk.open());
        auto *area = stage::overlayOf(desk.profiles()).findChild<TouchArea *>();
        area->startListening();
        takePicture(desk.window(), u"configuration-listening"_s);
        lookAtMenu(area, area->rect().center(), [&](QMenu *menu) {
            QCOMPARE(menu->actions().size(), 6);
            takePicture(desk.window(), u"menu-pastille"_s, {{surface, 10000}});
        });
    }

    void theMenuOfTheList()
    {
        ConfigurationDesk desk;
        storeMany(desk);
        QVERIFY(desk.open());
        lookAtMenu(stage::listOf(desk.profiles()).viewport(), {90, 90}, [&](QMenu *menu) {
            QVERIFY(menu->actions().size() > 10);
            takePicture(desk.window(), u"menu-profiles"_s, {{surface, 20000}});
        });
    }

    void theNameOfANewProfile()
    {
        ConfigurationDesk desk;
        QVERIFY(desk.open());
        const Dialogs dialogs({[&](QWidget *dialog) {
            takePicture(desk.window(), u"dialog-new"_s, {{surface, 8000}});
            QTest::keyClick(dialog, Qt::Key_Escape);
        }});
        desk.profiles().actionNew();
        QCOMPARE(dialogs.answersLeft(), 0);
    }

    void theQuestionAboutATrigger()
    {
        ConfigurationDesk desk;
        desk.store({.name = u"Spare pad"_s});
        desk.store({.name = u"Flight deck"_s, .deviceName = pad});
        desk.pads().plug(0, pad);
        QVERIFY(desk.open());
        desk.clickEntry(u"Flight deck"_s);
        desk.pads().calibrate(0);
        stage::listen(desk.profiles());
        desk.pads().press(0, 6);
        desk.pads().move(0, 2, 90.0F);
        const Dialogs dialogs({[&](QWidget *dialog) {
            takePicture(desk.window(), u"dialog-trigger"_s, {{surface, 20000}, {checkBoxRim, 20}});
            QTest::keyClick(dialog, Qt::Key_Escape);
        }});
        QTRY_COMPARE(dialogs.answersLeft(), 0);
    }
};

GAMEPAD_TEST_MAIN(TestWindowGallery)
#include "tst_windowgallery.moc"
