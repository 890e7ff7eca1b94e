// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

/// Counts what belongs to this process.
class ProcessCensus
{
public:
    /// The threads that live.
    static int threads();
    /// The processes that it started and that are not gone, zombies included.
    static int children();
    /// Whether the main thread waits for something; any thread may ask.
    static bool isMainThreadAsleep();
};
