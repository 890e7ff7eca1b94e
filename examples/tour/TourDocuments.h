// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

/// The documents that the tour writes into a folder, one for every step. Paths are UTF-8.
class TourDocuments
{
public:
    /// Documents in `folder`; none at all when it is empty.
    explicit TourDocuments(std::string folder);

    /// Makes the folder and sees that it can be written to.
    bool prepare();
    /// Writes the document of a step, counted from 1, over one that may be there.
    bool write(int step, const std::string& text);

    /// One line of text on what failed.
    const std::string& problem() const { return m_problem; }

private:
    bool fail(const std::string& path);

    std::string m_folder;
    std::string m_problem;
};
