// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QVariant>
#include <QtGui/QIcon>

#include <optional>

/// The icon that `value` holds or converts to. Asked for by the type's number: the template form refers to a
/// symbol that Qt has only from 6.10 on.
std::optional<QIcon> iconOf(const QVariant &value);

/// The icon in the file or resource at `path`; null where there is none. What is no file is not opened: a
/// pipe with nobody at its other end would hold the host for ever.
[[nodiscard]] QIcon iconAt(const QString &path);
