// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/timeline/RvTimeLineAttribute.h>

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

/// Names for the ids that the framework gives to new objects, so that what happened to two equal
/// timelines can be compared word by word: an object is named by its number in the order in which
/// it was first seen. Ids that a test gave stay as they are.
class ObjectNames
{
public:
    /// The object with this id is the next one that is seen.
    void see(std::uint64_t id);

    /// Entries of the call log in their order, with names in place of ids; what they create is
    /// seen.
    std::vector<std::string> rename(const std::vector<std::string>& calls);
    /// The id to show for an object: one that no object has when it was seen.
    std::uint64_t idOf(std::uint64_t id) const;
    /// Replaces the identities in the records of a capture, and those that they refer to.
    void rename(norvel::RvTimeLineAttribute& description) const;

private:
    std::string renameCall(const std::string& call);
    std::string nameOf(const std::string& id) const;

    std::unordered_map<std::uint64_t, std::uint64_t> m_numbers;
};
