// SPDX-License-Identifier: MIT
#include "linkerdevicemodel.h"

#include "iconvalue.h"

#include <QtCore/QSize>

int LinkerDeviceModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

Qt::ItemFlags LinkerDeviceModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsEnabled;
}

QHash<int, QByteArray> LinkerDeviceModel::roleNames() const
{
    return {
        {UsnRole, "usn"},
        {NameRole, "name"},
        {IpRole, "ip"},
        {SelectedRole, "selected"},
        {ConnectedRole, "isConnected"},
        {VideoInterfacesRole, "videoInterfaces"},
        {JsonRole, "json"},
        {ProductRole, "product"},
        {ImageRole, "image"},
        {ModelRole, "modelString"},
        {LinkStateRole, "linkState"},
    };
}

QVariant LinkerDeviceModel::data(const QModelIndex &index, int role) const
{
    const DeviceRecord *record = index.isValid() ? recordAt(index.row()) : nullptr;
    if (!record)
        return {};
    switch (role) {
    case Qt::SizeHintRole:
        return QSize(300, 240);
    case Qt::DisplayRole:
    case NameRole:
        return nameText(*record);
    case Qt::DecorationRole:
        return decoration(*record);
    case UsnRole:
        return m_usnOrder.at(index.row());
    case IpRole:
        return addressText(*record);
    case SelectedRole:
        return selectedByUser(*record);
    case ConnectedRole:
        return record->isConnected;
    case VideoInterfacesRole:
        return record->capabilities;
    case JsonRole:
        return jsonText(*record);
    case ProductRole:
        return productText(*record);
    case ImageRole:
        return image(*record);
    case ModelRole:
        return modelText(*record);
    case LinkStateRole:
        return static_cast<int>(record->linkState);
    default:
        return {};
    }
}

bool LinkerDeviceModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || !recordAt(index.row()))
        return false;
    const QString usn = m_usnOrder.at(index.row());
    switch (role) {
    case NameRole:
        setName(usn, value.toString());
        return true;
    case SelectedRole:
        select(usn, value.toBool());
        return true;
    case ProductRole:
        setProduct(usn, value.toString());
        return true;
    case ImageRole:
        return setImage(usn, value);
    default:
        return false;
    }
}

void LinkerDeviceModel::setName(const QString &usn, const QString &name)
{
    QJsonObject &kv = recordOf(usn)->kv;
    if (kv.value(UserKey::nameOverride).toString() == name)
        return;
    kv[UserKey::nameOverride] = name;
    announceAndSave(usn, {NameRole, JsonRole});
}

void LinkerDeviceModel::setProduct(const QString &usn, const QString &product)
{
    DeviceRecord &record = *recordOf(usn);
    record.productName = product;
    record.kv[UserKey::product] = product;
    announceAndSave(usn, {ProductRole, JsonRole});
}

bool LinkerDeviceModel::setImage(const QString &usn, const QVariant &image)
{
    DeviceRecord &record = *recordOf(usn);
    if (const auto icon = iconOf(image)) {
        record.deviceIcon = *icon;
        record.kv.remove(UserKey::imagePath);
    } else if (image.typeId() == QMetaType::QString) {
        record.kv[UserKey::imagePath] = image.toString();
        record.deviceIcon = {};
    } else {
        return false;
    }
    announceAndSave(usn, {ImageRole});
    return true;
}

void LinkerDeviceModel::announceAndSave(const QString &usn, const QList<int> &roles)
{
    const QPointer<LinkerDeviceModel> self(this);
    announce(usn, roles);
    if (self)
        saveToDisk();
}
