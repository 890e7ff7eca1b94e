// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <vector>

struct ReleaseObject
{
    template <class Object>
    void operator()(Object* object) const
    {
        object->release();
    }
};

/// Holds one reference of a framework object and releases it at the end of its life.
template <class Object>
using Owned = std::unique_ptr<Object, ReleaseObject>;

/// Takes over the reference that a creation, a getter or a lookup gave.
template <class Object>
Owned<Object> owned(Object* object)
{
    return Owned<Object>(object);
}

/// Takes over a list whose every element carries one reference.
template <class Object>
std::vector<Owned<Object>> owned(const std::vector<Object*>& objects)
{
    return std::vector<Owned<Object>>(objects.begin(), objects.end());
}
