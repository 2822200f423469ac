// SPDX-License-Identifier: MIT
// Mutates JSON as JSON: flipped bytes rarely get past the parser, and what is fuzzed here lies behind it.
#include "fuzzing.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <random>

extern "C" size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t maxSize);

namespace
{
class Mutation
{
public:
    Mutation(const QJsonValue &root, unsigned seed)
        : m_random(seed)
    {
        collect(root);
    }

    /// A number from 0 to `count` - 1.
    qsizetype oneOf(qsizetype count)
    {
        return static_cast<qsizetype>(m_random() % static_cast<std::minstd_rand::result_type>(count));
    }

    QJsonValue changed(const QJsonValue &value)
    {
        // One in eight: what is above the leaves gets another type now and then.
        if (oneOf(8) == 0)
            return anyValue();
        if (value.isObject() && !value.toObject().isEmpty())
            return changedObject(value.toObject());
        if (value.isArray() && !value.toArray().isEmpty())
            return changedArray(value.toArray());
        if (value.isString() && oneOf(2) == 0)
            return changedText(value.toString());
        return anyValue();
    }

private:
    void collect(const QJsonValue &value)
    {
        m_values.append(value);
        const QJsonObject object = value.toObject();
        for (auto it = object.begin(); it != object.end(); ++it) {
            m_keys.append(it.key());
            collect(it.value());
        }
        const QJsonArray array = value.toArray();
        for (const QJsonValue &element : array)
            collect(element);
    }

    QJsonValue changedObject(QJsonObject object)
    {
        const QString key = object.keys().at(oneOf(object.size()));
        switch (oneOf(8)) {
        case 0:
            object.remove(key);
            break;
        case 1: // a value under another key
            object.insert(m_keys.at(oneOf(m_keys.size())), object.value(key));
            break;
        case 2:
            object.insert(m_keys.at(oneOf(m_keys.size())), anyValue());
            break;
        default:
            object.insert(key, changed(object.value(key)));
        }
        return object;
    }

    QJsonValue changedArray(QJsonArray array)
    {
        const qsizetype at = oneOf(array.size());
        switch (oneOf(8)) {
        case 0:
            array.removeAt(at);
            break;
        case 1:
            array.append(array.at(at));
            break;
        case 2:
            array.insert(at, anyValue());
            break;
        default:
            array.replace(at, changed(array.at(at)));
        }
        return array;
    }

    static QJsonValue changedText(const QString &text)
    {
        std::array<uint8_t, 256> bytes{};
        const QByteArray utf8 = text.toUtf8().left(128);
        std::copy(utf8.cbegin(), utf8.cend(), bytes.begin());
        const size_t size = LLVMFuzzerMutate(bytes.data(), static_cast<size_t>(utf8.size()), bytes.size());
        return QString::fromUtf8(reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(size));
    }

    QJsonValue anyValue()
    {
        const QJsonValue edges[] = {
            QJsonValue::Null,
            true,
            false,
            0,
            -1,
            0.5,
            1e-320,
            1e308,
            -1e308,
            std::numeric_limits<int>::max(),
            std::numeric_limits<int>::min(),
            9007199254740993.0,
            QString(),
            QStringLiteral(" "),
            QStringLiteral("0x10"),
            QStringLiteral("1e999"),
            QStringLiteral("joy_2147483647"),
            QStringLiteral("but_99999999999"),
            QJsonArray(),
            QJsonObject(),
        };
        const qsizetype choice = oneOf(2 * std::ssize(edges));
        return choice < std::ssize(edges) ? edges[choice] : m_values.at(oneOf(m_values.size()));
    }

    std::minstd_rand m_random;
    QList<QJsonValue> m_values;
    QStringList m_keys;
};
} // namespace

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned seed)
{
    const QJsonDocument document = jsonOf(data, size);
    const QJsonValue root = document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
    Mutation mutation(root, seed);
    if (document.isEmpty() || mutation.oneOf(8) == 0)
        return LLVMFuzzerMutate(data, size, maxSize);

    const QJsonValue changed = mutation.changed(root);
    const QByteArray text = changed.isArray()
                                ? QJsonDocument(changed.toArray()).toJson(QJsonDocument::Compact)
                                : QJsonDocument(changed.toObject()).toJson(QJsonDocument::Compact);
    if (static_cast<size_t>(text.size()) > maxSize)
        return LLVMFuzzerMutate(data, size, maxSize);
    std::memcpy(data, text.constData(), static_cast<size_t>(text.size()));
    return static_cast<size_t>(text.size());
}
