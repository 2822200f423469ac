// SPDX-License-Identifier: MIT
#pragma once

#include "icominterfacemodelprovider.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QPointer>
#include <QtWidgets/QStyledItemDelegate>

/// A device that says what a test lets it say.
class FakeDevice : public IComInterface
{
    Q_OBJECT

public:
    using IComInterface::IComInterface;

    void start(const QString &) override {}
    void stop() override {}
    void quit() override {}
    int reservedFlag() override { return 0; }
    QString deviceJson() override
    {
        return QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact));
    }
    void reservedHook() override {}
    void setValue(int deviceId, int, const QString &propertyName, const QVariant &value) override
    {
        written = {deviceId, propertyName, value};
    }
    int deviceType() override { return gamepade; }
    QStringList noCodeApp() override { return documents; }
    QVariant value() override { return {}; }
    int status() override { return state; }
    QJsonArray fonctions() override { return {}; }

    QJsonObject json{{QLatin1StringView("deviceId"), 4}};
    QStringList documents;
    int state = connected;
    QVariantList written;
};

/// A list of rows by key, with the role names and invokable methods that the contract tells.
class FakeModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(bool uniqSelection MEMBER uniqSelection)

public:
    struct Row
    {
        QString usn;
        QString name;
        QPointer<FakeDevice> device;
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex & = {}) const override { return int(rows.size()); }
    QHash<int, QByteArray> roleNames() const override { return {{300, "usn"}, {301, "name"}}; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (!index.isValid())
            return {};
        const Row &row = rows.at(index.row());
        return role == 300 ? QVariant(row.usn) : role == 301 ? QVariant(row.name) : QVariant();
    }
    bool setData(const QModelIndex &index, const QVariant &value, int role) override
    {
        if (role != 301)
            return false;
        rows[index.row()].name = value.toString();
        Q_EMIT dataChanged(index, index);
        return true;
    }
    Q_INVOKABLE int indexOfUsn(const QString &usn)
    {
        for (int row = 0; row < rows.size(); ++row) {
            if (rows.at(row).usn == usn)
                return row;
        }
        return -1;
    }
    Q_INVOKABLE QObject *interfaceForRow(int row) { return rows.at(row).device; }
    Q_INVOKABLE void setSelected(const QString &usn, bool on) { selected = {usn, on}; }
    Q_INVOKABLE bool deleteDevice(const QString &usn) { return indexOfUsn(usn) >= 0; }

    FakeDevice *add(const QString &usn, const QString &name)
    {
        beginInsertRows({}, rowCount(), rowCount());
        auto *device = new FakeDevice(this);
        rows.append({usn, name, device});
        endInsertRows();
        return device;
    }

    QList<Row> rows;
    QVariantList selected;
    bool uniqSelection = true;
};

class FakeProvider : public IComInterfaceModelProvider
{
    Q_OBJECT

public:
    QString providerName() override { return QStringLiteral("maker"); }
    QString interfaceName() override { return QStringLiteral("Family"); }
    QAbstractListModel *model(const QString &name, QObject *parent) override
    {
        calls.append(QStringLiteral("model ") + name);
        return list = new FakeModel(parent);
    }
    QAbstractItemDelegate *delegate(QObject *parent) override
    {
        calls.append(QStringLiteral("delegate"));
        return new QStyledItemDelegate(parent);
    }
    void selectedInterfaces(QList<IComInterface *> &, QJsonArray &) override {}
    QMainWindow *configWindow(QWidget *) override { return nullptr; }
    int reservedFlagA() override { return 0; }
    int reservedFlagB() override { return 0; }
    QJsonObject info() override { return {}; }
    void setServices(const QJsonObject &object) override { services = object; }
    QIcon icon() override { return {}; }

    void select(const QList<IComInterface *> &devices)
    {
        Q_EMIT selectedInterfacesChanged(devices, QJsonArray());
    }

    QPointer<FakeModel> list;
    QStringList calls;
    QJsonObject services;
};
