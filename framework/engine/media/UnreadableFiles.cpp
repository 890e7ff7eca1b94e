// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "UnreadableFiles.h"

#include <engine/base/Utf8.h>

#include <QtGlobal>

#include <utility>

namespace rvengine {

UnreadableFiles::UnreadableFiles(MonotonicClock now)
    : m_now(std::move(now))
{
}

bool UnreadableFiles::mayTry(const std::string& path) const
{
    const auto entry = m_nextTry.find(path);
    return entry == m_nextTry.end() || m_now() >= entry->second;
}

void UnreadableFiles::tried(const std::string& path, bool success)
{
    if (success) {
        m_nextTry.erase(path);
        return;
    }
    if (m_nextTry.insert_or_assign(path, m_now() + UntilNextTry).second)
        qWarning("cannot read the media file %ls", qUtf16Printable(textOf(path)));
}

} // namespace rvengine
