// SPDX-License-Identifier: MIT
#include "overlaydocument.h"

#include "jsontext.h"
#include "testmain.h"

#include <QtCore/QRandomGenerator>

using namespace Qt::StringLiterals;

namespace
{
const OverlayFrame elsewhere{
    .pixmap = QSize(31, 77), .mode = BackgroundScaleMode::Center, .widget = QSize(9, 9)};

OverlayDocument readBack(const OverlayDocument &document)
{
    // Through the text, as it lies on disk.
    const QByteArray text = QJsonDocument(overlayDocumentJson(document)).toJson();
    return readOverlayDocument(QJsonDocument::fromJson(text).object(), elsewhere).value();
}

OverlayDocument everyFieldSet()
{
    return {
        .overlaySize = QSize(1234, 567),
        .bgMode = BackgroundScaleMode::Stretch,
        .nodes = {{
            .id = QUuid(u"{6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77}"_s),
            .title = u"Gâchette \"gauche\"\n"_s,
            .state = TouchArea::Listening,
            .freeAspect = true,
            .pastille = {0.1, 0.2, 0.3, 0.4},
            .toolbox = {1.1, -2.2, 3.3, 4.4},
            .input = {.isJoy = false,
                      .deviceType = u"volant"_s,
                      .deviceId = 4,
                      .packetId = 9,
                      .stringKey = u"but_6"_s},
        }},
    };
}

/// Documents as reading gives them: a key of an axis or of a button goes with its kind.
class Generator
{
public:
    explicit Generator(quint32 seed)
        : m_random(seed)
    {}

    OverlayDocument document()
    {
        OverlayDocument document;
        document.overlaySize = QSize(1 + m_random.bounded(5000), 1 + m_random.bounded(5000));
        document.bgMode = static_cast<BackgroundScaleMode>(m_random.bounded(4));
        const int count = m_random.bounded(20);
        for (int i = 0; i < count; ++i)
            document.nodes.append(node());
        return document;
    }

private:
    bool heads() { return m_random.bounded(2) == 1; }

    double number()
    {
        const double magnitude = std::pow(10.0, m_random.bounded(30) - 20);
        return (m_random.generateDouble() - 0.5) * magnitude;
    }

    PictureFractions place() { return {number(), number(), number(), number()}; }

    QString text()
    {
        QString text;
        for (int length = m_random.bounded(12); length > 0; --length)
            text += QChar(static_cast<char16_t>(m_random.bounded(0x20, 0xd800)));
        return text;
    }

    OverlayDocumentNode node()
    {
        OverlayDocumentNode node;
        node.id = heads() ? QUuid::createUuid() : QUuid();
        node.title = text();
        node.state = static_cast<TouchArea::State>(m_random.bounded(3));
        node.freeAspect = heads();
        node.pastille = place();
        node.toolbox = place();
        node.input.isJoy = heads();
        if (heads())
            node.input.deviceType = u'x' + text();
        node.input.deviceId = static_cast<int>(m_random.generate());
        node.input.packetId = static_cast<int>(m_random.generate());
        switch (m_random.bounded(3)) {
        case 0:
            node.input.stringKey =
                u"%1_%2"_s.arg(node.input.isJoy ? u"joy"_s : u"but"_s).arg(m_random.bounded(99));
            break;
        case 1:
            node.input.stringKey = u'#' + text();
            break;
        default:
            break;
        }
        return node;
    }

    QRandomGenerator m_random;
};
} // namespace

class TestOverlayDocumentWriting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void aDocumentIsWrittenKeyByKey()
    {
        QCOMPARE(overlayDocumentJson(everyFieldSet()),
                 object(R"({'type':'InteractiveOverlay','version':2,'coordSpace':'background',
                            'overlaySize':{'w':1234,'h':567},'bgMode':'Stretch','nodes':[{
                              'id':'6f1c0d9e-8a53-4f2b-9d2f-0c5a6f8e1b77',
                              'title':'Gâchette \'gauche\'\n','state':'Listening','freeAspect':true,
                              'pastille':{'x':0.1,'y':0.2,'w':0.3,'h':0.4},
                              'toolbox':{'x':1.1,'y':-2.2,'w':3.3,'h':4.4},
                              'src':{'isJoy':false,'deviceType':'volant','deviceId':4,'packetId':9,
                                     'stringKey':'but_6'}}]})"));
    }

    void anEmptyDocumentIsWritten()
    {
        QCOMPARE(overlayDocumentJson(
                     {.overlaySize = QSize(3, 4), .bgMode = BackgroundScaleMode::Center, .nodes = {}}),
                 object("{'type':'InteractiveOverlay','version':2,'coordSpace':'background',"
                        "'overlaySize':{'w':3,'h':4},'bgMode':'Center','nodes':[]}"));
    }

    void aModeOutsideTheEnumerationIsContain()
    {
        OverlayDocument document;
        document.bgMode = static_cast<BackgroundScaleMode>(9);
        QCOMPARE(overlayDocumentJson(document)["bgMode"_L1], u"Contain"_s);
    }

    void everyFieldReadsBack()
    {
        const OverlayDocument written = everyFieldSet();
        const OverlayDocumentNode &node = written.nodes.first();
        const OverlayDocumentNode untouched;
        // A field added one day has to be set here too.
        QVERIFY(node.id != untouched.id && node.title != untouched.title && node.state != untouched.state);
        QVERIFY(node.freeAspect != untouched.freeAspect);
        QVERIFY(node.pastille != untouched.pastille && node.toolbox != untouched.toolbox);
        QVERIFY(node.input.isJoy != untouched.input.isJoy);
        QVERIFY(node.input.deviceType != untouched.input.deviceType);
        QVERIFY(node.input.deviceId != untouched.input.deviceId);
        QVERIFY(node.input.packetId != untouched.input.packetId);
        QVERIFY(node.input.stringKey != untouched.input.stringKey);
        QCOMPARE(readBack(written), written);
    }

    void generatedDocumentsReadBack()
    {
        Generator generator(20250717);
        for (int i = 0; i < 500; ++i) {
            const OverlayDocument written = generator.document();
            QCOMPARE(readBack(written), written);
        }
    }
};

GAMEPAD_TEST_MAIN(TestOverlayDocumentWriting)
#include "tst_overlaydocumentwriting.moc"
