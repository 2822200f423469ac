// SPDX-License-Identifier: MIT
#include "overlaydocument.h"

#include "jsontext.h"
#include "picturegeometry.h"
#include "testmain.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace
{
const OverlayFrame frame{.pixmap = QSize(), .mode = BackgroundScaleMode::Contain, .widget = QSize(640, 480)};

OverlayDocument read(const QByteArray &keys, const OverlayFrame &shown = frame)
{
    QJsonObject json = object(keys);
    json["type"_L1] = u"InteractiveOverlay"_s;
    return readOverlayDocument(json, shown).value();
}

OverlayDocumentNode readNode(const QByteArray &node)
{
    return read("{'version':2,'nodes':[" + node + "]}").nodes.value(0);
}

OverlayDocumentNode everyFieldSet()
{
    return {
        .id = QUuid(u"{6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77}"_s),
        .title = u"Gâchette gauche"_s,
        .state = TouchArea::Active,
        .freeAspect = true,
        .pastille = {0.125, -0.3, 0.7, 1e-9},
        .toolbox = {1.1, 2.2, 3.3, 0.1},
        .input = {.isJoy = false,
                  .deviceType = u"volant"_s,
                  .deviceId = 4,
                  .packetId = 9,
                  .stringKey = u"but_6"_s},
    };
}
} // namespace

class TestOverlayDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void onlyItsOwnTypeIsRead_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("empty object") << QByteArray("{}");
        QTest::newRow("another type") << QByteArray("{'type':'VelorGamepad','nodes':[{}]}");
        QTest::newRow("another case") << QByteArray("{'type':'interactiveoverlay'}");
        QTest::newRow("blanks") << QByteArray("{'type':' InteractiveOverlay'}");
        QTest::newRow("no text") << QByteArray("{'type':['InteractiveOverlay']}");
        QTest::newRow("null") << QByteArray("{'type':null}");
    }

    void onlyItsOwnTypeIsRead()
    {
        QFETCH(const QByteArray, json);
        QVERIFY(!readOverlayDocument(object(json), frame));
    }

    void aBareDocumentTakesAllItsDefaults()
    {
        QCOMPARE(read("{}"),
                 (OverlayDocument{
                     .overlaySize = QSize(640, 480), .bgMode = BackgroundScaleMode::Contain, .nodes = {}}));
    }

    void aBareNodeTakesAllItsDefaults_data()
    {
        QTest::addColumn<QByteArray>("node");
        QTest::newRow("empty object") << QByteArray("{}");
        QTest::newRow("number") << QByteArray("7");
        QTest::newRow("text") << QByteArray("'pastille'");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("array") << QByteArray("[{'title':'x'}]");
        QTest::newRow("wrong type at every key")
            << QByteArray("{'id':1,'title':{},'state':[],'freeAspect':'true','pastille':[0.1,0.1,0.2,0.2],"
                          "'toolbox':'here','src':'joy_1'}");
        QTest::newRow("wrong type at every coordinate")
            << QByteArray("{'pastille':{'x':'1','y':[],'w':{},'h':null},"
                          "'toolbox':{'x':true,'y':false,'w':'','h':'1'}}");
        QTest::newRow("nulls") << QByteArray("{'id':null,'title':null,'state':null,'freeAspect':null,"
                                             "'pastille':null,'toolbox':null,'src':null}");
    }

    void aBareNodeTakesAllItsDefaults()
    {
        QFETCH(const QByteArray, node);
        const OverlayDocumentNode read = readNode(node);
        QVERIFY(read.id.isNull());
        QCOMPARE(read.title, u"Bouton"_s);
        QCOMPARE(read.state, TouchArea::Normal);
        QVERIFY(!read.freeAspect);
        QCOMPARE(read.pastille, PictureFractions());
        QCOMPARE(read.toolbox, PictureFractions());
        QCOMPARE(read.input, NodeInput());
        QVERIFY(read.input.stringKey.isEmpty());
    }

    void everyFieldIsRead()
    {
        QCOMPARE(readNode("{'id':'6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77','title':'Gâchette gauche',"
                          "'state':'Active','freeAspect':true,"
                          "'pastille':{'x':0.125,'y':-0.3,'w':0.7,'h':1e-9},"
                          "'toolbox':{'x':1.1,'y':2.2,'w':3.3,'h':0.1},"
                          "'src':{'isJoy':false,'deviceType':'volant','deviceId':4,'packetId':9,"
                          "'stringKey':'but_6'}}"),
                 everyFieldSet());
    }

    void nodesStandInTheirOrder()
    {
        const OverlayDocument document = read("{'nodes':[{'title':'b'},{'title':'a'},3,{'title':'b'}]}");
        QStringList titles;
        for (const OverlayDocumentNode &node : document.nodes)
            titles.append(node.title);
        QCOMPARE(titles, QStringList({u"b"_s, u"a"_s, u"Bouton"_s, u"b"_s}));
    }

    void anEmptyTitleIsATitle() { QCOMPARE(readNode("{'title':''}").title, QString()); }

    void anIdentityIsRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QUuid>("id");
        const QUuid id(u"{6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77}"_s);
        QTest::newRow("without braces") << u"6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77"_s << id;
        QTest::newRow("with braces") << u"{6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77}"_s << id;
        QTest::newRow("null") << u"00000000-0000-0000-0000-000000000000"_s << QUuid();
        QTest::newRow("word") << u"first"_s << QUuid();
        QTest::newRow("cut short") << u"6f1c0d9e-8a53-4f2b"_s << QUuid();
    }

    void anIdentityIsRead()
    {
        QFETCH(const QString, text);
        QTEST(readNode("{'id':'" + text.toUtf8() + "'}").id, "id");
    }

    void aStateIsRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<TouchArea::State>("state");
        QTest::newRow("normal") << u"Normal"_s << TouchArea::Normal;
        QTest::newRow("listening") << u"Listening"_s << TouchArea::Listening;
        QTest::newRow("active") << u"Active"_s << TouchArea::Active;
        QTest::newRow("case and blanks") << u" lISTENING\n"_s << TouchArea::Listening;
        QTest::newRow("active, case and blanks") << u"\tACTIVE "_s << TouchArea::Active;
        QTest::newRow("unknown") << u"Asleep"_s << TouchArea::Normal;
        QTest::newRow("empty") << QString() << TouchArea::Normal;
    }

    void aStateIsRead()
    {
        QFETCH(const QString, text);
        QTEST(parseState(text), "state");
    }

    void aStateIsWritten()
    {
        QCOMPARE(stateName(TouchArea::Normal), u"Normal"_s);
        QCOMPARE(stateName(TouchArea::Listening), u"Listening"_s);
        QCOMPARE(stateName(TouchArea::Active), u"Active"_s);
        QCOMPARE(stateName(TouchArea::State(3)), u"Normal"_s);
    }

    void aMissingModeIsTheOverlaysOwn_data()
    {
        QTest::addColumn<QByteArray>("keys");
        QTest::addColumn<int>("mode");
        const int own = int(BackgroundScaleMode::Cover);
        QTest::newRow("missing") << QByteArray("{}") << own;
        QTest::newRow("empty") << QByteArray("{'bgMode':''}") << own;
        QTest::newRow("no text") << QByteArray("{'bgMode':1}") << own;
        QTest::newRow("stretch") << QByteArray("{'bgMode':' STRETCH '}") << int(BackgroundScaleMode::Stretch);
        QTest::newRow("center") << QByteArray("{'bgMode':'Center'}") << int(BackgroundScaleMode::Center);
        QTest::newRow("cover") << QByteArray("{'bgMode':'cover'}") << own;
        QTest::newRow("unknown") << QByteArray("{'bgMode':'tile'}") << int(BackgroundScaleMode::Contain);
        QTest::newRow("blank") << QByteArray("{'bgMode':' '}") << int(BackgroundScaleMode::Contain);
    }

    void aMissingModeIsTheOverlaysOwn()
    {
        QFETCH(const QByteArray, keys);
        OverlayFrame covering = frame;
        covering.mode = BackgroundScaleMode::Cover;
        QTEST(int(read(keys, covering).bgMode), "mode");
    }

    void aMissingSizeIsTheWidgets_data()
    {
        QTest::addColumn<QByteArray>("keys");
        QTest::addColumn<QSize>("widget");
        QTest::addColumn<QSize>("saved");
        const QSize widget(640, 480);
        QTest::newRow("told") << QByteArray("{'overlaySize':{'w':800,'h':600}}") << widget << QSize(800, 600);
        QTest::newRow("missing") << QByteArray("{}") << widget << widget;
        QTest::newRow("no object") << QByteArray("{'overlaySize':[800,600]}") << widget << widget;
        QTest::newRow("one missing") << QByteArray("{'overlaySize':{'w':800}}") << widget << QSize(800, 480);
        QTest::newRow("other missing")
            << QByteArray("{'overlaySize':{'h':600}}") << widget << QSize(640, 600);
        QTest::newRow("zero") << QByteArray("{'overlaySize':{'w':0,'h':600}}") << widget << QSize(640, 600);
        QTest::newRow("negative") << QByteArray("{'overlaySize':{'w':-5,'h':-1e99}}") << widget << widget;
        QTest::newRow("below one") << QByteArray("{'overlaySize':{'w':0.9,'h':1.9}}") << widget
                                   << QSize(640, 1);
        QTest::newRow("no numbers") << QByteArray("{'overlaySize':{'w':'800','h':null}}") << widget << widget;
        QTest::newRow("beyond every widget") << QByteArray("{'overlaySize':{'w':1e300,'h':16777216}}")
                                             << widget << QSize(farthestPixel, farthestPixel);
        QTest::newRow("missing, and no widget yet") << QByteArray("{}") << QSize(0, 0) << QSize(1, 1);
    }

    void aMissingSizeIsTheWidgets()
    {
        QFETCH(const QByteArray, keys);
        QFETCH(const QSize, widget);
        OverlayFrame shown = frame;
        shown.widget = widget;
        QTEST(read(keys, shown).overlaySize, "saved");
    }

    void theInputComesFromItsSource_data()
    {
        QTest::addColumn<QByteArray>("src");
        QTest::addColumn<NodeInput>("input");
        const auto key = [](bool isJoy, const QString &text) {
            NodeInput input;
            input.isJoy = isJoy;
            input.stringKey = text;
            return input;
        };

        QTest::newRow("axis") << QByteArray("{'stringKey':'joy_5'}") << key(true, u"joy_5"_s);
        QTest::newRow("button") << QByteArray("{'stringKey':'but_5'}") << key(false, u"but_5"_s);
        QTest::newRow("a good key outdoes isJoy")
            << QByteArray("{'stringKey':'but_5','isJoy':true}") << key(false, u"but_5"_s);
        QTest::newRow("the key stays as stored")
            << QByteArray("{'stringKey':' BUT_07 '}") << key(false, u" BUT_07 "_s);
        QTest::newRow("bad button") << QByteArray("{'stringKey':'but_x'}") << key(false, u"but_x"_s);
        QTest::newRow("bad button, told an axis")
            << QByteArray("{'stringKey':'but_x','isJoy':true}") << key(true, u"but_x"_s);
        QTest::newRow("bad axis") << QByteArray("{'stringKey':'joy_'}") << key(true, u"joy_"_s);
        QTest::newRow("bad axis, told a button")
            << QByteArray("{'stringKey':'joy_','isJoy':false}") << key(false, u"joy_"_s);
        QTest::newRow("word") << QByteArray("{'stringKey':'Tir'}") << key(true, u"Tir"_s);
        QTest::newRow("number beyond int")
            << QByteArray("{'stringKey':'but_99999999999'}") << key(false, u"but_99999999999"_s);
        QTest::newRow("no key") << QByteArray("{'deviceId':0}") << key(true, QString());
        QTest::newRow("no key, told a button") << QByteArray("{'isJoy':false}") << key(false, QString());
        QTest::newRow("no key, told by no bool") << QByteArray("{'isJoy':0}") << key(true, QString());
        QTest::newRow("key of a wrong type") << QByteArray("{'stringKey':5}") << key(true, QString());

        NodeInput device;
        device.deviceType = u"volant"_s;
        device.deviceId = 16;
        device.packetId = 3;
        QTest::newRow("device without a key")
            << QByteArray("{'deviceType':'volant','deviceId':'0x10','packetId':3.9}") << device;
        QTest::newRow("device of wrong types")
            << QByteArray("{'deviceType':'','deviceId':'many','packetId':[]}") << NodeInput();
        device.deviceType = u"gamepade"_s;
        device.deviceId = std::numeric_limits<int>::max();
        device.packetId = std::numeric_limits<int>::min();
        QTest::newRow("device out of range") << QByteArray("{'deviceId':1e99,'packetId':-1e99}") << device;
    }

    void theInputComesFromItsSource()
    {
        QFETCH(const QByteArray, src);
        // The title would say something else.
        QTEST(readNode("{'title':'but_9','src':" + src + "}").input, "input");
    }

    void withoutASourceTheInputComesFromTheTitle_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<bool>("isJoy");
        QTest::addColumn<QString>("key");
        QTest::newRow("axis") << u"joy_4"_s << true << u"joy_4"_s;
        QTest::newRow("button") << u"but_4"_s << false << u"but_4"_s;
        QTest::newRow("rebuilt") << u" BUT_04 "_s << false << u"but_4"_s;
        QTest::newRow("word") << u"Tir"_s << true << QString();
        QTest::newRow("bad axis") << u"joy_x"_s << true << QString();
        QTest::newRow("bad button") << u"but_x"_s << false << QString();
        QTest::newRow("bad button, case") << u" But_x"_s << false << QString();
        QTest::newRow("empty") << QString() << true << QString();
    }

    void withoutASourceTheInputComesFromTheTitle()
    {
        QFETCH(const QString, title);
        for (const QByteArray &src : {QByteArray(), QByteArray(",'src':{}"), QByteArray(",'src':7")}) {
            const OverlayDocumentNode node = readNode("{'title':'" + title.toUtf8() + "'" + src + "}");
            QTEST(node.input.isJoy, "isJoy");
            QTEST(node.input.stringKey, "key");
            QCOMPARE(node.input.deviceType, u"gamepade"_s);
            QCOMPARE(node.input.deviceId, 0);
            QCOMPARE(node.input.packetId, 1);
        }
    }
};

GAMEPAD_TEST_MAIN(TestOverlayDocument)
#include "tst_overlaydocument.moc"
