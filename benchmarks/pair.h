// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <optional>
#include <string>

/// One side of a pair: work that can be done again and again.
struct Side
{
    std::function<void(int calls)> run;
    double units = 1.0; ///< pieces of work in one call; a ratio is per piece
    int calls = 0;      ///< calls in one round, or 0 for as many as make a round measurable
    std::function<void()> prepare = [] {}; ///< before each round, outside the measured time
};

/// Work that is over in a moment. It is called so often in a round that the clock's grain does not count.
template <typename Work>
Side repeated(Work work, double units = 1.0)
{
    return {.run =
                [work](int calls) {
                    for (int i = 0; i < calls; ++i)
                        work();
                },
            .units = units};
}

/// Work that takes the time it takes, an event loop for instance: one call a round. `prepare` makes room for
/// it before, and is not measured.
template <typename Work>
Side timed(Work work, const std::function<void()> &prepare = [] {})
{
    return {.run = [work](int) { work(); }, .calls = 1, .prepare = prepare};
}

/// Runs both sides in turns, one short round each, and gives `state` the median of the rounds' ratios. Two
/// rounds that follow each other see the same machine, so the ratio holds where absolute times do not. Time
/// is the processor time of the process.
void compare(benchmark::State &state, const Side &ours, const Side &bare);

/// The same for what is counted instead of timed, for one unit of work on each side.
void compareCounts(benchmark::State &state, double ours, double bare);

/// Makes the pair a failure unless `done`: a side that does not do its work is quick for nothing.
void require(benchmark::State &state, bool done, const std::string &whatIsMissing);

/// What a pair is called, and how it is judged.
struct Pair
{
    std::string name;            ///< subject, slash, case
    std::string what;            ///< both sides in a few words: "this, over that"
    std::optional<double> limit; ///< of the ratio; none where the figure is for information
    int rounds = 301;
};

/// The pairs of this run.
class Suite
{
public:
    /// A quick suite runs each side once, to see that it does its work; its ratios mean nothing.
    explicit Suite(bool quick)
        : m_quick(quick)
    {}

    /// `measure` prepares both sides, calls `compare` once, and calls `require` for the work of each side.
    void add(const Pair &pair, const std::function<void(benchmark::State &)> &measure) const;

private:
    bool m_quick;
};
