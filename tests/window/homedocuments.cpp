// SPDX-License-Identifier: MIT
#include "homedocuments.h"

#include "jsontext.h"
#include "profilesroot.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace
{
QString idOf(int profile)
{
    return u"%1%1%1%1%1%1%1%1-0000-4000-8000-000000000000"_s.arg(profile);
}

QString fileOf(int profile, const QString &name)
{
    return profilesRootPath() + u'/' + idOf(profile) + u'/' + name;
}
} // namespace

void home::write(const QString &path, const QJsonObject &document)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    const QByteArray text = QJsonDocument(document).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray home::bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonObject home::documentAt(const QString &path)
{
    return QJsonDocument::fromJson(bytesOf(path)).object();
}

QString home::metaPath(int profile)
{
    return fileOf(profile, u"meta.json"_s);
}

QString home::overlayPath(int profile)
{
    return fileOf(profile, u"overlay.json"_s);
}

QString home::mappingPath(int profile)
{
    return fileOf(profile, u"configActionGamepad.json"_s);
}

QString home::actionsPath()
{
    return profilesRootPath() + "/actions.json"_L1;
}

void home::storeProfile(int profile, const QStringList &titles)
{
    QJsonArray nodes;
    double at = 0.02;
    for (const QString &title : titles) {
        QJsonObject node = object(R"({'state':'Normal','freeAspect':false})");
        node["id"_L1] = u"%1-0000-4000-8000-000000000000"_s.arg(nodes.size() + 1, 8, 10, QChar(u'0'));
        node["title"_L1] = title;
        node["pastille"_L1] = QJsonObject{{u"x"_s, at}, {u"y"_s, 0.1}, {u"w"_s, 0.1}, {u"h"_s, 0.1}};
        node["toolbox"_L1] = QJsonObject{{u"x"_s, at}, {u"y"_s, 0.3 + at}, {u"w"_s, 0.4}, {u"h"_s, 0.1}};
        QJsonObject src = object(R"({'deviceType':'gamepade','deviceId':0,'packetId':1})");
        src["stringKey"_L1] = title;
        src["isJoy"_L1] = title.startsWith("joy"_L1);
        node["src"_L1] = src;
        nodes.append(node);
        at += 0.15;
    }
    QJsonObject overlay = object(R"({'type':'InteractiveOverlay','version':2,'coordSpace':'background',
                                     'bgMode':'Contain','overlaySize':{'w':640,'h':420}})");
    overlay["nodes"_L1] = nodes;
    write(overlayPath(profile), overlay);
    write(metaPath(profile), {{u"type"_s, u"GamepadDefinderMeta"_s},
                              {u"version"_s, 2},
                              {u"id"_s, idOf(profile)},
                              {u"name"_s, u"Profile %1"_s.arg(profile)},
                              {u"image"_s, u"image.png"_s},
                              {u"overlayFile"_s, u"overlay.json"_s},
                              {u"config"_s, u"configActionGamepad.json"_s},
                              {u"deviceName"_s, QString()},
                              {u"modifiedAt"_s, u"2020-01-01T00:00:00Z"_s}});
}

void home::storeActions(const QJsonArray &actions)
{
    write(actionsPath(), {{u"ref"_s, actions}});
}

void home::storeMapping(int profile, const QJsonArray &bridges)
{
    QJsonObject document = object(R"({'signals':[],'onStartup':[{'ref':'Host'}],'onClose':[],
                                      'timers':[{'every':9}],'ref':[]})");
    document["bridges"_L1] = bridges;
    write(mappingPath(profile), document);
}

QJsonArray home::storedActions()
{
    return documentAt(actionsPath())["ref"_L1].toArray();
}

QJsonArray home::storedBridges(int profile)
{
    return documentAt(mappingPath(profile))["bridges"_L1].toArray();
}

QStringList home::storedNames()
{
    QStringList names;
    const QJsonArray actions = storedActions();
    for (const QJsonValue &action : actions)
        names.append(action["name"_L1].toString());
    return names;
}

QJsonObject home::services()
{
    return object(R"({'ref':[
        {'name':'F','params':[{'name':'p','preferredType':'int'}]},
        {'name':'G','params':[{'name':'t','preferredType':'string'},{'name':'l','preferredType':'double'},
                              {'name':'o','preferredType':'bool'}]},
        {'name':'H'}]})");
}

QJsonArray home::actions()
{
    return array(R"([
        {'name':'A','params':[{'name':'speed','preferredType':'int','default':1}],
         'tasks':[{'ref':'F','args':{'p':'param:speed'},'when':'W'}]},
        {'name':'B','params':[{'name':'text','preferredType':'string'},
                              {'name':'level','preferredType':'double','default':1.5},
                              {'name':'on','preferredType':'bool'}],
         'tasks':[{'ref':'G','args':{'t':'param:text','l':'param:level','o':'param:on'}}]},
        {'name':'C','tasks':[{'ref':'H','args':{}}]}])");
}

QJsonArray home::bridges()
{
    return array(R"([
        {'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_1'},
         'action':'A','args':{'speed':42},'dst':[{'ref':'F','args':{'p':42},'when':'W'}]},
        {'src':{'deviceType':'gamepade','deviceId':3,'packetId':7,'stringKey':'joy_2'},
         'action':'B','args':{'text':'hello world','level':-7.25,'on':true},
         'dst':[{'ref':'G','args':{'t':'hello world','l':-7.25,'o':true}}]},
        {'src':{'deviceType':'gamepade','deviceId':0,'packetId':1,'stringKey':'but_4'},
         'action':'A','args':{'speed':'transform(arg_0, 2)'},
         'dst':[{'ref':'F','args':{'p':'transform(arg_0, 2)'},'when':'W'}]}])");
}
