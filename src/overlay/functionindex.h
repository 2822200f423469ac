// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

/// A catalogue that is asked for many names: `find` answers as `findFunction` does, without a search from the
/// first entry on.
class FunctionIndex
{
public:
    FunctionIndex() = default;
    explicit FunctionIndex(const QJsonArray &catalogue);

    [[nodiscard]] QJsonObject find(const QString &name) const;

private:
    QJsonArray m_catalogue;
    QHash<QString, qsizetype> m_positions; ///< the first entry of each name
};
