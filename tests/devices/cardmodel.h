// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QVariant>

#include <utility>

/// One row by role name.
using CardRow = QHash<QByteArray, QVariant>;

/// A stand-in for the device list, with the same role names under other numbers, that counts what is asked
/// of it and can refuse to be written.
class CardModel : public QAbstractListModel
{
public:
    explicit CardModel(const QList<CardRow> &rows = {}, int firstRole = 4711)
    {
        // Not in the order of the real model, so that a role number that was guessed shows.
        for (const char *name : {"linkState", "modelString", "image", "product", "json", "videoInterfaces",
                                 "isConnected", "selected", "ip", "name", "usn"})
            m_names.insert(firstRole++, name);
        m_rows = rows;
    }

    /// A card that fills every role.
    static CardRow fullRow(const QString &usn)
    {
        return {{"usn", usn},
                {"name", QStringLiteral("Manette") + usn},
                {"ip", QStringLiteral("VID:45e PID:28e")},
                {"selected", false},
                {"isConnected", true},
                {"videoInterfaces",
                 QStringList{QStringLiteral("Axes|axis://6"), QStringLiteral("Buttons|btn://11")}},
                {"product", QStringLiteral("Pad")},
                {"modelString", QStringLiteral("45e-28e")},
                {"linkState", 2}};
    }

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }

    QVariant data(const QModelIndex &index, int role) const override
    {
        ++dataCalls;
        rowsRead[index.row()] += 1;
        if (role == Qt::ToolTipRole)
            return toolTip;
        return m_rows.value(index.row()).value(m_names.value(role));
    }

    bool setData(const QModelIndex &index, const QVariant &value, int role) override
    {
        writes.append({.row = index.row(), .role = m_names.value(role), .value = value});
        if (refuseWrites)
            return false;
        m_rows[index.row()].insert(m_names.value(role), value);
        Q_EMIT dataChanged(index, index, {role});
        return true;
    }

    QHash<int, QByteArray> roleNames() const override
    {
        ++roleNamesCalls;
        return m_names;
    }

    Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsEnabled
                               : Qt::NoItemFlags;
    }

    /// Takes a role away, as if the model had never had it.
    void dropRole(const QByteArray &name) { m_names.remove(m_names.key(name)); }
    void renameRole(const QByteArray &name, const QByteArray &other) { m_names[m_names.key(name)] = other; }

    void put(int row, const QByteArray &name, const QVariant &value)
    {
        m_rows[row].insert(name, value);
        Q_EMIT dataChanged(index(row), index(row));
    }

    QVariant get(int row, const QByteArray &name) const { return m_rows.value(row).value(name); }

    void clearRows()
    {
        beginResetModel();
        m_rows.clear();
        endResetModel();
    }

    void removeFirstRow()
    {
        beginRemoveRows({}, 0, 0);
        m_rows.removeFirst();
        endRemoveRows();
    }

    struct Write
    {
        int row = -1;
        QByteArray role;
        QVariant value;
    };

    bool refuseWrites = false;
    QString toolTip;
    QList<Write> writes;
    mutable int dataCalls = 0;
    mutable int roleNamesCalls = 0;
    mutable QMap<int, int> rowsRead;

private:
    QHash<int, QByteArray> m_names;
    QList<CardRow> m_rows;
};
