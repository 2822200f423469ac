// SPDX-License-Identifier: MIT
#include "cardview.h"
#include "testmain.h"

#include <QtCore/QTimer>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QMenu>

#include <functional>

using namespace Qt::StringLiterals;

namespace
{
// Looks for the menu, as a person would, and then does one thing with it.
class MenuUser
{
public:
    explicit MenuUser(std::function<void(QMenu &)> deed)
        : m_deed(std::move(deed))
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            if (!menu || !menu->isVisible())
                return;
            m_timer.stop();
            ++menusSeen;
            m_deed(*menu);
        });
        m_timer.start(1);
    }

    int menusSeen = 0;

private:
    std::function<void(QMenu &)> m_deed;
    QTimer m_timer;
};

QStringList entriesOf(const QMenu &menu)
{
    QStringList texts;
    for (const QAction *action : menu.actions())
        texts.append(action->isSeparator() ? u"---"_s : action->text());
    return texts;
}

void choose(QMenu &menu, const QString &text)
{
    for (QAction *action : menu.actions())
        if (action->text() == text)
            QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
}

void dismiss(QMenu &menu)
{
    QTest::keyClick(&menu, Qt::Key_Escape);
}

QMouseEvent rightRelease(const QPointF &global = {300, 200})
{
    return {QEvent::MouseButtonRelease, {40, 150}, global, Qt::RightButton, Qt::NoButton, Qt::NoModifier};
}

QStyleOptionViewItem cardOption()
{
    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, 300, 240);
    return option;
}
} // namespace

class TestCardMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theMenuNamesWhatCanBeDone_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::addColumn<QStringList>("entries");
        const QStringList rest{u"Configurer"_s, u"---"_s, u"Supprimer"_s};
        QTest::newRow("not selected") << false << (QStringList{u"S\u00e9lectionner"_s} + rest);
        QTest::newRow("selected") << true << (QStringList{u"D\u00e9s\u00e9lectionner"_s} + rest);
    }

    void theMenuNamesWhatCanBeDone()
    {
        QFETCH(const bool, selected);
        CardView list;
        QVERIFY(list.isReady());
        list.model.put(1, "selected", selected);

        QStringList entries;
        QPoint place;
        bool parentless = false;
        MenuUser user([&](QMenu &menu) {
            entries = entriesOf(menu);
            place = menu.pos();
            parentless = !menu.parent();
            dismiss(menu);
        });
        list.click(1, bareSpot, Qt::RightButton);
        QCOMPARE(user.menusSeen, 1);
        QTEST(entries, "entries");
        QCOMPARE(place, list.view.viewport()->mapToGlobal(list.at(1, bareSpot)));
        QVERIFY(parentless);
        QCOMPARE(list.saidInAll(), 0);
        QVERIFY(list.model.writes.isEmpty());
    }

    void theFirstEntryAsksForTheOtherState_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::newRow("select") << false;
        QTest::newRow("deselect") << true;
    }

    void theFirstEntryAsksForTheOtherState()
    {
        QFETCH(const bool, selected);
        CardView list;
        QVERIFY(list.isReady());
        list.model.put(1, "selected", selected);
        MenuUser user([&](QMenu &menu) { choose(menu, selected ? u"Désélectionner"_s : u"Sélectionner"_s); });
        list.click(1, bareSpot, Qt::RightButton);
        QCOMPARE(user.menusSeen, 1);
        QCOMPARE(list.saidInAll(), 1);
        QCOMPARE(list.toggled.first(), (QVariantList{u"gp:1"_s, !selected}));
        // The menu asks; it does not write.
        QVERIFY(list.model.writes.isEmpty());
    }

    void theSecondEntryAsksForConfiguration()
    {
        CardView list;
        QVERIFY(list.isReady());
        MenuUser user([](QMenu &menu) { choose(menu, u"Configurer"_s); });
        list.click(0, bareSpot, Qt::RightButton);
        QCOMPARE(list.saidInAll(), 1);
        QCOMPARE(list.configured.first(), QVariantList{u"gp:0"_s});
    }

    void theThirdEntryAsksForDeletion()
    {
        CardView list;
        QVERIFY(list.isReady());
        MenuUser user([](QMenu &menu) { choose(menu, u"Supprimer"_s); });
        list.click(0, bareSpot, Qt::RightButton);
        QCOMPARE(list.saidInAll(), 1);
        QCOMPARE(list.removed.first(), QVariantList{u"gp:0"_s});
    }

    void theKeyboardChoosesToo()
    {
        CardView list;
        QVERIFY(list.isReady());
        MenuUser user([](QMenu &menu) {
            QTest::keyClick(&menu, Qt::Key_Down);
            QTest::keyClick(&menu, Qt::Key_Down);
            QTest::keyClick(&menu, Qt::Key_Return);
        });
        list.click(0, bareSpot, Qt::RightButton);
        QCOMPARE(list.saidInAll(), 1);
        QCOMPARE(list.configured.size(), 1);
    }

    void aRightReleaseOnTheCloseButtonOpensTheMenuToo()
    {
        CardView list;
        QVERIFY(list.isReady());
        MenuUser user(dismiss);
        list.click(0, {18, 18}, Qt::RightButton);
        QCOMPARE(user.menusSeen, 1);
        QCOMPARE(list.saidInAll(), 0);
    }

    void theMenuIsAnsweredWithTrueWhateverWasChosen_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::newRow("nothing") << QString();
        QTest::newRow("selection") << u"Sélectionner"_s;
        QTest::newRow("configuration") << u"Configurer"_s;
        QTest::newRow("deletion") << u"Supprimer"_s;
    }

    void theMenuIsAnsweredWithTrueWhateverWasChosen()
    {
        QFETCH(const QString, entry);
        CardModel model({CardModel::fullRow(u"gp:0"_s)});
        DeviceItemDelegate delegate;
        MenuUser user([&](QMenu &menu) { entry.isEmpty() ? dismiss(menu) : choose(menu, entry); });
        auto event = rightRelease();
        QVERIFY(delegate.editorEvent(&event, &model, cardOption(), model.index(0)));
        QCOMPARE(user.menusSeen, 1);
    }

    void theMenuServesAModelWithoutSelection()
    {
        CardView list;
        list.model.dropRole("selected");
        QVERIFY(list.isReady());
        QStringList entries;
        MenuUser user([&](QMenu &menu) {
            entries = entriesOf(menu);
            choose(menu, u"Sélectionner"_s);
        });
        list.click(0, bareSpot, Qt::RightButton);
        QCOMPARE(entries.first(), u"Sélectionner"_s);
        QCOMPARE(list.toggled.first(), (QVariantList{u"gp:0"_s, true}));
    }

    void whatTheMenuWasOpenedForStands_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::newRow("selection") << u"Sélectionner"_s;
        QTest::newRow("configuration") << u"Configurer"_s;
        QTest::newRow("deletion") << u"Supprimer"_s;
    }

    // The device is unplugged, and the rows move, while its menu is open.
    void whatTheMenuWasOpenedForStands()
    {
        QFETCH(const QString, entry);
        CardView list;
        QVERIFY(list.isReady());
        MenuUser user([&](QMenu &menu) {
            list.model.removeFirstRow();
            list.model.put(0, "selected", true);
            choose(menu, entry);
        });
        list.click(0, bareSpot, Qt::RightButton);
        QCOMPARE(list.model.rowCount(), 1);
        QCOMPARE(list.saidInAll(), 1);
        for (const QSignalSpy *spy : {&list.toggled, &list.configured, &list.removed})
            if (!spy->isEmpty())
                QCOMPARE(spy->first().first(), QVariant(u"gp:0"_s));
        if (!list.toggled.isEmpty())
            QCOMPARE(list.toggled.first().last(), QVariant(true));
    }

    void aResetUnderTheMenuDoesNoHarm()
    {
        CardView list;
        QVERIFY(list.isReady());
        MenuUser user([&](QMenu &menu) {
            list.model.clearRows();
            choose(menu, u"Supprimer"_s);
        });
        list.click(1, bareSpot, Qt::RightButton);
        QCOMPARE(list.removed.first(), QVariantList{u"gp:1"_s});
    }

    void theDelegateMayDieUnderItsMenu()
    {
        CardModel model({CardModel::fullRow(u"gp:0"_s)});
        QListView view;
        view.setModel(&model);
        QPointer delegate(new DeviceItemDelegate(&view));
        view.setItemDelegate(delegate);
        view.resize(300, 240);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        int said = 0;
        const auto count = [&said] { ++said; };
        connect(delegate, &DeviceItemDelegate::toggledSelect, this, count);
        connect(delegate, &DeviceItemDelegate::requestConfig, this, count);
        connect(delegate, &DeviceItemDelegate::requestDelete, this, count);

        bool closed = false;
        MenuUser user([&](QMenu &menu) {
            delete delegate;
            closed = !menu.isVisible();
        });
        QTest::mouseClick(view.viewport(), Qt::RightButton, {}, bareSpot);
        QCOMPARE(user.menusSeen, 1);
        QVERIFY(!delegate);
        QVERIFY(closed);
        QCOMPARE(said, 0);
    }

    void theModelMayDieUnderTheMenu()
    {
        auto *model = new CardModel({CardModel::fullRow(u"gp:0"_s)});
        DeviceItemDelegate delegate;
        QListView view;
        view.setItemDelegate(&delegate);
        view.setModel(model);
        view.resize(300, 240);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const QSignalSpy removed(&delegate, &DeviceItemDelegate::requestDelete);
        bool closed = false;
        MenuUser user([&](QMenu &menu) {
            delete model;
            closed = !menu.isVisible();
        });
        QTest::mouseClick(view.viewport(), Qt::RightButton, {}, bareSpot);
        QCOMPARE(user.menusSeen, 1);
        QVERIFY(closed);
        QCOMPARE(removed.size(), 0);
    }

    void theViewsWindowMayGoUnderTheMenu_data()
    {
        QTest::addColumn<bool>("wholeWindow");
        QTest::newRow("the view") << false;
        QTest::newRow("its window") << true;
    }

    // The view's own event handler stands above the menu's event loop and goes on after it.
    void theViewsWindowMayGoUnderTheMenu()
    {
        QFETCH(const bool, wholeWindow);
        CardModel model({CardModel::fullRow(u"gp:0"_s)});
        auto window = std::make_unique<QWidget>();
        const QPointer view(new QListView(window.get()));
        const QPointer delegate(new DeviceItemDelegate(view));
        view->setItemDelegate(delegate);
        view->setModel(&model);
        view->resize(300, 240);
        window->resize(300, 240);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        const QSignalSpy removed(delegate, &DeviceItemDelegate::requestDelete);

        bool livesOn = false;
        const QPointer unrelated(new QObject);
        MenuUser user([&](QMenu &menu) {
            const QPointer open(&menu);
            unrelated->deleteLater();
            QTRY_VERIFY(!unrelated);
            if (wholeWindow)
                window.release()->deleteLater();
            else
                view->deleteLater();
            // As the menu's own event loop would do next.
            QTRY_VERIFY(!open->isVisible());
            livesOn = view;
        });
        QTest::mouseClick(view->viewport(), Qt::RightButton, {}, bareSpot);
        QCOMPARE(user.menusSeen, 1);
        QVERIFY(livesOn);
        QTRY_VERIFY(!view);
        QVERIFY(!delegate);
        QCOMPARE(removed.size(), 0);
    }

    // By a plain delete, as long as it is not the view's handler that waits.
    void theViewMayDieUnderTheMenu()
    {
        CardModel model({CardModel::fullRow(u"gp:0"_s)});
        auto *view = new QListView;
        QPointer delegate(new DeviceItemDelegate(view));
        view->setItemDelegate(delegate);
        view->setModel(&model);
        auto event = rightRelease();
        QStyleOptionViewItem option = cardOption();
        option.widget = view;
        MenuUser user([&](QMenu &) { delete view; });
        QVERIFY(delegate->editorEvent(&event, &model, option, model.index(0)));
        QCOMPARE(user.menusSeen, 1);
        QVERIFY(!delegate);
    }
};

GAMEPAD_TEST_MAIN(TestCardMenu)
#include "tst_cardmenu.moc"
