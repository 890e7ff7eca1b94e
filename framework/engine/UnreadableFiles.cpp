// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "UnreadableFiles.h"

#include <QString>
#include <QtGlobal>

namespace rvengine {

namespace {

constexpr std::chrono::seconds untilNextTry{2};

} // namespace

bool UnreadableFiles::mayTry(const std::string& path) const
{
    const auto entry = m_nextTry.find(path);
    return entry == m_nextTry.end() || std::chrono::steady_clock::now() >= entry->second;
}

void UnreadableFiles::tried(const std::string& path, bool success)
{
    if (success) {
        m_nextTry.erase(path);
        return;
    }
    const auto nextTry = std::chrono::steady_clock::now() + untilNextTry;
    if (m_nextTry.insert_or_assign(path, nextTry).second)
        qWarning("cannot read the media file %s", qUtf8Printable(QString::fromStdString(path)));
}

} // namespace rvengine
