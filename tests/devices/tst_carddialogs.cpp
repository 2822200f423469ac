// SPDX-License-Identifier: MIT
// Dialogs that a click on a card opens, in which the cards go.
#include "cardview.h"
#include "testmain.h"

#include <QtCore/QTimer>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMenu>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{
/// A model that may ask its user before it answers.
class AskingModel : public CardModel
{
public:
    using CardModel::CardModel;

    bool setData(const QModelIndex &index, const QVariant &value, int role) override
    {
        if (!ask)
            return CardModel::setData(index, value, role);
        // The model may go meanwhile, and all that it holds.
        const bool refuses = refuseWrites;
        const auto asking = ask;
        asking();
        return !refuses;
    }

    std::function<void()> ask;
};

/// A window with a list of one card, each part of which can go on its own.
struct Cards
{
    Cards()
    {
        view->setItemDelegate(delegate);
        view->setModel(model);
        view->resize(300, 240);
        window->resize(300, 240);
        window->show();
    }
    ~Cards()
    {
        delete window;
        delete delegate;
        delete model;
    }
    Q_DISABLE_COPY_MOVE(Cards)

    QPointer<QWidget> window = new QWidget;
    QPointer<QListView> view = new QListView(window);
    QPointer<AskingModel> model = new AskingModel({CardModel::fullRow(u"gp:0"_s)});
    QPointer<DeviceItemDelegate> delegate = new DeviceItemDelegate;
};

enum class Click { Close, Write, RefusedWrite, MenuEntry };
enum class Goes { View, Window, Delegate, Model };

void chooseInTheMenu(const QString &text)
{
    auto *look = new QTimer(qApp);
    QObject::connect(look, &QTimer::timeout, look, [look, text] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu || !menu->isVisible())
            return;
        look->deleteLater();
        look->stop();
        for (QAction *action : menu->actions())
            if (action->text() == text)
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    });
    look->start(1);
}
} // namespace

Q_DECLARE_METATYPE(Click)
Q_DECLARE_METATYPE(Goes)

class TestCardDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnUnexpectedWarnings(); }

    void theCardsMayGoWhileAClicksDialogIsOpen_data()
    {
        QTest::addColumn<Click>("click");
        QTest::addColumn<Goes>("goes");
        const QList<std::pair<const char *, Click>> clicks{{"close button", Click::Close},
                                                           {"selection", Click::Write},
                                                           {"refused selection", Click::RefusedWrite},
                                                           {"menu entry", Click::MenuEntry}};
        const QList<std::pair<const char *, Goes>> parts{{"view", Goes::View},
                                                         {"window", Goes::Window},
                                                         {"delegate", Goes::Delegate},
                                                         {"model", Goes::Model}};
        for (const auto &[clickName, click] : clicks)
            for (const auto &[partName, part] : parts)
                QTest::addRow("%s, %s", clickName, partName) << click << part;
    }

    void theCardsMayGoWhileAClicksDialogIsOpen()
    {
        QFETCH(const Click, click);
        QFETCH(const Goes, goes);
        Cards cards;
        QVERIFY(QTest::qWaitForWindowExposed(cards.window));
        const QPointer<QObject> victim = part(cards, goes);

        int dialogs = 0;
        bool viewLivedOn = false;
        const auto openDialog = [&] {
            ++dialogs;
            QDialog dialog;
            QPointer unrelated(new QObject);
            // Whoever asks for the end of the cards does so while the dialog waits for its user.
            QTimer::singleShot(0, &dialog, [&] {
                victim->deleteLater();
                unrelated->deleteLater();
            });
            connect(
                unrelated, &QObject::destroyed, &dialog,
                [&] {
                    viewLivedOn = cards.view;
                    dialog.reject();
                },
                Qt::QueuedConnection);
            dialog.exec();
            QVERIFY(!unrelated);
        };
        int toggled = 0;
        connect(cards.delegate, &DeviceItemDelegate::requestDelete, this, openDialog);
        connect(cards.delegate, &DeviceItemDelegate::toggledSelect, this, [&] {
            ++toggled;
            openDialog();
        });
        if (click == Click::Write)
            cards.model->ask = openDialog;
        cards.model->refuseWrites = click == Click::RefusedWrite;

        if (click == Click::MenuEntry)
            chooseInTheMenu(u"Supprimer"_s);
        QTest::mouseClick(cards.view->viewport(),
                          click == Click::MenuEntry ? Qt::RightButton : Qt::LeftButton, {},
                          click == Click::Close ? QPoint(18, 18) : bareSpot);
        QCOMPARE(dialogs, 1);
        QCOMPARE(toggled, click == Click::RefusedWrite ? 1 : 0);
        QVERIFY(viewLivedOn);
        QTRY_VERIFY(!victim);
        if (goes == Goes::Window)
            QVERIFY(!cards.view);
    }

    // The model asks its user, and refuses after the delegate has gone.
    void aRefusalAfterTheDelegateHasGoneIsToldToNobody()
    {
        Cards cards;
        QVERIFY(QTest::qWaitForWindowExposed(cards.window));
        int toggled = 0;
        connect(cards.delegate, &DeviceItemDelegate::toggledSelect, this, [&] { ++toggled; });
        cards.model->refuseWrites = true;
        cards.model->ask = [&] {
            QDialog dialog;
            connect(cards.delegate, &QObject::destroyed, &dialog, &QDialog::reject);
            QTimer::singleShot(0, cards.delegate, &QObject::deleteLater);
            dialog.exec();
        };
        QTest::mouseClick(cards.view->viewport(), Qt::LeftButton, {}, bareSpot);
        QVERIFY(!cards.delegate);
        QCOMPARE(toggled, 0);
    }

    void aSecondClickInsideTheDialogIsServedToo()
    {
        Cards cards;
        QVERIFY(QTest::qWaitForWindowExposed(cards.window));
        int asked = 0;
        connect(cards.delegate, &DeviceItemDelegate::requestDelete, this, [&] {
            if (++asked == 2)
                return;
            QTest::mouseClick(cards.view->viewport(), Qt::LeftButton, {}, QPoint(18, 18));
            cards.view->deleteLater();
            QEventLoop().processEvents();
            QVERIFY(cards.view);
        });
        QTest::mouseClick(cards.view->viewport(), Qt::LeftButton, {}, QPoint(18, 18));
        QCOMPARE(asked, 2);
        QTRY_VERIFY(!cards.view);
    }

private:
    static QObject *part(const Cards &cards, Goes goes)
    {
        switch (goes) {
        case Goes::View:
            return cards.view;
        case Goes::Window:
            return cards.window;
        case Goes::Delegate:
            return cards.delegate;
        case Goes::Model:
            break;
        }
        return cards.model;
    }
};

GAMEPAD_TEST_MAIN(TestCardDialogs)
#include "tst_carddialogs.moc"
