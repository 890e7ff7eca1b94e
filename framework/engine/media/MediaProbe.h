// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "MediaInfo.h"

#include <atomic>
#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace rvengine {

struct FileStamp;

/// Measures media files and remembers what it found.
///
/// A file is opened once for each kind it is asked for and then known by its path, size and
/// modification time, whether it could be read or not; a changed file is opened anew. The oldest
/// entries are forgotten when there are more than the capacity. Any thread may call any function;
/// threads that ask for the same file at once wait for one measurement.
class MediaProbe
{
public:
    /// How many files a probe remembers unless told otherwise.
    static constexpr std::size_t DefaultCapacity = 4096;

    /// Makes a probe that remembers up to `capacity` files.
    explicit MediaProbe(std::size_t capacity = DefaultCapacity);
    ~MediaProbe();
    MediaProbe(const MediaProbe&) = delete;
    MediaProbe& operator=(const MediaProbe&) = delete;

    /// The measures of the local file `path` (UTF-8; a relative one starts at the working
    /// directory; never read as a URL), or nothing when it is no regular file, cannot be read, is
    /// corrupt or is not of this `kind`.
    ///
    /// A still picture or sound with a cover is no video, whatever its name. A file of unknown
    /// length is neither video nor sound. A scalable picture needs a QGuiApplication.
    std::optional<MediaInfo> probe(const std::string& path, MediaKind kind);

    /// How many times a file was opened and measured, and not answered from memory.
    std::size_t probedCount() const;

private:
    struct Entry;
    using Key = std::pair<std::string, MediaKind>;

    std::shared_ptr<Entry> entryFor(const Key& key, const FileStamp& stamp);

    const std::size_t m_capacity;
    std::mutex m_mutex;
    std::map<Key, std::shared_ptr<Entry>> m_entries;
    std::deque<Key> m_order; ///< the keys of m_entries, the oldest first
    std::atomic<std::size_t> m_probedCount{0};
};

/// The probe of the process, with its memory.
MediaProbe& mediaProbe();

} // namespace rvengine
