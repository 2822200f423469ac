// SPDX-License-Identifier: MIT
#include "functionlistmodel.h"

#include "argumenttyping.h"
#include "longtext.h"

#include <QtGui/QColor>
#include <QtGui/QFontMetrics>

#include <algorithm>

FunctionListModel::FunctionListModel(const EditorTraits &traits, QObject *parent)
    : QAbstractListModel(parent)
    , m_traits(traits)
{}

void FunctionListModel::clear()
{
    beginResetModel();
    m_catalogue = {};
    m_unknown.clear();
    m_filled = false;
    endResetModel();
}

void FunctionListModel::setCatalogue(const FunctionCatalogue &catalogue)
{
    beginResetModel();
    m_catalogue = catalogue;
    m_unknown.clear();
    m_filled = true;
    endResetModel();
}

int FunctionListModel::appendUnknown(const QString &name)
{
    const int row = rowCount();
    const int index = listed() + static_cast<int>(m_unknown.size());
    beginInsertRows({}, row, row);
    m_unknown.append({name, {}, {}});
    endInsertRows(); // who listens may append, too
    return index;
}

const FunctionDef *FunctionListModel::functionAt(int index) const
{
    if (index < 0)
        return nullptr;
    if (index < listed())
        return &m_catalogue.functions().at(index);
    const int behind = index - listed();
    return behind < m_unknown.size() ? &m_unknown.at(behind) : nullptr;
}

int FunctionListModel::indexOf(const QString &name) const
{
    if (const int index = m_catalogue.indexOf(name); index >= 0)
        return index;
    const auto found = std::ranges::find(m_unknown, name, &FunctionDef::name);
    return found == m_unknown.end() ? -1 : listed() + static_cast<int>(found - m_unknown.begin());
}

int FunctionListModel::rowOf(int index) const
{
    const int row = m_filled ? index + 1 : index;
    return row < rowCount() ? row : -1;
}

int FunctionListModel::widestEntry(const QFont &font, const QPaintDevice *device) const
{
    const QFontMetrics metrics(font, device);
    const auto width = [&metrics](const QString &text) { return metrics.boundingRect(text).width(); };
    int widest = m_filled ? width(m_traits.firstEntry.toString()) : 0;
    for (const FunctionDef &function : m_unknown)
        widest = std::max(widest, width(beginningOf(signatureText(function, m_traits))));
    return std::max(widest, m_catalogue.widestSignature(font, device));
}

int FunctionListModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid())
        return 0;
    return (m_filled ? 1 : 0) + listed() + static_cast<int>(m_unknown.size());
}

QVariant FunctionListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const int function = m_filled ? index.row() - 1 : index.row();
    switch (role) {
    case Qt::DisplayRole:
        return textOf(function);
    case Qt::UserRole:
        return function;
    case Qt::ForegroundRole:
        return function >= listed() ? QVariant(QColor(255, 165, 0)) : QVariant();
    default:
        return {};
    }
}

QString FunctionListModel::textOf(int index) const
{
    if (index < 0)
        return m_traits.firstEntry.toString();
    if (index < listed())
        return m_catalogue.signature(index);
    return signatureText(m_unknown.at(index - listed()), m_traits);
}

int FunctionListModel::listed() const
{
    return static_cast<int>(m_catalogue.functions().size());
}
