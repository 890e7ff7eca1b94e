// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace rvengine {

/// Hands work from one thread to the next, a few pieces at most at a time.
template <class Piece>
class WorkQueue
{
public:
    explicit WorkQueue(std::size_t most)
        : m_most(most)
    {
    }

    /// Waits until there is room; false, without the piece, when the queue was closed.
    bool push(Piece piece)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_isClosed || m_pieces.size() < m_most; });
        if (m_isClosed)
            return false;
        m_pieces.push_back(std::move(piece));
        m_changed.notify_all();
        return true;
    }

    /// Waits for a piece; nothing when the queue was closed and what was in it is taken.
    std::optional<Piece> pop()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_isClosed || !m_pieces.empty(); });
        if (m_pieces.empty())
            return std::nullopt;
        std::optional<Piece> piece(std::move(m_pieces.front()));
        m_pieces.pop_front();
        m_changed.notify_all();
        return piece;
    }

    /// Nothing more comes in.
    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
        m_changed.notify_all();
    }

private:
    const std::size_t m_most;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Piece> m_pieces;
    bool m_isClosed = false;
};

} // namespace rvengine
