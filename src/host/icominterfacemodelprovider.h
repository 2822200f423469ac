// SPDX-License-Identifier: MIT
#pragma once

#include "icominterface.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QJsonObject>
#include <QtGui/QIcon>
#include <QtWidgets/QAbstractItemDelegate>
#include <QtWidgets/QMainWindow>

/// One family of devices, offered to the host as a list model. The object that a plugin's loader hands out.
///
/// The order of operations and signals is the contract with hosts that carry their own copy of this class.
class IComInterfaceModelProvider : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Maker word of the provider.
    virtual QString providerName() = 0;
    /// Name of the device family, as the host shows it.
    virtual QString interfaceName() = 0;
    /// The list of devices, owned by `parent`. The first call makes it; later calls return the same one and
    /// ignore their arguments. To be called before anything else of the provider.
    virtual QAbstractListModel *model(const QString &context, QObject *parent) = 0;
    /// The painter of that list, owned by `parent`. Made once, like the model, and after it.
    virtual QAbstractItemDelegate *delegate(QObject *parent) = 0;
    /// Fills both with what is selected at this moment, entry by entry the same device. The host does not
    /// own the interfaces: they go by `deleteLater` when a device vanishes or is replaced.
    virtual void selectedInterfaces(QList<IComInterface *> &ifaces, QJsonArray &infos) = 0;
    /// The configuration window of the family, owned by `parent`.
    virtual QMainWindow *configWindow(QWidget *parent) = 0;
    /// Always zero; these two slots keep the table's order.
    virtual int reservedFlagA() = 0;
    virtual int reservedFlagB() = 0;
    /// An empty object where the family has nothing to tell.
    virtual QJsonObject info() = 0;
    /// The host hands over its services object; its array `ref` describes the host's functions.
    virtual void setServices(const QJsonObject &services) = 0;
    /// The family's icon.
    virtual QIcon icon() = 0;

Q_SIGNALS:
    void selectedInterfacesChanged(const QList<IComInterface *> &selectedIfaces, const QJsonArray &info);
    void servicesChanged(const QJsonObject &services);
};

#define IComInterfaceModelProvider_iid "fr.velor.IComInterfaceModelProvider/1.0"
Q_DECLARE_INTERFACE(IComInterfaceModelProvider, IComInterfaceModelProvider_iid)

/// Makes the contract's types known by name to the meta-type system. May be called more than once.
void registerContractTypes();
