// SPDX-License-Identifier: MIT
// One tick of a gamepad that publishes: at rest it may cost little more than reading, and when everything
// changes little more than telling it.
#include "allocationcounter.h"
#include "barepad.h"
#include "expiry.h"
#include "pair.h"
#include "scriptedjoystick.h"
#include "subjects.h"
#include "tickedpad.h"

#include <QtCore/QScopeGuard>

using namespace std::chrono_literals;

namespace
{
constexpr unsigned ourSlot = 0;
constexpr unsigned bareSlot = 1;
constexpr auto notDuringThis = 1h;
constexpr int changingButtons = 4;
constexpr int keysPerTick = static_cast<int>(sf::Joystick::AxisCount) + changingButtons;

/// Whether `work` makes exactly the calls of one tick.
template <typename Work>
bool asksForEverything(Work work)
{
    scripted::calls() = {};
    work();
    const scripted::Calls &calls = scripted::calls();
    return calls.update == 1 && calls.isConnected == 1 && calls.getIdentification == 1 &&
           calls.hasAxis == sf::Joystick::AxisCount && calls.getAxisPosition == sf::Joystick::AxisCount &&
           calls.isButtonPressed == sf::Joystick::ButtonCount;
}

void measureAtRest(benchmark::State &state)
{
    const auto unplug = qScopeGuard(scripted::reset);
    TickedPad pad(ourSlot);
    int emitted = 0;
    QObject::connect(&pad.device(), &ControlManette::axesChanged, &pad.device(), [&emitted] { ++emitted; });
    const auto ours = [&pad] { pad.tick(); };
    BareTimer timer(ourSlot);
    timer.start(notDuringThis);
    // Both sides begin where a tick begins, with the expiry of a timer.
    const auto bare = [&timer] { expire(timer); };
    compare(state, repeated(ours), repeated(bare));
    require(state, pad.publishes(), "the pad does not publish");
    require(state, emitted == 0, "the pad is not at rest");
    require(state, asksForEverything(ours), "the tick does not read everything");
    require(state, asksForEverything(bare), "the bare side does not read everything");
}

template <typename Work>
double allocationsOf(Work work)
{
    constexpr int times = 1000;
    const AllocationCounter allocations;
    for (int i = 0; i < times; ++i)
        work();
    return static_cast<double>(allocations.count()) / times;
}

void countAllocationsAtRest(benchmark::State &state)
{
    const auto unplug = qScopeGuard(scripted::reset);
    TickedPad pad(ourSlot);
    const double ours = allocationsOf([&pad] { pad.tick(); });
    BareTimer timer(ourSlot);
    timer.start(notDuringThis);
    const double bare = allocationsOf([&timer] { expire(timer); });
    compareCounts(state, ours, bare);
    require(state, pad.publishes(), "the pad does not publish");
    require(state, bare >= 1.0, "the name that SFML hands out was not counted");
}

/// Moves every axis to the other side, and four buttons.
void changeReadings(unsigned slot)
{
    scripted::Pad &pad = scripted::pad(slot);
    for (auto &axis : pad.axes)
        axis = axis == 60.0F ? -60.0F : 60.0F;
    for (std::size_t i = 0; i < changingButtons; ++i)
        pad.buttons.flip(i);
}

/// What has arrived through both forms of `dataChanged`.
struct Heard
{
    qint64 ticks = 0;
    qint64 numericKeys = 0;
    qint64 textKeys = 0;

    [[nodiscard]] bool everything() const
    {
        return ticks > 0 && numericKeys == ticks * keysPerTick && textKeys == ticks * keysPerTick;
    }
};

template <typename Pad>
void listen(Pad &pad, Heard &heard)
{
    QObject::connect(&pad, qOverload<int, int, const QStringList &, const QVariantList &>(&Pad::dataChanged),
                     &pad, [&heard](int, int, const QStringList &keys, const QVariantList &values) {
                         heard.numericKeys += qMin(keys.size(), values.size());
                     });
    QObject::connect(
        &pad,
        qOverload<const QString &, const QString &, const QStringList &, const QVariantList &>(
            &Pad::dataChanged),
        &pad,
        [&heard](const QString &, const QString &, const QStringList &keys, const QVariantList &values) {
            heard.textKeys += qMin(keys.size(), values.size());
        });
}

template <typename Pad>
auto changingTick(unsigned slot, Pad &pad, Heard &heard)
{
    return [slot, &pad, &heard] {
        changeReadings(slot);
        pad.tick();
        ++heard.ticks;
    };
}

void measureAllChanging(benchmark::State &state)
{
    const auto unplug = qScopeGuard(scripted::reset);
    TickedPad pad(ourSlot);
    scripted::plug(bareSlot, scripted::restingPad());
    BarePad barePad(bareSlot);
    Heard ours;
    Heard bare;
    listen(pad.device(), ours);
    listen(barePad, bare);
    compare(state, repeated(changingTick(ourSlot, pad, ours)),
            repeated(changingTick(bareSlot, barePad, bare)));
    require(state, ours.everything(), "the host did not hear every change");
    require(state, bare.everything(), "the bare side did not tell every change");
}
} // namespace

void addTickPairs(const Suite &suite)
{
    suite.add({.name = "tick/at-rest",
               .what = "8 axes at rest and 11 buttons, over a timer that makes the same SFML calls",
               .limit = 1.5},
              measureAtRest);
    suite.add({.name = "tick/at-rest-allocations",
               .what = "heap allocations of the same, over those of that timer",
               .limit = 1.0,
               .rounds = 1},
              countAllocationsAtRest);
    suite.add({.name = "tick/all-changing",
               .what = "8 axes and 4 buttons told in both forms, over the same calls, lists and signals",
               .limit = 2.0},
              measureAllChanging);
}
