// SPDX-License-Identifier: MIT
// What the bound gamepad does becomes the input of the pastille that listens.
#include "gamepaddefinder.h"

#include "interactiveoverlay.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;

namespace
{
/// A trigger that is held brings up one question after the other over the first, each with an event loop on
/// the stack. More than these would only help to exhaust it.
constexpr int mostOpenQuestions = 8;
} // namespace

void GamepadDefinder::onAxisChanged(int axis, double value)
{
    if (!isMeant(value))
        return;
    if (!m_widgetOverlay->listeningPastille()) {
        resetPendingInput();
        return;
    }
    m_pending.takeAxis(axis, value);
    if (!m_triggerTimer.isActive())
        m_triggerTimer.start();
}

void GamepadDefinder::onButtonChanged(int button, bool pressed)
{
    if (!pressed)
        return;
    if (!m_widgetOverlay->listeningPastille()) {
        resetPendingInput();
        return;
    }
    m_pending.takePress(button);
    if (!m_triggerTimer.isActive())
        m_triggerTimer.start();
}

void GamepadDefinder::resetPendingInput()
{
    m_pending = {};
    m_triggerTimer.stop();
}

void GamepadDefinder::resolvePendingInput()
{
    if (!m_widgetOverlay->listeningPastille()) {
        resetPendingInput();
        return;
    }
    // While the question is open more input comes in, and can even bring up a second question over it. Each
    // is about what had come in when it was asked.
    const PendingInput input = m_pending;
    if (input.isEmpty())
        return;
    TriggerUse use = TriggerUse::Button;
    if (input.isAmbiguous()) {
        const QString device = m_boundGamepad ? m_boundGamepad->name() : QString();
        if (const auto choice = choiceFor(m_triggerChoices, device)) {
            use = *choice;
        } else if (m_openQuestions == mostOpenQuestions) {
            resetPendingInput();
            return;
        } else {
            const QPointer<GamepadDefinder> self = this;
            ++m_openQuestions;
            const TriggerAnswer answer = askTriggerUse(input, device);
            if (!self)
                return;
            --m_openQuestions;
            use = answer.use;
            if (answer.remember)
                m_triggerChoices.insert(device, use);
        }
    }
    m_widgetOverlay->applyListenedInput(input.key(use));
    resetPendingInput();
}

GamepadDefinder::TriggerAnswer GamepadDefinder::askTriggerUse(const PendingInput &input,
                                                              const QString &device)
{
    const QString axis = input.key(TriggerUse::Axis);
    const QString button = input.key(TriggerUse::Button);
    // On the heap, since the editor can go while its question is open and takes it along.
    const QPointer<QMessageBox> box = new QMessageBox(this);
    box->setWindowTitle(u"GÃ¢chette dÃ©tectÃ©e"_s);
    box->setTextFormat(Qt::PlainText);
    box->setText(u"Cette gÃ¢chette envoie un axe (%1) et un bouton (%2).\n"
                 u"Que souhaitez-vous utiliser ?"_s.arg(axis, button));
    const QAbstractButton *useAxis =
        box->addButton(u"Utiliser lâ€™axe (%1)"_s.arg(axis), QMessageBox::AcceptRole);
    QPushButton *useButton =
        box->addButton(u"Utiliser le bouton (%1)"_s.arg(button), QMessageBox::DestructiveRole);
    // Without this a box of two such roles cannot be closed at all.
    box->setEscapeButton(useButton);
    // An ampersand in a label is a mark, in a gamepad's name it is a letter.
    const QString shownDevice = QString(device).replace(u'&', "&&"_L1);
    auto *remember = new QCheckBox(u"Se souvenir pour Â« %1 Â»"_s.arg(shownDevice), box);
    box->setCheckBox(remember);

    box->exec();
    if (!box)
        return {};
    const TriggerAnswer answer{
        .use = box->clickedButton() == useAxis ? TriggerUse::Axis : TriggerUse::Button,
        .remember = remember->isChecked(),
    };
    delete box;
    return answer;
}
