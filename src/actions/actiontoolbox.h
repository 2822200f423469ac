// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QPointer>
#include <QtWidgets/QFrame>

class ArgumentForm;
class FunctionComboBox;
class FunctionListModel;
class QLabel;
class QScrollArea;
struct FunctionDef;

/// The small frame beside a pastille that names what the pastille's input runs, with a popup for the
/// arguments. It keeps no document: its state is what `config` gives.
class ActionToolBox : public QFrame
{
    Q_OBJECT

public:
    explicit ActionToolBox(QWidget *parent = nullptr);
    ~ActionToolBox() override;

    /// Whether the frame can be dragged and opens its settings on a double click; true at first.
    void setEditable(bool editable);
    /// The text left of the combo; "Action" at first.
    void setHeaderText(const QString &text);
    /// Replaces the catalogue. The chosen function stays, in orange where the catalogue no longer has it;
    /// the fields are empty afterwards. Emits nothing but what a field emits that takes "arg_0".
    void setExternalServices(const QJsonArray &catalogue);
    /// 0 for an axis, 1 for a button. Fills one more free field that suits the input with "arg_0", and
    /// emits `durty` even when the kind is the same.
    void setInputKind(int kind);

    /// `ref` and `action`, both the function's name, and `args`; empty when no function is chosen.
    [[nodiscard]] QJsonObject config() const;
    /// Chooses the function that `ref`, failing that `action`, names, and fills in `args`. An unknown name
    /// is kept as an orange entry. Emits `durty` at least once.
    void applyConfig(const QJsonObject &config);
    /// Shows the popup with the arguments below the combo.
    void openSettings();

Q_SIGNALS:
    /// At each step of a drag.
    void moved();
    /// Whenever the configuration may have changed.
    void durty();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    void onFunctionChosen();

    [[nodiscard]] const FunctionDef *currentFunction() const;
    [[nodiscard]] int indexOrUnknown(const QString &name);
    void selectNothing();
    void ensureSettingsPanel();
    void rebuildForm();
    void applyInputDefault();

    bool m_editable = true;
    bool m_dragging = false;
    QPoint m_pressPos; // global
    QRect m_startGeometry;
    FunctionListModel *m_functions;
    QLabel *m_headerLabel;
    FunctionComboBox *m_functionCombo;
    // A window of its own, null until it is needed.
    QPointer<QFrame> m_settingsPanel;
    QPointer<QScrollArea> m_formScroll;
    QPointer<ArgumentForm> m_form;
    int m_inputKind = 0;
};
