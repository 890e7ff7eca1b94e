// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ContentAhead.h"

#include "PictureFiles.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace rvengine {

bool ContentAhead::Entry::isReady() const
{
    return content.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

ContentAhead::ContentAhead(Interrupt interrupt)
    : m_interrupt(std::move(interrupt))
{
}

void ContentAhead::prepare(const Layer& layer, double fileTime)
{
    for (Entry& entry : m_entries) {
        if (entry.key == layer.key && entry.source == layer.source && entry.fileTime == fileTime) {
            entry.isWanted = true;
            return;
        }
    }
    if (m_entries.size() >= MostPrepared || isOpening())
        return;
    m_entries.push_back(
        {layer.key, layer.source, fileTime, true,
         std::async(std::launch::async, open, layer.kind, layer.source, fileTime, m_interrupt)});
}

ContentAhead::Content ContentAhead::take(const Layer& layer)
{
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& prepared) {
        return prepared.key == layer.key && prepared.source == layer.source;
    });
    if (entry == m_entries.end())
        return {};
    Content content = entry->content.get();
    m_entries.erase(entry);
    return content;
}

void ContentAhead::endRound()
{
    // One that is being opened would have to be waited for.
    m_entries.remove_if([](const Entry& entry) { return !entry.isWanted && entry.isReady(); });
    for (Entry& entry : m_entries)
        entry.isWanted = false;
}

ContentAhead::Content ContentAhead::open(LayerKind kind, const std::string& source, double fileTime,
                                         const Interrupt& interrupt)
{
    Content content;
    if (kind == LayerKind::Picture) {
        content.picture = PictureFiles::read(source);
    } else {
        content.reader = PictureReader::open(source, interrupt);
        if (content.reader)
            content.reader->reach(fileTime);
    }
    return content;
}

bool ContentAhead::isOpening() const
{
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [](const Entry& entry) { return !entry.isReady(); });
}

} // namespace rvengine
