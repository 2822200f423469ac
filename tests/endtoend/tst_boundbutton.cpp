// SPDX-License-Identifier: MIT
// One button bound on a virtual pad, to the byte: SFML's own code reads it, the built plugin file writes the
// document, and a host in a process of its own is told to run it.
#include "endtoend.h"
#include "onebounddocument.h"
#include "stepwise.h"
#include "writtenfiles.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QObject>
#include <QtGui/QImage>

using namespace Qt::StringLiterals;

class TestBoundButton : public QObject
{
    Q_OBJECT

    static constexpr int button = 3;
    static constexpr int rest = 2;

    VirtualBench m_bench;
    HostRuns m_host;
    int m_device = 0;
    QString m_profile;

    [[nodiscard]] VirtualPad &pad() { return m_bench.pad(0); }
    [[nodiscard]] QString profiles() const { return m_host.data() + "/data/velor/gamepad-host/Gamepads"_L1; }
    [[nodiscard]] QString mapping() const { return m_profile + "/configActionGamepad.json"_L1; }

    static void writeDocument(const QString &path, const QJsonObject &document)
    {
        QFile file(path);
        const QByteArray json = QJsonDocument(document).toJson();
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(json) == json.size());
    }

    void hands(const QStringList &gestures)
    {
        for (const QString &gesture : gestures)
            QCOMPARE(m_host->command(u"hand "_s + gesture), QString());
    }

    void startWithOneFunction()
    {
        const QString services = m_host.data() + "/services.json"_L1;
        const QJsonObject parameter{{u"name"_s, u"p"_s}, {u"preferredType"_s, u"int"_s}};
        const QJsonObject function{{u"name"_s, u"F"_s}, {u"params"_s, QJsonArray{parameter}}};
        GO(writeDocument(services, {{u"ref"_s, QJsonArray{function}}}));
        QVERIFY(m_host.start({u"--services"_s, services}));
    }

    void selectThePad()
    {
        pad().plug(testPad());
        m_device = m_host.select(u"gp:0"_s);
        QVERIFY(m_device != 0);
        QVERIFY(m_host.learns(m_device, 0, rest));
    }

    void findThePadSelected()
    {
        const auto selection = m_host->waitFor(reported::selection({u"gp:0"_s}, u"connected"_s));
        QVERIFY(selection);
        m_device = reported::onlyDevice(*selection);
        QVERIFY(m_host.learns(m_device, 0, rest));
    }

    void openWindow(const QString &tab)
    {
        QCOMPARE(m_host->command(u"configure"_s), QString());
        hands({u"click tabWidget_4 "_s + tab});
    }

    void makeTheLinkedProfile()
    {
        const QString picture = m_host.data() + "/pad.png"_L1;
        QImage image(400, 240, QImage::Format_RGB32);
        image.fill(Qt::darkGray);
        QVERIFY(image.save(picture));
        const qsizetype from = m_host->mark();
        GO(hands({u"click pushButtonAdd"_s, u"type QInputDialog/QLineEdit Mine"_s, u"press OK"_s,
                  u"enter fileNameEdit "_s + picture, u"click QInputDialog/QComboBox Pad"_s, u"press OK"_s}));
        m_profile = written::folderWith(profiles(), u"meta.json"_s);
        QVERIFY(!m_profile.isEmpty());
        // The editor starts the pad of the new profile anew. While it learns, a press is told to nobody.
        QVERIFY(m_host.learns(m_device, 0, rest, from));
    }

    void press()
    {
        const qsizetype from = m_host->mark();
        pad().setButton(button, true);
        QVERIFY(m_host->waitFor(reported::button(m_device, u"but_3"_s, true), from));
    }

    void letGo()
    {
        const qsizetype from = m_host->mark();
        pad().setButton(button, false);
        QVERIFY(m_host->waitFor(reported::button(m_device, u"but_3"_s, false), from));
    }

    void teachTheButton()
    {
        GO(hands({u"rightclick widgetOverlay/TouchArea"_s, u"press Écouter un nom (vert)"_s}));
        GO(press());
        QVERIFY(written::document(m_profile + "/overlay.json"_L1, [](const QJsonObject &overlay) {
            return overlay["nodes"_L1][0]["title"_L1] == "but_3"_L1;
        }));
        letGo();
    }

    [[nodiscard]] std::optional<QJsonObject> composedAction() const
    {
        return written::document(profiles() + "/actions.json"_L1, [](const QJsonObject &document) {
            const QJsonValue task = document["ref"_L1][0]["tasks"_L1][0];
            return task["args"_L1]["p"_L1] == "param:speed"_L1 && task["when"_L1] == "W"_L1;
        });
    }

    void composeTheAction()
    {
        GO(hands({u"click tabWidget_4 Action designer"_s, u"press +"_s, u"type actionNameEdit A"_s,
                  u"press + Etape"_s, u"click ActionTaskBlockWidget/QComboBox F(int p=0)"_s,
                  u"type ActionTaskBlockWidget/QScrollArea/QLineEdit param:speed"_s,
                  u"type ActionTaskBlockWidget/QLineEdit W"_s}));
        QVERIFY(composedAction());
    }

    /// As people do who want one: the window has no field for it.
    void declareTheParameterByHand()
    {
        std::optional<QJsonObject> document = composedAction();
        QVERIFY(document);
        QJsonObject action = (*document)["ref"_L1][0].toObject();
        action["params"_L1] =
            QJsonArray{QJsonObject{{u"name"_s, u"speed"_s}, {u"preferredType"_s, u"int"_s}}};
        (*document)["ref"_L1] = QJsonArray{action};
        writeDocument(profiles() + "/actions.json"_L1, *document);
    }

    void armAndPress()
    {
        GO(hands({u"click mappingActionsList A"_s}));
        GO(press());
        letGo();
    }

    void fillInTheSpeed()
    {
        QCOMPARE(m_host->command(u"invoke iteractiveoverlay openFirstToolboxSettings"_s), QString());
        hands({u"type QLineEdit 5"_s});
    }

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void fromThePadToTheDocument()
    {
        GO(startWithOneFunction());
        GO(selectThePad());
        GO(openWindow(u"Configuration"_s));
        GO(makeTheLinkedProfile());
        GO(teachTheButton());
        GO(composeTheAction());
        QVERIFY(m_host->quit());
        GO(declareTheParameterByHand());

        GO(startWithOneFunction());
        GO(findThePadSelected());
        GO(openWindow(u"Mapping"_s));
        const qsizetype from = m_host->mark();
        GO(armAndPress());
        GO(fillInTheSpeed());
        QVERIFY(written::document(mapping(), [](const QJsonObject &document) {
            return document["bridges"_L1][0]["args"_L1]["speed"_L1] == 5;
        }));
        QFile file(mapping());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), oneBoundDocument());
        const auto told = m_host->waitFor(
            [this](const QJsonObject &line) {
                return reported::of("noCodeApp"_L1, m_device)(line) &&
                       line["paths"_L1] == QJsonArray{mapping()};
            },
            from);
        QVERIFY(told);
        QVERIFY(m_host->quit());
    }
};

GAMEPAD_TEST_MAIN(TestBoundButton)
#include "tst_boundbutton.moc"
