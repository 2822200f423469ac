// SPDX-License-Identifier: MIT
// The whole main job with the built plugin file: from a pad that is plugged in to the document that the host
// is told to run. The host knows the plugin by the contract, and its window as a person does, by its widgets.
#include "dialogs.h"
#include "homedocuments.h"
#include "keptdocuments.h"
#include "loadedplugin.h"
#include "onebounddocument.h"
#include "profilesroot.h"
#include "scriptedjoystick.h"
#include "stepwise.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QImage>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr unsigned slot = 0;
constexpr std::size_t button = 3;

QWidget *childOfClass(const QWidget *parent, const char *className)
{
    const auto children = parent->findChildren<QWidget *>();
    const auto found = std::ranges::find_if(children, [className](const QWidget *child) {
        return child->inherits(className) && child->isVisible();
    });
    return found == children.end() ? nullptr : *found;
}

void type(QLineEdit *field, const QString &text)
{
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, text);
}

/// Opens the menu of `widget` and takes the entry that begins with `text`.
void takeFromMenu(QWidget *widget, const QString &text)
{
    bool taken = false;
    QTimer::singleShot(0, widget, [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        const QList<QAction *> entries = menu ? menu->actions() : QList<QAction *>();
        for (QAction *entry : entries) {
            if (entry->text().startsWith(text)) {
                menu->setActiveAction(entry);
                QTest::keyClick(menu, Qt::Key_Return);
                taken = true;
                return;
            }
        }
        if (menu)
            menu->close();
    });
    const QPoint at = widget->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, widget->mapToGlobal(at));
    QCoreApplication::sendEvent(widget, &event);
    QVERIFY(taken);
}
} // namespace

class TestOneBinding : public QObject
{
    Q_OBJECT

    LoadedPlugin m_plugin;
    QWidget m_host;
    QMainWindow *m_window = nullptr;
    QAbstractListModel *m_model = nullptr;
    IComInterface *m_device = nullptr;

    template <typename Widget>
    Widget *child(const char *name)
    {
        return m_window->findChild<Widget *>(QLatin1StringView(name));
    }

    void turnTo(const QString &tab)
    {
        auto *tabs = child<QTabWidget>("tabWidget_4");
        for (int i = 0; i < tabs->count(); ++i) {
            if (tabs->tabText(i) == tab)
                tabs->setCurrentIndex(i);
        }
        QCOMPARE(tabs->tabText(tabs->currentIndex()), tab);
    }

    void pressButton(const QString &text)
    {
        const auto buttons = child<QWidget>("actionDesignerWidget")->findChildren<QToolButton *>();
        const auto found = std::ranges::find(buttons, text, &QToolButton::text);
        QVERIFY(found != buttons.end());
        QTest::mouseClick(*found, Qt::LeftButton);
    }

    void openWindow()
    {
        m_window = m_plugin.provider->configWindow(&m_host);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
    }

    static void hold(std::size_t which, bool down) { scripted::pad(slot).buttons.set(which, down); }

    /// Waits until the pad has learned its rest and tells the host of its buttons.
    void awaitPublishing()
    {
        const QSignalSpy told(m_device,
                              qOverload<int, int, QStringList, QVariantList>(&IComInterface::dataChanged));
        // What happens while it learns is told to nobody, so the button is pressed again and again.
        QTimer thumb;
        thumb.callOnTimeout(&thumb, [down = false]() mutable { hold(0, down = !down); });
        thumb.start(30);
        QTRY_VERIFY(told.count() >= 2);
        hold(0, false);
    }

    void selectThePad()
    {
        scripted::reset();
        m_model = m_plugin.provider->model(u"binding"_s, this);
        scripted::plug(slot, scripted::restingPad("Pad"));
        QTRY_COMPARE(m_model->rowCount(), 1);
        QVERIFY(m_model->setData(m_model->index(0), true, m_model->roleNames().key("selected")));
        QList<IComInterface *> selected;
        QJsonArray infos;
        m_plugin.provider->selectedInterfaces(selected, infos);
        QCOMPARE(selected.size(), 1);
        m_device = selected.constFirst();
        m_device->start({});
        awaitPublishing();
    }

    void makeTheLinkedProfile()
    {
        const QString picture = temporaryHome() + "/pad.png"_L1;
        QImage image(400, 240, QImage::Format_RGB32);
        image.fill(Qt::darkGray);
        QVERIFY(image.save(picture));
        Dialogs dialogs({Dialogs::type(u"Mine"_s), Dialogs::choose(picture), Dialogs::pick(u"Pad"_s)});
        QTest::mouseClick(child<QPushButton>("pushButtonAdd"), Qt::LeftButton);
        QCOMPARE(dialogs.answersLeft(), 0);
    }

    static QString onlyProfileFolder()
    {
        const QDir root(profilesRootPath());
        const QStringList folders = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return folders.size() == 1 ? root.filePath(folders.constFirst()) : QString();
    }

    void teachTheButton()
    {
        awaitPublishing(); // the editor starts the pad anew
        QWidget *pastille = childOfClass(child<QWidget>("widgetOverlay"), "TouchArea");
        QVERIFY(pastille);
        takeFromMenu(pastille, u"Écouter"_s);
        hold(button, true);
        const QString overlay = onlyProfileFolder() + "/overlay.json"_L1;
        QTRY_COMPARE(home::documentAt(overlay)["nodes"_L1][0]["title"_L1], QJsonValue(u"but_3"_s));
        hold(button, false);
    }

    void composeTheAction()
    {
        turnTo(u"Action designer"_s);
        pressButton(u"+"_s);
        type(child<QLineEdit>("actionNameEdit"), u"A"_s);
        pressButton(u"+ Etape"_s);
        const QWidget *card = nullptr;
        QTRY_VERIFY(card = childOfClass(child<QWidget>("stepsPanel"), "ActionTaskBlockWidget"));
        auto *functions = card->findChild<QComboBox *>();
        functions->setCurrentIndex(functions->findText(u"F("_s, Qt::MatchStartsWith));
        const auto fields = card->findChildren<QLineEdit *>();
        QCOMPARE(fields.size(), 2);
        for (QLineEdit *field : fields)
            type(field, field->parentWidget() == card ? u"W"_s : u"param:speed"_s);
        QTRY_COMPARE(home::storedActions().at(0)["tasks"_L1][0]["args"_L1]["p"_L1],
                     QJsonValue(u"param:speed"_s));
    }

    /// As people do who want one: the window has no field for it.
    static void declareTheParameterByHand()
    {
        QJsonObject action = home::storedActions().at(0).toObject();
        action["params"_L1] =
            QJsonArray{QJsonObject{{u"name"_s, u"speed"_s}, {u"preferredType"_s, u"int"_s}}};
        home::storeActions({action});
    }

    void armAndPress()
    {
        turnTo(u"Mapping"_s);
        auto *list = child<QListWidget>("mappingActionsList");
        QTRY_VERIFY(list->isVisible());
        QCOMPARE(list->item(0)->text(), u"A"_s);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(list->item(0)).topLeft() + QPoint(20, 10));
        auto *hint = child<QLabel>("mappingActionsHint");
        QCOMPARE(hint->text(), u"Appuyez sur un bouton pour mapper \"A\"."_s);
        hold(button, true);
        QTRY_COMPARE(hint->text(), u"Cliquez une action puis appuyez sur un bouton."_s);
        hold(button, false);
    }

    void fillInTheSpeed()
    {
        bool opened = false;
        QVERIFY(QMetaObject::invokeMethod(child<QWidget>("iteractiveoverlay"), "openFirstToolboxSettings",
                                          qReturnArg(opened)));
        QVERIFY(opened);
        auto *field = QApplication::activePopupWidget()->findChild<QLineEdit *>();
        type(field, u"5"_s);
        QApplication::activePopupWidget()->close();
    }

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QVERIFY2(m_plugin.provider, qPrintable(m_plugin.loader.errorString()));
    }

    void fromThePadToTheDocument()
    {
        GO(selectThePad());
        m_plugin.provider->setServices(home::services());
        GO(openWindow());
        GO(makeTheLinkedProfile());
        GO(teachTheButton());
        GO(composeTheAction());
        delete m_window;
        declareTheParameterByHand();
        GO(openWindow());
        GO(awaitPublishing());

        const QString path = onlyProfileFolder() + "/configActionGamepad.json"_L1;
        const QSignalSpy told(m_device, &IComInterface::noCodeAppChanged);
        GO(armAndPress());
        GO(fillInTheSpeed());
        QTRY_COMPARE(home::documentAt(path)["bridges"_L1][0]["args"_L1]["speed"_L1], QJsonValue(5));
        QCOMPARE(home::bytesOf(path), oneBoundDocument());
        QVERIFY(told.count() > 0);
        QCOMPARE(told.last().constFirst().toStringList(), QStringList{path});
        QCOMPARE(m_device->noCodeApp(), QStringList{path});
        keepDocuments(profilesBasePath());
    }
};

GAMEPAD_TEST_MAIN(TestOneBinding)
#include "tst_onebinding.moc"
