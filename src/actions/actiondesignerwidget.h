// SPDX-License-Identifier: MIT
#pragma once

#include "steprow.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QScrollArea;
class QVBoxLayout;

/// The tab in which the user writes actions, named sequences of calls to host functions. They are loaded when
/// it is made and saved 300 ms after the last edit; an edit that still waits when it dies is lost.
class ActionDesignerWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ActionDesignerWidget(QWidget *parent = nullptr);

    /// Replaces the catalogue of host functions that steps can call, and shows the chosen action anew.
    void setFunctions(const QJsonArray &functions);
    /// All actions as they stand in memory, edits that are not saved yet included.
    [[nodiscard]] QJsonArray actions() const { return m_actions; }

Q_SIGNALS:
    /// Loading ended, or a save: whether the file could be written or not.
    void actionsChanged(const QJsonArray &actions);

private Q_SLOTS:
    void onAddAction();
    void onDuplicateAction();
    void onDeleteAction();
    void onActionSelectionChanged();
    void onActionNameEdited(const QString &name);
    void onAddStep();
    void onSaveTimeout();

private:
    void setUpFrame();
    [[nodiscard]] QWidget *makeLeftPanel();
    [[nodiscard]] QWidget *makeRightPanel();
    void setUpSteps();
    void connectFrame();

    void load();
    void refreshList();
    void loadAction(int index);
    void appendAction(const QJsonObject &action);
    void commitAction(int index);
    void noteEdit();
    [[nodiscard]] bool isAction(int index) const { return index >= 0 && index < m_actions.size(); }

    void addStep(const QJsonObject &task);
    void endSteps();
    void clearSteps();
    void connectStep(const StepRow &step);
    void deleteStep(const QWidget *row);
    void shiftStep(const QWidget *row, int by);
    void moveStep(qsizetype from, qsizetype to);
    void discard(const StepRow &step);
    [[nodiscard]] qsizetype indexOfStep(const QWidget *row) const;
    [[nodiscard]] bool holdsFocus(const QWidget *widget) const;
    void placeTabStops(qsizetype index);
    void reveal(QWidget *row);

    QListWidget *m_actionsList;
    QLineEdit *m_nameEdit;
    QToolButton *m_addButton;
    QToolButton *m_duplicateButton;
    QToolButton *m_deleteButton;
    QToolButton *m_addStepButton;
    QLabel *m_hintLabel;
    QScrollArea *m_stepsScroll;
    QWidget *m_stepsPanel;
    QVBoxLayout *m_stepsLayout;

    QJsonArray m_functions;
    QJsonArray m_actions;
    QList<StepRow> m_steps;
    QJsonArray m_unshownTasks; // of the action on show, behind its steps
    QString m_storagePath;
    int m_selectedIndex = -1;
    bool m_updating = false; // the widgets are being filled: what they emit is no edit
    QTimer m_saveTimer{this};
};
