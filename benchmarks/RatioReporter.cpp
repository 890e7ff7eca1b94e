// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "RatioReporter.h"

#include <QApplication>

#include <cstdio>

void RatioReporter::ReportRuns(const std::vector<Run>& runs)
{
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        const auto items = run.counters.find("items_per_second");
        if (run.run_type == Run::RT_Iteration && items != run.counters.end())
            m_secondsPerItem[run.benchmark_name()] = 1.0 / items->second;
        else if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median" &&
                 items != run.counters.end())
            m_secondsPerItem[run.run_name.str()] = 1.0 / items->second;
    }
}

bool RatioReporter::printRatio(const std::string& what, const std::string& name,
                               const std::string& reference, double bound) const
{
    const auto measured = m_secondsPerItem.find(name);
    const auto against = m_secondsPerItem.find(reference);
    if (measured == m_secondsPerItem.end() || against == m_secondsPerItem.end()) {
        std::printf("%-72s not run\n", what.c_str());
        return true;
    }
    const double ratio = measured->second / against->second;
    std::printf("%-72s %6.2f  (bound %.2f)%s\n", what.c_str(), ratio, bound,
                ratio <= bound ? "" : "  EXCEEDED");
    return ratio <= bound;
}

int runBenchmarks(int argc, char** argv, void (*registerAll)(),
                  bool (*printPromises)(const RatioReporter& reporter))
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    registerAll();
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return printPromises(reporter) ? 0 : 1;
}
