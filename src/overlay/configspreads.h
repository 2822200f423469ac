// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QHash>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

/// What tool boxes have to give to those of like-titled pastilles, collected while many of them change at
/// once. A configuration replaces all that a box had, so only the last one of each title counts.
class ConfigSpreads
{
public:
    struct Spread
    {
        qsizetype from = -1; ///< position of the node that it comes from
        QJsonObject config;
    };

    /// `title` is what the receiving pastilles are titled.
    void note(const QString &title, qsizetype from, const QJsonObject &config);
    /// What a pastille of this title was given last; null for nothing yet.
    [[nodiscard]] const Spread *lastTo(const QString &title) const;

private:
    QHash<QString, Spread> m_last;
};
