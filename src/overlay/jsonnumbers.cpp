// SPDX-License-Identifier: MIT
#include "jsonnumbers.h"

#include <QtCore/QString>

#include <algorithm>
#include <cmath>
#include <limits>

std::optional<int> wholeNumber(const QJsonValue &value)
{
    const double number = value.toDouble(std::numeric_limits<double>::quiet_NaN());
    if (std::isnan(number))
        return std::nullopt;
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(
        std::clamp(number, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

std::optional<int> wholeNumberOrText(const QJsonValue &value)
{
    if (!value.isString())
        return wholeNumber(value);
    bool parsed = false;
    const int number = value.toString().toInt(&parsed, 0);
    return parsed ? std::optional(number) : std::nullopt;
}

double finiteNumber(const QJsonValue &value)
{
    // JSON text cannot hold such a number, but an object made in the program can.
    const double number = value.toDouble();
    return std::isfinite(number) ? number : 0.0;
}
