// SPDX-License-Identifier: MIT
#include "functioncombobox.h"

#include "chevron.h"
#include "functionlistmodel.h"
#include "longtext.h"

#include <QtGui/QFontMetrics>
#include <QtGui/QScreen>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QListView>
#include <QtWidgets/QStyleOptionComboBox>
#include <QtWidgets/QStylePainter>

#include <algorithm>
#include <utility>

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
    setFocusPolicy(Qt::StrongFocus); // not by the wheel, see wheelEvent
}

FunctionComboBox::~FunctionComboBox()
{
    // Qt keeps the style rules of a combo's list window when that window dies, for as long as any style sheet
    // is in use, unless the window has a sheet of its own. One that says nothing will do.
    if (auto *listWindow = findChild<QFrame *>(Qt::FindDirectChildrenOnly))
        listWindow->setStyleSheet(QStringLiteral("/**/"));
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

void FunctionComboBox::showPopup()
{
    // Set up no sooner than it is seen: most lists never are.
    auto *list = qobject_cast<QListView *>(view());
    if (list && !list->uniformItemSizes()) {
        list->setUniformItemSizes(true);                    // one entry stands for the height of a thousand
        list->setItemDelegate(new BeginningDelegate(list)); // the combo's own knows no style sheet
    }
    constexpr int beside = 40; // padding of an entry, frame and scroll bar
    view()->setMinimumWidth(
        std::min(m_functions->widestEntry(font(), this) + beside, screen()->availableGeometry().width() / 2));
    QComboBox::showPopup();
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

void FunctionComboBox::wheelEvent(QWheelEvent *event)
{
    // Who scrolls past must not change the function: its arguments would be gone.
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

void FunctionComboBox::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);

    const auto part = [this, &option](QStyle::SubControl control) {
        return style()->subControlRect(QStyle::CC_ComboBox, &option, control, this);
    };
    const QRect textArea = part(QStyle::SC_ComboBoxEditField);
    painter.setPen(textColour());
    const auto alignment = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
    painter.drawText(textArea, static_cast<int>(alignment) | Qt::TextSingleLine,
                     fontMetrics().elidedText(beginningOf(currentText()), Qt::ElideRight, textArea.width()));
    paintChevron(&painter, part(QStyle::SC_ComboBoxArrow).center(), palette().color(QPalette::Text));
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

QColor FunctionComboBox::textColour() const
{
    // Qt colours the entries of the list alone: the closed combo would not tell an unknown function.
    const QVariant own = currentData(Qt::ForegroundRole);
    return own.isValid() ? own.value<QColor>() : palette().color(QPalette::Text);
}
