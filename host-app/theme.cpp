// SPDX-License-Identifier: MIT
#include "theme.h"

#include <QtGui/QFontDatabase>
#include <QtGui/QPainter>
#include <QtWidgets/QWidget>

#include <array>

using namespace Qt::StringLiterals;

namespace
{
constexpr std::array<QColor, 8> axisColours{
    QColor{110, 200, 215}, QColor{236, 178, 86},  QColor{150, 205, 110}, QColor{232, 128, 128},
    QColor{150, 160, 240}, QColor{226, 140, 208}, QColor{214, 214, 120}, QColor{170, 184, 198},
};
} // namespace

QColor theme::axisColour(int axis)
{
    return axisColours.at(static_cast<std::size_t>(axis) % axisColours.size());
}

QPalette theme::palette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::Base, panel);
    palette.setColor(QPalette::AlternateBase, raised);
    palette.setColor(QPalette::Button, raised);
    palette.setColor(QPalette::ToolTipBase, raised);
    palette.setColor(QPalette::Mid, line);
    palette.setColor(QPalette::Light, line);
    palette.setColor(QPalette::Dark, ground.darker());
    palette.setColor(QPalette::Shadow, ground.darker());
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                            QPalette::BrightText})
        palette.setColor(role, text);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Link, accent);
    palette.setColor(QPalette::Highlight, accent.darker(220));
    palette.setColor(QPalette::HighlightedText, text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

void theme::dress(QWidget &root)
{
    root.setStyleSheet(
        u"QFrame#panel { background: %1; border: 1px solid %2; border-radius: 10px; }"
        "QLabel#title { color: %3; }"
        "QLabel#quiet { color: %4; }"
        "QAbstractItemView, QScrollArea { background: transparent; border: none; outline: none; }"
        "QScrollArea > QWidget > QWidget { background: transparent; }"
        "QAbstractItemView::item:selected { background: transparent; }"
        "QHeaderView { background: transparent; }"
        "QHeaderView::section { background: transparent; color: %4; border: none;"
        "  border-bottom: 1px solid %2; padding: 4px 6px; }"
        "QPushButton { background: %5; color: %3; border: 1px solid %2; border-radius: 6px;"
        "  padding: 7px 14px; }"
        "QPushButton:hover { border-color: %6; }"
        "QPushButton:pressed { background: %2; }"
        "QPushButton:disabled { color: %4; }"
        "QTreeView::item { padding: 4px 2px; }"
        "QListView::item { padding: 1px 0; }"
        "QCheckBox { color: %4; spacing: 8px; }"
        "QCheckBox::indicator { width: 14px; height: 14px; border: 1px solid %4;"
        "  border-radius: 4px; background: %1; }"
        "QCheckBox::indicator:checked { background: %6; border-color: %6; }"
        "QScrollBar:vertical { background: transparent; width: 14px; margin: 0 0 0 4px; }"
        "QScrollBar::handle:vertical { background: %2; border-radius: 5px; min-height: 24px; }"
        "QScrollBar::add-line, QScrollBar::sub-line { height: 0; width: 0; }"
        "QScrollBar:horizontal { background: transparent; height: 10px; margin: 0; }"
        "QScrollBar::handle:horizontal { background: %2; border-radius: 5px; min-width: 24px; }"
        "QSplitter::handle { background: transparent; }"_s.arg(panel.name(), line.name(), text.name(),
                                                               quiet.name(), raised.name(), accent.name()));
}

void theme::paintInvitation(QWidget &widget, const QString &words)
{
    QPainter painter(&widget);
    painter.setPen(quiet);
    painter.drawText(widget.rect().adjusted(20, 0, -20, 0), Qt::AlignCenter | Qt::TextWordWrap, words);
}

QFont theme::resized(QFont base, int steps, bool strong)
{
    base.setPointSizeF(base.pointSizeF() + steps);
    if (strong)
        base.setWeight(QFont::DemiBold);
    return base;
}

QFont theme::figures(const QFont &base)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(base.pointSizeF() - 1);
    return font;
}
