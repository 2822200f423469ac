// SPDX-License-Identifier: MIT
#include "filebase.h"

#include <QtCore/QRegularExpression>

using namespace Qt::StringLiterals;

QString sanitizedFileBase(const QString &name)
{
    static const QRegularExpression forbidden(u"[^\\w\\-\\s]"_s);
    // A text with half a surrogate pair matches nothing at all and would keep its slashes.
    QString base = QString::fromUtf8(name.toUtf8());
    base.replace(forbidden, u"_"_s);
    base = base.trimmed();
    return base.isEmpty() ? u"Gamepad"_s : base.left(64);
}
