// SPDX-License-Identifier: MIT
#pragma once

#include "received.h"

#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QObject>
#include <QtCore/QTimer>

class IComInterfaceModelProvider;
class QAbstractItemDelegate;
class QAbstractListModel;
class QMainWindow;

/// This host's side of the contract: asks the provider for its objects in the order that the contract tells,
/// holds the selected interfaces, and passes on all that they say. It knows the model by the names of its
/// roles, properties and invokable methods alone.
class HostSession : public QObject
{
    Q_OBJECT

public:
    HostSession(IComInterfaceModelProvider *provider, const QString &context, QObject *parent = nullptr);
    ~HostSession() override;

    [[nodiscard]] IComInterfaceModelProvider *provider() const { return m_provider; }
    [[nodiscard]] QAbstractListModel *model() const { return m_model; }
    [[nodiscard]] QAbstractItemDelegate *delegate() const { return m_delegate; }
    [[nodiscard]] const QList<HeldDevice> &devices() const { return m_devices; }
    /// The held device of that number, or none.
    [[nodiscard]] const HeldDevice *device(int number) const;

    /// A row's data by role name; invalid where the row or the role does not exist.
    [[nodiscard]] QVariant rowData(int row, const QByteArray &role) const;
    bool setRowData(int row, const QByteArray &role, const QVariant &value);
    /// The row with that key, or -1.
    [[nodiscard]] int rowOf(const QString &usn) const;

    void setSelected(const QString &usn, bool selected);
    [[nodiscard]] bool forget(const QString &usn);
    /// Calls `setValue` on the row's interface, for the device's own id. False when the row has none.
    [[nodiscard]] bool write(const QString &usn, const QString &property, const QVariant &value);
    void handServices(const QJsonObject &services);
    /// The family's window, made for `parent` at the first call.
    QMainWindow *configWindow(QWidget *parent);

Q_SIGNALS:
    void rowsChanged();
    /// `infos` is what the plugin tells of each device, in the same order.
    void selectionReceived(const QList<HeldDevice> &devices, const QJsonArray &infos);
    void valuesReceived(const ValueBatch &batch);
    void namedValuesReceived(int device, const QString &deviceName, const QString &catName,
                             const QStringList &keys, const QVariantList &values);
    void statusReceived(int device, int status);
    void noCodeAppReceived(int device, const QStringList &paths);
    /// The rest positions that the device has learned are others than before; 0 stands for not learned too.
    void restChanged(int device, const QJsonArray &bias);
    void finishedReceived(int device);
    void deviceGone(int device);

private:
    void take(const QList<IComInterface *> &interfaces, const QJsonArray &infos);
    int numberOf(IComInterface *interface);
    void listenTo(IComInterface *interface, int number);
    void lookAtRest();
    [[nodiscard]] int rowOf(const QObject *interface) const;

    IComInterfaceModelProvider *m_provider;
    QAbstractListModel *m_model;
    QAbstractItemDelegate *m_delegate;
    QList<HeldDevice> m_devices;
    QHash<const QObject *, int> m_numbers; ///< of every interface that was met and lives
    QHash<int, QJsonArray> m_rest;
    QTimer m_restTimer;
    int m_lastNumber = 0;
};
