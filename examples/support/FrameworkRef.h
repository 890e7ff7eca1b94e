// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <utility>
#include <vector>

struct ReleaseReference
{
    template <class Object>
    void operator()(Object* object) const
    {
        object->release();
    }
};

/// Holds one reference of a framework object, and releases it at the end of its life.
template <class Object>
using FrameworkRef = std::unique_ptr<Object, ReleaseReference>;

/// Takes over the reference that a creation, a lookup or a getter of the framework gave.
template <class Object>
FrameworkRef<Object> adopt(Object* object)
{
    return FrameworkRef<Object>(object);
}

/// Takes over a list of the framework, whose every element carries one reference.
template <class Object>
std::vector<FrameworkRef<Object>> adopt(const std::vector<Object*>& objects)
{
    std::vector<FrameworkRef<Object>> references;
    references.reserve(objects.size());
    for (Object* object : objects)
        references.emplace_back(object);
    return references;
}

/// The same reference as one of a derived class; null, with the reference released, when the object
/// is of another class.
template <class Derived, class Object>
FrameworkRef<Derived> referenceAs(FrameworkRef<Object> reference)
{
    auto* derived = dynamic_cast<Derived*>(reference.get());
    if (derived)
        static_cast<void>(reference.release());
    return FrameworkRef<Derived>(derived);
}
