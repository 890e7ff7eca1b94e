// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <functional>

namespace rvengine {

/// Tells the time that decides when something is tried again; a test hands in one of its own.
using MonotonicClock = std::function<std::chrono::steady_clock::time_point()>;

} // namespace rvengine
