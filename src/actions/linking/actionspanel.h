// SPDX-License-Identifier: MIT
#pragma once

#include <QtWidgets/QFrame>

class QLabel;
class QListWidget;
class QListWidgetItem;

/// The list of actions beside the gamepad's picture. A click on an action arms it for the next input, and a
/// second click disarms it.
class ActionsPanel : public QFrame
{
    Q_OBJECT

public:
    explicit ActionsPanel(QWidget *parent = nullptr);

    /// Lists these in place of what was there, and disarms.
    void setActions(const QStringList &names);

    /// Empty where none is armed.
    [[nodiscard]] QString armedAction() const { return m_armedAction; }
    void clearArmedAction();

    /// Whether a press on `widget` is one on the list, where arming happens.
    [[nodiscard]] bool isOnList(const QWidget *widget) const;

private:
    void armAction(const QListWidgetItem *item);

    QListWidget *m_actionsList;
    QLabel *m_hintLabel;
    QString m_armedAction;
};
