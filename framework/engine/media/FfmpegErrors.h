// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace rvengine {

/// Collects what FFmpeg calls an error in this thread, for a user to read. One at a time in each
/// thread.
class FfmpegErrors
{
public:
    FfmpegErrors();
    ~FfmpegErrors();
    FfmpegErrors(const FfmpegErrors&) = delete;
    FfmpegErrors& operator=(const FfmpegErrors&) = delete;

    /// The text of an error number, with what was said since the object was made.
    QString textOf(int error) const;

    /// Called for each line that FFmpeg says.
    static void add(const QString& line);

private:
    QString m_lines;
};

} // namespace rvengine
