// SPDX-License-Identifier: MIT
#include "actiontaskblockwidget.h"

#include "actionsheets.h"
#include "argumentform.h"
#include "argumenttyping.h"
#include "functioncombobox.h"
#include "functionlistmodel.h"
#include "wholetext.h"

#include <QtCore/QJsonArray>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr int highestForm = 180;

QLabel *makeBlockLabel(const QString &text)
{
    auto *label = new QLabel(text);
    label->setObjectName(u"blockLabel"_s);
    return label;
}

QHBoxLayout *makeRow(const QString &label, QWidget *content)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(6);
    row->addWidget(makeBlockLabel(label), 0, Qt::AlignVCenter);
    row->addWidget(content, 1);
    return row;
}

QString conditionOf(const QJsonObject &task)
{
    const QString when = normalizeExpression(task.value("when"_L1).toString());
    return when.isEmpty() ? normalizeExpression(task.value("condition"_L1).toString()) : when;
}
} // namespace

ActionTaskBlockWidget::ActionTaskBlockWidget(QWidget *parent)
    : QFrame(parent)
    , m_functions(new FunctionListModel(taskBlockTraits, this))
{
    setObjectName(u"ActionTaskBlockWidget"_s);
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(taskBlockSheet());

    // Made in their place: a combo that moves into a style sheet makes its list twice over.
    m_functionCombo = new FunctionComboBox(m_functions, this);
    m_whenEdit = new QLineEdit(this);
    m_formScroll = new QScrollArea(this);
    m_form = new ArgumentForm(taskBlockTraits);

    m_functionCombo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_functionCombo->setMinimumContentsLength(28);
    m_whenEdit->setPlaceholderText(u"condition"_s);
    setUpForm();

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 8, 10, 8);
    layout->setSpacing(6);
    layout->addLayout(makeRow(u"Action"_s, m_functionCombo));
    layout->addWidget(m_formScroll);
    layout->addLayout(makeRow(u"when"_s, m_whenEdit));

    connect(m_functionCombo, &QComboBox::currentIndexChanged, this, &ActionTaskBlockWidget::onFunctionChosen);
    connect(m_form, &ArgumentForm::edited, this, &ActionTaskBlockWidget::changed);
    connect(m_whenEdit, &QLineEdit::textChanged, this, &ActionTaskBlockWidget::changed);
}

void ActionTaskBlockWidget::setFunctions(const QJsonArray &catalogue)
{
    const QJsonObject previous = config();
    m_functions->clear();
    m_functions->setCatalogue(FunctionCatalogue::shared(catalogue, taskBlockTraits));
    if (!previous.isEmpty() && applyConfig(previous))
        return;
    m_functionCombo->selectFunction(-1);
    clearForm();
    m_whenEdit->clear();
}

QJsonObject ActionTaskBlockWidget::config() const
{
    const FunctionDef *function = currentFunction();
    if (!function)
        return {};
    QJsonObject task{{u"ref"_s, function->name}, {u"args"_s, m_form->args()}};
    const QString when = wholeText(m_whenEdit).trimmed();
    if (!when.isEmpty())
        task.insert("when"_L1, normalizeExpression(when));
    return task;
}

bool ActionTaskBlockWidget::applyConfig(const QJsonObject &task)
{
    const int index = m_functions->indexOf(task.value("ref"_L1).toString());
    if (index < 0)
        return false;
    // Another choice rebuilds the form by itself. Once is enough: fields are most of what a card costs.
    if (m_functionCombo->functionIndex() == index)
        rebuildForm();
    else
        m_functionCombo->selectFunction(index);
    m_form->fill(task.value("args"_L1).toObject());
    const QString when = conditionOf(task);
    if (!when.isEmpty())
        showWhole(m_whenEdit, when);
    Q_EMIT changed();
    return true;
}

void ActionTaskBlockWidget::onFunctionChosen()
{
    rebuildForm();
    Q_EMIT changed();
}

const FunctionDef *ActionTaskBlockWidget::currentFunction() const
{
    return m_functions->functionAt(m_functionCombo->functionIndex());
}

void ActionTaskBlockWidget::setUpForm()
{
    m_form->formLayout()->setHorizontalSpacing(10);
    m_form->formLayout()->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    m_formScroll->setWidgetResizable(true);
    m_formScroll->setFrameShape(QFrame::NoFrame);
    m_formScroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_formScroll->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_formScroll->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    m_formScroll->setMaximumHeight(highestForm);
    m_formScroll->setFocusPolicy(Qt::NoFocus); // its fields take the focus, and it follows them
    m_formScroll->setWidget(m_form);
    m_formScroll->hide();
}

void ActionTaskBlockWidget::rebuildForm()
{
    clearForm();
    const FunctionDef *function = currentFunction();
    if (!function || function->params.isEmpty())
        return;
    m_form->setParams(function->params);
    placeTabStops();
    m_formScroll->show();
    m_form->adjustSize();
    m_formScroll->setFixedHeight(std::min(m_form->sizeHint().height() + 6, highestForm));
}

void ActionTaskBlockWidget::placeTabStops()
{
    // Fields are younger than all that stands around them, and Qt orders tab stops by age.
    QWidget *before = m_functionCombo;
    for (const ParamField &field : m_form->fields()) {
        setTabOrder(before, field.edit);
        before = field.edit;
    }
}

void ActionTaskBlockWidget::clearForm()
{
    m_form->clear();
    m_formScroll->hide();
    m_formScroll->setFixedHeight(0);
}
