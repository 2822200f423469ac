// SPDX-License-Identifier: MIT
#include "reportlines.h"

#include <QtCore/QJsonArray>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{
// A position is rounded to the kernel's integer and then to SFML's float.
constexpr double tolerance = 0.1;

bool is(const QJsonObject &line, QLatin1StringView what)
{
    return line["what"_L1] == what;
}

QJsonObject findRow(const QJsonObject &line, const QString &usn)
{
    const QJsonArray rows = line["rows"_L1].toArray();
    for (const QJsonValue &row : rows) {
        if (row["usn"_L1] == usn)
            return row.toObject();
    }
    return {};
}
} // namespace

HostProcess::Condition reported::row(const QString &usn, const QJsonObject &expected)
{
    return [usn, expected](const QJsonObject &line) {
        const QJsonObject found = findRow(line, usn);
        if (!is(line, "rows"_L1) || found.isEmpty())
            return false;
        for (auto member = expected.begin(); member != expected.end(); ++member) {
            if (found.value(member.key()) != member.value())
                return false;
        }
        return true;
    };
}

HostProcess::Condition reported::noRow(const QString &usn)
{
    return [usn](const QJsonObject &line) { return is(line, "rows"_L1) && findRow(line, usn).isEmpty(); };
}

HostProcess::Condition reported::selection(const QStringList &usns, const QString &status)
{
    return [usns, status](const QJsonObject &line) {
        const QJsonArray devices = line["devices"_L1].toArray();
        if (!is(line, "selection"_L1) || devices.size() != usns.size())
            return false;
        for (qsizetype i = 0; i < usns.size(); ++i) {
            if (devices.at(i)["usn"_L1] != usns.at(i) || devices.at(i)["status"_L1] != status)
                return false;
        }
        return true;
    };
}

HostProcess::Condition reported::rest(int device, const QList<int> &bias)
{
    QJsonArray expected;
    for (const int value : bias)
        expected.append(value);
    return [device, expected](const QJsonObject &line) {
        return is(line, "calibration"_L1) && line["device"_L1] == device && line["bias"_L1] == expected;
    };
}

HostProcess::Condition reported::axis(int device, const QString &key, double value)
{
    return [device, key, value](const QJsonObject &line) {
        return line["device"_L1] == device && line["form"_L1] == "numeric"_L1 &&
               std::abs(valueOf(line, key).toDouble(1e9) - value) <= tolerance;
    };
}

HostProcess::Condition reported::button(int device, const QString &key, bool pressed)
{
    return [device, key, pressed](const QJsonObject &line) {
        return line["device"_L1] == device && line["form"_L1] == "numeric"_L1 &&
               valueOf(line, key) == QJsonValue(pressed);
    };
}

HostProcess::Condition reported::times(int count, const HostProcess::Condition &condition)
{
    return [left = std::make_shared<int>(count), condition](const QJsonObject &line) {
        return condition(line) && --*left == 0;
    };
}

HostProcess::Condition reported::of(QLatin1StringView what, int device)
{
    return [what, device](const QJsonObject &line) { return is(line, what) && line["device"_L1] == device; };
}

HostProcess::Condition reported::status(int device, const QString &status)
{
    return [device, status](const QJsonObject &line) {
        return is(line, "status"_L1) && line["device"_L1] == device && line["status"_L1] == status;
    };
}

int reported::onlyDevice(const QJsonObject &selection)
{
    const QJsonArray devices = selection["devices"_L1].toArray();
    return devices.size() == 1 ? devices.at(0)["device"_L1].toInt() : 0;
}

QJsonValue reported::valueOf(const QJsonObject &line, const QString &key)
{
    const QJsonArray keys = line["keys"_L1].toArray();
    for (qsizetype i = 0; i < keys.size(); ++i) {
        if (keys.at(i) == key)
            return line["values"_L1].toArray().at(i);
    }
    return QJsonValue::Undefined;
}
