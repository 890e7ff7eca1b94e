// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "RatioReporter.h"

#include <QApplication>

#include <array>
#include <cstdio>

namespace {

std::string cpuRemark(double ratio)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "  CPU time %.2f", ratio);
    return text.data();
}

/// False if it exceeds the bound.
bool printFigure(const std::string& what, double figure, double bound,
                 const std::string& remark = {})
{
    // Written so that a figure that is no number exceeds it.
    const bool isKept = figure <= bound;
    std::printf("%-72s %6.2f  (bound %.2f)%s%s\n", what.c_str(), figure, bound, remark.c_str(),
                isKept ? "" : "  EXCEEDED");
    return isKept;
}

} // namespace

void RatioReporter::ReportRuns(const std::vector<Run>& runs)
{
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        if (run.error_occurred) {
            m_errors[run.run_name.str()] = run.error_message;
            continue;
        }
        if (run.run_type == Run::RT_Aggregate && run.aggregate_name != "median")
            continue;
        const std::string name = run.run_name.str();
        for (const auto& [counter, value] : run.counters)
            m_counters[{counter, name}] = value;
        const auto items = run.counters.find("items_per_second");
        if (items != run.counters.end())
            m_secondsPerItem[name] = 1.0 / items->second;
    }
}

bool RatioReporter::printRatio(const std::string& what, const std::string& name,
                               const std::string& reference, double bound) const
{
    const auto measured = m_secondsPerItem.find(name);
    const auto against = m_secondsPerItem.find(reference);
    const bool isMeasured = measured != m_secondsPerItem.end();
    if (!isMeasured || against == m_secondsPerItem.end())
        return printAbsence(what, isMeasured, name, reference);
    const double* const cpu = counterOf(CpuCounter, name);
    const double* const cpuAgainst = counterOf(CpuCounter, reference);
    const std::string remark = cpu && cpuAgainst ? cpuRemark(*cpu / *cpuAgainst) : std::string();
    return printFigure(what, measured->second / against->second, bound, remark);
}

bool RatioReporter::printCounterRatio(const std::string& what, const std::string& counter,
                                      const std::string& name, const std::string& reference,
                                      double bound) const
{
    const double* const measured = counterOf(counter, name);
    const double* const against = counterOf(counter, reference);
    if (!measured || !against)
        return printAbsence(what, measured != nullptr, name, reference);
    return printFigure(what, *measured / *against, bound);
}

bool RatioReporter::printCounter(const std::string& what, const std::string& counter,
                                 const std::string& name, double bound) const
{
    const double* const measured = counterOf(counter, name);
    return measured ? printFigure(what, *measured, bound) : printAbsence(what, false, name, name);
}

bool RatioReporter::printAbsence(const std::string& what, bool isMeasured, const std::string& name,
                                 const std::string& reference) const
{
    const std::string reason = reasonFor(isMeasured ? reference : name);
    std::printf("%-72s not measured: %s\n", what.c_str(), reason.c_str());
    return true;
}

const double* RatioReporter::counterOf(const std::string& counter, const std::string& name) const
{
    const auto found = m_counters.find({counter, name});
    return found == m_counters.end() ? nullptr : &found->second;
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
