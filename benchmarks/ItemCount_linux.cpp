// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ItemCount.h"

#include "RatioReporter.h"

#include <sys/resource.h>

namespace {

double secondsOf(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// Of all threads of this process and of the programs that it ran, seconds.
double cpuTime()
{
    double sum = 0.0;
    for (const auto who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        getrusage(who, &usage);
        sum += secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
    }
    return sum;
}

} // namespace

ItemCount::ItemCount(benchmark::State& state, long long itemsOfAnIteration)
    : m_state(state)
    , m_itemsOfAnIteration(itemsOfAnIteration)
    , m_start(cpuTime())
{
}

ItemCount::~ItemCount()
{
    const long long items = m_state.iterations() * m_itemsOfAnIteration;
    m_state.SetItemsProcessed(items);
    if (items > 0)
        m_state.counters[RatioReporter::CpuCounter] =
            (cpuTime() - m_start) / static_cast<double>(items);
}
