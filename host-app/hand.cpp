// SPDX-License-Identifier: MIT
#include "hand.h"

#include "widgetsearch.h"
#include "words.h"

#include <QtCore/QPointer>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QKeySequence>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{
constexpr int retryMs = 20;

/// A spot of a widget, which may die before it is touched.
struct Spot
{
    QPointer<QWidget> widget;
    QPoint at;
};

void sendMouse(const Spot &spot, QEvent::Type type, Qt::MouseButton button)
{
    if (!spot.widget)
        return;
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
    QMouseEvent event(type, spot.at, spot.widget->mapToGlobal(spot.at), button, held, Qt::NoModifier);
    QApplication::sendEvent(spot.widget, &event);
}

void click(const Spot &spot, Qt::MouseButton button = Qt::LeftButton)
{
    if (spot.widget && spot.widget->focusPolicy() & Qt::ClickFocus)
        spot.widget->setFocus(Qt::MouseFocusReason);
    sendMouse(spot, QEvent::MouseButtonPress, button);
    if (button == Qt::RightButton && spot.widget) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, spot.at, spot.widget->mapToGlobal(spot.at));
        QApplication::sendEvent(spot.widget, &event); // returns when the menu has closed
    }
    sendMouse(spot, QEvent::MouseButtonRelease, button);
}

void doubleClick(const Spot &spot)
{
    click(spot);
    sendMouse(spot, QEvent::MouseButtonDblClick, Qt::LeftButton);
    sendMouse(spot, QEvent::MouseButtonRelease, Qt::LeftButton);
}

void sendKey(const QPointer<QWidget> &widget, int key, Qt::KeyboardModifiers modifiers,
             const QString &text = {})
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (!widget)
            return;
        QKeyEvent event(type, key, modifiers, text);
        QApplication::sendEvent(widget, &event);
    }
}

void clearField(const QPointer<QWidget> &field)
{
    click({field, field->rect().center()});
    sendKey(field, Qt::Key_A, Qt::ControlModifier);
    sendKey(field, Qt::Key_Delete, Qt::NoModifier);
}

void typeText(const QPointer<QWidget> &field, const QString &text)
{
    clearField(field);
    for (const QChar letter : text)
        sendKey(field, 0, Qt::NoModifier, letter);
}

/// In one piece, as an input method does it. Letter by letter, a file dialog selects every folder on the way,
/// and lets go of it only while its field has the focus, which a display gives when it likes; and what is
/// selected counts for more there than what is typed.
void enterText(const QPointer<QWidget> &field, const QString &text)
{
    clearField(field);
    sendKey(field, 0, Qt::NoModifier, text);
    sendKey(field, Qt::Key_Return, Qt::NoModifier);
}

/// Opens the combo and goes to the entry with the keys, as the mouse would have to wait until the list takes
/// its clicks.
void choose(const QPointer<QComboBox> &combo, int entry)
{
    combo->setFocus(Qt::TabFocusReason);
    sendKey(combo, Qt::Key_F4, Qt::NoModifier);
    if (!combo)
        return;
    const QPointer<QWidget> list = combo->view();
    sendKey(list, Qt::Key_Home, Qt::NoModifier);
    for (int i = 0; i < entry; ++i)
        sendKey(list, Qt::Key_Down, Qt::NoModifier);
    sendKey(list, Qt::Key_Return, Qt::NoModifier);
}

QString plain(const QString &text)
{
    return QString(text).remove(u'&');
}

std::optional<Spot> spotOf(QWidget *widget, const QString &item)
{
    if (item.isEmpty())
        return Spot{widget, widget->rect().center()};
    if (auto *view = qobject_cast<QAbstractItemView *>(widget)) {
        const QAbstractItemModel *model = view->model();
        const QModelIndexList found = model->match(model->index(0, 0), Qt::DisplayRole, item, 1,
                                                   Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (found.isEmpty())
            return std::nullopt;
        view->scrollTo(found.constFirst());
        return Spot{view->viewport(), view->visualRect(found.constFirst()).center()};
    }
    if (auto *tabs = qobject_cast<QTabWidget *>(widget)) {
        for (int i = 0; i < tabs->count(); ++i) {
            if (tabs->tabText(i) == item)
                return Spot{tabs->tabBar(), tabs->tabBar()->tabRect(i).center()};
        }
    }
    return std::nullopt;
}

/// The button or the menu entry with that text, on top.
std::optional<Spot> spotWithText(const QString &text)
{
    if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
        const QList<QAction *> actions = menu->actions();
        for (QAction *action : actions) {
            if (plain(action->text()) == text && action->isEnabled())
                return Spot{menu, menu->actionGeometry(action).center()};
        }
        return std::nullopt;
    }
    const QList<QWidget *> widgets = widgetsInReach();
    for (QWidget *widget : widgets) {
        const auto *button = qobject_cast<QAbstractButton *>(widget);
        if (button && plain(button->text()) == text && button->isEnabled())
            return Spot{widget, widget->rect().center()};
    }
    return std::nullopt;
}
} // namespace

Hand::Hand(std::chrono::milliseconds patience, QObject *parent)
    : QObject(parent)
    , m_patience(patience)
{
    m_retry.setInterval(retryMs);
    connect(&m_retry, &QTimer::timeout, this, &Hand::attempt);
}

void Hand::perform(const QString &gesture)
{
    m_gesture = gesture;
    m_since.start();
    m_retry.start();
}

void Hand::attempt()
{
    const Move move = plan(m_gesture);
    if (!move.act && m_since.durationElapsed() < m_patience)
        return;
    m_retry.stop();
    if (!move.act) {
        const QString dialog = dialogInFront();
        Q_EMIT done(dialog.isEmpty() ? move.problem : u"%1, behind %2"_s.arg(move.problem, dialog));
        return;
    }
    // A dialog that the gesture opens runs an event loop of its own, in which the answer then goes out.
    QTimer::singleShot(0, this, move.act);
    QTimer::singleShot(0, this, [this, menu = QPointer(QApplication::activePopupWidget())] { answer(menu); });
}

// A menu lets the chosen entry flash before it closes, and only then does whoever opened it act.
void Hand::answer(const QPointer<QWidget> &menu)
{
    if (menu && menu->isVisible() && m_gesture.startsWith("press"_L1))
        QTimer::singleShot(retryMs, this, [this, menu] { answer(menu); });
    else
        QTimer::singleShot(0, this, [this] { Q_EMIT done({}); });
}

Hand::Move Hand::plan(const QString &gesture)
{
    QString rest = gesture;
    const QString kind = takeWord(rest);
    if (kind == "press"_L1) {
        const std::optional<Spot> spot = spotWithText(rest);
        if (!spot)
            return {.act = {}, .problem = u"there is no button or menu entry \"%1\" in reach"_s.arg(rest)};
        return {.act = [spot] { click(*spot); }, .problem = {}};
    }
    if (kind == "picture"_L1) {
        QWidget *window = windowOnTop();
        const bool saved = window && window->grab().save(rest);
        return saved ? Move{.act = [] {}, .problem = {}}
                     : Move{.act = {}, .problem = u"no picture was made"_s};
    }

    const QString name = takeWord(rest);
    QWidget *widget = findInReach(name);
    if (!widget)
        return {.act = {}, .problem = u"there is no widget \"%1\" in reach"_s.arg(name)};
    const QPointer<QWidget> target = widget;
    if (kind == "type"_L1)
        return {.act = [target, rest] { typeText(target, rest); }, .problem = {}};
    if (kind == "enter"_L1)
        return {.act = [target, rest] { enterText(target, rest); }, .problem = {}};
    if (kind == "key"_L1) {
        const QKeySequence keys(rest);
        if (keys.isEmpty())
            return {.act = {}, .problem = u"there is no key \"%1\""_s.arg(rest)};
        return {.act = [target, keys] { sendKey(target, keys[0].key(), keys[0].keyboardModifiers()); },
                .problem = {}};
    }
    if (auto *combo = qobject_cast<QComboBox *>(widget); combo && kind == "click"_L1 && !rest.isEmpty()) {
        const int entry = combo->findText(rest);
        if (entry < 0)
            return {.act = {}, .problem = u"\"%1\" has no entry \"%2\""_s.arg(name, rest)};
        return {.act = [combo = QPointer(combo), entry] { choose(combo, entry); }, .problem = {}};
    }
    const std::optional<Spot> spot = spotOf(widget, rest);
    if (!spot)
        return {.act = {}, .problem = u"\"%1\" has no item \"%2\""_s.arg(name, rest)};
    if (kind == "click"_L1)
        return {.act = [spot] { click(*spot); }, .problem = {}};
    if (kind == "doubleclick"_L1)
        return {.act = [spot] { doubleClick(*spot); }, .problem = {}};
    if (kind == "rightclick"_L1)
        return {.act = [spot] { click(*spot, Qt::RightButton); }, .problem = {}};
    return {.act = {}, .problem = u"there is no gesture \"%1\""_s.arg(kind)};
}
