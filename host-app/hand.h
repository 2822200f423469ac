// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <chrono>
#include <functional>

class QWidget;

/// Works whatever window this process shows as a person would, with events of mouse and keys. It knows
/// widgets by what Qt tells of them, so it serves the windows of every plugin. One gesture is one line:
///
///   click NAME [ITEM], doubleclick NAME [ITEM], rightclick NAME [ITEM]
///   press TEXT                  a button, or an entry of the open menu, with that text
///   type NAME TEXT              replaces what stands in a field
///   enter NAME TEXT             the same in one piece, with Return behind it
///   key NAME KEY                such as Return; a shortcut is none, as it belongs to a window
///   picture FILE                of the window on top
///
/// NAME is an object name or a class, "#2" behind it for the third such widget, and "A/B" for a B inside an
/// A. ITEM is the text of a list's entry, a tab, or a combo's entry. Where a dialog is open, only its widgets
/// count, as for a person.
class Hand : public QObject
{
    Q_OBJECT

public:
    explicit Hand(std::chrono::milliseconds patience = std::chrono::seconds(5), QObject *parent = nullptr);

    /// Carries out `gesture` once what it is for is on the screen, if that comes while its patience lasts.
    /// `done` follows, with a dialog that the gesture opened still open. One gesture at a time.
    void perform(const QString &gesture);

Q_SIGNALS:
    /// `problem` is empty when the gesture was carried out.
    void done(const QString &problem);

private:
    void attempt();
    void answer(const QPointer<QWidget> &menu);
    /// What to do for the gesture, or why it cannot be done yet.
    struct Move
    {
        std::function<void()> act;
        QString problem;
    };
    [[nodiscard]] static Move plan(const QString &gesture);

    std::chrono::milliseconds m_patience;
    QString m_gesture;
    QElapsedTimer m_since;
    QTimer m_retry;
};
