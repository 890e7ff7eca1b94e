// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/MonotonicClock.h>

/// A clock that stands until a test moves it. It must outlive those that go by it.
class ManualClock
{
public:
    ManualClock() = default;
    ManualClock(const ManualClock&) = delete;
    ManualClock& operator=(const ManualClock&) = delete;

    void advance(std::chrono::steady_clock::duration time) { m_now += time; }

    rvengine::MonotonicClock clock() const
    {
        return [this] { return m_now; };
    }

private:
    std::chrono::steady_clock::time_point m_now{std::chrono::hours(1)};
};
