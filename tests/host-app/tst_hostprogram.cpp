// SPDX-License-Identifier: MIT
#include "testmain.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLibraryInfo>
#include <QtCore/QObject>
#include <QtCore/QProcess>
#include <QtGui/QImage>
#include <QtTest/QTest>

using namespace Qt::StringLiterals;

namespace
{
struct Outcome
{
    int code = -1;
    QByteArray out;
    QByteArray error;
};

Outcome run(const QStringList &arguments, const QByteArray &input = {}, bool withDisplay = true)
{
    QProcess host;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!withDisplay) {
        for (const QString &name : {u"DISPLAY"_s, u"WAYLAND_DISPLAY"_s, u"QT_QPA_PLATFORM"_s})
            environment.remove(name);
    }
    host.setProcessEnvironment(environment);
    host.start(QStringLiteral(GAMEPAD_HOST), arguments);
    host.write(input);
    host.closeWriteChannel();
    if (!host.waitForFinished(60'000) || host.exitStatus() != QProcess::NormalExit)
        return {.code = -1, .out = host.readAllStandardOutput(), .error = host.readAllStandardError()};
    return {
        .code = host.exitCode(), .out = host.readAllStandardOutput(), .error = host.readAllStandardError()};
}

QStringList withPlugin(const QStringList &more)
{
    return QStringList{u"--plugin"_s, QStringLiteral(GAMEPAD_PLUGIN), u"--data"_s,
                       temporaryHome() + "/host"_L1} +
           more;
}

QList<QJsonObject> linesOf(const QByteArray &out)
{
    QList<QJsonObject> lines;
    for (const QByteArray &line : out.split('\n')) {
        if (!line.isEmpty())
            lines.append(QJsonDocument::fromJson(line).object());
    }
    return lines;
}
} // namespace

class TestHostProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void helpNeedsNoDisplay();
    void aWrongCommandLineEndsWithOne_data();
    void aWrongCommandLineEndsWithOne();
    void aPluginThatCannotBeLoadedEndsWithTwo_data();
    void aPluginThatCannotBeLoadedEndsWithTwo();
    void unusableFilesEndWithThree_data();
    void unusableFilesEndWithThree();
    void withoutADisplayItSaysWhatToDo();
    void headlessNeedsNoDisplay();
    void everyLineIsJsonAndThePluginIsFirst();
    void commandsAreAnsweredOneByOne();
    void theEndOfCommandsQuits();
    void aScreenshotShowsTheWindow();
    void dataStaysBelowTheFolder();
};

void TestHostProgram::helpNeedsNoDisplay()
{
    const Outcome outcome = run({u"--help"_s}, {}, false);
    QCOMPARE(outcome.code, 0);
    for (const char *option : {"--plugin", "--context", "--services", "--data", "--headless-report",
                               "--report", "--commands", "--screenshot"})
        QVERIFY2(outcome.out.contains(option), option);
}

void TestHostProgram::aWrongCommandLineEndsWithOne_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{u"--frobnicate"_s};
    QTest::newRow("stray argument") << QStringList{u"pad"_s};
    QTest::newRow("missing value") << QStringList{u"--plugin"_s};
}

void TestHostProgram::aWrongCommandLineEndsWithOne()
{
    QFETCH(QStringList, arguments);
    const Outcome outcome = run(arguments);
    QCOMPARE(outcome.code, 1);
    QVERIFY(outcome.error.contains("--help"));
}

void TestHostProgram::aPluginThatCannotBeLoadedEndsWithTwo_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("says");
    const QString noPlugin = temporaryHome() + "/text.so"_L1;
    QFile file(noPlugin);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("no plugin");
    QTest::newRow("no file") << u"/nowhere/x.so"_s << QByteArray("There is no plugin file");
    QTest::newRow("a folder") << temporaryHome() << QByteArray("There is no plugin file");
    QTest::newRow("no library") << noPlugin << QByteArray("cannot be loaded");
    QTest::newRow("another plugin") << QLibraryInfo::path(QLibraryInfo::PluginsPath) +
                                           "/platforms/libqoffscreen.so"_L1
                                    << QByteArray("no family of devices");
}

void TestHostProgram::aPluginThatCannotBeLoadedEndsWithTwo()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, says);
    const Outcome outcome = run({u"--headless-report"_s, u"--plugin"_s, file});
    QCOMPARE(outcome.code, 2);
    QVERIFY2(outcome.error.contains(says), outcome.error.constData());
    QVERIFY(outcome.out.isEmpty());
}

void TestHostProgram::unusableFilesEndWithThree_data()
{
    QTest::addColumn<QStringList>("arguments");
    QFile file(temporaryHome() + "/broken.json"_L1);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[1");
    QTest::newRow("no services file") << QStringList{u"--services"_s, u"/nowhere.json"_s};
    QTest::newRow("broken services file") << QStringList{u"--services"_s, file.fileName()};
    QTest::newRow("data in a file") << QStringList{u"--data"_s, file.fileName() + "/below"_L1};
    QTest::newRow("picture nowhere") << QStringList{u"--screenshot"_s, u"/nowhere/at/all.png"_s};
}

void TestHostProgram::unusableFilesEndWithThree()
{
    QFETCH(QStringList, arguments);
    QCOMPARE(run(withPlugin(arguments)).code, 3);
}

void TestHostProgram::withoutADisplayItSaysWhatToDo()
{
    const Outcome outcome = run(withPlugin({}), {}, false);
    QCOMPARE(outcome.code, 3);
    QVERIFY(outcome.error.contains("--headless-report"));
}

void TestHostProgram::headlessNeedsNoDisplay()
{
    const Outcome outcome = run(withPlugin({u"--headless-report"_s, u"--commands"_s}), "quit\n", false);
    QCOMPARE(outcome.code, 0);
    QVERIFY(!outcome.out.isEmpty());
}

void TestHostProgram::everyLineIsJsonAndThePluginIsFirst()
{
    const auto lines = linesOf(run(withPlugin({u"--headless-report"_s, u"--commands"_s}), "quit\n").out);
    QVERIFY(lines.size() >= 2);
    for (const QJsonObject &line : lines)
        QVERIFY(line.contains("what"_L1) && line["at"_L1].isDouble());
    QCOMPARE(lines.at(0)["what"_L1].toString(), u"plugin"_s);
    QCOMPARE(lines.at(0)["provider"_L1].toString(), u"velor"_s);
    QCOMPARE(lines.at(0)["family"_L1].toString(), u"Gamepad"_s);
}

void TestHostProgram::commandsAreAnsweredOneByOne()
{
    const QByteArray input = "frobnicate\n"
                             "select gp:7\n"
                             "property uniqSelection false\n"
                             "property unheard-of 1\n"
                             "services /nowhere.json\n"
                             "screenshot /nowhere/at/all.png\n"
                             "\n"
                             "configure\n"
                             "invoke tabWidget_4 update\n"
                             "invoke tabWidget_4 frobnicate\n"
                             "invoke nothing update\n"
                             "quit\n";
    QList<QJsonObject> answers;
    for (const QJsonObject &line :
         linesOf(run(withPlugin({u"--headless-report"_s, u"--commands"_s}), input).out)) {
        if (line["what"_L1] == "done"_L1)
            answers.append(line);
    }
    QCOMPARE(answers.size(), 11);
    const QList<bool> expected{false, false, true, false, false, false, true, true, false, false, true};
    for (qsizetype i = 0; i < expected.size(); ++i) {
        QCOMPARE(answers.at(i)["ok"_L1].toBool(), expected.at(i));
        QCOMPARE(answers.at(i)["problem"_L1].toString().isEmpty(), expected.at(i));
    }
}

void TestHostProgram::theEndOfCommandsQuits()
{
    QCOMPARE(run(withPlugin({u"--headless-report"_s, u"--commands"_s})).code, 0);
}

void TestHostProgram::aScreenshotShowsTheWindow()
{
    const QString file = temporaryHome() + "/shot.png"_L1;
    QCOMPARE(run(withPlugin({u"--screenshot"_s, file})).code, 0);
    const QImage picture(file);
    QVERIFY(picture.width() > 800 && picture.height() > 500);
}

void TestHostProgram::dataStaysBelowTheFolder()
{
    QCOMPARE(run(withPlugin({u"--headless-report"_s, u"--commands"_s, u"--context"_s, u"here"_s})).code, 0);
    QVERIFY(QFile::exists(temporaryHome() + "/host/data/velor/gamepad-host/here/VelorCom/gamepads.json"_L1));
}

GAMEPAD_TEST_MAIN(TestHostProgram)
#include "tst_hostprogram.moc"
