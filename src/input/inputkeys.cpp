// SPDX-License-Identifier: MIT
#include "inputkeys.h"

#include <array>

using namespace Qt::StringLiterals;

namespace
{
template <std::size_t count>
std::array<QString, count> numbered(const QString &pattern)
{
    std::array<QString, count> keys;
    for (std::size_t i = 0; i < count; ++i)
        keys.at(i) = pattern.arg(i);
    return keys;
}

template <std::size_t count>
QString keyAt(const std::array<QString, count> &keys, int index, const QString &pattern)
{
    const bool known = index >= 0 && static_cast<std::size_t>(index) < count;
    return known ? keys[static_cast<std::size_t>(index)] : pattern.arg(index);
}
} // namespace

QString axisKey(int axis)
{
    static const auto keys = numbered<8>(u"joy_%1"_s);
    return keyAt(keys, axis, u"joy_%1"_s);
}

QString buttonKey(int button)
{
    static const auto keys = numbered<32>(u"but_%1"_s);
    return keyAt(keys, button, u"but_%1"_s);
}
