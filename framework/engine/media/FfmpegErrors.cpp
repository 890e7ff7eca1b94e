// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "FfmpegErrors.h"

#include "Ffmpeg.h"

namespace rvengine {

namespace {

/// The collector of this thread; null when there is none.
thread_local FfmpegErrors* collector = nullptr;

constexpr int longestText = 1000;

} // namespace

FfmpegErrors::FfmpegErrors()
{
    collector = this;
}

FfmpegErrors::~FfmpegErrors()
{
    collector = nullptr;
}

QString FfmpegErrors::textOf(int error) const
{
    const QString text = errorText(error);
    return m_lines.isEmpty() ? text : text + QStringLiteral(": ") + m_lines;
}

void FfmpegErrors::add(const QString& line)
{
    if (!collector || collector->m_lines.size() > longestText)
        return;
    if (!collector->m_lines.isEmpty())
        collector->m_lines += QStringLiteral("; ");
    collector->m_lines += line;
}

} // namespace rvengine
