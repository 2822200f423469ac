// SPDX-License-Identifier: MIT
// A "systemConfig.json" next to a host's functions: {"host": [...], "system": ...}. Merged, no function
// stands twice that did not before, none is missing, and the host's own come first, as they were.
#include "functionrefs.h"
#include "fuzzing.h"

#include <QtCore/QJsonObject>
#include <QtCore/QSet>

using namespace Qt::StringLiterals;

namespace
{
QJsonDocument documentOf(const QJsonValue &value)
{
    return value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
}

QSet<QString> keysOf(const QJsonArray &entries)
{
    QSet<QString> keys;
    for (const QJsonValue &entry : entries)
        keys.insert(refKey(entry));
    keys.remove(QString());
    return keys;
}

QJsonArray withoutKeyless(const QJsonArray &entries)
{
    QJsonArray keyed;
    for (const QJsonValue &entry : entries) {
        if (!refKey(entry).isEmpty())
            keyed.append(entry);
    }
    return keyed;
}

void checkMerge(const QJsonArray &host, const QJsonArray &system)
{
    const QJsonArray merged = mergeRefs(host, system);
    QSet<QString> known = keysOf(host);
    qsizetype at = 0;
    for (const QJsonValue &entry : host)
        mustHold(merged.at(at++) == entry, "an entry of the host's was changed");
    for (const QJsonValue &entry : system) {
        const QString key = refKey(entry);
        if (!key.isEmpty() && known.contains(key))
            continue;
        known.insert(key);
        mustHold(merged.at(at++) == entry, "an entry of the system's was lost or changed");
    }
    mustHold(at == merged.size(), "an entry came in that is nobody's");
    mustHold(keysOf(merged) == keysOf(host).unite(keysOf(system)), "a function is missing");
    mustHold(mergeRefs(merged, withoutKeyless(system)) == merged, "functions pile up from merge to merge");
    mustHold(mergeRefs(host, {}) == host, "nothing of the system's changed something");
}

void checkRefs(const QJsonDocument &document)
{
    const QJsonArray refs = extractRefs(document);
    mustHold(extractRefs(QJsonDocument(refs)) == refs, "a list by itself is another one");
    for (const auto &key : {u"ref"_s, u"refs"_s})
        mustHold(extractRefs(QJsonDocument(QJsonObject{{key, refs}})) == refs, "a list is not found");
    mustHold(!document["ref"_L1].isArray() || refs == document["ref"_L1].toArray(), "a list is passed over");
    for (const QJsonValue &entry : refs) {
        const QString key = refKey(entry);
        mustHold(key == key.trimmed() && refKey(key) == key, "a key is not settled");
    }
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QJsonDocument input = jsonOf(data, size);
    checkRefs(input);
    const QJsonDocument system = documentOf(input["system"_L1]);
    checkRefs(system);
    checkMerge(input["host"_L1].toArray(), extractRefs(system));
    return 0;
}
