// SPDX-License-Identifier: MIT
#pragma once

#include "actiontaskblockwidget.h"
#include "argumentform.h"

#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>

/// One task card on a window of its own.
class CardStage
{
public:
    CardStage()
    {
        auto *layout = new QVBoxLayout(&m_window);
        layout->addWidget(m_card);
        layout->addStretch();
        m_window.resize(640, 480);
    }

    void show()
    {
        m_window.show();
        QVERIFY(QTest::qWaitForWindowActive(&m_window));
    }

    QWidget &window() { return m_window; }
    ActionTaskBlockWidget &card() { return *m_card; }
    QComboBox &combo() { return *m_card->findChild<QComboBox *>(); }
    QScrollArea &scroll() { return *m_card->findChild<QScrollArea *>(); }
    ArgumentForm &form() { return *m_card->findChild<ArgumentForm *>(); }
    QLineEdit &when() { return *m_card->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly); }
    QLineEdit &edit(qsizetype row) { return *form().fields().at(row).edit; }

    QStringList texts()
    {
        QStringList texts;
        for (const ParamField &field : form().fields())
            texts.append(field.edit->text());
        return texts;
    }

private:
    QWidget m_window;
    ActionTaskBlockWidget *m_card = new ActionTaskBlockWidget(&m_window);
};
