// SPDX-License-Identifier: MIT
#include "argumenttyping.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace
{
constexpr auto transformCall = "transform("_L1;
constexpr auto stateCall = "state("_L1;

QString boolText(bool value)
{
    return value ? u"true"_s : u"false"_s;
}

QString numberText(double number, const QString &type)
{
    if (type != "int"_L1)
        return QString::number(number, 'g', 6);
    // Converting a double that int cannot hold is undefined, and documents hold any number.
    if (std::isnan(number))
        return u"0"_s;
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return QString::number(static_cast<int>(std::clamp(number, lowest, highest)));
}

QString textWithoutDefault(const QString &type)
{
    if (type == "bool"_L1)
        return u"false"_s;
    if (type == "int"_L1)
        return u"0"_s;
    if (type == "double"_L1)
        return u"0.0"_s;
    return {};
}

bool equalsWord(const QString &text, QLatin1StringView word)
{
    return text.compare(word, Qt::CaseInsensitive) == 0;
}

std::optional<double> toFiniteNumber(const QString &text)
{
    bool fits = false;
    const double number = text.toDouble(&fits);
    // JSON has no infinity and no NaN: as numbers they would be lost when the document is written.
    if (!fits || !std::isfinite(number))
        return {};
    return number;
}

QString signaturePiece(const ParamDef &param, const EditorTraits &traits)
{
    if (param.defaultText.isEmpty())
        return u"%1 %2"_s.arg(param.type, param.name);
    const bool quoted = traits.quotesStringDefaults && param.type == "string"_L1;
    const QString shown = quoted ? u"\"%1\""_s.arg(param.defaultText) : param.defaultText;
    return traits.defaultPiece.arg(param.type, param.name, shown);
}
} // namespace

QString normalizeType(const QString &word)
{
    const QString type = word.trimmed().toLower();
    if (type.isEmpty())
        return u"string"_s;
    if (type == "integer"_L1 || type == "int32"_L1 || type == "int64"_L1)
        return u"int"_s;
    if (type == "float"_L1 || type == "number"_L1)
        return u"double"_s;
    if (type == "boolean"_L1)
        return u"bool"_s;
    return type;
}

QString normalizeExpression(const QString &text)
{
    if (!text.contains(transformCall) && !text.contains(stateCall))
        return text;
    QString clean = text;
    clean.replace(uR"(\\")"_s, u"\""_s);
    clean.replace(uR"(\")"_s, u"\""_s);
    return clean;
}

bool isExpression(const QString &text)
{
    return text == "arg_0"_L1 || text.startsWith(transformCall) || text.contains(stateCall);
}

QString defaultValueText(const QJsonValue &value, const QString &type)
{
    switch (value.type()) {
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        return textWithoutDefault(type);
    case QJsonValue::Bool:
        return boolText(value.toBool());
    case QJsonValue::Double:
        return numberText(value.toDouble(), type);
    case QJsonValue::String:
        return value.toString();
    case QJsonValue::Array:
    case QJsonValue::Object:
        break;
    }
    return {};
}

QJsonValue parseArgumentValue(const QString &text, const QString &type)
{
    const QString clean = normalizeExpression(text.trimmed());
    if (isExpression(clean))
        return clean;
    if (type == "bool"_L1) {
        if (equalsWord(clean, "true"_L1) || clean == "1"_L1)
            return true;
        if (equalsWord(clean, "false"_L1) || clean == "0"_L1)
            return false;
    } else if (type == "int"_L1) {
        bool fits = false;
        const qlonglong number = clean.toLongLong(&fits);
        if (fits)
            return static_cast<double>(number);
    } else if (type == "double"_L1) {
        if (const auto number = toFiniteNumber(clean))
            return *number;
    }
    return clean;
}

std::optional<QString> argumentText(const QJsonValue &value, const QString &type)
{
    switch (value.type()) {
    case QJsonValue::Undefined:
        return std::nullopt;
    case QJsonValue::String:
        return normalizeExpression(value.toString());
    case QJsonValue::Bool:
        return boolText(value.toBool());
    case QJsonValue::Double:
        return numberText(value.toDouble(), type);
    case QJsonValue::Null:
    case QJsonValue::Array:
    case QJsonValue::Object:
        break;
    }
    return QString();
}

bool takesInput(const QString &type, int inputKind)
{
    switch (inputKind) {
    case 0:
        return type == "double"_L1 || type == "int"_L1;
    case 1:
        return type == "bool"_L1;
    default:
        return false;
    }
}

QString signatureText(const FunctionDef &function, const EditorTraits &traits)
{
    if (function.params.isEmpty() && !traits.marksNoParams)
        return function.name;
    QStringList pieces;
    pieces.reserve(function.params.size());
    for (const ParamDef &param : function.params)
        pieces.append(signaturePiece(param, traits));
    return u"%1(%2)"_s.arg(function.name, pieces.join(", "_L1));
}
