// SPDX-License-Identifier: MIT
#include "ratiotable.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

namespace
{
constexpr const char *rowFormat = "%-28s %11s %11s %7s  %-13s %6s  %-9s %s\n";

std::string formatted(const char *format, double number)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

std::string duration(double seconds)
{
    if (seconds < 1e-6)
        return formatted("%.1f ns", seconds * 1e9);
    if (seconds < 1e-3)
        return formatted("%.2f us", seconds * 1e6);
    return formatted("%.2f ms", seconds * 1e3);
}

std::optional<double> counter(const benchmark::BenchmarkReporter::Run &run, const char *name)
{
    const auto found = run.counters.find(name);
    return found == run.counters.end() ? std::nullopt : std::optional<double>(found->second.value);
}

std::string ratio(std::optional<double> value)
{
    return value ? formatted("%.2f", *value) : "-";
}

/// What one side took: "ours" or "bare".
std::string cost(const benchmark::BenchmarkReporter::Run &run, const std::string &side)
{
    const auto seconds = counter(run, (side + "_s").c_str());
    return seconds ? duration(*seconds)
                   : formatted("%.2f", counter(run, (side + "_n").c_str()).value_or(0.0));
}

std::string spread(const benchmark::BenchmarkReporter::Run &run)
{
    const auto lower = counter(run, "lower_quartile");
    return lower ? ratio(lower) + " - " + ratio(counter(run, "upper_quartile")) : "counted";
}
} // namespace

bool RatioTable::ReportContext(const Context & /*context*/)
{
    std::printf(rowFormat, "pair", "ours", "bare", "ratio", "half of them", "limit", "", "");
    return true;
}

void RatioTable::ReportRuns(const std::vector<Run> &runs)
{
    for (const Run &run : runs) {
        const std::string &name = run.run_name.function_name;
        if (run.skipped != benchmark::internal::NotSkipped) {
            m_allHold = false;
            std::printf("%-28s DID NOT DO ITS WORK: %s\n", name.c_str(), run.skip_message.c_str());
            continue;
        }
        std::printf(rowFormat, name.c_str(), cost(run, "ours").c_str(), cost(run, "bare").c_str(),
                    ratio(counter(run, "ratio")).c_str(), spread(run).c_str(),
                    ratio(counter(run, "limit")).c_str(), verdict(run), run.report_label.c_str());
    }
    std::fflush(stdout);
}

const char *RatioTable::verdict(const Run &run)
{
    const auto limit = counter(run, "limit");
    if (!m_judges || !limit)
        return "";
    // Written so that a ratio that is no number does not hold.
    if (counter(run, "ratio").value_or(NAN) <= *limit)
        return "holds";
    m_allHold = false;
    return "OVER";
}
