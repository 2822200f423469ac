// SPDX-License-Identifier: MIT
// What eight gamepads cost the host's process while nobody touches them: ten seconds at 100 ticks a second.
#include "barepad.h"
#include "pair.h"
#include "scriptedjoystick.h"
#include "subjects.h"
#include "tickedpad.h"

#include <QtCore/QEventLoop>
#include <QtCore/QScopeGuard>
#include <QtCore/QTimer>

#include <array>
#include <chrono>
#include <memory>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace
{
constexpr int tickIntervalMs = 10;
constexpr int asleepMs = 3'600'000;
// Ten seconds for each side, in turns.
constexpr int rounds = 20;
constexpr auto roundLength = 500ms;
constexpr int ticksPerRound = roundLength / 10ms;

void runEvents()
{
    QEventLoop loop;
    QTimer::singleShot(roundLength, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

class RunningPads
{
public:
    RunningPads()
    {
        for (unsigned slot = 0; slot < m_pads.size(); ++slot)
            m_pads.at(slot) = std::make_unique<TickedPad>(slot);
        setInterval(asleepMs);
    }

    /// Asleep between the rounds: stopping them would send them back to calibration.
    void run()
    {
        setInterval(tickIntervalMs);
        runEvents();
        setInterval(asleepMs);
    }

private:
    void setInterval(int ms)
    {
        for (const auto &pad : m_pads)
            pad->device().setValue(pad->device().deviceId(), 1, u"pollingInterval"_s, ms);
    }

    std::array<std::unique_ptr<TickedPad>, sf::Joystick::Count> m_pads;
};

class BareTimers
{
public:
    BareTimers()
    {
        for (unsigned slot = 0; slot < m_timers.size(); ++slot)
            m_timers.at(slot) = std::make_unique<BareTimer>(slot);
    }

    void run()
    {
        for (const auto &timer : m_timers)
            timer->start(tickIntervalMs);
        runEvents();
        for (const auto &timer : m_timers)
            timer->stop();
    }

private:
    std::array<std::unique_ptr<BareTimer>, sf::Joystick::Count> m_timers;
};

/// Runs a round of `pads` and notes how many ticks it had, as SFML was asked to update.
template <typename Pads>
Side countedRounds(Pads &pads, int &ticks)
{
    return timed([&pads, &ticks] {
        const int before = scripted::calls().update;
        pads.run();
        ticks += scripted::calls().update - before;
    });
}

void measure(benchmark::State &state)
{
    const auto unplug = qScopeGuard(scripted::reset);
    RunningPads pads;
    BareTimers timers;
    int ourTicks = 0;
    int bareTicks = 0;
    compare(state, countedRounds(pads, ourTicks), countedRounds(timers, bareTicks));

    // A crowded machine swallows expiries, of both sides alike.
    const auto expected =
        static_cast<double>(state.max_iterations) * ticksPerRound * static_cast<double>(sf::Joystick::Count);
    require(state, ourTicks > expected / 2, "the pads did not tick at their rate");
    require(state, bareTicks > expected / 2, "the bare timers did not run at their rate");
}
} // namespace

void addRunningPadsPairs(const Suite &suite)
{
    suite.add({.name = "pads/eight-at-rest",
               .what = "8 started pads at 100 Hz for ten seconds, over timers with the same SFML calls",
               .limit = 1.25,
               .rounds = rounds},
              measure);
}
