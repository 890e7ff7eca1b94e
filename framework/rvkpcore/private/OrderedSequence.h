// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

namespace qrvkp {

/// A list of distinct objects in which any of them can be moved without walking the others.
///
/// The items stand in chunks of bounded size, and every item knows its chunk: finding, inserting
/// and erasing touch one chunk, where a plain vector would search and shift all items behind the
/// place. The chunk of a position is sought from where the last one was found. A timeline of
/// 100,000 groups that is put in another order, group by group, stays fast that way.
///
/// `Handle` is a raw or smart pointer. `PlaceOf()(handle)` gives a reference to the item's `const
/// void*` in which the sequence keeps the chunk: null while the item stands nowhere.
template <class Handle, class PlaceOf>
class OrderedSequence
{
public:
    OrderedSequence() { m_chunks.push_back(std::make_unique<Chunk>(*this)); }
    OrderedSequence(const OrderedSequence&) = delete;
    OrderedSequence& operator=(const OrderedSequence&) = delete;

    std::size_t size() const { return m_size; }

    /// True when the item, whose place was given by a sequence of this type or is null, stands
    /// here.
    bool contains(const Handle& item) const
    {
        const auto* chunk = static_cast<const Chunk*>(placeOf(item));
        return chunk && chunk->owner == this;
    }

    /// Puts an item that stands nowhere at `position`; beyond the end is the end.
    void insert(std::size_t position, Handle item)
    {
        auto [chunk, offset] = find(std::min(position, m_size));
        if (chunk->items.size() == chunkCapacity)
            std::tie(chunk, offset) = makeRoom(*chunk, offset);
        placeOf(item) = chunk;
        chunk->items.insert(chunk->items.begin() + static_cast<std::ptrdiff_t>(offset),
                            std::move(item));
        ++m_size;
        if (chunk->index < m_nearIndex)
            ++m_nearStart;
    }

    /// Takes an item of the sequence out.
    void erase(const Handle& item)
    {
        const auto* chunk = static_cast<const Chunk*>(placeOf(item));
        auto& items = m_chunks[chunk->index]->items;
        const auto place = std::find(items.begin(), items.end(), item);
        placeOf(*place) = nullptr;
        items.erase(place);
        --m_size;
        if (chunk->index < m_nearIndex)
            --m_nearStart;
        if (items.empty() && m_chunks.size() > 1)
            eraseChunk(chunk->index);
    }

    /// True when `item` stands at `position`.
    bool isAt(std::size_t position, const Handle& item) const
    {
        if (position >= m_size)
            return false;
        const auto [chunk, offset] = find(position);
        return chunk->items[offset] == item;
    }

    template <class Function>
    void forEach(Function&& function) const
    {
        for (const auto& chunk : m_chunks) {
            const auto& items = chunk->items;
            for (std::size_t i = 0; i < items.size(); ++i) {
                if (i + prefetchDistance < items.size())
                    prefetch(std::addressof(*items[i + prefetchDistance]));
                function(items[i]);
            }
        }
    }

private:
    static constexpr std::size_t chunkCapacity = 256;
    /// What a walk does with an item often is to count a reference: an atomic operation, which
    /// waits for the memory alone. Asking for the items some steps ahead lets them arrive together.
    static constexpr std::size_t prefetchDistance = 8;
    static void prefetch([[maybe_unused]] const void* address)
    {
#if defined(__GNUC__)
        __builtin_prefetch(address, 1);
#endif
    }

    static const void*& placeOf(const Handle& item)
    {
        return PlaceOf()(item);
    }

    struct Chunk
    {
        explicit Chunk(const OrderedSequence& sequence)
            : owner(&sequence)
        {
            items.reserve(chunkCapacity);
        }
        const OrderedSequence* const owner;
        std::size_t index = 0; ///< in m_chunks
        std::vector<Handle> items;
    };

    /// The chunk and the offset in it at which `position` (at most the size) lies. A position
    /// between two chunks is the start of the second one; the end is the end of the last one.
    std::pair<Chunk*, std::size_t> find(std::size_t position) const
    {
        if (position < m_nearStart / 2)
            m_nearIndex = m_nearStart = 0;
        while (position < m_nearStart)
            m_nearStart -= m_chunks[--m_nearIndex]->items.size();
        while (m_nearIndex + 1 < m_chunks.size() &&
               position >= m_nearStart + m_chunks[m_nearIndex]->items.size())
            m_nearStart += m_chunks[m_nearIndex++]->items.size();
        return {m_chunks[m_nearIndex].get(), position - m_nearStart};
    }

    /// Makes room in or behind a full chunk: appending starts a new chunk, so that a sequence
    /// filled from front to back has full chunks; anything else halves the chunk.
    std::pair<Chunk*, std::size_t> makeRoom(Chunk& full, std::size_t offset)
    {
        const std::size_t kept = offset == full.items.size() ? offset : full.items.size() / 2;
        auto added = std::make_unique<Chunk>(*this);
        Chunk& next = *added;
        for (std::size_t i = kept; i < full.items.size(); ++i) {
            placeOf(full.items[i]) = &next;
            next.items.push_back(std::move(full.items[i]));
        }
        full.items.resize(kept);
        m_chunks.insert(m_chunks.begin() + static_cast<std::ptrdiff_t>(full.index + 1),
                        std::move(added));
        renumber(full.index + 1);
        if (offset < kept)
            return {&full, offset};
        return {&next, offset - kept};
    }

    void eraseChunk(std::size_t index)
    {
        m_chunks.erase(m_chunks.begin() + static_cast<std::ptrdiff_t>(index));
        renumber(index);
    }

    void renumber(std::size_t from)
    {
        for (std::size_t i = from; i < m_chunks.size(); ++i)
            m_chunks[i]->index = i;
        m_nearIndex = m_nearStart = 0;
    }

    std::vector<std::unique_ptr<Chunk>> m_chunks; ///< at least one
    std::size_t m_size = 0;
    /// A chunk, and the position of its first item, from which the next position is sought.
    mutable std::size_t m_nearIndex = 0;
    mutable std::size_t m_nearStart = 0;
};

} // namespace qrvkp
