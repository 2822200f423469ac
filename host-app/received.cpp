// SPDX-License-Identifier: MIT
#include "received.h"

#include <QtCore/QMetaEnum>

using namespace Qt::StringLiterals;

namespace
{
template <typename Enum>
QString wordOf(int value)
{
    const char *word = QMetaEnum::fromType<Enum>().valueToKey(quint64(value));
    return word ? QString::fromLatin1(word) : QString::number(value);
}
} // namespace

std::optional<InputKey> parseInputKey(QStringView key)
{
    const bool isAxis = key.startsWith("joy_"_L1, Qt::CaseInsensitive);
    if (!isAxis && !key.startsWith("but_"_L1, Qt::CaseInsensitive))
        return {};
    bool isNumber = false;
    const int index = key.mid(4).toInt(&isNumber);
    if (!isNumber || index < 0)
        return {};
    return InputKey{.isAxis = isAxis, .index = index};
}

QString deviceTypeWord(int type)
{
    return wordOf<IComInterface::DeviceType>(type);
}

QString statusWord(int status)
{
    return wordOf<IComInterface::ComStatus>(status);
}

QString valueText(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? u"pressed"_s : u"released"_s;
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'f', 1);
    default:
        return value.toString();
    }
}

QString batchText(const QStringList &keys, const QVariantList &values)
{
    QStringList pieces;
    for (qsizetype i = 0; i < keys.size(); ++i)
        pieces.append(u"%1 %2"_s.arg(keys.at(i), valueText(values.value(i))));
    return pieces.join(u"  "_s);
}
