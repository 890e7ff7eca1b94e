// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

namespace norvel {

/// How long all processors together have run since the start of the system. The unit is the
/// system's own.
struct CpuTimes
{
    qint64 busy = 0;  ///< at work
    qint64 total = 0; ///< at work or not

    /// The times from what Windows counts: the kernel's time has the idle time within it.
    static CpuTimes fromWindows(qint64 idle, qint64 kernel, qint64 user);

    /// The load between two such times, in whole percent as `wmic` has it; 0 if no time has passed.
    static double loadBetween(const CpuTimes& before, const CpuTimes& after);
    /// Takes over the times of now; returns the load since the times before.
    double advanceTo(const CpuTimes& now);
};

} // namespace norvel
