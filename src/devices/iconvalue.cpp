// SPDX-License-Identifier: MIT
#include "iconvalue.h"

#include <QtCore/QFileInfo>

std::optional<QIcon> iconOf(const QVariant &value)
{
    const QMetaType iconType(QMetaType::QIcon);
    if (!value.canConvert(iconType))
        return {};
    QVariant converted = value;
    if (!converted.convert(iconType))
        return QIcon();
    return *static_cast<const QIcon *>(converted.constData());
}

QIcon iconAt(const QString &path)
{
    // Qt warns of a NUL wherever such a name is used.
    const bool isThere = !path.contains(QChar::Null) && QFileInfo(path).isFile();
    return isThere ? QIcon(path) : QIcon();
}
