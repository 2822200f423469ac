// SPDX-License-Identifier: MIT
#pragma once

#include "editortraits.h"
#include "functiondef.h"

#include <QtCore/QJsonObject>
#include <QtCore/QPointer>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QWidget>

/// One row of an argument form. The widgets belong to the form.
struct ParamField
{
    ParamDef param;
    QPointer<QLabel> label;
    QPointer<QLineEdit> edit;
};

/// One plain text field per parameter of a function, whatever its type: the type says what a text means.
class ArgumentForm : public QWidget
{
    Q_OBJECT

public:
    explicit ArgumentForm(const EditorTraits &traits, QWidget *parent = nullptr);

    /// Replaces all rows by empty fields whose defaults show as placeholders. Parameters behind the first
    /// hundred get no field: they keep the values that `fill` gives them.
    void setParams(const QList<ParamDef> &params);
    /// Removes all rows. The fields go when the event loop runs, since one of them may be emitting.
    void clear();

    [[nodiscard]] const QList<ParamField> &fields() const { return m_fields; }
    [[nodiscard]] QFormLayout *formLayout() const { return m_layout; }

    /// The value of every parameter by name; an empty field counts as its default.
    [[nodiscard]] QJsonObject args() const;
    /// Gives each field the text of its value in `args`; one that `args` does not name stays as it is. Of a
    /// text that is too long for a field the rest stays with it until somebody edits it.
    void fill(const QJsonObject &args);
    /// Writes "arg_0" into the first empty field that an axis (0) or a button (1) can feed.
    void fillFromInput(int inputKind);

Q_SIGNALS:
    /// A field's text changed.
    void edited();

private:
    [[nodiscard]] ParamField makeField(const ParamDef &param);

    const EditorTraits m_traits;
    QFormLayout *m_layout;
    QList<ParamField> m_fields;
    QJsonObject m_unshownArgs; // of the parameters behind the fields
};
