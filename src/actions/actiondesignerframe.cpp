// SPDX-License-Identifier: MIT
// The frame of the designer: what stands in it whatever the actions are.
#include "actiondesignerwidget.h"

#include "actionsheets.h"
#include "longtext.h"

#include <QtWidgets/QFrame>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{
QLabel *makeTitle(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(u"sectionTitle"_s);
    return label;
}

QToolButton *makeButton(const QString &text, const QString &objectName, const QString &sheet, QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setText(text);
    button->setObjectName(objectName);
    button->setStyleSheet(sheet);
    return button;
}

QWidget *makePanel(const QString &objectName, QWidget *parent)
{
    auto *panel = new QWidget(parent);
    panel->setObjectName(objectName);
    panel->setAttribute(Qt::WA_StyledBackground);
    return panel;
}

QVBoxLayout *makeColumn(QWidget *panel, int measure)
{
    auto *layout = new QVBoxLayout(panel);
    layout->setContentsMargins(measure, measure, measure, measure);
    layout->setSpacing(measure);
    return layout;
}
} // namespace

void ActionDesignerWidget::setUpFrame()
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(designerSheet());
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addWidget(makeLeftPanel(), 1);
    layout->addWidget(makeRightPanel(), 3);
}

QWidget *ActionDesignerWidget::makeLeftPanel()
{
    QWidget *panel = makePanel(u"designerLeftPanel"_s, this);
    auto *layout = makeColumn(panel, 8);
    layout->addWidget(makeTitle(u"Actions"_s, panel));

    m_actionsList = new QListWidget(panel);
    m_actionsList->setObjectName(u"actionsList"_s);
    m_actionsList->setSelectionMode(QAbstractItemView::SingleSelection);
    // A long name ends in an ellipsis. Lines of one height spare a measure of all of them at each keystroke.
    m_actionsList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_actionsList->setUniformItemSizes(true);
    m_actionsList->setItemDelegate(new BeginningDelegate(m_actionsList));
    layout->addWidget(m_actionsList, 1);

    m_addButton = makeButton(u"+"_s, u"primaryBtn"_s, primaryButtonSheet(), panel);
    m_addButton->setToolTip(u"Ajouter une action"_s);
    m_duplicateButton = makeButton(u"Dupliquer"_s, u"secondaryBtn"_s, secondaryButtonSheet(), panel);
    m_duplicateButton->setToolTip(u"Dupliquer l'action"_s);
    m_deleteButton = makeButton(u"Supprimer"_s, u"dangerBtn"_s, dangerButtonSheet(), panel);
    m_deleteButton->setToolTip(u"Supprimer l'action"_s);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(6);
    buttons->addWidget(m_addButton);
    buttons->addWidget(m_duplicateButton);
    buttons->addWidget(m_deleteButton);
    buttons->addStretch();
    layout->addLayout(buttons);
    return panel;
}

QWidget *ActionDesignerWidget::makeRightPanel()
{
    QWidget *panel = makePanel(u"designerRightPanel"_s, this);
    auto *layout = makeColumn(panel, 10);
    layout->addWidget(makeTitle(u"Nom de l'action"_s, panel));

    m_nameEdit = new QLineEdit(panel);
    m_nameEdit->setObjectName(u"actionNameEdit"_s);
    m_nameEdit->setPlaceholderText(u"ex: LockOn"_s);
    layout->addWidget(m_nameEdit);

    m_hintLabel = new QLabel(u"Definissez les etapes (ref + args + when)."_s, panel);
    m_hintLabel->setObjectName(u"hintLabel"_s);
    layout->addWidget(m_hintLabel);

    m_stepsScroll = new QScrollArea(panel);
    setUpSteps();
    layout->addWidget(m_stepsScroll, 1);

    m_addStepButton = makeButton(u"+ Etape"_s, u"primaryBtn"_s, primaryButtonSheet(), panel);
    layout->addWidget(m_addStepButton, 0, Qt::AlignLeft);
    return panel;
}

void ActionDesignerWidget::setUpSteps()
{
    m_stepsScroll->setObjectName(u"stepsScrollArea"_s);
    m_stepsScroll->setWidgetResizable(true);
    m_stepsScroll->setFrameShape(QFrame::NoFrame);

    QWidget *viewport = m_stepsScroll->viewport();
    viewport->setObjectName(u"stepsViewport"_s);
    viewport->setStyleSheet(stepsViewportSheet());

    m_stepsPanel = new QWidget;
    m_stepsPanel->setObjectName(u"stepsPanel"_s);
    // Room for the viewport's border, which cards would cover.
    m_stepsPanel->setContentsMargins(8, 8, 8, 8);
    m_stepsLayout = new QVBoxLayout(m_stepsPanel);
    m_stepsLayout->setContentsMargins(0, 0, 0, 0);
    m_stepsLayout->setSpacing(8);
    m_stepsLayout->setAlignment(Qt::AlignTop);
    m_stepsScroll->setWidget(m_stepsPanel);
    // A scroll area fills the ground of what it is given.
    m_stepsPanel->setAutoFillBackground(false);
    viewport->setAutoFillBackground(true);
}

void ActionDesignerWidget::connectFrame()
{
    connect(m_addButton, &QToolButton::clicked, this, &ActionDesignerWidget::onAddAction);
    connect(m_duplicateButton, &QToolButton::clicked, this, &ActionDesignerWidget::onDuplicateAction);
    connect(m_deleteButton, &QToolButton::clicked, this, &ActionDesignerWidget::onDeleteAction);
    connect(m_actionsList, &QListWidget::currentRowChanged, this,
            &ActionDesignerWidget::onActionSelectionChanged);
    connect(m_nameEdit, &QLineEdit::textEdited, this, &ActionDesignerWidget::onActionNameEdited);
    connect(m_addStepButton, &QToolButton::clicked, this, &ActionDesignerWidget::onAddStep);
}
