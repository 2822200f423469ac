// SPDX-License-Identifier: MIT
// Makes the pictures of docs/profiles.md from a real screen: the configuration window with profiles in it.
#include "editorstage.h"
#include "photograph.h"
#include "scenes.h"

#include "interactiveoverlay.h"
#include "manetteconfigurationwidget.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtGui/QCursor>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>

using namespace Qt::StringLiterals;
using namespace stage;

namespace
{
constexpr QColor liveFrame(0, 180, 0);

/// The configuration window as the plugin makes it.
class Window
{
public:
    Window()
    {
        m_window.setCentralWidget(new ManetteConfigurationWidget);
        m_window.resize(1240, 720);
        m_window.move(20, 20);
        m_window.show();
        m_exposed = QTest::qWaitForWindowExposed(&m_window);
    }

    [[nodiscard]] bool exposed() const { return m_exposed; }
    [[nodiscard]] GamepadDefinder &editor() const { return *m_window.findChild<GamepadDefinder *>(); }
    [[nodiscard]] QImage photograph() const { return photographOf(m_window); }

private:
    QMainWindow m_window;
    bool m_exposed = false;
};

QJsonObject place(double x, double y, double w, double h)
{
    return {{u"x"_s, x}, {u"y"_s, y}, {u"w"_s, w}, {u"h"_s, h}};
}

QJsonObject node(const QString &title, const QPointF &pastille, const QPointF &toolBox)
{
    return {{u"title"_s, title},
            {u"pastille"_s, place(pastille.x(), pastille.y(), 0.1, 0.1)},
            {u"toolbox"_s, place(toolBox.x(), toolBox.y(), 0.36, 0.06)}};
}

/// Puts a gamepad's picture in place of the plain one, and pastilles on three of its inputs.
void dress(const QString &folder)
{
    QVERIFY(gamepadPicture(480).save(folder + "/image.png"_L1));
    QFile file(folder + "/overlay.json"_L1);
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QJsonArray nodes{node(u"but_0"_s, {0.68, 0.52}, {0.62, 0.93}),
                           node(u"joy_1"_s, {0.33, 0.6}, {0.02, 0.93}),
                           node(u"but_13"_s, {0.21, 0.37}, {0.02, 0.02})};
    const QJsonObject overlay{{u"type"_s, u"InteractiveOverlay"_s}, {u"version"_s, 2}, {u"nodes"_s, nodes}};
    QVERIFY(file.write(QJsonDocument(overlay).toJson()) > 0);
}
} // namespace

class TestProfileGallery : public QObject
{
    Q_OBJECT

    static void storeProfiles()
    {
        dress(store(1, {.name = u"Manette du banc"_s,
                        .deviceName = u"Gamepad A"_s,
                        .pastilles = {u"but_0"_s, u"joy_1"_s}}));
        store(2, {.name = u"Sans image"_s, .picture = QColor()});
        store(3, {.name = u"Console"_s, .picture = QColor(150, 70, 60)});
    }

private Q_SLOTS:
    void init()
    {
        startAfresh();
        QCursor::setPos(0, 0); // nothing is shown as under the pointer
    }

    void profiles()
    {
        storeProfiles();
        Pads pads;
        pads.plug(0, u"Gamepad A"_s);
        pads.plug(1, u"Gamepad B"_s);
        const Window window;
        QVERIFY(window.exposed());
        listOf(window.editor()).setCurrentRow(1);
        listOf(window.editor()).setCurrentRow(0);
        const auto isWhole = [&] { return pixelsOf(window.photograph(), liveFrame) > 1500; };
        QVERIFY(QTest::qWaitFor(isWhole));
        QVERIFY(hang(window.photograph(), u"profiles"_s));
    }

    void menu()
    {
        storeProfiles();
        const Pads pads;
        const Window window;
        QVERIFY(window.exposed());
        QImage image;
        const Answer<QMenu> menu(openPopup, [&](QMenu *open) {
            QVERIFY(QTest::qWaitForWindowExposed(open));
            QVERIFY(QTest::qWaitFor([&] {
                image = window.photograph();
                return coloursIn(image) > 32;
            }));
            QTest::qWait(200);
            image = window.photograph();
            QTest::keyClick(open, Qt::Key_Escape);
        });
        window.editor().showListContextMenu(QPoint(80, 80));
        QVERIFY(hang(image, u"profile-menu"_s));
    }

    void trigger()
    {
        storeProfiles();
        Pads pads;
        pads.plug(0, u"Gamepad A"_s);
        pads.plug(1, u"Gamepad B"_s);
        const Window window;
        QVERIFY(window.exposed());
        GamepadDefinder &editor = window.editor();
        listOf(editor).setCurrentRow(1);
        listOf(editor).setCurrentRow(0);
        listen(editor);
        editor.onAxisChanged(2, 90.0);
        editor.onButtonChanged(6, true);
        QImage image;
        const Answer<QMessageBox> question(openDialog, [&](QMessageBox *box) {
            QVERIFY(QTest::qWaitForWindowExposed(box));
            QTest::qWait(300);
            image = window.photograph();
            box->close();
        });
        expire(triggerTimerOf(editor));
        QCOMPARE(question.given(), 1);
        QVERIFY(hang(image, u"trigger-question"_s));
    }

    void empty()
    {
        const Pads pads;
        const Window window;
        QVERIFY(window.exposed());
        QTest::qWait(300);
        QVERIFY(hang(window.photograph(), u"no-profile"_s));
    }
};

GAMEPAD_TEST_MAIN(TestProfileGallery)
#include "tst_profilegallery.moc"
