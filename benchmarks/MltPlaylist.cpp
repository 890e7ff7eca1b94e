// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MltPlaylist.h"

#include "MltRuntime.h"

#include <mlt++/Mlt.h>

struct MltPlaylist::Source
{
    explicit Source(const std::string& path)
        : file(profile, path.c_str())
    {
    }

    Mlt::Profile profile;
    Mlt::Producer file;
};

MltPlaylist::MltPlaylist(const std::string& file)
{
    if (startMlt())
        m_source = std::make_unique<Source>(file);
}

MltPlaylist::~MltPlaylist() = default;

std::string MltPlaylist::problem() const
{
    if (!m_source)
        return "MLT does not start";
    return m_source->file.is_valid() ? "" : "MLT cannot open the file";
}

void MltPlaylist::rebuild(int clips)
{
    constexpr int places = 200; ///< in the file
    Mlt::Playlist playlist(m_source->profile);
    for (int i = 0; i < clips; ++i)
        playlist.append(m_source->file, i % places, i % places + 1);
}
