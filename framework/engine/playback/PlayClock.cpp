// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "PlayClock.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace rvengine {

void PlayClock::set(long long position)
{
    const std::lock_guard lock(m_mutex);
    ++m_run;
    m_start = position;
    m_offset = m_told = 0.0;
    m_since = std::chrono::steady_clock::now();
}

void PlayClock::start()
{
    const std::lock_guard lock(m_mutex);
    if (m_running)
        return;
    ++m_run;
    m_start = positionAt(m_offset);
    m_offset = m_told = 0.0;
    m_since = std::chrono::steady_clock::now();
    m_running = true;
}

void PlayClock::stop()
{
    const std::lock_guard lock(m_mutex);
    if (!m_running)
        return;
    m_offset = m_told = now();
    m_running = false;
    ++m_run;
}

bool PlayClock::isRunning() const
{
    const std::lock_guard lock(m_mutex);
    return m_running;
}

long long PlayClock::position() const
{
    const std::lock_guard lock(m_mutex);
    m_told = now();
    return positionAt(m_told);
}

PlayClock::Run PlayClock::run() const
{
    const std::lock_guard lock(m_mutex);
    return {m_run, m_start};
}

void PlayClock::correct(std::uint64_t run, double sinceStart)
{
    const std::lock_guard lock(m_mutex);
    if (run != m_run || !m_running || !std::isfinite(sinceStart))
        return;
    m_offset = sinceStart;
    m_since = std::chrono::steady_clock::now();
}

double PlayClock::now() const
{
    if (!m_running)
        return m_offset;
    const std::chrono::duration<double, std::milli> elapsed =
        std::chrono::steady_clock::now() - m_since;
    return std::max(m_offset + elapsed.count(), m_told);
}

long long PlayClock::positionAt(double sinceStart) const
{
    // A host may play at any time: saturates instead of overflowing.
    constexpr long long last = std::numeric_limits<long long>::max();
    constexpr double most = 4.0e18;
    const auto whole = static_cast<long long>(std::floor(std::clamp(sinceStart, -most, most)));
    return m_start > last - whole ? last : m_start + whole;
}

} // namespace rvengine
