// SPDX-License-Identifier: MIT
#include "modelfixture.h"

#include "gamepadmanager.h"
#include "scriptedjoystick.h"
#include "testmain.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QLoggingCategory>
#include <QtCore/QStandardPaths>

using namespace Qt::StringLiterals;

namespace fixture
{
void startAfresh()
{
    scripted::reset();
    clearTemporaryHome();
    failOnUnexpectedWarnings();
}

void prepareForHundredsOfManagers()
{
    QLoggingCategory::setFilterRules(u"default.debug=false"_s);
    qunsetenv("DISPLAY");
}

QString folderOf(const QString &context)
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u'/' + context +
           "/VelorCom"_L1;
}

void remember(const QJsonObject &devices, const QString &context)
{
    const QJsonObject root{{u"devices"_s, devices}, {u"lastCount"_s, devices.size()}};
    writeRaw(QJsonDocument(root).toJson(QJsonDocument::Compact), context);
}

void writeRaw(const QByteArray &bytes, const QString &context)
{
    QDir().mkpath(folderOf(context));
    QFile file(folderOf(context) + "/gamepads.json"_L1);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("the file of remembered devices cannot be written");
}

QJsonObject stored(const QString &context)
{
    QFile file(folderOf(context) + "/gamepads.json"_L1);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

QJsonObject storedDevice(const QString &usn, const QString &context)
{
    return stored(context).value("devices"_L1)[usn].toObject();
}

QJsonObject rememberedDevice(int slot, const QJsonObject &kv)
{
    return {
        {u"deviceId"_s, QString::number(slot)},
        {u"vendorIdHex"_s, u"45e"_s},
        {u"productIdHex"_s, u"28e"_s},
        {u"name"_s, u"Remembered %1"_s.arg(slot)},
        {u"imagePath"_s, u"/pictures/%1.png"_s.arg(slot)},
        {u"kv"_s, kv},
    };
}

QJsonObject selectedKv()
{
    return {{u"selected"_s, true}};
}

void plug(int slot, const QString &name)
{
    scripted::plug(static_cast<unsigned>(slot), scripted::restingPad(name.toStdString()));
}

void unplug(int slot)
{
    scripted::unplug(static_cast<unsigned>(slot));
}

void stopManager()
{
    GamepadManager::instance()->stopTimers();
}

void discover()
{
    QMetaObject::invokeMethod(GamepadManager::instance(), "discoverDevices");
}

void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

ControlManette *liveDevice(int slot)
{
    const GamepadManager::Gamepads devices = GamepadManager::instance()->gamepads();
    for (const auto &device : devices) {
        if (device && device->deviceId() == slot)
            return device;
    }
    return nullptr;
}

QJsonObject freshDevice(int slot, const QString &name, const QJsonObject &kv)
{
    return {
        {u"deviceId"_s, QString::number(slot)},
        {u"vendorIdHex"_s, u"1234"_s},
        {u"productIdHex"_s, u"abcd"_s},
        {u"name"_s, name},
        {u"imagePath"_s, u":/new/prefix1/ressources/menette_id_43981.png"_s},
        {u"kv"_s, kv},
    };
}

QStringList order(const LinkerDeviceModel &model)
{
    QStringList keys;
    for (int row = 0; row < model.count(); ++row)
        keys << model.usnForRow(row);
    return keys;
}

QString merged(int slot)
{
    return u"data gp:%1: name isConnected videoInterfaces product image modelString json"_s.arg(slot);
}

QString wentAway(int slot)
{
    return u"data gp:%1: isConnected linkState json"_s.arg(slot);
}

QString link(int slot)
{
    return u"data gp:%1: linkState"_s.arg(slot);
}

QString choice(int slot)
{
    return u"data gp:%1: selected linkState json"_s.arg(slot);
}
} // namespace fixture

TestedModel::TestedModel(const QString &context, QObject *parent)
    : LinkerDeviceModel(context, parent)
    , m_tester(this, QAbstractItemModelTester::FailureReportingMode::QtTest)
{}

QList<IComInterface *> TestedModel::selection()
{
    QList<IComInterface *> ifaces;
    QJsonArray infos;
    collectSelected(ifaces, infos);
    return ifaces;
}

qsizetype TestedModel::placeholders() const
{
    return findChildren<ControlManette *>(Qt::FindDirectChildrenOnly).size();
}

ModelLog::ModelLog(LinkerDeviceModel *model, const QString &context)
    : m_saves(fixture::folderOf(context))
{
    const auto plain = [this, model](auto signal, const QString &text) {
        connect(model, signal, this, [this, text] { say(text); });
    };
    plain(&LinkerDeviceModel::uniqSelectionChanged, u"uniqSelection"_s);
    plain(&LinkerDeviceModel::autoDetectChanged, u"autoDetect"_s);
    plain(&LinkerDeviceModel::previousCountChanged, u"previousCount"_s);
    plain(&LinkerDeviceModel::contextChanged, u"context"_s);
    plain(&LinkerDeviceModel::countChanged, u"count"_s);
    plain(&QAbstractItemModel::modelReset, u"reset"_s);
    connect(model, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex &, int first) { say(u"inserted %1"_s.arg(first)); });
    connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex &, int first) { say(u"about to remove %1"_s.arg(first)); });
    connect(model, &QAbstractItemModel::rowsRemoved, this,
            [this](const QModelIndex &, int first) { say(u"removed %1"_s.arg(first)); });
    connect(model, &QAbstractItemModel::dataChanged, this,
            [this, model](const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) {
                QStringList names;
                for (const int role : roles)
                    names << QString::fromLatin1(model->roleNames().value(role));
                const QString rows = first == last ? model->usnForRow(first.row()) : u"several rows"_s;
                say(u"data %1: %2"_s.arg(rows, names.join(u' ')));
            });
    connect(model, &LinkerDeviceModel::selectedInterfacesChanged, this,
            [this](const QList<IComInterface *> &ifaces) {
                QString text = u"selected"_s;
                for (const IComInterface *iface : ifaces)
                    text += u" %1"_s.arg(iface->property("deviceId").toInt());
                say(text);
            });
}

QStringList ModelLog::take()
{
    for (int saves = m_saves.take(); saves > 0; --saves)
        m_said << u"save"_s;
    return std::exchange(m_said, {});
}

void ModelLog::say(const QString &text)
{
    for (int saves = m_saves.take(); saves > 0; --saves)
        m_said << u"save"_s;
    m_said << text;
}
