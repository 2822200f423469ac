// SPDX-License-Identifier: MIT
#include "valuehistory.h"

#include <algorithm>
#include <cmath>
#include <limits>

void ValueHistory::append(int line, qint64 time, double value)
{
    auto &samples = m_lines[line];
    // A held control repeats its value a hundred times a second; the ends of such a run are enough.
    const auto count = samples.size();
    if (count >= 2 && samples.at(count - 1).value == value && samples.at(count - 2).value == value)
        samples.last().time = time;
    else
        samples.append({.time = time, .value = value});
}

void ValueHistory::interrupt(qint64 time)
{
    for (auto &samples : m_lines) {
        if (!samples.isEmpty() && !std::isnan(samples.constLast().value))
            samples.append({.time = time, .value = std::numeric_limits<double>::quiet_NaN()});
    }
}

void ValueHistory::forgetBefore(qint64 now)
{
    const qint64 start = now - m_span;
    for (auto &samples : m_lines) {
        const auto firstInside =
            std::ranges::find_if(samples, [start](const Sample &sample) { return sample.time >= start; });
        const auto old = std::distance(samples.begin(), firstInside);
        if (old > 1)
            samples.remove(0, old - 1);
    }
}
