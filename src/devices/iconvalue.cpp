// SPDX-License-Identifier: MIT
#include "iconvalue.h"

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
