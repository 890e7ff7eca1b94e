// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/CpuTimes.h>

#include <algorithm>
#include <utility>

namespace norvel {

CpuTimes CpuTimes::fromWindows(qint64 idle, qint64 kernel, qint64 user)
{
    return {kernel + user - idle, kernel + user};
}

double CpuTimes::loadBetween(const CpuTimes& before, const CpuTimes& after)
{
    const qint64 total = after.total - before.total;
    if (total <= 0)
        return 0.0;
    // The system's time of waiting may go back a little.
    const qint64 busy = std::clamp<qint64>(after.busy - before.busy, 0, total);
    return qRound(100.0 * static_cast<double>(busy) / static_cast<double>(total));
}

double CpuTimes::advanceTo(const CpuTimes& now)
{
    return loadBetween(std::exchange(*this, now), now);
}

} // namespace norvel
