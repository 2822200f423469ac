// SPDX-License-Identifier: MIT
#include "steprow.h"

#include "actionsheets.h"
#include "actiontaskblockwidget.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtGui/QIcon>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{
struct ButtonLook
{
    QString objectName;
    QString toolTip;
    QString icon;
    QString text; ///< in place of an icon that is not there
    QString sheet;
};

QWidget *makeTransparent(const QString &objectName, QWidget *parent)
{
    auto *widget = new QWidget(parent);
    widget->setObjectName(objectName);
    widget->setStyleSheet(u"background: transparent;"_s);
    return widget;
}

QToolButton *makeButton(const ButtonLook &look, QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setObjectName(look.objectName);
    button->setToolTip(look.toolTip);
    button->setAccessibleName(look.toolTip);
    button->setFixedSize(40, 32);
    button->setAttribute(Qt::WA_StyledBackground);
    button->setAutoFillBackground(false);
    button->setIconSize({18, 18});
    button->setStyleSheet(look.sheet);
    // Asked for first: an icon of a file that is not there costs a search and a warning.
    const QIcon icon = QFileInfo::exists(look.icon) ? QIcon(look.icon) : QIcon();
    if (icon.isNull())
        button->setText(look.text);
    else
        button->setIcon(icon);
    return button;
}

void setUpButtons(StepRow &step, QWidget *column)
{
    const QString plain = secondaryButtonSheet();
    step.upButton =
        makeButton({u"taskMiniBtn"_s, u"Monter"_s, u":/icon/arrow-up.svg"_s, u"^"_s, plain}, column);
    step.downButton =
        makeButton({u"taskMiniBtn"_s, u"Descendre"_s, u":/icon/arrow-down.svg"_s, u"v"_s, plain}, column);
    step.deleteButton = makeButton(
        {u"taskMiniDangerBtn"_s, u"Supprimer"_s, u":/icon/close-red.svg"_s, u"x"_s, dangerButtonSheet()},
        column);

    auto *layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addStretch();
    for (QToolButton *button : {step.upButton, step.downButton, step.deleteButton})
        layout->addWidget(button, 0, Qt::AlignHCenter);
    layout->addStretch();
}
} // namespace

StepRow makeStepRow(const QJsonArray &functions, QWidget *panel)
{
    StepRow step{};
    step.row = makeTransparent(u"stepRow"_s, panel);
    step.row->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    auto *layout = new QHBoxLayout(step.row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);

    step.block = new ActionTaskBlockWidget(step.row);
    step.block->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    if (!functions.isEmpty())
        step.block->setFunctions(functions);
    layout->addWidget(step.block, 1);

    QWidget *column = makeTransparent(u"stepButtonsCol"_s, step.row);
    setUpButtons(step, column);
    layout->addWidget(column);
    return step;
}
