// SPDX-License-Identifier: MIT
// The part of the road that goes through the plugin's configuration window.
#include "road.h"

#include "reportlines.h"
#include "virtualpad.h"
#include "writtenfiles.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>

using namespace Qt::StringLiterals;

namespace
{
const auto button = "but_3"_L1;
constexpr int buttonNumber = 3;
const auto profileName = u"Manette de démonstration"_s;
const auto actionName = u"Allumer le phare"_s;

QStringList answerFileDialog(const QString &path)
{
    return {u"enter fileNameEdit "_s + path};
}

QStringList openTab(const QString &title)
{
    return {u"click tabWidget_4 "_s + title};
}
} // namespace

QString Road::hand(const QStringList &gestures)
{
    for (const QString &gesture : gestures) {
        const QString problem = m_host->command(u"hand "_s + gesture);
        if (!problem.isEmpty())
            return u"\"%1\": %2"_s.arg(gesture, problem);
    }
    return {};
}

QString Road::profileFile(const QString &name) const
{
    return m_profile + u'/' + name;
}

QByteArray Road::document() const
{
    QFile file(profileFile(u"configActionGamepad.json"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A press that follows before the release was read would be no press.
bool Road::letGo()
{
    const qsizetype from = m_host->mark();
    m_pad.setButton(buttonNumber, false);
    return m_host->waitFor(reported::button(selectedDevice(), button, false), from).has_value();
}

StepResult Road::openWindow()
{
    QString problem = m_host->command(u"configure"_s);
    if (problem.isEmpty())
        problem = hand(openTab(u"Configuration"_s));
    return problem.isEmpty() ? happened(u"a window of three tabs"_s) : missed(problem);
}

StepResult Road::makeProfile()
{
    const QString picture = m_setup.data + "/manette.png"_L1;
    QFile::remove(picture);
    if (!QFile::copy(u":/sampleprofile/image.png"_s, picture))
        return missed(u"a picture at "_s + picture);
    const QString device = QString::fromStdString(demoPad().name);
    m_selectedAt = m_host->mark();
    const QString problem = hand(QStringList{u"click pushButtonAdd"_s,
                                             u"type QInputDialog/QLineEdit "_s + profileName, u"press OK"_s} +
                                 answerFileDialog(picture) +
                                 QStringList{u"click QInputDialog/QComboBox "_s + device, u"press OK"_s});
    if (!problem.isEmpty())
        return missed(problem);
    m_profile = written::folderWith(m_setup.data + "/data/velor/gamepad-host/Gamepads"_L1, u"meta.json"_s);
    const auto meta = written::document(profileFile(u"meta.json"_s), [&](const QJsonObject &document) {
        return document["name"_L1] == profileName && document["deviceName"_L1] == device;
    });
    if (!meta)
        return missed(u"meta.json of the linked profile"_s);
    // The editor starts the pad of the profile on show, which learns its rest anew.
    const StepResult rest = awaitRest();
    return rest.happened ? happened(u"meta.json of \"%1\", linked to \"%2\""_s.arg(profileName, device))
                         : rest;
}

StepResult Road::learnButton()
{
    const QString problem = hand({u"rightclick widgetOverlay/TouchArea"_s, u"press Écouter un nom (vert)"_s});
    if (!problem.isEmpty())
        return missed(problem);
    m_pad.setButton(buttonNumber, true);
    const auto overlay = written::document(profileFile(u"overlay.json"_s), [](const QJsonObject &document) {
        return document["nodes"_L1][0]["title"_L1] == button;
    });
    if (!letGo() || !overlay)
        return missed(u"overlay.json with a pastille called but_3"_s);
    return happened(u"overlay.json with a pastille called but_3"_s);
}

StepResult Road::takeSnapshot()
{
    const QString path = m_setup.data + "/snapshot.png"_L1;
    const QString problem =
        hand(openTab(u"Configuration"_s) +
             QStringList{u"rightclick listWidget "_s + profileName, u"press Snapshot PNGâ€¦"_s} +
             answerFileDialog(path));
    if (!problem.isEmpty())
        return missed(problem);
    const qint64 size = written::size(path);
    return size > 0 ? happened(u"a picture of %1 bytes"_s.arg(size)) : missed(u"a picture at "_s + path);
}

StepResult Road::exportCopy()
{
    const QString path = m_setup.data + "/copy.velor.json"_L1;
    m_selectedAt = m_host->mark();
    const QString problem =
        hand(QStringList{u"rightclick listWidget "_s + profileName, u"press Dupliquer"_s,
                         u"rightclick listWidget %1 (copie)"_s.arg(profileName), u"press Exporterâ€¦"_s} +
             answerFileDialog(path) + QStringList{u"click listWidget "_s + profileName});
    if (!problem.isEmpty())
        return missed(problem);
    const auto document = written::document(path, [](const QJsonObject &copy) {
        return copy["type"_L1] == "VelorGamepad"_L1 && !copy["imageBase64"_L1].toString().isEmpty() &&
               copy["overlay"_L1]["nodes"_L1][0]["title"_L1] == button;
    });
    if (!document)
        return missed(u"the document at "_s + path);
    // Back on the linked profile, the editor starts its pad again.
    const StepResult rest = awaitRest();
    return rest.happened ? happened(u"a VelorGamepad document with picture and pastille, without a link"_s)
                         : rest;
}

StepResult Road::composeAction()
{
    const QString problem =
        hand(openTab(u"Action designer"_s) + QStringList{u"press +"_s, u"type actionNameEdit "_s + actionName,
                                                         u"press + Etape"_s,
                                                         u"click ActionTaskBlockWidget/QComboBox "
                                                         "light.switch(bool on=true, int brightness=100)"_s,
                                                         u"type ActionTaskBlockWidget/QLineEdit#2 80"_s});
    if (!problem.isEmpty())
        return missed(problem);
    const QString path = m_setup.data + "/data/velor/gamepad-host/Gamepads/actions.json"_L1;
    const auto actions = written::document(path, [](const QJsonObject &document) {
        const QJsonValue action = document["ref"_L1][0];
        return action["name"_L1] == actionName && action["tasks"_L1][0]["ref"_L1] == "light.switch"_L1 &&
               action["tasks"_L1][0]["args"_L1]["brightness"_L1] == 80;
    });
    return actions ? happened(u"actions.json with \"%1\": light.switch(brightness=80)"_s.arg(actionName))
                   : missed(u"the action in actions.json"_s);
}

StepResult Road::bindButton()
{
    const qsizetype from = m_host->mark();
    const QString problem =
        hand(openTab(u"Mapping"_s) + QStringList{u"click mappingActionsList "_s + actionName});
    if (!problem.isEmpty())
        return missed(problem);
    m_pad.setButton(buttonNumber, true);
    const auto mapping =
        written::document(profileFile(u"configActionGamepad.json"_s), [](const QJsonObject &document) {
            const QJsonValue bridge = document["bridges"_L1][0];
            return bridge["action"_L1] == actionName && bridge["src"_L1]["stringKey"_L1] == button &&
                   bridge["dst"_L1][0]["args"_L1]["brightness"_L1] == 80;
        });
    if (!letGo() || !mapping)
        return missed(u"a bridge from but_3 to the action in configActionGamepad.json"_s);
    const QString path = profileFile(u"configActionGamepad.json"_s);
    const auto told = m_host->waitFor(
        [&](const QJsonObject &line) {
            return line["what"_L1] == "noCodeApp"_L1 && line["paths"_L1].toArray().contains(path);
        },
        from);
    return told ? happened(u"noCodeAppChanged with the path of configActionGamepad.json"_s)
                : missed(u"noCodeAppChanged with %1"_s.arg(path));
}

StepResult Road::awaitFiring(const QString &key, qsizetype from)
{
    const auto bridge = m_host->waitFor(
        [&](const QJsonObject &line) { return line["what"_L1] == "fires"_L1 && line["key"_L1] == key; },
        from);
    return bridge ? happened(u"%1 fires \"%2\"; the host would run: %3"_s.arg(
                        key, (*bridge)["action"_L1].toString(), (*bridge)["tasks"_L1].toString()))
                  : missed(u"the bridge of %1"_s.arg(key));
}

StepResult Road::fireBridge()
{
    const qsizetype from = m_host->mark();
    m_pad.setButton(buttonNumber, true);
    StepResult fired = awaitFiring(button, from);
    if (!letGo() && fired.happened)
        return missed(u"dataChanged with but_3 = false"_s);
    return fired;
}
