// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/rvkpcore_export.h>

#include <string>
#include <type_traits>
#include <utility>

namespace qrvkp::calls {

/// True while calls are recorded or printed: the only cost of the log when it is off.
RVKPCORE_EXPORT bool active() noexcept;
/// Adds a finished entry.
RVKPCORE_EXPORT void add(std::string entry);

RVKPCORE_EXPORT std::string text(bool value);
RVKPCORE_EXPORT std::string text(long long value);
RVKPCORE_EXPORT std::string text(unsigned long long value);
RVKPCORE_EXPORT std::string text(float value);
RVKPCORE_EXPORT std::string text(double value);
RVKPCORE_EXPORT std::string text(const std::string& value);

/// Integers and enumerations of every width go through the two 64-bit forms.
template <class Integer>
std::enable_if_t<std::is_integral_v<Integer> || std::is_enum_v<Integer>, std::string>
text(Integer value)
{
    if constexpr (std::is_enum_v<Integer> || std::is_signed_v<Integer>)
        return text(static_cast<long long>(value));
    else
        return text(static_cast<unsigned long long>(value));
}

/// A piece of text that stands in an entry as it is.
struct Verbatim
{
    const char* value;
};
inline std::string text(const Verbatim& verbatim)
{
    return verbatim.value;
}

/// How an argument stands in an entry; further types have a specialisation.
template <class Value>
struct ArgumentText
{
    static std::string of(const Value& value) { return text(value); }
};

/// A native object that may be missing stands in an entry by its id, or as `null`.
template <class Object>
struct IdOf
{
    const Object* object;
};
template <class Object>
IdOf(const Object*) -> IdOf<Object>;

template <class Object>
struct ArgumentText<IdOf<Object>>
{
    static std::string of(const IdOf<Object>& id)
    {
        return id.object ? text(id.object->id) : std::string("null");
    }
};

template <class... Arguments>
std::string format(const char* name, const Arguments&... arguments)
{
    std::string entry = name;
    entry += '(';
    [[maybe_unused]] const char* separator = "";
    ((entry += separator, entry += ArgumentText<Arguments>::of(arguments), separator = ", "), ...);
    entry += ')';
    return entry;
}

/// Records a call that changes something.
template <class... Arguments>
void record(const char* name, const Arguments&... arguments)
{
    if (active())
        add(format(name, arguments...));
}

/// Records a call that changes a native object, the first argument by its id, and lets the players
/// know of the change, which follows.
template <class Native, class... Arguments>
void change(const char* name, Native& native, const Arguments&... arguments)
{
    record(name, native.id, arguments...);
    native.touch();
}

/// Records a creation; `id` is null when it failed.
template <class Id, class... Arguments>
void recordCreation(const char* name, const Id* id, const Arguments&... arguments)
{
    if (active())
        add(format(name, arguments...) + " -> " + (id ? text(*id) : std::string("null")));
}

} // namespace qrvkp::calls
