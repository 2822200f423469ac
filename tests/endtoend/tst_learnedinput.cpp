// SPDX-License-Identifier: MIT
// A person links a profile to a pad and lets pastilles learn from it: a virtual pad, SFML's own code, and the
// editor.
#include "answer.h"
#include "gamepaddefinder.h"
#include "interactiveoverlay.h"
#include "keptdocuments.h"
#include "profilesroot.h"
#include "testmain.h"
#include "virtualbench.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;

namespace
{
constexpr int plainButton = 3;
constexpr int triggerButton = 6;
constexpr int restOfLeftStick = 2; // so that a test sees when the pad has learned it

QJsonObject read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

void write(const QString &path, const QJsonObject &object)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(QJsonDocument(object).toJson()) > 0);
}

/// Writes an unlinked profile with one pastille; returns its folder.
QString storeProfile()
{
    const QString id = u"11111111-0000-4000-8000-000000000000"_s;
    const QString folder = profilesRootPath() + u'/' + id;
    QDir().mkpath(folder);
    QImage picture(200, 140, QImage::Format_RGB32);
    picture.fill(Qt::white);
    picture.save(folder + "/image.png"_L1);
    InteractiveOverlay overlay;
    overlay.resize(600, 400);
    overlay.addPastille(QPoint(200, 150), u"Start"_s);
    write(folder + "/overlay.json"_L1, overlay.toJson());
    write(folder + "/meta.json"_L1, {{u"type"_s, u"GamepadDefinderMeta"_s}, {u"id"_s, id}});
    return folder;
}

PadShape padOf(const char *name)
{
    PadShape shape = twoStickPad(name);
    shape.axes.at(0).rest = restOfLeftStick;
    return shape;
}

/// Shows the editor, with the pad in the combo.
class Desk
{
public:
    Desk()
    {
        m_editor.show();
        m_ready = QTest::qWaitForWindowActive(&m_editor) &&
                  QTest::qWaitFor([this] { return combo().findText(u"Virtual pad"_s) >= 0; });
    }

    [[nodiscard]] bool isReady() const { return m_ready; }
    [[nodiscard]] QComboBox &combo() const { return *m_editor.findChild<QComboBox *>(u"comboBoxVendorId"_s); }
    [[nodiscard]] bool framed() const
    {
        const QIcon icon = m_editor.findChild<QListWidget *>(u"listWidget"_s)->item(0)->icon();
        return icon.pixmap(QSize(200, 140)).toImage().pixelColor(2, 70) == QColor(0, 180, 0);
    }
    [[nodiscard]] QString title() const { return overlay().toJson()["nodes"_L1][0]["title"_L1].toString(); }
    void listen() const { overlay().findChild<TouchArea *>(Qt::FindDirectChildrenOnly)->startListening(); }
    /// Whether the linked pad has learned its rest, and so tells what it does.
    [[nodiscard]] bool publishes() const
    {
        const auto gamepads = m_editor.realGamepads();
        if (gamepads.isEmpty() || !gamepads.first())
            return false;
        const QJsonObject device = QJsonDocument::fromJson(gamepads.first()->deviceJson().toUtf8()).object();
        return device["bias"_L1][0].toInt() == restOfLeftStick;
    }

private:
    [[nodiscard]] InteractiveOverlay &overlay() const { return *m_editor.findChild<InteractiveOverlay *>(); }

    GamepadDefinder m_editor;
    bool m_ready = false;
};
} // namespace

class TestLearnedInput : public QObject
{
    Q_OBJECT

    VirtualBench m_bench;

    VirtualPad &pad() { return m_bench.pad(); }

    void pullTrigger()
    {
        pad().setAxis(PadAxis::LeftTrigger, 100.0);
        pad().setButton(triggerButton, true);
    }
    void letTriggerGo()
    {
        pad().setAxis(PadAxis::LeftTrigger, -100.0);
        pad().setButton(triggerButton, false);
    }

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }
    void cleanup() { keepDocuments(profilesBasePath()); }

    void aProfileIsLinkedAndLearns()
    {
        const QString folder = storeProfile();
        pad().plug(padOf("Virtual pad"));
        const Desk desk;
        QVERIFY(desk.isReady());
        QVERIFY(!desk.framed());

        // The first letter of the pad's name, typed into the combo, links the profile.
        desk.combo().setFocus();
        QTest::keyClick(&desk.combo(), Qt::Key_V);
        QCOMPARE(read(folder + "/meta.json"_L1)["deviceName"_L1].toString(), u"Virtual pad"_s);
        QVERIFY(desk.framed());
        QTRY_VERIFY(desk.publishes());

        desk.listen();
        pad().setButton(plainButton, true);
        QTRY_COMPARE(desk.title(), u"but_3"_s);
        pad().setButton(plainButton, false);
        QTRY_COMPARE(read(folder + "/overlay.json"_L1)["nodes"_L1][0]["title"_L1].toString(), u"but_3"_s);

        // A trigger is asked about once, and then remembered.
        int questions = 0;
        {
            const Answer<QMessageBox> question(QApplication::activeModalWidget, [&](QMessageBox *box) {
                ++questions;
                letTriggerGo();
                box->checkBox()->click();
                for (QAbstractButton *button : box->buttons()) {
                    if (box->buttonRole(button) == QMessageBox::AcceptRole)
                        QTest::mouseClick(button, Qt::LeftButton);
                }
            });
            desk.listen();
            pullTrigger();
            QTRY_COMPARE(desk.title(), u"joy_2"_s);
        }
        QCOMPARE(questions, 1);
        desk.listen();
        pad().setButton(plainButton, true);
        QTRY_COMPARE(desk.title(), u"but_3"_s);
        pad().setButton(plainButton, false);
        desk.listen();
        const Answer<QMessageBox> again(QApplication::activeModalWidget, [&](QMessageBox *) { ++questions; });
        pullTrigger();
        QTRY_COMPARE(desk.title(), u"joy_2"_s);
        letTriggerGo();
        QCOMPARE(questions, 1);

        // Unplugged, the profile keeps its link and loses its frame.
        pad().unplug();
        QTRY_VERIFY(!desk.framed());
        QCOMPARE(desk.combo().currentIndex(), -1);
        QCOMPARE(read(folder + "/meta.json"_L1)["deviceName"_L1].toString(), u"Virtual pad"_s);
    }
};

GAMEPAD_TEST_MAIN(TestLearnedInput)
#include "tst_learnedinput.moc"
