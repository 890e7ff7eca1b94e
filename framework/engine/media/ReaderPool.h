// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/Interrupt.h>
#include <engine/base/MonotonicClock.h>

#include "UnreadableFiles.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <utility>

namespace rvengine {

/// The open readers of a renderer. Opening a file takes longer than reading a frame of it, and a
/// reader that jumps to and fro between two places reads slowly: so each lane has its reader of a
/// file to itself, and gets the same one again in the next round (frame or block). Not thread-safe.
template <class Reader>
class ReaderPool
{
public:
    /// How many rounds a reader is kept that nobody used.
    static constexpr std::uint64_t PatienceInRounds = 90;
    /// How many readers are kept that nobody used in the last round. Each holds pictures or blocks
    /// that it decoded, and short clips of many files would open one after the other.
    static constexpr std::size_t MostIdle = 8;

    /// `interrupt` is that of the readers: what fails once it is raised says nothing of the file.
    explicit ReaderPool(MonotonicClock now = std::chrono::steady_clock::now,
                        Interrupt interrupt = {})
        : m_unreadable(std::move(now))
        , m_interrupt(std::move(interrupt))
    {
    }

    /// A reader of the file `path` for the lane, opened by `open` when there is none that is free;
    /// null when the file cannot be opened. `variant` tells readers of one file apart that were
    /// opened in different ways. The reader stays in the pool; nobody else gets it in this round.
    template <class Open>
    Reader* take(const std::string& path, double variant, std::uintptr_t lane, Open&& open)
    {
        for (Entry& entry : m_entries) {
            if (entry.usedIn != m_round && entry.lane == lane && entry.variant == variant &&
                entry.path == path)
                return use(entry);
        }
        for (Entry& entry : m_entries) {
            if (entry.usedIn + 1 < m_round && entry.variant == variant && entry.path == path) {
                entry.lane = lane;
                return use(entry);
            }
        }
        if (!m_unreadable.mayTry(path))
            return nullptr;
        std::unique_ptr<Reader> reader = open();
        if (!reader && m_interrupt.isRaised())
            return nullptr;
        m_unreadable.tried(path, reader != nullptr);
        if (!reader)
            return nullptr;
        m_entries.push_back({path, variant, lane, m_round, std::move(reader)});
        return m_entries.back().reader.get();
    }

    /// Takes in a reader of the file that was opened elsewhere, in place of the one of that lane,
    /// and gives it as `take` does.
    Reader* put(const std::string& path, double variant, std::uintptr_t lane,
                std::unique_ptr<Reader> reader)
    {
        m_entries.remove_if([&](const Entry& entry) {
            return entry.usedIn != m_round && entry.lane == lane && entry.variant == variant &&
                   entry.path == path;
        });
        m_unreadable.tried(path, true);
        m_entries.push_back({path, variant, lane, m_round, std::move(reader)});
        return m_entries.back().reader.get();
    }

    /// Calls `function` once for each reader that nobody used in the last `rounds` rounds.
    template <class Function>
    void forIdle(std::uint64_t rounds, Function&& function)
    {
        for (Entry& entry : m_entries) {
            if (entry.usedIn + rounds + 1 == m_round)
                function(*entry.reader);
        }
    }

    void endRound()
    {
        m_entries.remove_if(
            [this](const Entry& entry) { return entry.usedIn + PatienceInRounds < m_round; });
        closeIdle();
        ++m_round;
    }

    std::size_t size() const { return m_entries.size(); }

private:
    struct Entry
    {
        std::string path;
        double variant;
        std::uintptr_t lane;
        std::uint64_t usedIn; ///< the round in which it was used last
        std::unique_ptr<Reader> reader;
    };

    Reader* use(Entry& entry)
    {
        entry.usedIn = m_round;
        return entry.reader.get();
    }

    /// Closes those that were not used for longest, down to `MostIdle`.
    void closeIdle()
    {
        const auto isIdle = [this](const Entry& entry) { return entry.usedIn != m_round; };
        auto idle = std::count_if(m_entries.begin(), m_entries.end(), isIdle);
        for (; idle > static_cast<std::ptrdiff_t>(MostIdle); --idle)
            m_entries.erase(std::min_element(
                m_entries.begin(), m_entries.end(),
                [](const Entry& one, const Entry& other) { return one.usedIn < other.usedIn; }));
    }

    std::list<Entry> m_entries;
    UnreadableFiles m_unreadable;
    const Interrupt m_interrupt;
    std::uint64_t m_round = 1;
};

} // namespace rvengine
