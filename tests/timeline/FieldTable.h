// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <string>
#include <vector>

/// Where a changed field may show.
enum FieldColumn {
    CompareColumn,
    JsonColumn,
    CaptureColumn,
    CreatedColumn,
    UpdatedColumn,
    UndoColumn,
    FieldColumnCount
};

/// What the cells of the table say.
namespace fieldCell {
constexpr const char* yes = "yes";
constexpr const char* no = "no";
/// The change cannot be made on a live track.
constexpr const char* noWay = "–";
/// It never happens to the kind, whatever the field.
constexpr const char* never = "never";
/// Compare: another track.
constexpr const char* other = "other";
/// Compare: the records differ even without the change.
constexpr const char* always = "always";
/// Created or updated: the track has the value, but a capture does not give it back.
constexpr const char* trackOnly = "track only";
/// Created: no track is made of the changed record.
constexpr const char* none = "none";
/// Undo: the track is gone.
constexpr const char* lost = "lost";
} // namespace fieldCell

/// One row: a kind, a change of one field, and what was measured.
struct FieldRow
{
    std::string kind;
    std::string field;
    std::array<std::string, FieldColumnCount> cells;
};

/// Changes every field of every kind and measures where it shows.
std::vector<FieldRow> measureFields();
