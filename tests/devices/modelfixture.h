// SPDX-License-Identifier: MIT
#pragma once

#include "linkerdevicemodel.h"
#include "savecounter.h"

#include <QtCore/QJsonObject>
#include <QtCore/QStringList>
#include <QtTest/QAbstractItemModelTester>

/// What the tests of the device list share. All files lie in the temporary home of the program.
namespace fixture
{
/// An empty home without joysticks, and no unexpected warning from here on.
void startAfresh();
/// For a program that makes hundreds of managers: they say nothing, and make no windows, which would take
/// most of the time.
void prepareForHundredsOfManagers();

QString folderOf(const QString &context);
/// Writes the file of remembered devices of `context`.
void remember(const QJsonObject &devices, const QString &context = QStringLiteral("host"));
void writeRaw(const QByteArray &bytes, const QString &context = QStringLiteral("host"));
/// The root object of the file, and the member of one device.
QJsonObject stored(const QString &context = QStringLiteral("host"));
QJsonObject storedDevice(const QString &usn, const QString &context = QStringLiteral("host"));

/// A device as it stands in the file.
QJsonObject rememberedDevice(int slot, const QJsonObject &kv = {});
QJsonObject selectedKv();
/// What stands in the file of a scripted pad that is plugged in.
QJsonObject freshDevice(int slot, const QString &name, const QJsonObject &kv = {});

/// A resting pad of eight axes and eleven buttons. The manager finds it at the next discovery.
void plug(int slot, const QString &name = QStringLiteral("Pad"));
void unplug(int slot);
/// One run of the manager's discovery.
void discover();
/// No discovery from now on but by `discover`.
void stopManager();
/// Lets queued calls and deferred deletions happen.
void settle();

/// The keys of the rows.
QStringList order(const LinkerDeviceModel &model);
/// The device behind a slot, or null.
ControlManette *liveDevice(int slot);

// What `ModelLog` notes of changed data in a slot's row.
/// After a merge with the manager's device.
QString merged(int slot);
/// Of a device that is there no more.
QString wentAway(int slot);
/// Of a device that started or stopped.
QString link(int slot);
/// Of a row that was selected or deselected.
QString choice(int slot);
} // namespace fixture

/// A model that `QAbstractItemModelTester` looks over for as long as it lives.
class TestedModel : public LinkerDeviceModel
{
    Q_OBJECT

public:
    explicit TestedModel(const QString &context = QStringLiteral("host"), QObject *parent = nullptr);

    [[nodiscard]] QVariant at(int row, int role) const { return data(index(row), role); }
    /// An index that claims a row without asking whether there is one.
    [[nodiscard]] QModelIndex forgedIndex(int row) const { return createIndex(row, 0); }
    /// The selected interfaces as `collectSelected` gives them.
    QList<IComInterface *> selection();
    /// Placeholders that exist, those that wait for their deletion included.
    [[nodiscard]] qsizetype placeholders() const;

private:
    QAbstractItemModelTester m_tester;
};

/// Everything that a model says, in order, one text per signal and one "save" for each replaced file:
/// "data gp:0: selected linkState json", "selected 0 -1" (the slots), "inserted 0", "count".
class ModelLog : public QObject
{
    Q_OBJECT

public:
    explicit ModelLog(LinkerDeviceModel *model, const QString &context = QStringLiteral("host"));

    /// What was said since the last call.
    QStringList take();

private:
    void say(const QString &text);

    SaveCounter m_saves;
    QStringList m_said;
};
