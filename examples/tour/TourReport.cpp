// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourReport.h"

#include <iomanip>
#include <ostream>

namespace {

constexpr int NumberWidth = 4;
constexpr int PhaseWidth = 5;
constexpr int EditWidth = 43; ///< as wide as the longest name of an edit
constexpr int CallsWidth = 5;
constexpr int TimeWidth = 8;
constexpr const char* Indent = "        ";

} // namespace

TourReport::TourReport(std::ostream& out, bool showCalls)
    : m_out(out)
    , m_showCalls(showCalls)
{
    m_out << std::fixed << std::setprecision(3);
}

void TourReport::printHeading()
{
    m_out << std::setw(NumberWidth) << "step"
          << "  " << std::left << std::setw(PhaseWidth) << "phase" << std::setw(EditWidth + 1)
          << " edit" << std::right << std::setw(CallsWidth + 1) << "calls"
          << std::setw(TimeWidth + 1) << "ms"
          << "  result\n";
}

void TourReport::print(const TourStep& step)
{
    ++m_steps;
    m_edits += std::string("edit") == step.phase ? 1 : 0;
    m_different += step.differences.empty() ? 0 : 1;
    m_calls += step.calls.size();
    m_milliseconds += step.milliseconds;

    m_out << std::setw(NumberWidth) << m_steps << "  " << std::left << std::setw(PhaseWidth)
          << step.phase << ' ' << std::setw(EditWidth) << step.edit << std::right << ' '
          << std::setw(CallsWidth) << step.calls.size() << ' ' << std::setw(TimeWidth)
          << step.milliseconds << "  " << (step.differences.empty() ? "same" : "different") << '\n';
    for (const std::string& difference : step.differences)
        m_out << Indent << "- " << difference << '\n';
    if (!m_showCalls)
        return;
    for (const std::string& call : step.calls)
        m_out << Indent << call << '\n';
}

void TourReport::printSummary(long long liveObjects)
{
    m_liveObjects = liveObjects;
    m_out << '\n'
          << m_steps << " steps (" << m_edits << " edits): " << m_steps - m_different << " same, "
          << m_different << " different; " << m_calls << " framework calls in " << m_milliseconds
          << " ms; " << liveObjects << " framework objects left alive\n";
}
