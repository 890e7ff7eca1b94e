// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

/// Prints the runs as usual and keeps their times, so that figures of one run can be set against
/// each other: machines differ, ratios of the same run do not.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    /// The counter of the CPU time of an item, seconds.
    static constexpr const char* CpuCounter = "cpu_s";

    void ReportRuns(const std::vector<Run>& runs) override;

    /// Prints how long one item of `name` takes against one item of `reference`, beside the bound
    /// that it should keep; says so when one of the two was not run, with the reason that a run
    /// gave for its end. Adds the ratio of their CPU times if both have that counter. True when the
    /// bound is kept or could not be judged.
    bool printRatio(const std::string& what, const std::string& name, const std::string& reference,
                    double bound) const;

    /// As that, of how large the counter is in both runs.
    bool printCounterRatio(const std::string& what, const std::string& counter,
                           const std::string& name, const std::string& reference,
                           double bound) const;
    /// As that, of the counter itself.
    bool printCounter(const std::string& what, const std::string& counter, const std::string& name,
                      double bound) const;

private:
    /// Prints that there is no figure of the first of the runs that gave none; true.
    bool printAbsence(const std::string& what, bool isMeasured, const std::string& name,
                      const std::string& reference) const;
    /// Null if the run gave no such counter.
    const double* counterOf(const std::string& counter, const std::string& name) const;
    /// Why there is no figure of a run.
    std::string reasonFor(const std::string& name) const;

    std::map<std::string, double> m_secondsPerItem; ///< by the name of the run
    /// By the names of the counter and of the run.
    std::map<std::pair<std::string, std::string>, double> m_counters;
    std::map<std::string, std::string> m_errors; ///< by the name of the run that ended early
};

/// The main program of a benchmark: makes a Qt application without a screen, registers the runs by
/// `registerAll`, does what the command line asks for, and ends with 1 when `printPromises`, which
/// prints the ratios, says that a bound is exceeded.
int runBenchmarks(int argc, char** argv, void (*registerAll)(),
                  bool (*printPromises)(const RatioReporter& reporter));
