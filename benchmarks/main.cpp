// SPDX-License-Identifier: MIT
// Measures what this project promises of its speed: each pair is our code and the bare work that it stands
// for, taken in turns in one process, and the verdict is on their ratio.
#include "pair.h"
#include "ratiotable.h"
#include "subjects.h"
#include "testhome.h"

#include <QtCore/QLoggingCategory>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>
#include <cstring>

using namespace Qt::StringLiterals;

namespace
{
constexpr const char *usage = "usage: gamepad-benchmarks [--quick] [NAME ...] [--benchmark_OPTION ...]\n"
                              "Runs the pairs whose name contains a NAME (a regular expression), or all.\n"
                              "--quick: run each side once and check that it does its work; judge nothing.\n";

/// Takes `flag` out of the arguments.
bool takeFlag(int &argc, char **argv, const char *flag)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], flag) == 0) {
            std::copy(argv + i + 1, argv + argc, argv + i);
            --argc;
            return true;
        }
    }
    return false;
}

std::string filterFrom(int argc, char **argv)
{
    std::string filter;
    for (int i = 1; i < argc; ++i)
        filter += (filter.empty() ? "" : "|") + std::string(argv[i]);
    return filter.empty() ? benchmark::GetBenchmarkFilter() : filter;
}
} // namespace

int main(int argc, char *argv[])
{
    enterTemporaryHome();
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    QApplication::setOrganizationName(u"velor"_s);
    QApplication::setApplicationName(u"gamepad-benchmarks"_s);
    // What reads the lines of diagnostics would be measured with them.
    QLoggingCategory::setFilterRules(u"*.debug=false"_s);

    const bool quick = takeFlag(argc, argv, "--quick");
    benchmark::Initialize(&argc, argv, [] { std::fputs(usage, stdout); });
    const Suite suite(quick);
    addTickPairs(suite);
    addRunningPadsPairs(suite);
    addProfileLookupPairs(suite);
    addProfileListPairs(suite);
    addCardPairs(suite);
    addSnapshotPairs(suite);
    addActionWidgetPairs(suite);
    addOverlayLoadPairs(suite);
    addOverlayMappingPairs(suite);
    addDesignerPairs(suite);
    addConfigWindowPairs(suite);
    addBridgeRefreshPairs(suite);

    RatioTable table(!quick);
    if (benchmark::RunSpecifiedBenchmarks(&table, filterFrom(argc, argv)) == 0) {
        std::fputs("No pair has such a name.\n", stderr);
        return EXIT_FAILURE;
    }
    return table.allHold() ? EXIT_SUCCESS : EXIT_FAILURE;
}
