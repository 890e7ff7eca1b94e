// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/MonotonicClock.h>

#include "UnreadableFiles.h"

#include <QImage>
#include <QSize>

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace rvengine {

/// The still pictures of a renderer, decoded once and kept while there is room. Not thread-safe.
class PictureFiles
{
public:
    static constexpr long long DefaultCapacity = 256LL << 20;

    /// Keeps `capacity` bytes of pictures beyond those of the frame that is being made.
    explicit PictureFiles(MonotonicClock now = std::chrono::steady_clock::now,
                          long long capacity = DefaultCapacity);

    /// The picture in the file `path`: as it is stored, or halved so often that it is still not
    /// smaller than `wanted` (empty: as it is). Null when it cannot be read.
    QImage picture(const std::string& path, QSize wanted);

    /// Takes in the picture of a file that was read elsewhere.
    void put(const std::string& path, QImage picture);
    bool has(const std::string& path) const;

    /// The picture in the file as it is stored; null when it cannot be read. Any thread may call
    /// it.
    static QImage read(const std::string& path);

    /// A frame is finished: what was not used in it may be dropped.
    void endFrame();

private:
    struct Entry
    {
        QImage picture;
        std::uint64_t usedIn; ///< the frame in which it was used last
    };
    using Key = std::pair<std::string, int>; ///< path and number of halvings

    QImage halved(const std::string& path, int times);

    const long long m_capacity; ///< bytes
    std::map<Key, Entry> m_entries;
    UnreadableFiles m_unreadable;
    std::uint64_t m_frame = 1;
};

} // namespace rvengine
