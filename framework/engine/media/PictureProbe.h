// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "MediaInfo.h"

#include <filesystem>
#include <optional>

namespace rvengine {

/// Decodes the file as a picture, by its content and not by its name, and gives its size; nothing
/// when it cannot be decoded or when a part of it is missing.
std::optional<MediaInfo> probePicture(const std::filesystem::path& path);

/// Whether the content of the file is a picture for Qt, and one that does not move.
bool isStillPicture(const std::filesystem::path& path);

} // namespace rvengine
