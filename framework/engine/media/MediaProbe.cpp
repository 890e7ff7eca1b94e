// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "MediaProbe.h"

#include "LocalFile.h"
#include "PictureProbe.h"
#include "StreamProbe.h"

namespace fs = std::filesystem;

namespace rvengine {

/// A measurement of one state of a file: made by the first that asks, awaited by the others.
struct MediaProbe::Entry
{
    explicit Entry(const FileStamp& fileStamp)
        : stamp(fileStamp)
    {
    }

    const FileStamp stamp;
    std::once_flag measured;
    std::optional<MediaInfo> info;
};

namespace {

std::optional<MediaInfo> measure(const fs::path& path, MediaKind kind)
{
    if (kind == MediaKind::Picture)
        return probePicture(path);
    return probeStream(path, kind);
}

} // namespace

MediaProbe::MediaProbe(std::size_t capacity)
    : m_capacity(capacity)
{
}

MediaProbe::~MediaProbe() = default;

std::optional<MediaInfo> MediaProbe::probe(const std::string& path, MediaKind kind)
{
    // A file that may not be read is not remembered: a change of its permissions leaves its time.
    const std::optional<fs::path> file = readableFile(path);
    if (!file)
        return std::nullopt;
    const std::optional<FileStamp> stamp = stampOf(*file);
    if (!stamp || stamp->size == 0)
        return std::nullopt;

    const std::shared_ptr<Entry> entry = entryFor({file->u8string(), kind}, *stamp);
    std::call_once(entry->measured, [&] {
        ++m_probedCount;
        entry->info = measure(*file, kind);
    });
    return entry->info;
}

std::size_t MediaProbe::probedCount() const
{
    return m_probedCount;
}

std::shared_ptr<MediaProbe::Entry> MediaProbe::entryFor(const Key& key, const FileStamp& stamp)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto known = m_entries.find(key);
    if (known != m_entries.end()) {
        if (!(known->second->stamp == stamp))
            known->second = std::make_shared<Entry>(stamp);
        return known->second;
    }
    auto entry = std::make_shared<Entry>(stamp);
    m_entries.emplace(key, entry);
    m_order.push_back(key);
    if (m_order.size() > m_capacity) {
        m_entries.erase(m_order.front());
        m_order.pop_front();
    }
    return entry;
}

MediaProbe& mediaProbe()
{
    static MediaProbe probe;
    return probe;
}

} // namespace rvengine
