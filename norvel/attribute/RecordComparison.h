// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvAttribute.h>

namespace norvel {

/// The body of every kind's `compare`: \p record against \p other, which is to be of the same kind
/// or of one derived from it.
///
/// \throws std::bad_cast if \p other is of an unrelated kind.
template <class Kind>
RvReturnVlaue compareRecords(const Kind& record, const RvAttribute* other)
{
    if (other == nullptr)
        return ReturnInvalid;
    const auto& otherOfKind = dynamic_cast<const Kind&>(*other);
    if (record.hasSameValues(otherOfKind))
        return ReturnSame;
    return record.uuid == otherOfKind.uuid ? ReturnChanged : ReturnOtherRecord;
}

} // namespace norvel
