// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace rvengine {

/// From the first call on, what FFmpeg's libraries say goes to the logging category
/// "norvel.ffmpeg", errors of broken files as information, the rest as debug lines, and is silent
/// unless the category is switched on. A host that has set FFmpeg's log level before keeps its log
/// as it is; one that sets a callback of its own later does too.
void redirectFfmpegLog();

} // namespace rvengine
