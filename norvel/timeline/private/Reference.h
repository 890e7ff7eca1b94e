// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace norvel {

struct Release
{
    template <class Object>
    void operator()(Object* object) const
    {
        object->release();
    }
};

/// Holds one reference of a framework object and releases it at the end of its life.
template <class Object>
using Reference = std::unique_ptr<Object, Release>;

/// Takes over the reference that a framework getter or creation gave.
template <class Object>
Reference<Object> adopt(Object* object)
{
    return Reference<Object>(object);
}

/// Holds a list of a framework getter, whose every element carries one reference.
template <class Object>
class References
{
public:
    References() = default;
    explicit References(std::vector<Object*> objects)
        : m_objects(std::move(objects))
    {
    }
    ~References()
    {
        for (std::size_t i = 0; i < m_objects.size(); ++i) {
            prefetchBehind(i);
            m_objects[i]->release();
        }
    }
    References(const References&) = delete;
    References& operator=(const References&) = delete;
    References(References&&) noexcept = default;
    References& operator=(References&& other) noexcept
    {
        m_objects.swap(other.m_objects);
        return *this;
    }

    Object* operator[](std::size_t index) const { return m_objects[index]; }

    /// Asks for the objects, and their native ones, some steps behind `index`, so that they are in
    /// the processor's cache when a walk of the list is there. Worth it where every step waits for
    /// memory: counting a reference is an atomic operation, and no other access passes it.
    void prefetchBehind([[maybe_unused]] std::size_t index) const
    {
#if defined(__GNUC__)
        constexpr std::size_t distance = 8;
        if (index + 2 * distance < m_objects.size()) {
            __builtin_prefetch(m_objects[index + 2 * distance], 1);
            __builtin_prefetch(m_objects[index + distance]->getContext());
        }
#endif
    }

    auto begin() const
    {
        return m_objects.begin();
    }
    auto end() const
    {
        return m_objects.end();
    }
    std::size_t size() const
    {
        return m_objects.size();
    }
    bool empty() const
    {
        return m_objects.empty();
    }
    Object* front() const
    {
        return m_objects.front();
    }

private:
    std::vector<Object*> m_objects;
};

/// Takes over such a list.
template <class Object>
References<Object> adopt(std::vector<Object*> objects)
{
    return References<Object>(std::move(objects));
}

} // namespace norvel
