// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <vector>

struct ReleaseReference
{
    template <class Object>
    void operator()(Object* object) const
    {
        object->release();
    }
};

/// Holds one reference of a framework object and releases it at the end of its life.
template <class Object>
using Reference = std::unique_ptr<Object, ReleaseReference>;

/// Takes over the reference that a getter or a creation gave.
template <class Object>
Reference<Object> adopt(Object* object)
{
    return Reference<Object>(object);
}

/// Takes over a list of a getter, whose every element carries one reference.
template <class Object>
std::vector<Reference<Object>> adopt(const std::vector<Object*>& objects)
{
    std::vector<Reference<Object>> references;
    for (Object* object : objects)
        references.emplace_back(object);
    return references;
}
