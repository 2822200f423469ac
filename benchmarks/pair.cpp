// SPDX-License-Identifier: MIT
#include "pair.h"

#include <algorithm>
#include <ctime>
#include <vector>

namespace
{
// Long enough for a clock that counts microseconds, short enough to be over before another process is let in.
constexpr double roundSeconds = 0.0005;

/// Processor time is what a crowded machine disturbs least.
double secondsOf(const Side &side, int calls)
{
    if (side.prepare)
        side.prepare();
    const std::clock_t begin = std::clock();
    side.run(calls);
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

int callsPerRound(const Side &side)
{
    if (side.calls > 0)
        return side.calls;
    int calls = 1;
    while (secondsOf(side, calls) < roundSeconds)
        calls *= 2;
    return calls;
}

/// The element that `share` of the others lie below.
double quantile(std::vector<double> values, double share)
{
    const auto at =
        values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

double median(const std::vector<double> &values)
{
    return quantile(values, 0.5);
}
} // namespace

void compare(benchmark::State &state, const Side &ours, const Side &bare)
{
    const int oursCalls = callsPerRound(ours);
    const int bareCalls = callsPerRound(bare);
    std::vector<double> oursTimes;
    std::vector<double> bareTimes;
    std::vector<double> ratios;
    for ([[maybe_unused]] const auto round : state) {
        // Each goes first as often as the other: what the first leaves in the caches serves the second.
        const bool oursFirst = ratios.size() % 2 == 0;
        const double first = oursFirst ? secondsOf(ours, oursCalls) : secondsOf(bare, bareCalls);
        const double second = oursFirst ? secondsOf(bare, bareCalls) : secondsOf(ours, oursCalls);
        state.SetIterationTime(first + second);
        oursTimes.push_back((oursFirst ? first : second) / (oursCalls * ours.units));
        bareTimes.push_back((oursFirst ? second : first) / (bareCalls * bare.units));
        ratios.push_back(oursTimes.back() / bareTimes.back());
    }
    state.counters["ours_s"] = median(oursTimes);
    state.counters["bare_s"] = median(bareTimes);
    state.counters["ratio"] = median(ratios);
    state.counters["lower_quartile"] = quantile(ratios, 0.25);
    state.counters["upper_quartile"] = quantile(ratios, 0.75);
}

void compareCounts(benchmark::State &state, double ours, double bare)
{
    for ([[maybe_unused]] const auto round : state)
        state.SetIterationTime(0.0);
    state.counters["ours_n"] = ours;
    state.counters["bare_n"] = bare;
    state.counters["ratio"] = ours / bare;
}

void require(benchmark::State &state, bool done, const std::string &whatIsMissing)
{
    if (!done)
        state.SkipWithError(whatIsMissing);
}

void Suite::add(const Pair &pair, const std::function<void(benchmark::State &)> &measure) const
{
    benchmark::RegisterBenchmark(pair.name,
                                 [pair, measure](benchmark::State &state) {
                                     state.SetLabel(pair.what);
                                     measure(state);
                                     if (pair.limit)
                                         state.counters["limit"] = *pair.limit;
                                 })
        ->Iterations(m_quick ? 1 : pair.rounds)
        ->UseManualTime();
}
