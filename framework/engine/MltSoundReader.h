// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace rvengine {

/// Reads the sound of one file with MLT, as `SoundSource` keeps sound. Used by one thread at a
/// time.
class MltSoundReader
{
public:
    /// A reader that has nothing but silence for a file without sound; null when the file cannot be
    /// read at all.
    static std::unique_ptr<MltSoundReader> open(const std::string& path);
    ~MltSoundReader();

    /// Writes `frames` frames beginning `start` frames after the start of the file; silence before
    /// that and beyond its end. False when nothing more is to be heard: the file is silent or over.
    /// One channel is heard on both sides as it is.
    bool read(long long start, std::size_t frames, float* out);

private:
    struct Media;
    explicit MltSoundReader(std::unique_ptr<Media> media);

    void moveTo(long long start);
    bool readAhead();

    const std::unique_ptr<Media> m_media;
    std::vector<float> m_ahead; ///< what was read but not given yet
    std::size_t m_given = 0;    ///< samples of `m_ahead` that were given
    long long m_next = -1;      ///< the frame with which the rest of `m_ahead` begins
    int m_block = 0;            ///< what is read ahead next
};

} // namespace rvengine
