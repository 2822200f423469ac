// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QComboBox>

class FunctionListModel;

/// The combo in which an editor's function is chosen. Its size hints are those of any combo with these
/// entries, but a catalogue that many combos share is measured once. Closed, it shows its entry in the
/// entry's own colour, cut short with an ellipsis where it does not fit.
class FunctionComboBox : public QComboBox
{
    Q_OBJECT

public:
    /// Does not own `model`. Where both have one parent, the model is to be made first, and so dies first:
    /// Qt lays out the whole list once more when a combo goes that still has one.
    explicit FunctionComboBox(FunctionListModel *model, QWidget *parent = nullptr);
    ~FunctionComboBox() override;

    /// The index of the chosen function, -1 for none.
    [[nodiscard]] int functionIndex() const;
    /// Selects the entry that holds `index`, -1 being the one for no function.
    void selectFunction(int index);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    /// Opens the list, as wide as its entries need.
    void showPopup() override;

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QSize hintFor(int textWidth) const;
    [[nodiscard]] QColor textColour() const;

    FunctionListModel *m_functions;
    mutable QSize m_hint;
    bool m_shown = false;
};
