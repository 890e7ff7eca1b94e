// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

/// What there is to tell of one step of the tour.
struct TourStep
{
    const char* phase = "";               ///< edit, undo or redo
    std::string edit;                     ///< what was edited, undone or redone
    std::vector<std::string> calls;       ///< the framework calls that it took
    double milliseconds = 0.0;            ///< how long it took
    std::vector<std::string> differences; ///< between the history and the timeline
};

/// Prints the steps of the tour as a table, counts them, and judges them in the end.
class TourReport
{
public:
    /// Prints to `out`, which must outlive the report; with the calls of every step if wanted.
    TourReport(std::ostream& out, bool showCalls);

    void printHeading();
    /// Prints a step as the next line of the table.
    void print(const TourStep& step);
    /// Ends the table. `liveObjects` are the framework objects that the tour has left alive.
    void printSummary(long long liveObjects);

    /// The number of steps so far.
    int stepCount() const { return m_steps; }
    /// Whether every step agreed, and there was one, and nothing was said to be left alive.
    bool agreed() const { return m_steps > 0 && m_different == 0 && m_liveObjects == 0; }

private:
    std::ostream& m_out;
    const bool m_showCalls;
    int m_steps = 0;
    int m_edits = 0;
    int m_different = 0;
    std::size_t m_calls = 0;
    double m_milliseconds = 0.0;
    long long m_liveObjects = 0;
};
