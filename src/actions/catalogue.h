// SPDX-License-Identifier: MIT
#pragma once

#include "editortraits.h"
#include "functiondef.h"

#include <QtCore/QJsonArray>
#include <QtCore/QSharedData>

class QFont;
class QPaintDevice;

/// Whether a configuration that names `name` asks for no function: "none" in any case.
[[nodiscard]] bool namesNoFunction(const QString &name);

/// The functions that an editor offers, with their signatures: read once, then shared by every copy.
/// Duplicate names are all listed; the first of a name wins every search.
class FunctionCatalogue
{
public:
    FunctionCatalogue();
    FunctionCatalogue(const FunctionCatalogue &other);
    FunctionCatalogue(FunctionCatalogue &&other) noexcept;
    FunctionCatalogue &operator=(const FunctionCatalogue &other);
    FunctionCatalogue &operator=(FunctionCatalogue &&other) noexcept;
    ~FunctionCatalogue();

    /// Reads `entries` by the rules of one editor: what is no object, and what has no name, is left out.
    [[nodiscard]] static FunctionCatalogue read(const QJsonArray &entries, const EditorTraits &traits);

    /// What `read` gives, without reading again an array that was read a moment ago: many editors are
    /// given one catalogue. Main thread only.
    [[nodiscard]] static FunctionCatalogue shared(const QJsonArray &entries, const EditorTraits &traits);

    [[nodiscard]] const QList<FunctionDef> &functions() const;
    /// The combo text of the function at `index`, which must be in range.
    [[nodiscard]] const QString &signature(qsizetype index) const;
    /// The first function of exactly this name, or -1.
    [[nodiscard]] int indexOf(const QString &name) const;
    /// The first function whose name means none, or -1.
    [[nodiscard]] int indexOfNone() const;
    /// How wide the widest signature is under `font` on `device`, in pixels; 0 without functions. Measured
    /// once for each font.
    [[nodiscard]] int widestSignature(const QFont &font, const QPaintDevice *device) const;

private:
    struct Data;
    QExplicitlySharedDataPointer<const Data> m_data;
};
