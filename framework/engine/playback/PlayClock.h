// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>

namespace rvengine {

/// Tells where playback is. It goes by the wall clock, and by that of a sound device where one
/// corrects it. Any thread may call any function.
class PlayClock
{
public:
    /// Goes to a position, ms, and goes on running if it runs. What was measured before is out of
    /// date then: the number of this run is another one.
    void set(long long position);
    void start();
    void stop();
    bool isRunning() const;

    /// ms. While the clock runs it never goes back.
    long long position() const;

    /// The run that goes on, and where it began, ms.
    struct Run
    {
        std::uint64_t number;
        long long start;
    };
    Run run() const;
    /// What was heard says that the clock is that many ms after the start of a run; ignored when it
    /// speaks of another run or the clock stands.
    void correct(std::uint64_t run, double sinceStart);

private:
    double now() const;
    long long positionAt(double sinceStart) const;

    mutable std::mutex m_mutex;
    std::uint64_t m_run = 0;
    bool m_running = false;
    long long m_start = 0; ///< where the run began
    double m_offset = 0.0; ///< ms after `m_start`, at `m_since`
    std::chrono::steady_clock::time_point m_since;
    mutable double m_told = 0.0; ///< the last offset that was given in this run
};

} // namespace rvengine
