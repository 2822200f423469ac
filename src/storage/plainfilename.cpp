// SPDX-License-Identifier: MIT
#include "plainfilename.h"

#include <QtCore/QDir>

using namespace Qt::StringLiterals;

bool isPlainFileName(const QString &name)
{
    if (name.isEmpty() || name == "."_L1 || name == ".."_L1)
        return false;
    // A NUL would end the name early for the system, and Qt warns of it.
    if (name.contains(u'/') || name.contains(u'\\') || name.contains(QChar::Null))
        return false;
    return QDir::isRelativePath(name);
}
