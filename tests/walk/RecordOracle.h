// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/attribute/RvAttribute.h>

#include <vector>

/// What a step does with the track of a record.
enum class RecordFate {
    Kept,    ///< the list has its track with the same values
    Updated, ///< the list has its track with others
    Created, ///< the list has not got its track
};

/// The fate of `record` when the timeline is as the records of `list` say.
///
/// A second telling of which fields count, by tables of fields: it does not ask the records' own
/// comparison.
RecordFate fateOf(const norvel::RvAttribute& record, const std::vector<norvel::RvAttribute*>& list);
