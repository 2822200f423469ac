// SPDX-License-Identifier: MIT
// The list of actions and its hint, with a person's clicks.
#include "actionspanel.h"
#include "sheetdeclarations.h"
#include "testmain.h"

#include <QtGui/QWindow>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

class TestActionsPanel : public QObject
{
    Q_OBJECT

    const QString m_idle = u"Cliquez une action puis appuyez sur un bouton."_s;
    ActionsPanel *m_panel = nullptr;

    QListWidget &list() { return *m_panel->findChild<QListWidget *>(u"mappingActionsList"_s); }
    QLabel &hint() { return *m_panel->findChild<QLabel *>(u"mappingActionsHint"_s); }

    void click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QPoint pos = list().visualItemRect(list().item(row)).center();
        QTest::mouseClick(m_panel->windowHandle(), Qt::LeftButton, modifiers,
                          list().viewport()->mapTo(m_panel, pos));
    }

private Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        QApplication::setDoubleClickInterval(0);
        m_panel = new ActionsPanel;
        m_panel->resize(300, 300);
        m_panel->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_panel));
    }
    void cleanup() { delete std::exchange(m_panel, nullptr); }

    void itIsBuiltAsTold()
    {
        QCOMPARE(m_panel->objectName(), u"mappingActionsPanel"_s);
        auto *layout = qobject_cast<QVBoxLayout *>(m_panel->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(8, 8, 8, 8));
        QCOMPARE(layout->spacing(), 6);
        QCOMPARE(layout->count(), 3);
        auto *title = qobject_cast<QLabel *>(layout->itemAt(0)->widget());
        QVERIFY(title);
        QCOMPARE(title->objectName(), u"mappingActionsTitle"_s);
        QCOMPARE(title->text(), u"Actions disponibles"_s);
        QCOMPARE(layout->itemAt(1)->widget(), &list());
        QCOMPARE(layout->stretch(0), 0);
        QCOMPARE(layout->stretch(1), 1);
        QCOMPARE(layout->itemAt(2)->widget(), &hint());
        QCOMPARE(list().selectionMode(), QAbstractItemView::SingleSelection);
        QVERIFY(hint().wordWrap());
        QCOMPARE(hint().text(), m_idle);
    }

    void eachPartHasItsLook_data()
    {
        QTest::addColumn<QString>("selector");
        QTest::addColumn<QString>("declaration");
        const auto row = [](const QString &selector, const QString &declaration) {
            QTest::newRow(qPrintable(selector + u' ' + declaration)) << selector << declaration;
        };
        const QString panel = u"#mappingActionsPanel"_s;
        const QString text = u"color: #E8F0F5;"_s;
        row(panel, u"background: rgba(15, 26, 36, 210);"_s);
        row(panel, u"border: 1px solid #2A4456;"_s);
        row(panel, u"border-radius: 12px;"_s);
        row(panel + u" QLabel"_s, text);
        row(panel + u" #mappingActionsHint"_s, u"color: rgba(232, 240, 245, 170);"_s);
        row(panel + u" #mappingActionsList"_s, u"background: rgba(12, 22, 31, 230);"_s);
        row(panel + u" #mappingActionsList"_s, text);
        const QString item = u"#mappingActionsList::item"_s;
        row(item, text);
        row(item, u"padding: 6px 8px;"_s);
        row(item, u"border-radius: 8px;"_s);
        row(item + u":hover:enabled"_s, u"background: rgba(47, 79, 99, 160);"_s);
        for (const QString &selected : {u":selected"_s, u":selected:hover"_s}) {
            row(item + selected, u"background: #2F7A43;"_s);
            row(item + selected, u"border-color: #3FAE49;"_s);
        }
    }

    void eachPartHasItsLook()
    {
        QFETCH(const QString, selector);
        QFETCH(const QString, declaration);
        const QString declarations = declarationsFor(m_panel->styleSheet(), selector);
        QVERIFY2(declarations.contains(declaration), qPrintable(declarations));
    }

    void actionsAreListedInOrder()
    {
        m_panel->setActions({u"b"_s, u"a"_s});
        QCOMPARE(list().count(), 2);
        for (const auto &[row, name] : {std::pair(0, u"b"_s), std::pair(1, u"a"_s)}) {
            QCOMPARE(list().item(row)->text(), name);
            QCOMPARE(list().item(row)->data(Qt::UserRole).toString(), name);
            QVERIFY(list().item(row)->flags().testFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled));
        }
    }

    void withoutActionsItSaysSoAndNothingCanBeArmed()
    {
        m_panel->setActions({});
        QCOMPARE(list().count(), 1);
        QCOMPARE(list().item(0)->text(), u"Aucune action"_s);
        QCOMPARE(list().item(0)->flags(), Qt::ItemFlags(Qt::NoItemFlags));
        click(0);
        QCOMPARE(m_panel->armedAction(), QString());
        QCOMPARE(hint().text(), m_idle);
        QVERIFY(list().selectedItems().isEmpty());
        // Not by a signal that comes in some other way either.
        Q_EMIT list().itemClicked(list().item(0));
        Q_EMIT list().itemClicked(nullptr);
        QCOMPARE(m_panel->armedAction(), QString());
    }

    void anItemWithoutANameCannotBeArmed()
    {
        m_panel->setActions({u"a"_s});
        list().item(0)->setData(Qt::UserRole, QString());
        click(0);
        QCOMPARE(m_panel->armedAction(), QString());
    }

    void aClickArms()
    {
        m_panel->setActions({u"a"_s, u"b"_s});
        click(1);
        QCOMPARE(m_panel->armedAction(), u"b"_s);
        QCOMPARE(hint().text(), u"Appuyez sur un bouton pour mapper \"b\"."_s);
        QCOMPARE(list().selectedItems(), {list().item(1)});
    }

    void aClickOnAnotherActionArmsThat()
    {
        m_panel->setActions({u"a"_s, u"b"_s});
        click(0);
        click(1);
        QCOMPARE(m_panel->armedAction(), u"b"_s);
        QCOMPARE(list().selectedItems(), {list().item(1)});
    }

    void aSecondClickDisarms()
    {
        m_panel->setActions({u"a"_s});
        click(0);
        const QSignalSpy selection(&list(), &QListWidget::itemSelectionChanged);
        click(0);
        QCOMPARE(m_panel->armedAction(), QString());
        QCOMPARE(hint().text(), m_idle);
        QVERIFY(list().selectedItems().isEmpty());
        QCOMPARE(selection.count(), 0);
        click(0);
        QCOMPARE(m_panel->armedAction(), u"a"_s);
    }

    void theArmedActionIsToldWithoutRegardToCase()
    {
        m_panel->setActions({u"a"_s, u"b"_s});
        click(0);
        list().item(1)->setData(Qt::UserRole, u"A"_s);
        click(1);
        QCOMPARE(m_panel->armedAction(), QString());
    }

    void newActionsDisarm()
    {
        m_panel->setActions({u"a"_s});
        click(0);
        m_panel->setActions({u"a"_s});
        QCOMPARE(m_panel->armedAction(), QString());
        QCOMPARE(hint().text(), m_idle);
        QVERIFY(list().selectedItems().isEmpty());
    }

    void aNameIsShownAsItWasGiven()
    {
        const QString name = u"<img src=x> %1 & \"Tir\""_s;
        m_panel->setActions({name});
        click(0);
        QCOMPARE(hint().text(), u"Appuyez sur un bouton pour mapper \"<img src=x> %1 & \"Tir\"\"."_s);
        QCOMPARE(hint().textFormat(), Qt::PlainText);
    }

    void theListAndWhatIsInItAreTold()
    {
        QVERIFY(m_panel->isOnList(&list()));
        QVERIFY(m_panel->isOnList(list().viewport()));
        QVERIFY(m_panel->isOnList(list().findChild<QWidget *>(u"qt_scrollarea_vcontainer"_s)));
        QVERIFY(!m_panel->isOnList(m_panel));
        QVERIFY(!m_panel->isOnList(&hint()));
    }
};

GAMEPAD_TEST_MAIN(TestActionsPanel)
#include "tst_actionspanel.moc"
