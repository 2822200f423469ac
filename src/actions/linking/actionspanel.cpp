// SPDX-License-Identifier: MIT
#include "actionspanel.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{
constexpr int largestWidth = 230; // the picture has more to show
constexpr int hintLines = 2;      // reserved, so that the list keeps its height when an action is armed

QString idleHint()
{
    return u"Cliquez une action puis appuyez sur un bouton."_s;
}

QString panelSheet()
{
    return uR"(
#mappingActionsPanel {
    background: rgba(15, 26, 36, 210);
    border: 1px solid #2A4456;
    border-radius: 12px;
}
#mappingActionsPanel QLabel { background: transparent; color: #E8F0F5; border: none; }
#mappingActionsPanel #mappingActionsTitle { font-weight: 600; }
#mappingActionsPanel #mappingActionsHint { color: rgba(232, 240, 245, 170); }
#mappingActionsPanel #mappingActionsList {
    background: rgba(12, 22, 31, 230);
    color: #E8F0F5;
    border: 1px solid #2A4456;
    border-radius: 8px;
    padding: 4px;
    outline: none;
}
#mappingActionsList::item {
    color: #E8F0F5;
    border: 1px solid transparent;
    border-radius: 8px;
    padding: 6px 8px;
}
#mappingActionsList::item:disabled { color: rgba(232, 240, 245, 170); }
#mappingActionsList::item:hover:enabled { background: rgba(47, 79, 99, 160); }
#mappingActionsList::item:selected, #mappingActionsList::item:selected:hover {
    background: #2F7A43;
    border-color: #3FAE49;
}
#mappingActionsPanel QScrollBar { background: transparent; border: none; }
#mappingActionsPanel QScrollBar:vertical { width: 12px; }
#mappingActionsPanel QScrollBar::handle:vertical {
    background: #2A4456;
    border-radius: 4px;
    min-height: 24px;
    margin-left: 4px;
}
#mappingActionsPanel QScrollBar::add-line, #mappingActionsPanel QScrollBar::sub-line { width: 0; height: 0; }
)"_s;
}

/// A name that looks like markup is shown as it was given.
QLabel *plainLabel(const QString &objectName, const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    return label;
}
} // namespace

ActionsPanel::ActionsPanel(QWidget *parent)
    : QFrame(parent)
    , m_actionsList(new QListWidget(this))
    , m_hintLabel(plainLabel(u"mappingActionsHint"_s, idleHint(), this))
{
    setObjectName(u"mappingActionsPanel"_s);
    setStyleSheet(panelSheet());
    setMaximumWidth(largestWidth);
    m_actionsList->setObjectName(u"mappingActionsList"_s);
    m_actionsList->setSelectionMode(QAbstractItemView::SingleSelection);
    m_actionsList->setWordWrap(true);
    m_actionsList->setResizeMode(QListView::Adjust);
    m_actionsList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_hintLabel->setWordWrap(true);
    m_hintLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_hintLabel->setMinimumHeight(hintLines * m_hintLabel->fontMetrics().lineSpacing());
    // A name without a blank in it would make the panel as wide as itself.
    m_hintLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->setSpacing(6);
    layout->addWidget(plainLabel(u"mappingActionsTitle"_s, u"Actions disponibles"_s, this));
    layout->addWidget(m_actionsList, 1);
    layout->addWidget(m_hintLabel);

    connect(m_actionsList, &QListWidget::itemClicked, this, &ActionsPanel::armAction);
}

void ActionsPanel::setActions(const QStringList &names)
{
    clearArmedAction();
    m_actionsList->clear();
    for (const QString &name : names) {
        auto *item = new QListWidgetItem(name, m_actionsList);
        item->setData(Qt::UserRole, name);
        item->setFlags(item->flags() | Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    }
    if (names.isEmpty()) {
        auto *item = new QListWidgetItem(u"Aucune action"_s, m_actionsList);
        item->setFlags(Qt::NoItemFlags);
    }
}

void ActionsPanel::armAction(const QListWidgetItem *item)
{
    if (!item || !item->flags().testFlag(Qt::ItemIsEnabled))
        return;
    const QString name = item->data(Qt::UserRole).toString();
    if (name.isEmpty())
        return;
    if (name.compare(m_armedAction, Qt::CaseInsensitive) == 0) {
        clearArmedAction();
        return;
    }
    m_armedAction = name;
    m_hintLabel->setText(u"Appuyez sur un bouton pour mapper \"%1\"."_s.arg(name));
}

void ActionsPanel::clearArmedAction()
{
    m_armedAction.clear();
    const QSignalBlocker blocker(m_actionsList);
    m_actionsList->clearSelection();
    m_hintLabel->setText(idleHint());
}

bool ActionsPanel::isOnList(const QWidget *widget) const
{
    return widget == m_actionsList || m_actionsList->isAncestorOf(widget);
}
