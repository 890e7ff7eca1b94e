// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <optional>
#include <string>
#include <vector>

/// The files that the tour edits, sorted by what the framework takes them as. Paths are UTF-8.
struct TourMedia
{
    std::vector<std::string> videos;   ///< at least one
    std::vector<std::string> pictures; ///< at least one
    std::vector<std::string> sounds;   ///< at least one

    /// Sorts the given files and makes what is missing of the three kinds with ffmpeg in `folder`.
    /// Nothing, with one line of text in `problem`, when a file is missing or is none of the kinds,
    /// and when ffmpeg is needed and fails.
    static std::optional<TourMedia> gather(const std::vector<std::string>& files,
                                           const QString& folder, std::string& problem);
};
