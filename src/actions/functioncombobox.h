// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QComboBox>

class FunctionListModel;

/// The combo in which an editor's function is chosen. Its size hints are those of any combo with these
/// entries, but a catalogue that many combos share is measured once.
class FunctionComboBox : public QComboBox
{
    Q_OBJECT

public:
    /// Does not own `model`, which must outlive it.
    explicit FunctionComboBox(FunctionListModel *model, QWidget *parent = nullptr);

    /// The index of the chosen function, -1 for none.
    [[nodiscard]] int functionIndex() const;
    /// Selects the entry that holds `index`, -1 being the one for no function.
    void selectFunction(int index);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void initStyleOption(QStyleOptionComboBox *option) const override;

private:
    [[nodiscard]] QSize hintFor(int textWidth) const;

    FunctionListModel *m_functions;
    mutable QSize m_hint;
    bool m_shown = false;
};
