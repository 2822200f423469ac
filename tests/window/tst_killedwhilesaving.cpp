// SPDX-License-Identifier: MIT
// A host that is killed while the window saves: the file that was being written may be cut short, no other,
// and the next start lives with that.
#include "homedocuments.h"
#include "sanitizers.h"
#include "testmain.h"

#include <QtCore/QProcess>
#include <QtCore/QRandomGenerator>

using namespace Qt::StringLiterals;

namespace
{
constexpr int rounds = sanitized ? 20 : 200;
constexpr int profileCount = 3;
constexpr int longestLife = 25; // milliseconds of saving

void storeEverything()
{
    clearTemporaryHome();
    for (int profile = 1; profile <= profileCount; ++profile) {
        home::storeProfile(profile, {u"but_1"_s, u"joy_2"_s, u"but_4"_s, u"but_9"_s});
        home::storeMapping(profile, home::bridges());
    }
    home::storeActions(home::actions());
}

bool areWholeActions()
{
    return home::storedNames() == QStringList({u"A"_s, u"B"_s, u"C"_s});
}

/// Whether the file is whole, with what the profile's user has put into it. A binding of an action that is
/// gone keeps its place, but not its arguments.
bool isWholeMapping(int profile)
{
    const QJsonObject mapping = home::documentAt(home::mappingPath(profile));
    return mapping["timers"_L1][0]["every"_L1] == 9 && mapping["onStartup"_L1][0]["ref"_L1] == "Host"_L1 &&
           mapping["bridges"_L1].toArray().size() >= 3 &&
           (mapping["bridges"_L1][0]["args"_L1]["speed"_L1] == 42 || !areWholeActions());
}

QStringList damagedFiles()
{
    QStringList damaged;
    for (int profile = 1; profile <= profileCount; ++profile) {
        if (home::documentAt(home::metaPath(profile))["name"_L1] != u"Profile %1"_s.arg(profile))
            damaged.append(home::metaPath(profile));
        if (home::documentAt(home::overlayPath(profile))["nodes"_L1].toArray().size() < 4)
            damaged.append(home::overlayPath(profile));
        if (!isWholeMapping(profile))
            damaged.append(home::mappingPath(profile));
    }
    if (!areWholeActions())
        damaged.append(home::actionsPath());
    return damaged;
}

/// The files that are damaged and were not among those `before`.
QStringList damagedSince(const QStringList &before)
{
    QStringList damaged = damagedFiles();
    damaged.removeIf([&before](const QString &path) { return before.contains(path); });
    return damaged;
}

/// What the program said, less what the offscreen platform says of every window.
QByteArray complaintsOf(QProcess &program)
{
    QList<QByteArray> lines = program.readAllStandardError().split('\n');
    lines.removeIf([](const QByteArray &line) { return line.startsWith("This plugin does not support "); });
    return lines.join('\n');
}

/// Where the program finds no display, so that it makes no window of SFML's: that takes longer than all else.
QProcessEnvironment withoutDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"DISPLAY"_s);
    return environment;
}

/// Starts the program, lets it save for a while, kills it.
void runAndKill(int milliseconds)
{
    QProcess program;
    program.setProcessEnvironment(withoutDisplay());
    program.start(QStringLiteral(GAMEPAD_SAVING_PROGRAM), {});
    QVERIFY(program.waitForStarted());
    while (!program.canReadLine())
        QVERIFY2(program.waitForReadyRead(), complaintsOf(program).constData());
    // It never ends by itself.
    QVERIFY2(!program.waitForFinished(milliseconds), complaintsOf(program).constData());
    program.kill();
    QVERIFY(program.waitForFinished());
    QCOMPARE(complaintsOf(program), QByteArray());
}

/// A start over `damaged` files gets as far as saving again, and does the others no harm but to the one that
/// it is killed over.
void startAgain(const QStringList &damaged, int milliseconds)
{
    runAndKill(milliseconds);
    const QStringList more = damagedSince(damaged);
    QVERIFY2(more.size() <= 1, qPrintable(more.join(u' ')));
}
} // namespace

class TestKilledWhileSaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void atMostTheFileThatWasBeingWrittenIsDamaged()
    {
        QRandomGenerator random(20);
        storeEverything();
        int hits = 0;
        int saved = 0;
        for (int round = 0; round < rounds; ++round) {
            const QByteArray before = home::bytesOf(home::actionsPath());
            runAndKill(random.bounded(longestLife));
            if (QTest::currentTestFailed())
                return;
            saved += home::bytesOf(home::actionsPath()) != before ? 1 : 0;
            const QStringList damaged = damagedFiles();
            QVERIFY2(damaged.size() <= 1, qPrintable(damaged.join(u' ')));
            if (damaged.isEmpty())
                continue;
            ++hits;
            startAgain(damaged, random.bounded(longestLife));
            if (QTest::currentTestFailed())
                return;
            storeEverything();
        }
        qInfo("%d rounds, %d of them cut a file short", rounds, hits);
        QVERIFY2(saved > rounds / 2, qPrintable(u"only %1 rounds have saved"_s.arg(saved)));
    }

    /// Each file in turn, since chance does not reach all of them.
    void aStartWithAnyFileCutShort_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("percent");
        const QList<std::pair<const char *, QString>> files{
            {"actions", home::actionsPath()},  {"meta", home::metaPath(2)},
            {"overlay", home::overlayPath(2)}, {"shown overlay", home::overlayPath(1)},
            {"mapping", home::mappingPath(2)}, {"shown mapping", home::mappingPath(1)}};
        for (const auto &[name, path] : files) {
            QTest::addRow("%s empty", name) << path << 0;
            QTest::addRow("%s half", name) << path << 50;
        }
    }

    void aStartWithAnyFileCutShort()
    {
        QFETCH(const QString, path);
        QFETCH(const int, percent);
        storeEverything();
        QFile file(path);
        QVERIFY(file.resize(file.size() * percent / 100));
        QCOMPARE(damagedFiles(), QStringList{path});
        startAgain({path}, 0);
    }
};

GAMEPAD_TEST_MAIN(TestKilledWhileSaving)
#include "tst_killedwhilesaving.moc"
