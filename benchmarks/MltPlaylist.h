// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <string>

/// MLT's playlist of many clips of one file, built anew after each change, as an editor does that
/// has no other way to reorder it while it plays. One thread only.
class MltPlaylist
{
public:
    explicit MltPlaylist(const std::string& file);
    ~MltPlaylist();

    /// Why it cannot be built here; empty if it can.
    std::string problem() const;
    void rebuild(int clips);

private:
    struct Source;
    std::unique_ptr<Source> m_source;
};
