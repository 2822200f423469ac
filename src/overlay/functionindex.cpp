// SPDX-License-Identifier: MIT
#include "functionindex.h"

#include "casekey.h"

using namespace Qt::StringLiterals;

FunctionIndex::FunctionIndex(const QJsonArray &catalogue)
    : m_catalogue(catalogue)
{
    m_positions.reserve(catalogue.size());
    for (qsizetype i = 0; i < catalogue.size(); ++i) {
        const QJsonValue entry = catalogue.at(i);
        const QString name = entry.isObject() ? entry["name"_L1].toString().trimmed() : QString();
        if (!name.isEmpty())
            m_positions.tryInsert(caseKey(name), i);
    }
}

QJsonObject FunctionIndex::find(const QString &name) const
{
    // Names in the index are trimmed and not empty, so that a blank one finds nothing here either.
    const auto found = m_positions.constFind(caseKey(name));
    return found == m_positions.cend() ? QJsonObject() : m_catalogue.at(*found).toObject();
}
