// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

/// Prints the pairs as one table, a line each as it is measured, with the limit and whether it holds.
class RatioTable : public benchmark::BenchmarkReporter
{
public:
    /// A table that does not judge fails only for sides that did not do their work.
    explicit RatioTable(bool judges)
        : m_judges(judges)
    {}

    bool ReportContext(const Context &context) override;
    void ReportRuns(const std::vector<Run> &runs) override;

    /// Whether every side did its work and, where this table judges, no ratio was over its limit.
    [[nodiscard]] bool allHold() const { return m_allHold; }

private:
    [[nodiscard]] const char *verdict(const Run &run);

    bool m_judges;
    bool m_allHold = true;
};
