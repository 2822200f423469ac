// SPDX-License-Identifier: MIT
#include "argumentform.h"

#include "argumenttyping.h"
#include "longtext.h"
#include "wholetext.h"

#include <QtCore/QMap>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
// Far beyond what a person writes. Fields for a hundred thousand parameters would keep the host busy for
// minutes.
constexpr qsizetype mostFields = 100;

QJsonObject defaultArgs(const QList<ParamDef> &params)
{
    QMap<QString, QJsonValue> inOrder; // an object takes seconds to sort as many in one by one
    for (const ParamDef &param : params)
        inOrder.insert(param.name, parseArgumentValue(param.defaultText, param.type));
    QJsonObject args;
    for (auto it = inOrder.cbegin(); it != inOrder.cend(); ++it)
        args.insert(it.key(), it.value());
    return args;
}

void discard(QWidget *widget)
{
    if (!widget)
        return;
    widget->hide();
    widget->deleteLater();
}

bool isBlank(const QLineEdit *edit)
{
    return wholeText(edit).trimmed().isEmpty();
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
    const qsizetype shown = std::min(params.size(), mostFields);
    m_fields.reserve(shown);
    const QList<ParamDef> visible = params.first(shown);
    for (const ParamDef &param : visible)
        m_fields.append(makeField(param));
    m_unshownArgs = defaultArgs(params.sliced(shown));
}

void ArgumentForm::clear()
{
    const QList<ParamField> gone = std::exchange(m_fields, {});
    m_unshownArgs = {};
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
    QJsonObject args = m_unshownArgs;
    for (const ParamField &field : m_fields) {
        if (m_unshownArgs.contains(field.param.name))
            continue; // of two parameters of one name the later counts
        const QString text = wholeText(field.edit).trimmed();
        args.insert(field.param.name,
                    parseArgumentValue(text.isEmpty() ? field.param.defaultText : text, field.param.type));
    }
    return args;
}

void ArgumentForm::fill(const QJsonObject &args)
{
    for (auto unshown = m_unshownArgs.begin(); unshown != m_unshownArgs.end(); ++unshown) {
        if (const auto stored = args.constFind(unshown.key()); stored != args.constEnd())
            unshown.value() = stored.value();
    }
    // A copy: who listens may give the form other rows.
    const QList<ParamField> fields = m_fields;
    for (const ParamField &field : fields) {
        const auto text = argumentText(args.value(field.param.name), field.param.type);
        if (text && field.edit)
            showWhole(field.edit, *text);
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
    edit->setPlaceholderText(param.defaultText.isEmpty() ? m_traits.noDefault.toString()
                                                         : beginningOf(param.defaultText));
    edit->setAccessibleName(param.name);
    connect(edit, &QLineEdit::textChanged, this, &ArgumentForm::edited);

    // Not the layout's own label: a name is shown as it is, without markup and without mnemonics.
    auto *label = new QLabel(m_traits.rowLabel.arg(beginningOf(param.name)), this);
    label->setTextFormat(Qt::PlainText);
    label->setObjectName(m_traits.rowLabelName);
    // A form layout centres no label, but an expanding one fills its row and centres its text.
    label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    m_layout->addRow(label, edit);
    return {param, label, edit};
}
