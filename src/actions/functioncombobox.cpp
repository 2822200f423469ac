// SPDX-License-Identifier: MIT
#include "functioncombobox.h"

#include "functionlistmodel.h"

#include <QtGui/QFontMetrics>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionComboBox>

FunctionComboBox::FunctionComboBox(FunctionListModel *model, QWidget *parent)
    : QComboBox(parent)
    , m_functions(model)
{
    const auto forgetHint = [this] {
        if (sizeAdjustPolicy() == AdjustToContents)
            m_hint = {};
    };
    // Connected before the combo's own slots, which ask for the hint.
    connect(model, &QAbstractItemModel::modelReset, this, forgetHint);
    connect(model, &QAbstractItemModel::rowsInserted, this, forgetHint);
    setModel(model);
}

int FunctionComboBox::functionIndex() const
{
    if (currentIndex() < 0)
        return -1;
    const QVariant index = currentData();
    return index.isValid() ? std::max(index.toInt(), -1) : currentIndex();
}

void FunctionComboBox::selectFunction(int index)
{
    setCurrentIndex(m_functions->rowOf(index));
}

QSize FunctionComboBox::sizeHint() const
{
    if (!m_hint.isValid()) {
        const int widest =
            count() > 0 ? m_functions->widestEntry(font(), this) : 7 * fontMetrics().horizontalAdvance(u'x');
        m_hint = hintFor(widest);
    }
    return m_hint;
}

QSize FunctionComboBox::minimumSizeHint() const
{
    return minimumContentsLength() > 0 ? hintFor(0) : sizeHint();
}

void FunctionComboBox::changeEvent(QEvent *event)
{
    m_hint = {};
    QComboBox::changeEvent(event);
}

void FunctionComboBox::showEvent(QShowEvent *event)
{
    if (!std::exchange(m_shown, true) && sizeAdjustPolicy() == AdjustToContentsOnFirstShow)
        m_hint = {};
    QComboBox::showEvent(event);
}

void FunctionComboBox::initStyleOption(QStyleOptionComboBox *option) const
{
    QComboBox::initStyleOption(option);
    // Qt colours the entries of the list alone: the closed combo would not tell an unknown function.
    const QVariant colour = currentData(Qt::ForegroundRole);
    if (!colour.isValid())
        return;
    for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText})
        option->palette.setColor(role, colour.value<QColor>());
}

QSize FunctionComboBox::hintFor(int textWidth) const
{
    ensurePolished();
    const QFontMetrics metrics = fontMetrics();
    const int least = minimumContentsLength() * metrics.horizontalAdvance(u'X');
    const int height = std::max(qCeil(QFontMetricsF(metrics).height()), 14) + 2;
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, {std::max(textWidth, least), height},
                                     this);
}
