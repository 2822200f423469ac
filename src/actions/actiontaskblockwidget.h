// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtWidgets/QFrame>

class ArgumentForm;
class FunctionComboBox;
class FunctionListModel;
class QLineEdit;
class QScrollArea;
struct FunctionDef;

/// The card that shows and edits one step of an action: its function, its arguments, its condition.
class ActionTaskBlockWidget : public QFrame
{
    Q_OBJECT

public:
    explicit ActionTaskBlockWidget(QWidget *parent = nullptr);

    /// Replaces the catalogue of host functions. A task whose function is still there stays; another is
    /// dropped with its arguments and its condition. Emits `changed` while it works.
    void setFunctions(const QJsonArray &catalogue);
    /// The task: `ref`, `args`, and `when` unless it is empty. Empty when no function is chosen.
    [[nodiscard]] QJsonObject config() const;
    /// Shows `task`. Returns false, changing nothing, when the catalogue does not have its `ref`.
    bool applyConfig(const QJsonObject &task);

Q_SIGNALS:
    /// The function, an argument or the condition changed.
    void changed();

private:
    void onFunctionChosen();

    [[nodiscard]] const FunctionDef *currentFunction() const;
    void setUpForm();
    void rebuildForm();
    void placeTabStops();
    void clearForm();

    FunctionListModel *m_functions;
    FunctionComboBox *m_functionCombo;
    QLineEdit *m_whenEdit;
    QScrollArea *m_formScroll;
    ArgumentForm *m_form;
};
