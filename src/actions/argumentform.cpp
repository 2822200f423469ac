// SPDX-License-Identifier: MIT
#include "argumentform.h"

#include "argumenttyping.h"

using namespace Qt::StringLiterals;

namespace
{
void discard(QWidget *widget)
{
    if (!widget)
        return;
    widget->hide();
    widget->deleteLater();
}

bool isBlank(const QLineEdit *edit)
{
    return edit->text().trimmed().isEmpty();
}
} // namespace

ArgumentForm::ArgumentForm(const EditorTraits &traits, QWidget *parent)
    : QWidget(parent)
    , m_traits(traits)
    , m_layout(new QFormLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(6);
}

void ArgumentForm::setParams(const QList<ParamDef> &params)
{
    clear();
    m_fields.reserve(params.size());
    for (const ParamDef &param : params)
        m_fields.append(makeField(param));
}

void ArgumentForm::clear()
{
    const QList<ParamField> gone = std::exchange(m_fields, {});
    for (int row = m_layout->rowCount() - 1; row >= 0; --row) {
        // Not removeRow, which deletes the widgets at once.
        const QFormLayout::TakeRowResult items = m_layout->takeRow(row);
        delete items.labelItem;
        delete items.fieldItem;
    }
    for (const ParamField &field : gone) {
        if (field.edit)
            field.edit->disconnect(this);
        discard(field.label);
        discard(field.edit);
    }
}

QJsonObject ArgumentForm::args() const
{
    QJsonObject args;
    for (const ParamField &field : m_fields) {
        const QString text = field.edit->text().trimmed();
        args.insert(field.param.name,
                    parseArgumentValue(text.isEmpty() ? field.param.defaultText : text, field.param.type));
    }
    return args;
}

void ArgumentForm::fill(const QJsonObject &args)
{
    // A copy: who listens may give the form other rows.
    const QList<ParamField> fields = m_fields;
    for (const ParamField &field : fields) {
        const auto text = argumentText(args.value(field.param.name), field.param.type);
        if (text && field.edit)
            field.edit->setText(*text);
    }
}

void ArgumentForm::fillFromInput(int inputKind)
{
    const auto free = std::ranges::find_if(m_fields, [inputKind](const ParamField &field) {
        return takesInput(field.param.type, inputKind) && isBlank(field.edit);
    });
    if (free != m_fields.end())
        free->edit->setText(u"arg_0"_s);
}

ParamField ArgumentForm::makeField(const ParamDef &param)
{
    auto *edit = new QLineEdit(this);
    edit->setPlaceholderText(param.defaultText.isEmpty() ? m_traits.noDefault.toString() : param.defaultText);
    edit->setAccessibleName(param.name);
    connect(edit, &QLineEdit::textChanged, this, &ArgumentForm::edited);

    // Not the layout's own label: a name is shown as it is, without markup and without mnemonics.
    auto *label = new QLabel(m_traits.rowLabel.arg(param.name), this);
    label->setTextFormat(Qt::PlainText);
    label->setObjectName(m_traits.rowLabelName);
    // A form layout centres no label, but an expanding one fills its row and centres its text.
    label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    m_layout->addRow(label, edit);
    return {param, label, edit};
}
