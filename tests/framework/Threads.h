// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <atomic>
#include <thread>
#include <vector>

constexpr int threadCount = 4;

/// Runs `run(number of the thread)` in several threads, none of which begins before all are there,
/// and waits for their end.
template <class Function>
void inThreads(const Function& run)
{
    std::atomic<int> missing{threadCount};
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&, i] {
            for (--missing; missing > 0;)
                std::this_thread::yield();
            run(i);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}
