// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "timeline/FieldTable.h"

#include <string>
#include <vector>

/// The table of the fields as a Markdown document, UTF-8: how to read it, the rows, and a note for
/// every cell that says anything but yes.
class FieldDocument
{
public:
    explicit FieldDocument(std::vector<FieldRow> rows);

    std::string markdown() const;

    /// The cells that say anything but yes and have no note, and the notes that no cell has: lines
    /// that name them.
    std::vector<std::string> flaws() const;

private:
    std::vector<FieldRow> m_rows;
};
