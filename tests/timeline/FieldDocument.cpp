// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "timeline/FieldDocument.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <set>

namespace {

constexpr std::array<const char*, FieldColumnCount> columnNames{"compare", "JSON",    "capture",
                                                                "created", "updated", "undo"};

const char* const introduction = R"(# Fields of the attribute records

Which values of a timeline survive which way: through the comparison of records, their JSON, the
capture of a live timeline, the creation and the update of tracks, and an undo.

A row changes one field of one kind of record, alone, and says where the change shows:

- **compare**: `RvAttribute::compare` of the changed record with the one it was copied from says
  that the track was changed.
- **JSON**: the text of `serialization()` is another one.
- **capture**: the value was changed on the live track, by the framework's own setter, and a capture
  of the timeline tells the new value.
- **created**: a track that `RvAttributeUtility::createTrack` makes of the record has its value, and
  a capture of that track gives it back.
- **updated**: the same for a track that was made of the unchanged record and then brought up to the
  changed one with `RvAttributeUtility::updateTrack`.
- **undo**: the value was changed on the live track and recorded with `RvEditorTrace`; after an undo
  the track has the old value again.

The other words:

- **no**: the change does not show.
- **–**: a live track has no such value, or the framework has no way to make that change on it.
- **track only**: the track has the value, but no capture gives it back.
- **other**, **always**, **none**, **lost** and **never** are explained in their notes.

Live tracks stand over the main line, bound to a main track and using a detection where their kind
can. Maps to which the framework can only add have a row each for another value, for an entry more
and for one less. The values of a liquify's stroke are those of records without saved strokes: where
`effectPath` names some, what was saved takes their place. The mask's own fields start from a track
with a mask, all others from one without.

Rows marked `(track)` are of values that a live track has and no record. There **created** says
whether a track that is made of a record that was captured after the change has the value, and
**updated** whether one that is brought up to a record from before the change has its old value
again.

The table is measured, not written: `NORVEL_WRITE_TABLE=1 timeline_test
--gtest_filter='FieldTableTest.*'` writes this document anew, and the test fails when it no longer
says what the code does.
)";

/// Why a cell says anything but yes. The first note that fits a cell is the cell's.
struct Note
{
    const char* tag;
    // Whole-match patterns: of the kind, of the field, and of a column with its cell.
    const char* kinds;
    const char* fields;
    const char* cells;
    const char* text;
};

const Note notes[] = {
    {"other", ".*", "uuid", "compare other",
     "Another `uuid` is another track: the comparison answers `ReturnOtherRecord`, and an undo "
     "removes the one track and makes the other anew."},
    {"always", ".*", ".*", "compare always",
     "A liquify never compares equal, not even with an exact copy, so that its track is refreshed "
     "every time."},

    // Kinds that something never happens to.
    {"no-track", "base|effect|AR effect", ".*", ".* never",
     "No track is made of such a record and none is described by one: the kind is there for others "
     "to derive from, or stands for a generic track, which an edit leaves alone."},
    {"frame", "AR frame", ".*", ".* never",
     "AR frames are never described, made or updated: an edit leaves them as they are."},
    {"label", "AR label", ".*", "(created|updated) never|undo lost",
     "AR labels are described, but never made or updated: one that an undo would have to make anew "
     "is lost."},
    {"label-undo", "AR label", ".*", "undo no",
     "AR labels are never updated: an undo leaves them as they are."},
    {"matte", "matte", ".*", "(capture|undo|updated) never",
     "Mattes are never described, so no undo knows of them, and a live one is never updated."},
    {"matte-created", "matte", ".*", "created track only",
     "A matte is made with these values, but never described."},
    {"matte-bound", "matte", "range|bindType|target.*|detect", "created no",
     "A new matte is bound to nothing."},
    {"matte-detect", "matte", "detect", "JSON no", "A matte keeps its detection out of its JSON."},

    // Values that no record has.
    {"no-field", ".*", ".* \\(track\\)", "(compare|JSON) –", "No record has the value."},
    {"no-field-lost", ".*", ".* \\(track\\)", "(capture|created|updated|undo) no",
     "No record has the value: a live track keeps the one that it was given, whatever is undone, "
     "and one that is made anew has that of a new track."},

    // Fields of every kind.
    {"tag", ".*", "auxText", "(compare|JSON) no", "The tag is neither compared nor written."},
    {"type", ".*", "type", "(created|updated) (none|no)",
     "Record and track are of the type they were made as: with another type code alone a record "
     "stands for no track of its class, and a live track keeps its type."},
    {"type-undo", "image|video", "type", "undo no",
     "Pictures and videos are described by records of one class. A live track that changed from "
     "the one to the other under its id counts as changed, is updated and stays what it is. "
     "Between any other two kinds the track is made anew."},
    {"no-source", "detection|matte", "source", ".*",
     "The track is not made of a source and has none."},
    {"source", ".*", "source", "(updated|undo) no",
     "A track keeps the source that it was made of. One of another source that took its place "
     "under its id is taken for the same track."},
    {"image-start", "image", "fileStartTime", ".*",
     "A picture has no place in its file to begin at: the value is neither read nor set."},
    {"mode", "detection", "mode|modePath", "(updated|undo) no",
     "Mode and model are given when the detection is made, and never again."},
    {"further", ".*", "target \\(further entry\\)", ".*",
     "A track is bound to one track: the first target counts, and a capture tells no other."},

    // A layer is made with nothing but source, times and bindings.
    {"layer-id", "AR layer", "uuid", "(created|undo) no",
     "A new layer keeps the id that the framework gave it; also the one that an undo makes."},
    {"layer-values", "AR layer", ".*", "created no",
     "A new layer gets its source, times and bindings only. The next update gives it the rest."},

    // AR values.
    {"filter-alpha", ".*", "filterAlpha", "(created|updated|undo) no",
     "The filter's alpha is described, but never set."},
    {"plists", ".*", "arFacePlists.*", "(compare|JSON) no",
     "The files of faces are neither compared nor written. (A beauty that has some is made without "
     "its source.)"},
    {"gender", ".*", "genderParamCoeffients.*", "(capture no|(created|updated) track only)",
     "The coefficients of a gender are set, but never read from a track: a captured record has "
     "none."},
    {"gender-undo", ".*", "genderParamCoeffients.*", "undo no",
     "No captured record has the coefficients of a gender: an undo has none to set."},
    {"only-adds", ".*", ".*\\(entry (added|removed)\\)", "(updated|undo) no",
     "Entries are set one by one, and none is taken away: what a track has besides, it keeps."},
    {"no-removal", ".*", ".*\\(entry removed\\)", "(capture|undo) –",
     "The framework has no way to take an entry from a live track."},
    {"beauty-json", ".*", ".*", "JSON no",
     "Not written: of a beauty's own fields only `beautyType` is, of a makeup's groups no entries, "
     "of its faces neither groups nor orders."},
    {"label-values", "AR label", ".*", "(capture|undo) –",
     "A label's track has the values that all AR effects have; the fields of a filter and a beauty "
     "keep their defaults."},
    {"mask-image", ".*", "beautyActiveMaskImage", "compare no",
     "Pictures of masks are not compared, but the pointers to them are, and every capture has one "
     "of its own: a track with a mask always counts as changed. So an undo brings the picture "
     "back."},
    {"mask-undo", ".*", "beautyActiveMaskImageRef", "undo no",
     "A record without a mask hands none over and takes none away: the mask that was painted "
     "stays."},
    {"faces", "AR makeup", "groupFaceDatas: .*", "compare no",
     "Faces that differ in id, alpha or number of groups are passed over, and their orders are not "
     "compared."},
    {"orders", "AR makeup", "groupOrders", "compare no", "The order of groups is not compared."},

    {"unseen", ".*", ".*", "undo no",
     "The comparison does not see the change: to an undo the track is the one it should be. "
     "Changed together with a field that is compared, the value comes back."},
};

bool matches(const std::string& text, const char* pattern)
{
    const QString whole = QRegularExpression::anchoredPattern(QString::fromUtf8(pattern));
    return QRegularExpression(whole).match(QString::fromStdString(text)).hasMatch();
}

/// The note of a cell; null for a cell that says yes, and when no note fits.
const Note* noteOf(const FieldRow& row, std::size_t column)
{
    if (row.cells[column] == fieldCell::yes)
        return nullptr;
    const std::string cell = std::string(columnNames[column]) + ' ' + row.cells[column];
    const auto* note = std::find_if(std::begin(notes), std::end(notes), [&](const Note& each) {
        return matches(row.kind, each.kinds) && matches(row.field, each.fields) &&
               matches(cell, each.cells);
    });
    return note == std::end(notes) ? nullptr : note;
}

using Line = std::array<std::string, 2 + FieldColumnCount>;

Line heading()
{
    Line line{"kind", "field"};
    std::copy(columnNames.begin(), columnNames.end(), line.begin() + 2);
    return line;
}

Line lineOf(const FieldRow& row)
{
    Line line{row.kind, row.field};
    for (std::size_t column = 0; column < FieldColumnCount; ++column) {
        const Note* note = noteOf(row, column);
        line[2 + column] = row.cells[column] + (note ? "[^" + std::string(note->tag) + ']' : "");
    }
    return line;
}

std::string joined(const Line& line)
{
    std::string text = "|";
    for (const std::string& cell : line)
        text += ' ' + cell + " |";
    return text + '\n';
}

} // namespace

FieldDocument::FieldDocument(std::vector<FieldRow> rows)
    : m_rows(std::move(rows))
{
}

std::string FieldDocument::markdown() const
{
    std::string text = std::string(introduction) + '\n' + joined(heading());
    Line rule;
    rule.fill("---");
    text += joined(rule);
    for (const FieldRow& row : m_rows)
        text += joined(lineOf(row));
    for (const Note& note : notes)
        text += "\n[^" + std::string(note.tag) + "]: " + note.text + '\n';
    return text;
}

std::vector<std::string> FieldDocument::flaws() const
{
    std::vector<std::string> found;
    std::set<const Note*> used;
    for (const FieldRow& row : m_rows) {
        for (std::size_t column = 0; column < FieldColumnCount; ++column) {
            const Note* note = noteOf(row, column);
            used.insert(note);
            if (!note && row.cells[column] != fieldCell::yes)
                found.push_back(row.kind + ' ' + row.field + ", " + columnNames[column] + ": " +
                                row.cells[column] + " has no note");
        }
    }
    for (const Note& note : notes) {
        if (used.count(&note) == 0)
            found.push_back(std::string(note.tag) + " is the note of no cell");
    }
    return found;
}
