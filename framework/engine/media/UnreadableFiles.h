// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/MonotonicClock.h>

#include <chrono>
#include <map>
#include <string>

namespace rvengine {

/// The files that could not be read when they were needed: warned about once each, and not tried
/// again with every frame. A file that comes back is found `UntilNextTry` later. Not thread-safe.
class UnreadableFiles
{
public:
    static constexpr std::chrono::seconds UntilNextTry{2};

    explicit UnreadableFiles(MonotonicClock now = std::chrono::steady_clock::now);

    /// False while the last failure is too recent to try again.
    bool mayTry(const std::string& path) const;
    /// What came of a try; the first failure of a file is a warning.
    void tried(const std::string& path, bool success);

private:
    const MonotonicClock m_now;
    std::map<std::string, std::chrono::steady_clock::time_point> m_nextTry;
};

} // namespace rvengine
