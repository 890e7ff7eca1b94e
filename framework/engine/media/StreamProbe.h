// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "MediaInfo.h"

#include <filesystem>
#include <optional>

namespace rvengine {

/// Measures a file as video or sound, by the media engine that the library is built with: exactly
/// one of FileMediaProbe.cpp and MimeMediaProbe.cpp defines it. `path` is the absolute path of a
/// readable regular file.
std::optional<MediaInfo> probeStream(const std::filesystem::path& path, MediaKind kind);

} // namespace rvengine
