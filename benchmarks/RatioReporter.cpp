// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "RatioReporter.h"

#include <QApplication>

#include <cstdio>

void RatioReporter::ReportRuns(const std::vector<Run>& runs)
{
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        if (run.error_occurred) {
            m_errors[run.run_name.str()] = run.error_message;
            continue;
        }
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
        const std::string missing = measured == m_secondsPerItem.end() ? name : reference;
        std::printf("%-72s not measured: %s\n", what.c_str(), reasonFor(missing).c_str());
        return true;
    }
    const double ratio = measured->second / against->second;
    std::printf("%-72s %6.2f  (bound %.2f)%s\n", what.c_str(), ratio, bound,
                ratio <= bound ? "" : "  EXCEEDED");
    return ratio <= bound;
}

std::string RatioReporter::reasonFor(const std::string& name) const
{
    const auto error = m_errors.find(name);
    return error == m_errors.end() ? name + " was not run" : error->second;
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
