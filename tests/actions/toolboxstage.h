// SPDX-License-Identifier: MIT
#pragma once

#include "actiontoolbox.h"
#include "argumentform.h"

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QScrollArea>

/// Runs what was deferred, deletions included.
inline void runDeferred()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

/// The settings panels that exist, hidden ones included.
inline QList<QFrame *> settingsPanels()
{
    QList<QFrame *> panels;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->objectName() == QStringLiteral("toolSettings"))
            panels.append(qobject_cast<QFrame *>(window));
    }
    return panels;
}

/// One tool box on a window of its own. Only one stage exists at a time.
class ToolBoxStage
{
public:
    ToolBoxStage()
    {
        m_window.resize(600, 400);
        m_box->move(120, 80);
    }

    void show()
    {
        m_window.show();
        QVERIFY(QTest::qWaitForWindowActive(&m_window));
    }

    QWidget &window() { return m_window; }
    ActionToolBox &box() { return *m_box; }
    QComboBox &combo() { return *m_box->findChild<QComboBox *>(); }
    QLabel &header() { return *m_box->findChild<QLabel *>(); }

    /// Null before the panel was needed.
    static QFrame *panel()
    {
        const QList<QFrame *> panels = settingsPanels();
        return panels.isEmpty() ? nullptr : panels.first();
    }
    static ArgumentForm *form() { return panel() ? panel()->findChild<ArgumentForm *>() : nullptr; }
    static QLineEdit *edit(qsizetype row) { return form()->fields().at(row).edit; }

    /// The texts of the fields, in order.
    static QStringList texts()
    {
        QStringList texts;
        if (form()) {
            for (const ParamField &field : form()->fields())
                texts.append(field.edit->text());
        }
        return texts;
    }

    /// The texts of the combo's entries, in order.
    QStringList entries()
    {
        QStringList entries;
        for (int row = 0; row < combo().count(); ++row)
            entries.append(combo().itemText(row));
        return entries;
    }

    /// A point on the frame that neither the label nor the combo covers, in window coordinates.
    QPoint handle() { return m_box->mapTo(&m_window, QPoint(3, m_box->height() / 2)); }

private:
    QWidget m_window;
    ActionToolBox *m_box = new ActionToolBox(&m_window);
};
