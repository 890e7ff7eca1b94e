// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvAttribute.h>
#include <norvel/global.h>
#include <norvel/timeline/private/IdTable.h>

#include <cstdint>
#include <vector>

namespace norvel {

/// Answers for many records what `RvAttributeUtility::compare` answers for one, without walking the
/// list for each.
///
/// A record is the same track as another one exactly when both have the same dynamic class and the
/// same uuid, so the first such element of the list decides, and nothing before it can.
class NORVEL_AUTOTEST_EXPORT AttributeIndex
{
public:
    /// Indexes a list, whose records must outlive the index; null entries are passed over.
    explicit AttributeIndex(const std::vector<RvAttribute*>& list);

    /// ReturnInvalid for null; ReturnSame or ReturnChanged by the first element that is the same
    /// track; ReturnNotFound when there is none.
    RvReturnVlaue compare(const RvAttribute* attribute);

    /// Marks the uuid of a record that was compared as the same track. Its track is to stay.
    void keep(std::uint64_t uuid);
    /// Whether the uuid was marked.
    bool isKept(std::uint64_t uuid);

    /// The uuids of the list, in its order.
    const std::vector<std::uint64_t>& ids() const { return m_ids; }

private:
    IdTable<RvAttribute*> m_records;
    std::vector<bool> m_kept; ///< by the position in m_records
    std::vector<std::uint64_t> m_ids;
};

/// The same answer by a walk of the list: for a single record.
NORVEL_AUTOTEST_EXPORT RvReturnVlaue compareWithList(const RvAttribute* attribute,
                                                     const std::vector<RvAttribute*>& list);

} // namespace norvel
