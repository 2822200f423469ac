// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <functional>
#include <utility>

/// Answers a window that runs an event loop of its own: as soon as `find` yields one that is shown, `answer`
/// gets it, and if it is still open after that, it is closed so that no failure hangs.
template <typename Window>
class Answer
{
public:
    Answer(std::function<QWidget *()> find, std::function<void(Window *)> answer)
    {
        m_timer.callOnTimeout(&m_timer, [this, find = std::move(find), answer = std::move(answer)] {
            const QPointer<Window> window = qobject_cast<Window *>(find());
            if (!window || !window->isVisible()) {
                return;
            }
            m_timer.stop();
            ++m_given;
            answer(window);
            if (window) {
                window->close();
            }
        });
        m_timer.start(1);
    }

    /// 1 once the window came, else 0.
    [[nodiscard]] int given() const { return m_given; }

private:
    QTimer m_timer;
    int m_given = 0;
};
