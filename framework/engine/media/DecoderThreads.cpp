// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "DecoderThreads.h"

#include <algorithm>
#include <mutex>
#include <thread>

namespace rvengine {

namespace {

struct Budget
{
    std::mutex mutex;
    int left = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U));
};

Budget& budget()
{
    static Budget all;
    return all;
}

} // namespace

DecoderThreads::DecoderThreads()
{
    // Each picture more in work is one more to wait for after a jump.
    constexpr int most = 8;
    Budget& all = budget();
    const std::lock_guard lock(all.mutex);
    const int wanted = std::min(all.left, most);
    if (wanted > 1) {
        m_count = wanted;
        all.left -= wanted;
    }
}

DecoderThreads::~DecoderThreads()
{
    if (m_count == 1)
        return;
    Budget& all = budget();
    const std::lock_guard lock(all.mutex);
    all.left += m_count;
}

} // namespace rvengine
