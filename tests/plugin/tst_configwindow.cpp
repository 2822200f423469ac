// SPDX-License-Identifier: MIT
#include "answer.h"
#include "loadedplugin.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QPointer>
#include <QtCore/QStandardPaths>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolButton>

using namespace Qt::StringLiterals;

namespace
{
QJsonObject servicesWith(const QString &function)
{
    return {{u"ref"_s, QJsonArray{QJsonObject{{u"name"_s, function}}}}};
}

QList<QWidget *> shownOfClass(QWidget *window, const char *className)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QList<QWidget *> found;
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        if (widget->inherits(className) && !widget->isHidden())
            found.append(widget);
    }
    return found;
}

void press(QWidget *window, const QString &text)
{
    for (QToolButton *button : window->findChildren<QToolButton *>()) {
        if (button->text() == text) {
            button->click();
            return;
        }
    }
    QFAIL(qPrintable(u"there is no button "_s + text));
}

/// What the card of the designer's only step offers.
QStringList offered(QWidget *window)
{
    const QList<QWidget *> cards = shownOfClass(window, "ActionTaskBlockWidget");
    if (cards.size() != 1)
        return {u"%1 cards"_s.arg(cards.size())};
    QStringList texts;
    const auto *combo = cards.constFirst()->findChild<QComboBox *>();
    for (int i = 0; i < combo->count(); ++i)
        texts.append(combo->itemText(i));
    return texts;
}

bool offers(QWidget *window, const QString &function)
{
    return !offered(window).filter(function).isEmpty();
}

QString profileFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
           u"/Gamepads/0b1f4d6e-58cb-4f51-9a0b-3c2d9f1e7a01"_s;
}

QString overlayPath()
{
    return profileFolder() + u"/overlay.json"_s;
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

void writeOverlay()
{
    write(overlayPath(), R"({"type":"InteractiveOverlay","version":2})");
}

void storeProfile()
{
    QVERIFY(QDir().mkpath(profileFolder()));
    write(profileFolder() + u"/meta.json"_s,
          R"({"type":"GamepadDefinderMeta","id":"0b1f4d6e-58cb-4f51-9a0b-3c2d9f1e7a01"})");
    writeOverlay();
}

/// A folder in place of the overlay's document, which can then be neither read nor written.
void blockOverlay()
{
    QVERIFY(QFile::remove(overlayPath()));
    QVERIFY(QDir().mkpath(overlayPath()));
}

/// A profile whose overlay cannot be read: the window's making then stops at a box.
void storeUnreadableProfile()
{
    storeProfile();
    blockOverlay();
}

/// Does something while the box of the window's making, or of its end, is open.
class UnderTheBox
{
public:
    explicit UnderTheBox(std::function<void()> event)
        : m_answer(QApplication::activeModalWidget, [event = std::move(event)](QMessageBox *) { event(); })
    {}
    [[nodiscard]] bool came() const { return m_answer.given() == 1; }

private:
    Answer<QMessageBox> m_answer;
};
} // namespace

/// The configuration window as a host sees it: by the contract, and as widgets.
class TestConfigWindow : public QObject
{
    Q_OBJECT

    LoadedPlugin m_plugin;

    /// A window with one action of one step in its designer, of which the file keeps nothing.
    QMainWindow *windowWithStep(QWidget *parent)
    {
        QMainWindow *window = m_plugin.provider->configWindow(parent);
        press(window, u"+"_s);
        press(window, u"+ Etape"_s);
        return window;
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY2(m_plugin.provider, qPrintable(m_plugin.loader.errorString())); }
    void init()
    {
        failOnUnexpectedWarnings();
        clearTemporaryHome();
        m_plugin.provider->setServices({});
    }

    // The first, since the input side stays up.
    void itBringsUpTheInputSide()
    {
        QCOMPARE(scripted::calls().update, 0);
        QWidget host;
        m_plugin.provider->configWindow(&host);
        QVERIFY(scripted::calls().update > 0);
    }

    void itHoldsTheThreeTabs()
    {
        QWidget host;
        QMainWindow *window = m_plugin.provider->configWindow(&host);
        QCOMPARE(window->windowTitle(), u"Gamepad"_s);
        QCOMPARE(window->parentWidget(), &host);
        QVERIFY(window->centralWidget());
        QVERIFY(window->centralWidget()->inherits("ManetteConfigurationWidget"));
        QCOMPARE(window->centralWidget()->parentWidget(), window);
        const auto *tabs = window->findChild<QTabWidget *>();
        QCOMPARE(tabs->count(), 3);
        QCOMPARE(tabs->tabText(0), u"Configuration"_s);
        QCOMPARE(tabs->tabText(1), u"Mapping"_s);
        QCOMPARE(tabs->tabText(2), u"Action designer"_s);
    }

    void askedTwiceItIsTheSameWindowWithTheSameWidget()
    {
        QWidget host;
        QMainWindow *window = m_plugin.provider->configWindow(&host);
        QWidget *widget = window->centralWidget();
        QCOMPARE(m_plugin.provider->configWindow(nullptr), window);
        QCOMPARE(window->centralWidget(), widget);
        QCOMPARE(window->parentWidget(), &host);
    }

    void aDestroyedWidgetIsReplacedInTheOldWindow()
    {
        QWidget host;
        const QPointer<QMainWindow> window = m_plugin.provider->configWindow(&host);
        delete window->centralWidget();
        QCOMPARE(m_plugin.provider->configWindow(&host), window);
        QVERIFY(window->centralWidget()->inherits("ManetteConfigurationWidget"));
        QCOMPARE(shownOfClass(window, "ManetteConfigurationWidget").size(), 1);
    }

    void theWidgetThatReplacesADestroyedOneFollowsTheServices()
    {
        m_plugin.provider->setServices(servicesWith(u"Avancer"_s));
        QWidget host;
        delete m_plugin.provider->configWindow(&host)->centralWidget();
        QMainWindow *window = windowWithStep(&host);
        QVERIFY2(offers(window, u"Avancer"_s), qPrintable(offered(window).join(u' ')));
        const QPointer<QWidget> card = shownOfClass(window, "ActionTaskBlockWidget").constFirst();
        Q_EMIT m_plugin.provider->servicesChanged({});
        QCOMPARE(shownOfClass(window, "ActionTaskBlockWidget").size(), 0);
        QVERIFY(!card); // applied again: the cards are made anew
        press(window, u"+ Etape"_s);
        QVERIFY(offers(window, u"Avancer"_s));
    }

    void aDestroyedWindowIsMadeAnewWithItsWidget()
    {
        QWidget host;
        delete m_plugin.provider->configWindow(&host);
        QMainWindow *window = m_plugin.provider->configWindow(&host);
        QVERIFY(window->centralWidget()->inherits("ManetteConfigurationWidget"));
        QCOMPARE(window->windowTitle(), u"Gamepad"_s);
    }

    // A host may do anything while a box is open.

    void askedAgainWhileItIsMadeItIsOneWindowWithOneWidget()
    {
        storeUnreadableProfile();
        QWidget host;
        QPointer<QMainWindow> early;
        const UnderTheBox box([&] { early = m_plugin.provider->configWindow(&host); });
        QMainWindow *window = m_plugin.provider->configWindow(&host);
        QVERIFY(box.came());
        QCOMPARE(early, window);
        QCOMPARE(shownOfClass(window, "ManetteConfigurationWidget"), QList{window->centralWidget()});
    }

    void destroyedWhileItIsMadeItIsNoWindow()
    {
        storeUnreadableProfile();
        QWidget host;
        const UnderTheBox box([&] { delete host.findChild<QMainWindow *>(); });
        QVERIFY(!m_plugin.provider->configWindow(&host));
        QVERIFY(box.came());
        const UnderTheBox next([] {});
        const QMainWindow *window = m_plugin.provider->configWindow(&host);
        QVERIFY(next.came());
        QVERIFY(window->centralWidget()->inherits("ManetteConfigurationWidget"));
    }

    void destroyedAndAskedForWhileItIsMadeTheWidgetJoinsTheNewOne()
    {
        storeUnreadableProfile();
        QWidget host;
        QMainWindow *second = nullptr;
        const UnderTheBox box([&] {
            delete host.findChild<QMainWindow *>();
            second = m_plugin.provider->configWindow(&host);
        });
        const QMainWindow *window = m_plugin.provider->configWindow(&host);
        QVERIFY(box.came());
        QVERIFY(window);
        QCOMPARE(window, second);
        QVERIFY(second->centralWidget()->inherits("ManetteConfigurationWidget"));
    }

    void thePluginMayGoWhileItIsMade()
    {
        storeUnreadableProfile();
        QWidget host;
        const UnderTheBox box([&] { delete m_plugin.instance; });
        QVERIFY(!m_plugin.provider->configWindow(&host));
        QVERIFY(box.came());
        m_plugin.instance = m_plugin.loader.instance();
        m_plugin.provider = qobject_cast<IComInterfaceModelProvider *>(m_plugin.instance);
        QVERIFY(m_plugin.provider);
    }

    // A profile that cannot be saved shows a box while the widget goes, and the window with it.
    void whatIsGoingIsGivenToNobodyAnyMore_data()
    {
        QTest::addColumn<bool>("theWindow");
        QTest::newRow("the window goes") << true;
        QTest::newRow("its widget goes") << false;
    }
    void whatIsGoingIsGivenToNobodyAnyMore()
    {
        QFETCH(const bool, theWindow);
        storeProfile();
        QWidget host;
        QMainWindow *const going = m_plugin.provider->configWindow(&host);
        const QWidget *const goingWidget = going->centralWidget();
        going->show();
        QCoreApplication::processEvents();
        QVERIFY(QMetaObject::invokeMethod(going->findChild<QWidget *>(u"widgetOverlay"_s), "dirty"));
        blockOverlay();

        QPointer<QMainWindow> window;
        QPointer<QWidget> widget;
        const UnderTheBox box([&] {
            QVERIFY(QDir(overlayPath()).removeRecursively());
            writeOverlay();
            m_plugin.provider->setServices(servicesWith(u"Avancer"_s));
            Q_EMIT m_plugin.provider->servicesChanged({});
            window = m_plugin.provider->configWindow(&host);
            widget = window->centralWidget();
            Q_EMIT m_plugin.provider->servicesChanged({});
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        });
        if (theWindow)
            delete going;
        else
            delete going->centralWidget();
        QVERIFY(box.came());
        QVERIFY(window);
        QCOMPARE(window == going, !theWindow);
        QVERIFY(widget);
        QVERIFY(widget != goingWidget);
        QCOMPARE(m_plugin.provider->configWindow(&host), window);
        QCOMPARE(window->centralWidget(), widget);
        QCOMPARE(windowWithStep(&host), window);
        QVERIFY2(offers(window, u"Avancer"_s), qPrintable(offered(window).join(u' ')));
    }

    void askedForAsItGoesItIsANewWindowWithAWidgetOfItsOwn()
    {
        QWidget host;
        QMainWindow *going = m_plugin.provider->configWindow(&host);
        QPointer<QMainWindow> window;
        connect(going, &QObject::destroyed, &host, [&] { window = m_plugin.provider->configWindow(&host); });
        delete going;
        QVERIFY(window);
        QCOMPARE(m_plugin.provider->configWindow(&host), window);
        QVERIFY(window->centralWidget()->inherits("ManetteConfigurationWidget"));
        m_plugin.provider->setServices(servicesWith(u"Avancer"_s));
        QVERIFY2(offers(windowWithStep(&host), u"Avancer"_s), qPrintable(offered(window).join(u' ')));
    }

    void servicesFromBeforeReachTheWidgetWhenItIsMade()
    {
        m_plugin.provider->setServices(servicesWith(u"Avancer"_s));
        QWidget host;
        QVERIFY2(offers(windowWithStep(&host), u"Avancer"_s), qPrintable(offered(&host).join(u' ')));
    }

    void servicesFromLaterReachALivingWidgetAtOnce()
    {
        QWidget host;
        QMainWindow *window = windowWithStep(&host);
        m_plugin.provider->setServices(servicesWith(u"Reculer"_s));
        press(window, u"+ Etape"_s);
        QVERIFY2(offers(window, u"Reculer"_s), qPrintable(offered(window).join(u' ')));
    }

    void theSignalAloneAppliesWhatIsStored()
    {
        m_plugin.provider->setServices(servicesWith(u"Avancer"_s));
        QWidget host;
        QMainWindow *window = windowWithStep(&host);
        const QPointer<QWidget> card = shownOfClass(window, "ActionTaskBlockWidget").constFirst();
        Q_EMIT m_plugin.provider->servicesChanged(servicesWith(u"Autre"_s));
        QCOMPARE(shownOfClass(window, "ActionTaskBlockWidget").size(), 0);
        QVERIFY(!card); // applied again: the cards are made anew
        press(window, u"+ Etape"_s);
        QVERIFY(offers(window, u"Avancer"_s));
        QVERIFY(!offers(window, u"Autre"_s));
    }

    void theSignalReachesNobodyAfterTheWindowWasDestroyed()
    {
        QWidget host;
        delete m_plugin.provider->configWindow(&host);
        Q_EMIT m_plugin.provider->servicesChanged({});
        m_plugin.provider->setServices(servicesWith(u"Avancer"_s));
        QVERIFY(offers(windowWithStep(&host), u"Avancer"_s));
    }
};

GAMEPAD_TEST_MAIN(TestConfigWindow)
#include "tst_configwindow.moc"
