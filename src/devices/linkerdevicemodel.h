// SPDX-License-Identifier: MIT
#pragma once

#include "devicerecord.h"
#include "gamepadsdocument.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QHash>
#include <QtCore/QJsonArray>

class GamepadManager;

/// The list of gamepads that the host shows and selects from.
///
/// A row is keyed by its `usn`, "gp:%1" with the joystick slot, and outlives the device behind it: rows come
/// back from `gamepads.json`, and a selected row whose pad is away holds a placeholder, so that the host's
/// selection never points at nothing. Listeners may call back into the model from any of its signals.
class LinkerDeviceModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(bool uniqSelection READ uniqSelection WRITE setUniqSelection NOTIFY uniqSelectionChanged)
    Q_PROPERTY(bool autoDetect READ autoDetect WRITE setAutoDetect NOTIFY autoDetectChanged)
    Q_PROPERTY(int previousCount READ previousCount NOTIFY previousCountChanged)
    Q_PROPERTY(QString context READ context WRITE setContext NOTIFY contextChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Roles {
        UsnRole = Qt::UserRole + 1,
        NameRole,
        IpRole,
        SelectedRole,
        ConnectedRole,
        VideoInterfacesRole,
        JsonRole,
        ProductRole,
        ImageRole,
        ModelRole,
        LinkStateRole,
    };
    Q_ENUM(Roles)

    /// `context` is the folder that the list is remembered in. Brings up the `GamepadManager`, as its child
    /// where there is none yet; the devices that are plugged in join with the next turn of the event loop.
    LinkerDeviceModel(const QString &context, QObject *parent);
    /// Saves. Running devices are left to the manager.
    ~LinkerDeviceModel() override;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// Takes `NameRole`, `SelectedRole`, `ProductRole` and `ImageRole` (an icon or a path), and saves. False
    /// for anything else.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

    /// Whether selecting a row deselects the others. A change leaves the present selection as it is.
    [[nodiscard]] bool uniqSelection() const { return m_uniqSelection; }
    void setUniqSelection(bool uniqSelection);
    /// Whether the manager looks for devices by itself. Rows stay as they are when it is turned off.
    [[nodiscard]] bool autoDetect() const { return m_autoDetect; }
    void setAutoDetect(bool autoDetect);
    /// The number of rows that the file spoke of when it was read.
    [[nodiscard]] int previousCount() const { return m_previousCount; }
    [[nodiscard]] QString context() const { return m_context; }
    /// Rebuilds the rows from the other context's file. Running devices are not stopped.
    void setContext(const QString &context);
    [[nodiscard]] int count() const { return static_cast<int>(m_usnOrder.size()); }

    /// Row of the key, case-sensitive, or -1.
    [[nodiscard]] Q_INVOKABLE int indexOfUsn(const QString &usn) const;
    /// Key of the row, or an empty text out of range.
    [[nodiscard]] Q_INVOKABLE QString usnForRow(int row) const;
    [[nodiscard]] Q_INVOKABLE bool isSelected(const QString &usn) const;
    /// Does what `setData` does with `SelectedRole`. An unknown key is left alone.
    Q_INVOKABLE void setSelected(const QString &usn, bool sel);
    /// Forgets the row and its settings. A device that is still plugged in returns as a new row. False for an
    /// unknown key.
    Q_INVOKABLE bool deleteDevice(const QString &usn);
    /// What the host is given for the row, or null. Not the caller's; it goes by `deleteLater`.
    [[nodiscard]] Q_INVOKABLE QObject *interfaceForRow(int row) const;

    /// Fills both, entry by entry the same row, with what is selected. A row without a device contributes its
    /// placeholder.
    void collectSelected(QList<IComInterface *> &ifaces, QJsonArray &infos);

Q_SIGNALS:
    void uniqSelectionChanged();
    void autoDetectChanged();
    void previousCountChanged();
    void contextChanged();
    void countChanged();
    /// Repeats itself: it is not limited to changes.
    void selectedInterfacesChanged(const QList<IComInterface *> &selectedIfaces, const QJsonArray &infos);

public Q_SLOTS:
    /// Announces the present selection.
    void syncSelected();

private Q_SLOTS:
    void onManagerChanged();
    void onGamepadAdded(ControlManette *gp);
    void onGamepadRemoved(int deviceId);

private:
    using LiveDevices = QHash<QString, QPointer<ControlManette>>;

    // Pointers into the records hold until the next signal: a listener may add and delete rows.
    [[nodiscard]] DeviceRecord *recordOf(const QString &usn);
    [[nodiscard]] const DeviceRecord *recordAt(int row) const;
    void announce(const QString &usn, const QList<int> &roles);
    void announceAndSave(const QString &usn, const QList<int> &roles);

    void setName(const QString &usn, const QString &name);
    void setProduct(const QString &usn, const QString &product);
    [[nodiscard]] bool setImage(const QString &usn, const QVariant &image);
    void select(const QString &usn, bool on);
    void deselectOthers(const QString &usn);
    void deselect(const QString &usn);

    [[nodiscard]] GamepadManager *manager();
    /// The file of the context that the rows belong to.
    [[nodiscard]] QString storePath() const;
    void loadFromDisk();
    void saveToDisk() const;
    void syncWithManager();
    [[nodiscard]] bool managerHas(const QString &usn);
    void mergeLive(ControlManette *device);
    void insertLive(const QString &usn, ControlManette &device);
    static void adopt(DeviceRecord &record, ControlManette &device);
    static void refreshCapabilities(DeviceRecord &record);
    void markIfAbsent(const QString &usn);
    [[nodiscard]] LiveDevices forgetRows();

    void ensureInterface(DeviceRecord &record, const QString &usn);
    void bindInterface(DeviceRecord &record, const QString &usn);
    void follow(ControlManette &device, const QString &usn);
    static void releasePlaceholder(DeviceRecord &record);
    void startInterface(const QString &usn);
    void stopInterface(const QString &usn);
    void onLinkChanged(const QString &usn);
    void onDeviceDestroyed(const QString &usn);

    bool m_uniqSelection = true;
    bool m_autoDetect = true;
    bool m_announcingReset = false;
    QString m_context;
    QString m_rowsContext; ///< whose rows these are: a new context is told of before its file is read
    QStringList m_usnOrder;
    QHash<QString, DeviceRecord> m_records;
    int m_previousCount = 0;
    QJsonObject m_otherKeys;
    QPointer<GamepadManager> m_manager;
};
