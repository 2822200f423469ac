// SPDX-License-Identifier: MIT
#pragma once

#include "catalogue.h"

#include <QtCore/QAbstractListModel>

/// The entries of one editor's combo: one that stands for no function, the functions of a catalogue that
/// many editors share, and behind them the functions that only this editor still names.
/// Every entry has a function's index, or -1, as `Qt::UserRole` data.
class FunctionListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    /// Without any entry until `setCatalogue`.
    explicit FunctionListModel(const EditorTraits &traits, QObject *parent = nullptr);

    /// Removes every entry.
    void clear();
    /// Lists no function and then `catalogue`; what was appended is gone.
    void setCatalogue(const FunctionCatalogue &catalogue);
    /// Appends a function that the catalogue does not have, without parameters, shown in orange. Returns
    /// its index.
    int appendUnknown(const QString &name);

    [[nodiscard]] const FunctionCatalogue &catalogue() const { return m_catalogue; }
    /// The function at `index`, or null out of range. It stays until the next change of this model.
    [[nodiscard]] const FunctionDef *functionAt(int index) const;
    /// The first function of exactly this name, or -1.
    [[nodiscard]] int indexOf(const QString &name) const;
    /// The row that holds `index`, which is -1 for no function; -1 when there is no such row.
    [[nodiscard]] int rowOf(int index) const;
    /// How wide the widest entry is under `font` on `device`, in pixels.
    [[nodiscard]] int widestEntry(const QFont &font, const QPaintDevice *device) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

private:
    [[nodiscard]] QString textOf(int index) const;
    [[nodiscard]] int listed() const;

    const EditorTraits m_traits;
    FunctionCatalogue m_catalogue;
    QList<FunctionDef> m_unknown;
    bool m_filled = false;
};
