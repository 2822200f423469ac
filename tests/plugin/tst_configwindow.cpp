// SPDX-License-Identifier: MIT
#include "answer.h"
#include "loadedplugin.h"
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

/// A profile whose overlay cannot be read: the window's making then stops at a box.
void storeUnreadableProfile()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                           u"/Gamepads/0b1f4d6e-58cb-4f51-9a0b-3c2d9f1e7a01"_s;
    QVERIFY(QDir().mkpath(folder + u"/overlay.json"_s));
    QFile meta(folder + u"/meta.json"_s);
    QVERIFY(meta.open(QIODevice::WriteOnly));
    QVERIFY(meta.write(R"({"type":"GamepadDefinderMeta","id":"0b1f4d6e-58cb-4f51-9a0b-3c2d9f1e7a01"})") > 0);
}

/// Does something while the box of the window's making is open.
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
