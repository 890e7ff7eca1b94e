// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvAttribute.h>
#include <norvel/timeline/private/IdTable.h>

#include <cstdint>
#include <optional>
#include <typeindex>
#include <unordered_map>
#include <vector>

namespace norvel {

/// Answers for many records what `RvAttributeUtility::compare` answers for one, without walking the
/// list for each.
///
/// A record of the library's own kinds is the same track as another one exactly when both have the
/// same dynamic class and the same uuid, so the first such element of the list decides, and nothing
/// before it can. What makes records of a class of the host's own the same, its `compare` alone
/// knows: it is asked about each record of that class in the order of the list.
class AttributeIndex
{
public:
    /// Indexes a list, which must outlive the index unchanged; null entries are passed over.
    explicit AttributeIndex(const std::vector<RvAttribute*>& list);

    /// ReturnInvalid for null; ReturnSame or ReturnChanged by the first element that is the same
    /// track; ReturnNotFound when there is none.
    RvReturnVlaue compare(const RvAttribute* attribute);

    /// Marks the uuid of a record that was compared as the same track. Its track is to stay. False
    /// when no record of the list has that uuid.
    bool keep(std::uint64_t uuid);
    /// Whether the uuid was marked.
    bool isKept(std::uint64_t uuid);

    /// The uuids of the list, in its order.
    const std::vector<std::uint64_t>& ids() const { return m_ids; }

private:
    /// Records by their class, each class in the order of the list.
    using RecordsByClass = std::unordered_map<std::type_index, std::vector<RvAttribute*>>;

    bool isLibraryKind(const std::type_info& kind);
    const RecordsByClass& hostRecords();

    const std::vector<RvAttribute*>& m_list;
    IdTable<RvAttribute*> m_records;
    std::vector<bool> m_kept; ///< by the position in m_records
    std::vector<std::uint64_t> m_ids;
    std::optional<RecordsByClass> m_hostRecords;       ///< made when it is first asked for
    const std::type_info* m_lastLibraryKind = nullptr; ///< most lists have runs of one kind
};

/// The same answer by a walk of the list: for a single record.
RvReturnVlaue compareWithList(const RvAttribute* attribute, const std::vector<RvAttribute*>& list);

} // namespace norvel
