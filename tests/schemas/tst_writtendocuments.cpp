// SPDX-License-Identifier: MIT
// Has the real widgets write documents of every kind, as a person makes them, and leaves them in the folder
// that is judged after this program.
#include "dialogs.h"
#include "editorstage.h"
#include "exchangefiles.h"

#include "actiondesignerwidget.h"
#include "actionlinker.h"
#include "interactiveoverlay.h"
#include "linkerdevicemodel.h"
#include "manetteconfigurationwidget.h"
#include "profilesroot.h"
#include "testmain.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolButton>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{
const QString pad = u"Flight Pad"_s;

QString documents()
{
    return QStringLiteral(GAMEPAD_DOCUMENTS);
}

QString exchangeFile()
{
    return documents() + "/exchanged.velor.json"_L1;
}

QString pictureFile()
{
    return temporaryHome() + "/photo.png"_L1;
}

QString folderOf(const GamepadDefinder &editor, int row)
{
    return editor.entries().at(row).dirPath;
}

QJsonArray bridgesOf(const QString &folder)
{
    return objectIn(folder + "/configActionGamepad.json"_L1)["bridges"_L1].toArray();
}

QString nameOf(const QString &folder)
{
    return stage::metaIn(folder)["name"_L1].toString();
}
} // namespace

class TestWrittenDocuments : public QObject
{
    Q_OBJECT

    std::unique_ptr<stage::Pads> m_pads;
    std::unique_ptr<LinkerDeviceModel> m_model;
    std::unique_ptr<ManetteConfigurationWidget> m_window;
    GamepadDefinder *m_profiles = nullptr;
    ActionLinker *m_linker = nullptr;
    ActionDesignerWidget *m_designer = nullptr;

    void pressButton(const QString &text)
    {
        for (QToolButton *button : m_designer->findChildren<QToolButton *>()) {
            if (button->text() == text) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        QFAIL(qPrintable(text));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        stage::startAfresh();
        QVERIFY(QDir(documents()).removeRecursively());
        QVERIFY(QDir().mkpath(documents()));
        write(pictureFile(), pngOf({320, 210}, Qt::blue));

        m_pads = std::make_unique<stage::Pads>();
        m_model = std::make_unique<LinkerDeviceModel>(u"bench"_s, nullptr);
        m_pads->plug(0, pad);
        m_pads->plug(1, u"Arcade Stick"_s);
        stage::settle();

        m_window = std::make_unique<ManetteConfigurationWidget>();
        m_window->setServices(objectIn(QStringLiteral(GAMEPAD_SERVICES)));
        m_profiles = m_window->findChild<GamepadDefinder *>();
        m_linker = m_window->findChild<ActionLinker *>();
        m_designer = m_window->findChild<ActionDesignerWidget *>();
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }
    void init() { failOnUnexpectedWarnings(); }

    void gamepadsThatAreThereAndAway()
    {
        m_model->setSelected(u"gp:0"_s, true);
        QVERIFY(m_model->setData(m_model->index(1), u"Left hand"_s, LinkerDeviceModel::NameRole));
        m_pads->unplug(1);
        stage::settle();
        const QString file = profilesBasePath() + "/bench/VelorCom/gamepads.json"_L1;
        const QJsonObject devices = objectIn(file)["devices"_L1].toObject();
        QCOMPARE(devices.keys(), (QStringList{u"gp:0"_s, u"gp:1"_s}));
        QCOMPARE(devices["gp:1"_L1]["kv"_L1]["nameOverride"_L1].toString(), u"Left hand"_s);
    }

    void anActionOfTwoSteps()
    {
        m_window->findChild<QTabWidget *>()->setCurrentIndex(2);
        pressButton(u"+"_s);
        auto *name = m_designer->findChild<QLineEdit *>(u"actionNameEdit"_s);
        name->selectAll();
        QTest::keyClicks(name, u"Look"_s);
        for (const QString &function : {u"camera.home"_s, u"camera.pan"_s}) {
            pressButton(u"+ Etape"_s);
            auto *choice = m_designer->findChildren<QComboBox *>().constLast();
            const int entry = choice->findText(function, Qt::MatchContains);
            QVERIFY2(entry > 0, qPrintable(function));
            choice->setCurrentIndex(entry);
        }
        const QString file = profilesRootPath() + "/actions.json"_L1;
        QTRY_COMPARE(objectIn(file)["ref"_L1][0]["tasks"_L1].toArray().size(), 2);
        QCOMPARE(objectIn(file)["ref"_L1][0]["name"_L1].toString(), u"Look"_s);
    }

    void aProfileThatIsNew()
    {
        m_window->findChild<QTabWidget *>()->setCurrentIndex(0);
        const Dialogs dialogs(
            {Dialogs::type(u"Flight deck"_s), Dialogs::choose(pictureFile()), Dialogs::pick(pad)});
        m_profiles->actionNew();
        QCOMPARE(dialogs.answersLeft(), 0);
        QCOMPARE(m_profiles->entries().size(), 1);
        const QString folder = folderOf(*m_profiles, 0);
        QVERIFY(stage::metaIn(folder).contains("createdAt"_L1));
        // As it is now, before the first save takes the date of its creation.
        write(documents() + "/new/meta.json"_L1, bytesIn(folder + "/meta.json"_L1));
        QTRY_VERIFY(!stage::metaIn(folder).contains("createdAt"_L1));
    }

    void aPastilleThatLearned()
    {
        m_pads->calibrate(0);
        stage::listen(*m_profiles);
        m_pads->press(0, 3);
        const QString folder = folderOf(*m_profiles, 0);
        QTRY_COMPARE(stage::titlesIn(folder), QStringList{u"but_3"_s});
        m_pads->release(0, 3);
    }

    void aBoundButton()
    {
        // The linker shows what the editor has saved when the profile is shown again.
        QMetaObject::invokeMethod(m_profiles, "emitCurrentSelection");
        m_window->findChild<QTabWidget *>()->setCurrentIndex(1);
        auto *list = m_linker->findChild<QListWidget *>(u"mappingActionsList"_s);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
        m_pads->press(0, 3);
        const QString folder = folderOf(*m_profiles, 0);
        QTRY_COMPARE(bridgesOf(folder).size(), 1);
        QCOMPARE(bridgesOf(folder)[0]["src"_L1]["stringKey"_L1].toString(), u"but_3"_s);
        QCOMPARE(bridgesOf(folder)[0]["dst"_L1].toArray().size(), 2);
    }

    void aProfileThatWasDuplicatedRenamedAndGivenAnotherPicture()
    {
        m_profiles->actionDuplicate();
        QCOMPARE(m_profiles->currentRow(), 1);
        const Dialogs dialogs({Dialogs::type(u"Spare pad"_s), Dialogs::choose(pictureFile())});
        m_profiles->actionRename();
        m_profiles->actionChangeImage();
        QCOMPARE(dialogs.answersLeft(), 0);
        QCOMPARE(nameOf(folderOf(*m_profiles, 1)), u"Spare pad"_s);
    }

    void aProfileThatWentOutAndCameBack()
    {
        const Dialogs dialogs({Dialogs::choose(exchangeFile()), Dialogs::choose(exchangeFile())});
        m_profiles->actionExport();
        m_profiles->actionImport();
        QCOMPARE(dialogs.answersLeft(), 0);
        QCOMPARE(m_profiles->entries().size(), 3);
        QCOMPARE(nameOf(folderOf(*m_profiles, 2)), u"Spare pad"_s);
        QTRY_VERIFY(!stage::metaIn(folderOf(*m_profiles, 2)).contains("createdAt"_L1));
    }

    /// The profile of this home goes to the folder that is judged.
    void cleanupTestCase()
    {
        m_window.reset();
        m_model.reset();
        const QDir home(profilesBasePath());
        int documentsKept = 0;
        for (const QString &name : treeOf(home.path())) {
            if (!name.endsWith(".json"_L1))
                continue;
            write(documents() + u'/' + name, bytesIn(home.filePath(name)));
            ++documentsKept;
        }
        QCOMPARE(documentsKept, 11); // the list, the actions, and three documents of each of three profiles
    }
};

GAMEPAD_TEST_MAIN(TestWrittenDocuments)
#include "tst_writtendocuments.moc"
