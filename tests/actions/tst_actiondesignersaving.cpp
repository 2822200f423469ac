// SPDX-License-Identifier: MIT
#include "designerstage.h"

#include "actionsdocument.h"
#include "testmain.h"

#include <QtTest/QSignalSpy>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace
{
QJsonArray two()
{
    return {action(u"A"_s, {task(u"Tir"_s)}), action(u"B"_s)};
}

QJsonArray functions()
{
    return {function(u"Tir"_s), function(u"Vol"_s, {param(u"vitesse"_s, u"double"_s)})};
}

/// Every button, row and field once, as somebody in a hurry would.
void useEverything(DesignerStage &stage)
{
    for (int row = 0; row < qMin(stage.list().count(), 12); ++row)
        stage.pick(row);
    DesignerStage::type(stage.name(), u"x"_s);
    DesignerStage::click(stage.duplicateButton());
    DesignerStage::click(stage.addButton());
    DesignerStage::click(stage.addStepButton());
    DesignerStage::click(stage.up(0));
    DesignerStage::click(stage.remove(0));
    DesignerStage::click(stage.deleteButton());
    stage.designer().setFunctions({});
    stage.designer().setFunctions(functions());
    stage.saveNow();
}
} // namespace

class TestActionDesignerSaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
    }

    void cleanup() { QDir::setCurrent(QCoreApplication::applicationDirPath()); }

    void aSaveComesThreeHundredMillisecondsAfterTheLastEdit()
    {
        DesignerStage stage(two());
        stage.show();
        QVERIFY(stage.timer().isSingleShot());
        QCOMPARE(stage.timer().interval(), 300);
        DesignerStage::type(stage.name(), u"1"_s);
        QTRY_VERIFY(stage.timer().remainingTime() < 200);
        const QByteArray before = readFile(userFile());
        DesignerStage::type(stage.name(), u"2"_s); // starts it again
        QVERIFY(stage.timer().remainingTime() > 200);
        QCOMPARE(readFile(userFile()), before);
        QTRY_VERIFY(!stage.timer().isActive());
        QCOMPARE(readFile(userFile()), actionsJson(stage.actions()));
        QCOMPARE(stage.nameOf(0), u"A12"_s);
    }

    void aSaveTellsTheWholeListOnceItIsWritten()
    {
        DesignerStage stage(two());
        stage.show();
        QJsonArray told;
        QByteArray written;
        int times = 0;
        connect(&stage.designer(), &ActionDesignerWidget::actionsChanged, this,
                [&](const QJsonArray &actions) {
                    told = actions;
                    written = readFile(userFile());
                    ++times;
                });
        DesignerStage::type(stage.name(), u"!"_s);
        QCOMPARE(times, 0);
        QTRY_COMPARE(times, 1);
        QCOMPARE(told, stage.actions());
        QCOMPARE(told.at(0)[u"name"].toString(), u"A!"_s);
        QCOMPARE(written, actionsJson(told));
    }

    void aSaveCommitsWhatIsOnShowFirst()
    {
        DesignerStage stage({action(u" A "_s)});
        stage.saveNow();
        QCOMPARE(DesignerStage::savedActions(), QJsonArray{action(u"A"_s)});
    }

    void anySourceFormIsWrittenAsRef()
    {
        writeFile(userFile(), R"({"refs": [{"name": "A", "tasks": []}], "other": 1})");
        DesignerStage stage;
        stage.saveNow();
        QCOMPARE(readFile(userFile()), actionsJson({action(u"A"_s)}));
    }

    void aPendingSaveDiesWithTheWidget()
    {
        DesignerStage stage(two());
        stage.show();
        const QByteArray before = readFile(userFile());
        DesignerStage::type(stage.name(), u"!"_s);
        stage.close();
        QTest::qWait(0);
        QCOMPARE(readFile(userFile()), before);
    }

    void theFileIsNotReadAgain()
    {
        DesignerStage stage(two());
        writeFile(userFile(), actionsJson({action(u"from outside"_s)}));
        stage.saveNow();
        QCOMPARE(DesignerStage::savedActions().at(1), two().at(1));
        QCOMPARE(DesignerStage::savedActions().size(), 2);
    }

    void aFailedSaveIsToldAllTheSame_data()
    {
        QTest::addColumn<QString>("obstacle");
        for (const char *obstacle : {"folder in place of the file", "pipe in place of the file", "no folder"})
            QTest::newRow(obstacle) << QString::fromLatin1(obstacle);
    }

    void aFailedSaveIsToldAllTheSame()
    {
        QFETCH(QString, obstacle);
        DesignerStage stage(two());
        stage.show();
        QVERIFY(QFile::remove(userFile()));
        if (obstacle.startsWith("folder"_L1))
            QVERIFY(QDir().mkdir(userFile()));
        else if (obstacle.startsWith("pipe"_L1))
            QCOMPARE(mkfifo(QFile::encodeName(userFile()).constData(), 0600), 0);
        else
            QVERIFY(QDir(QFileInfo(userFile()).path()).removeRecursively());
        const QSignalSpy changed(&stage.designer(), &ActionDesignerWidget::actionsChanged);
        DesignerStage::type(stage.name(), u"!"_s);
        QTRY_COMPARE(changed.count(), 1);
        QCOMPARE(changed.first().first().toJsonArray(), stage.actions());
        QVERIFY(!QFileInfo(userFile()).isFile());
    }

    void aListenerMayEditTheActionsThatItIsTold()
    {
        DesignerStage stage(two());
        stage.show();
        qsizetype toldAfterwards = 0;
        connect(&stage.designer(), &ActionDesignerWidget::actionsChanged, this,
                [&](const QJsonArray &actions) {
                    DesignerStage::click(stage.addButton());
                    toldAfterwards = actions.size();
                });
        stage.saveNow();
        QCOMPARE(toldAfterwards, 2);
        QCOMPARE(stage.actions().size(), 3);
    }

    void aListenerMayDestroyTheWidget()
    {
        DesignerStage stage(two());
        stage.show();
        QPointer<ActionDesignerWidget> designer(&stage.designer());
        connect(designer, &ActionDesignerWidget::actionsChanged, this, [&stage] { stage.close(); });
        DesignerStage::type(stage.name(), u"!"_s);
        QTRY_VERIFY(!designer);
        QCOMPARE(DesignerStage::savedActions().size(), 2);
    }

    void aSeedInTheCurrentFolderIsCopiedAtTheFirstStart()
    {
        QVERIFY(QDir().mkpath(QFileInfo(userFile()).path()));
        const QString seed = temporaryHome() + u"/data/installed/configuration/Gamepads/actions.json"_s;
        writeFile(seed, QJsonDocument(two()).toJson());
        QVERIFY(QDir::setCurrent(temporaryHome() + u"/data/installed"_s));
        DesignerStage stage;
        QCOMPARE(stage.actions(), two());
        QCOMPARE(readFile(userFile()), actionsJson(two()));
        stage.close();

        writeFile(userFile(), "{ broken");
        const DesignerStage again;
        QCOMPARE(readFile(userFile()), "{ broken");
    }

    void theNextSaveReplacesABrokenFile()
    {
        writeFile(userFile(), "{ broken");
        DesignerStage stage;
        stage.show();
        DesignerStage::click(stage.addButton());
        QTRY_COMPARE(readFile(userFile()), actionsJson({action(u"Nouvelle action"_s)}));
    }

    void hostileDocumentsDoNoHarm_data()
    {
        QTest::addColumn<QByteArray>("json");
        const QByteArray wrong[] = {"null", "true",   "-1e999", "\"text\"",
                                    "[]",   "[[[]]]", "{}",     R"({"ref": {}})"};
        for (const QByteArray &value : wrong) {
            const auto row = [&value](const QByteArray &where, const QByteArray &json) {
                QTest::addRow("%s as %s", value.constData(), where.constData()) << json;
            };
            row("document", value);
            row("ref", R"({"ref": )" + value + '}');
            row("action", '[' + value + ',' + value + ']');
            row("name", R"([{"name": )" + value + "}]");
            row("tasks", R"([{"name": "A", "tasks": )" + value + "}]");
            row("task", R"([{"name": "A", "tasks": [)" + value + "]}]");
            for (const QByteArray key : {"ref", "args", "when", "condition"})
                row("a task's " + key, R"([{"tasks": [{"ref": "Vol", ")" + key + R"(": )" + value + "}]}]");
            row("argument", R"([{"tasks": [{"ref": "Vol", "args": {"vitesse": )" + value + "}}]}]");
        }
        QTest::newRow("deep") << R"([{"name": "A", "x": )" + QByteArray(1000, '[') + QByteArray(1000, ']') +
                                     "}]";
        QTest::newRow("too deep") << QByteArray(1000000, '[');
        QTest::newRow("invalid UTF-8") << "[{\"name\": \"\xC3\x28\"}]"_ba;
        QTest::newRow("half a surrogate") << R"([{"name": "\ud800", "tasks": [{"ref": "\udfff"}]}])"_ba;
        QTest::newRow("control characters") << R"([{"name": "\u0000\u202e\n\r<b>&amp;"}])"_ba;
        QTest::newRow("many actions") << '[' + QByteArray(R"({"name":"A"},)").repeated(20000) + "{}]";
    }

    void hostileDocumentsDoNoHarm()
    {
        QFETCH(QByteArray, json);
        writeFile(userFile(), json);
        DesignerStage stage;
        stage.designer().setFunctions(functions());
        stage.show();
        useEverything(stage);
        QCOMPARE(readFile(userFile()), actionsJson(stage.actions()));
    }

    void aNameThatFillsADocumentOutlivesEveryButton()
    {
        const QString endless(10'000'000, u'x');
        DesignerStage stage({action(endless)});
        stage.designer().setFunctions(functions());
        stage.show();
        useEverything(stage);
        const QJsonArray expected{action(endless), action(endless + u" (copy)"_s)};
        QVERIFY(DesignerStage::savedActions() == expected);
        QVERIFY(stage.actions() == expected);
    }

    void stepsBeyondWhatCanBeShownAreKept()
    {
        QJsonArray tasks;
        for (int i = 0; i < 100'000; ++i) // ten megabytes
            tasks.append(task(u"Vol"_s, {{u"vitesse"_s, i}}));
        tasks.append(u"no step"_s);
        DesignerStage stage({action(u"A"_s, tasks), action(u"B"_s)});
        QVERIFY(QFileInfo(userFile()).size() > 10'000'000);
        stage.designer().setFunctions(functions());
        QCOMPARE(stage.rows().size(), 200);
        stage.list().setCurrentRow(1);
        QCOMPARE(stage.rows().size(), 0);
        stage.list().setCurrentRow(0);
        QCOMPARE(stage.tasks(0), tasks);
        stage.remove(199).click();
        stage.remove(0).click();
        tasks.removeAt(199);
        tasks.removeAt(0);
        QCOMPARE(stage.tasks(0), tasks);
        QCOMPARE(stage.rows().size(), 198);
    }
};

GAMEPAD_TEST_MAIN(TestActionDesignerSaving)
#include "tst_actiondesignersaving.moc"
