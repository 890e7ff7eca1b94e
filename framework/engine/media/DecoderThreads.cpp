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
    /// While one waits for another, or for what is done with its pictures, a third one works.
    const int all = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U)) + 2;
    /// Each picture more in work is one more to wait for after a jump.
    const int mostOfOne = std::clamp(all / 2, 2, 8);
    std::mutex mutex;
    int left = all;
};

Budget& budget()
{
    static Budget shared;
    return shared;
}

} // namespace

DecoderThreads::DecoderThreads()
{
    Budget& shared = budget();
    const std::lock_guard lock(shared.mutex);
    const int wanted = std::min(shared.left, shared.mostOfOne);
    if (wanted > 1) {
        m_count = wanted;
        shared.left -= wanted;
    }
}

DecoderThreads::~DecoderThreads()
{
    if (m_count == 1)
        return;
    Budget& shared = budget();
    const std::lock_guard lock(shared.mutex);
    shared.left += m_count;
}

bool DecoderThreads::areLeft()
{
    Budget& shared = budget();
    const std::lock_guard lock(shared.mutex);
    return shared.left > 1;
}

} // namespace rvengine
