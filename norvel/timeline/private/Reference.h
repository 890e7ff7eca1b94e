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
    explicit References(std::vector<Object*> objects)
        : m_objects(std::move(objects))
    {
    }
    ~References()
    {
        for (Object* object : m_objects) {
            if (object)
                object->release();
        }
    }
    References(const References&) = delete;
    References& operator=(const References&) = delete;

    auto begin() const { return m_objects.begin(); }
    auto end() const { return m_objects.end(); }
    std::size_t size() const { return m_objects.size(); }
    bool empty() const { return m_objects.empty(); }
    Object* front() const { return m_objects.front(); }

    /// Calls `function` with every object and releases it at once, while it is in the processor's
    /// cache; the list is empty then.
    template <class Function>
    void consume(const Function& function)
    {
        for (Object*& object : m_objects) {
            const Reference<Object> reference(std::exchange(object, nullptr));
            function(reference.get());
        }
        m_objects.clear();
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
