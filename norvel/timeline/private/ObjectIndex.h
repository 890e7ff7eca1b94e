// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/timeline/private/IdTable.h>
#include <norvel/timeline/private/Reference.h>

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace norvel {

/// Framework objects by id: those of one walk of a list, and those that were added later.
template <class Object>
class ObjectIndex
{
public:
    struct Found
    {
        Object* object = nullptr; ///< null for none
        bool needsWalk = false;   ///< only a walk of the live timeline tells the object
    };

    /// Takes over a list and enters its objects under `idOf(object)`, as far as that gives an id.
    template <class IdOf>
    void fill(References<Object> list, const IdOf& idOf)
    {
        m_list = std::move(list);
        m_walked.reserve(m_list.size());
        for (std::size_t i = 0; i < m_list.size(); ++i) {
            m_list.prefetchBehind(i);
            if (const std::optional<std::uint64_t> id = idOf(*m_list[i]))
                m_walked.add(*id, m_list[i]);
        }
    }

    /// An object came behind the others, or anywhere when its id is a new one.
    void add(std::uint64_t id, Object& object)
    {
        const Found known = find(id);
        if (known.object || known.needsWalk) {
            m_unclear.insert(id);
            return;
        }
        object.retain();
        m_added.emplace(id, adopt(&object));
    }

    /// The object that the id led to went away.
    void remove(std::uint64_t id) { m_unclear.insert(id); }

    Found find(std::uint64_t id)
    {
        if (!m_unclear.empty() && m_unclear.count(id) != 0)
            return {nullptr, true};
        if (const auto* entry = m_walked.find(id)) {
            const auto* next = entry + 1;
            const bool shared = next != m_walked.end() && next->id == id;
            return shared ? Found{nullptr, true} : Found{entry->value, false};
        }
        const auto added = m_added.find(id);
        return {added == m_added.end() ? nullptr : added->second.get(), false};
    }

private:
    References<Object> m_list;
    IdTable<Object*> m_walked;
    std::unordered_map<std::uint64_t, Reference<Object>> m_added;
    std::unordered_set<std::uint64_t> m_unclear;
};

} // namespace norvel
