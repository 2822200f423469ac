// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

/// One parameter of a function, as an editor shows it.
struct ParamDef
{
    QString name;        ///< the key under `args`
    QString type;        ///< normalised: "int", "double", "bool", "string" or the catalogue's own word
    QString defaultText; ///< what an empty field stands for; may be empty

    bool operator==(const ParamDef &) const = default;
};

/// One function that an input or a step can call.
struct FunctionDef
{
    QString name;
    QString deviceType;
    QList<ParamDef> params;

    bool operator==(const FunctionDef &) const = default;
};
