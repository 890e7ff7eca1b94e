// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <benchmark/benchmark.h>

/// Counts the items of a run for RatioReporter, and the CPU time of each: on a busy machine the
/// time that passes tells less. Made before the loop of the run; the loop is over when it ends.
class ItemCount
{
public:
    explicit ItemCount(benchmark::State& state, long long itemsOfAnIteration = 1);
    ~ItemCount();
    ItemCount(const ItemCount&) = delete;
    ItemCount& operator=(const ItemCount&) = delete;

private:
    benchmark::State& m_state;
    const long long m_itemsOfAnIteration;
    const double m_start; ///< CPU time, seconds
};
