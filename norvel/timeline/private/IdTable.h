// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace norvel {

/// Values by id, of which several may share one: filled first, then asked.
///
/// It is one sorted array, and a search starts where the last one ended. What is asked for in about
/// the order of the ids, as the records of a timeline are, is found at once and without leaving the
/// processor's cache, where the nodes of a hash table lie scattered over the memory.
template <class Value>
class IdTable
{
public:
    struct Entry
    {
        std::uint64_t id;
        Value value;
    };

    void reserve(std::size_t count) { m_entries.reserve(count); }

    void add(std::uint64_t id, Value value)
    {
        m_sorted = m_sorted && (m_entries.empty() || m_entries.back().id <= id);
        m_entries.push_back({id, std::move(value)});
    }

    /// The first entry with the id, or null; the others follow it in the order in which they were
    /// added, up to `end()` or the first entry with another id.
    Entry* find(std::uint64_t id)
    {
        sort();
        m_near = lowerBound(id);
        return m_near < m_entries.size() && m_entries[m_near].id == id ? &m_entries[m_near]
                                                                       : nullptr;
    }

    /// Where an entry stands; stays the same while nothing is added.
    std::size_t positionOf(const Entry* entry) const
    {
        return static_cast<std::size_t>(entry - m_entries.data());
    }

    /// Behind the last entry.
    const Entry* end() const { return m_entries.data() + m_entries.size(); }

private:
    void sort()
    {
        if (m_sorted)
            return;
        std::stable_sort(m_entries.begin(), m_entries.end(),
                         [](const Entry& a, const Entry& b) { return a.id < b.id; });
        m_sorted = true;
    }

    /// The index of the first entry whose id is not below `id`, sought outwards from the last one.
    std::size_t lowerBound(std::uint64_t id) const
    {
        const auto below = [&](std::size_t index) { return m_entries[index].id < id; };
        std::size_t first = 0;
        std::size_t last = m_entries.size();
        if (m_near < last && below(m_near)) {
            first = m_near + 1;
            for (std::size_t step = 1; first + step < last; step *= 2) {
                if (!below(first + step)) {
                    last = first + step;
                    break;
                }
                first += step;
            }
        } else if (m_near < last) {
            last = m_near;
            for (std::size_t step = 1; last > step; step *= 2) {
                if (below(last - step)) {
                    first = last - step;
                    break;
                }
                last -= step;
            }
        }
        const auto begin = m_entries.begin();
        const auto found = std::partition_point(begin + static_cast<std::ptrdiff_t>(first),
                                                begin + static_cast<std::ptrdiff_t>(last),
                                                [id](const Entry& entry) { return entry.id < id; });
        return static_cast<std::size_t>(found - begin);
    }

    std::vector<Entry> m_entries;
    std::size_t m_near = 0;
    bool m_sorted = true;
};

} // namespace norvel
