// SPDX-License-Identifier: MIT
#include "configurationdesk.h"

#include "actiondesignerwidget.h"
#include "actionlinker.h"
#include "exchangefiles.h"
#include "jsontext.h"
#include "profilesroot.h"

#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolButton>

using namespace Qt::StringLiterals;

namespace
{
QString sampleFile(const QString &name)
{
    return QStringLiteral(GAMEPAD_SAMPLE "/") + name;
}

void copy(const QString &source, const QString &target)
{
    QVERIFY2(QFile::copy(source, target), qPrintable(source));
}

QByteArray metaOf(const QString &id, const ConfigurationDesk::Profile &profile)
{
    return QJsonDocument(QJsonObject{{u"type"_s, u"GamepadDefinderMeta"_s},
                                     {u"version"_s, 2},
                                     {u"id"_s, id},
                                     {u"name"_s, profile.name},
                                     {u"image"_s, u"image.png"_s},
                                     {u"overlayFile"_s, u"overlay.json"_s},
                                     {u"config"_s, u"configActionGamepad.json"_s},
                                     {u"deviceName"_s, profile.deviceName},
                                     {u"modifiedAt"_s, u"2026-01-01T00:00:00Z"_s}})
        .toJson();
}
} // namespace

ConfigurationDesk::ConfigurationDesk()
{
    stage::startAfresh(); // first, since the manager looks for gamepads as soon as it is there
    m_pads = std::make_unique<stage::Pads>();
}

ConfigurationDesk::~ConfigurationDesk() = default;

void ConfigurationDesk::store(const Profile &profile)
{
    // Rows come in the order of the folders' names.
    const QString id = u"%1-0000-4000-8000-000000000000"_s.arg(++m_stored, 8, 10, QLatin1Char('0'));
    const QString folder = profilesRootPath() + u'/' + id + u'/';
    write(folder + "meta.json"_L1, metaOf(id, profile));
    copy(sampleFile(u"overlay.json"_s), folder + "overlay.json"_L1);
    if (profile.hasPicture)
        copy(sampleFile(u"image.png"_s), folder + "image.png"_L1);
    if (profile.isBound)
        copy(sampleFile(u"configActionGamepad.json"_s), folder + "configActionGamepad.json"_L1);
}

void ConfigurationDesk::store(const QJsonArray &actions)
{
    write(profilesRootPath() + "/actions.json"_L1, QJsonDocument(QJsonObject{{u"ref"_s, actions}}).toJson());
}

bool ConfigurationDesk::open(const QSize &size)
{
    m_window = std::make_unique<ManetteConfigurationWidget>();
    m_tabs = m_window->findChild<QTabWidget *>();
    m_profiles = m_window->findChild<GamepadDefinder *>();
    m_linker = m_window->findChild<ActionLinker *>();
    m_designer = m_window->findChild<ActionDesignerWidget *>();
    m_window->setServices(objectIn(QStringLiteral(GAMEPAD_SERVICES)));
    m_window->setGeometry(QRect(QPoint(40, 40), size));
    m_window->show();
    m_window->activateWindow();
    return QTest::qWaitForWindowExposed(m_window.get());
}

void ConfigurationDesk::turnTo(const QString &tab)
{
    for (int i = 0; i < m_tabs->count(); ++i) {
        if (m_tabs->tabText(i) == tab) {
            m_tabs->setCurrentIndex(i);
            return;
        }
    }
    QFAIL(qPrintable(tab));
}

void ConfigurationDesk::clickEntry(const QString &text)
{
    auto *list = m_tabs->currentWidget()->findChild<QListWidget *>();
    const QList<QListWidgetItem *> entries = list->findItems(text, Qt::MatchExactly);
    QVERIFY2(!entries.isEmpty(), qPrintable(text));
    list->scrollToItem(entries.constFirst());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(entries.constFirst()).topLeft() + QPoint(30, 12));
}

void ConfigurationDesk::clickButton(const QString &text)
{
    for (QToolButton *button : m_designer->findChildren<QToolButton *>()) {
        if (button->text() == text) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    QFAIL(qPrintable(text));
}

QJsonArray someActions()
{
    return array(R"([
        {'name': 'Pan', 'tasks': [{'ref': 'camera.pan', 'args': {'angle': 'arg_0', 'smooth': true}}]},
        {'name': 'Stop', 'tasks': [{'ref': 'motor.stopAll', 'args': {}},
                                   {'ref': 'camera.home', 'args': {}, 'when': 'state(parked) == true'}]},
        {'name': 'Take a picture', 'params': [{'name': 'label', 'preferredType': 'string', 'default': 'photo'}],
         'tasks': [{'ref': 'camera.record', 'args': {'on': true}},
                   {'ref': 'message.show', 'args': {'text': 'param:label'}}]},
        {'name': 'Zoom', 'tasks': [{'ref': 'camera.zoom', 'args': {'speed': 'arg_0'}}]}])");
}
