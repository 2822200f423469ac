// SPDX-License-Identifier: MIT
#include "catalogue.h"

#include "argumenttyping.h"
#include "longtext.h"

#include <QtCore/QHash>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>
#include <QtGui/QFont>
#include <QtGui/QFontMetrics>
#include <QtGui/QPaintDevice>

#include <algorithm>

using namespace Qt::StringLiterals;

struct FunctionCatalogue::Data : QSharedData
{
    QList<FunctionDef> functions;
    QStringList signatures;
    QHash<QString, int> firstOfName;
    int firstNone = -1;

    QJsonArray source;
    EditorTraits traits{};
    mutable QHash<QString, int> widestByFont; // by text: a font must not live as long as a cached catalogue
};

namespace
{
ParamDef readParam(const QJsonObject &entry)
{
    const QString preferred = entry.value("preferredType"_L1).toString();
    const QString type =
        normalizeType(preferred.isEmpty() ? entry.value("preferedType"_L1).toString() : preferred);
    return {entry.value("name"_L1).toString(), type, defaultValueText(entry.value("default"_L1), type)};
}

FunctionDef readFunction(const QJsonObject &entry, const EditorTraits &traits)
{
    FunctionDef function{entry.value("name"_L1).toString(), entry.value("deviceType"_L1).toString(), {}};
    const QJsonArray params = entry.value("params"_L1).toArray();
    for (const QJsonValue &value : params) {
        if (!value.isObject())
            continue;
        const ParamDef param = readParam(value.toObject());
        if (traits.keepsNamelessParams || !param.name.isEmpty())
            function.params.append(param);
    }
    return function;
}
} // namespace

bool namesNoFunction(const QString &name)
{
    return name.compare("none"_L1, Qt::CaseInsensitive) == 0;
}

FunctionCatalogue::FunctionCatalogue()
    : m_data(new Data)
{}

FunctionCatalogue::FunctionCatalogue(const FunctionCatalogue &other) = default;
FunctionCatalogue::FunctionCatalogue(FunctionCatalogue &&other) noexcept = default;
FunctionCatalogue &FunctionCatalogue::operator=(const FunctionCatalogue &other) = default;
FunctionCatalogue &FunctionCatalogue::operator=(FunctionCatalogue &&other) noexcept = default;
FunctionCatalogue::~FunctionCatalogue() = default;

FunctionCatalogue FunctionCatalogue::read(const QJsonArray &entries, const EditorTraits &traits)
{
    auto *data = new Data;
    FunctionCatalogue catalogue;
    catalogue.m_data = QExplicitlySharedDataPointer<const Data>(data);
    data->source = entries;
    data->traits = traits;
    for (const QJsonValue &entry : entries) {
        FunctionDef function = readFunction(entry.toObject(), traits);
        if (function.name.isEmpty())
            continue;
        const auto index = static_cast<int>(data->functions.size());
        if (!data->firstOfName.contains(function.name))
            data->firstOfName.insert(function.name, index);
        if (data->firstNone < 0 && namesNoFunction(function.name))
            data->firstNone = index;
        data->signatures.append(signatureText(function, traits));
        data->functions.append(std::move(function));
    }
    return catalogue;
}

FunctionCatalogue FunctionCatalogue::shared(const QJsonArray &entries, const EditorTraits &traits)
{
    // The host's functions and the user's actions, each by the rules of both editors.
    constexpr qsizetype kept = 4;
    static QList<FunctionCatalogue> recent;
    const auto known = std::ranges::find_if(recent, [&](const FunctionCatalogue &catalogue) {
        // Arrays that share their data compare equal without a look at their entries.
        return catalogue.m_data->traits == traits && catalogue.m_data->source == entries;
    });
    if (known != recent.end()) {
        std::rotate(recent.begin(), known, known + 1);
        return recent.first();
    }
    if (recent.size() == kept)
        recent.removeLast();
    recent.prepend(read(entries, traits));
    return recent.first();
}

const QList<FunctionDef> &FunctionCatalogue::functions() const
{
    return m_data->functions;
}

const QString &FunctionCatalogue::signature(qsizetype index) const
{
    return m_data->signatures.at(index);
}

int FunctionCatalogue::indexOf(const QString &name) const
{
    return m_data->firstOfName.value(name, -1);
}

int FunctionCatalogue::indexOfNone() const
{
    return m_data->firstNone;
}

int FunctionCatalogue::widestSignature(const QFont &font, const QPaintDevice *device) const
{
    const QString key = u"%1@%2"_s.arg(font.toString()).arg(device->logicalDpiX());
    const auto known = m_data->widestByFont.constFind(key);
    if (known != m_data->widestByFont.cend())
        return *known;
    const QFontMetrics metrics(font, device);
    int widest = 0;
    for (const QString &signature : m_data->signatures)
        widest = std::max(widest, metrics.boundingRect(beginningOf(signature)).width());
    return *m_data->widestByFont.insert(key, widest);
}
