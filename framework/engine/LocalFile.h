// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>

#include <filesystem>
#include <optional>
#include <string>

namespace rvengine {

/// The absolute path of the regular file that the UTF-8 `path` names and this process may read, or
/// nothing. Devices, pipes and directories are refused without being opened.
std::optional<std::filesystem::path> readableFile(const std::string& path);

/// Opens `file` for reading at the absolute `path`; false when that fails.
bool openForReading(QFile& file, const std::filesystem::path& path);

} // namespace rvengine
