// SPDX-License-Identifier: MIT
#include "configspreads.h"

#include "casekey.h"

void ConfigSpreads::note(const QString &title, qsizetype from, const QJsonObject &config)
{
    m_last.insert(caseKey(title), {from, config});
}

const ConfigSpreads::Spread *ConfigSpreads::lastTo(const QString &title) const
{
    const auto found = m_last.constFind(caseKey(title));
    return found == m_last.cend() ? nullptr : &*found;
}
