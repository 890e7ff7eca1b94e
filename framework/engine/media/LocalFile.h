// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>
#include <QString>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace rvengine {

/// Whether a text can name a file: it is UTF-8, not empty and has no NUL, where a name would end.
bool isPath(const std::string& text);

/// The absolute path that the UTF-8 `path` names, whether or not there is a file; nothing for what
/// cannot be a file. On Windows that also takes shares (\\server\share\name) and literal names of
/// both (\\?\C:\name, \\?\UNC\server\share\name), but no devices.
std::optional<std::filesystem::path> absolutePath(const std::string& path);

/// The same for Qt's classes of files; empty for what cannot be a file.
QString fileNameOf(const std::string& path);

/// Whether a file that Qt makes can have this name. Where Qt turns names into bytes by the locale,
/// that may have no letters for it.
bool canBeNamed(const QString& name);

/// The absolute path of the regular file that the UTF-8 `path` names and this process may read, or
/// nothing. Devices, pipes and directories are refused without being opened.
std::optional<std::filesystem::path> readableFile(const std::string& path);

/// Whether there is a regular file at an absolute path.
bool isRegularFile(const std::filesystem::path& path);

/// Whether the process may read the file, by the rights that opening it is judged by.
bool mayRead(const std::filesystem::path& path);

/// What tells one state of a file from the next.
struct FileStamp
{
    std::uintmax_t size = 0;   ///< bytes
    std::int64_t modified = 0; ///< in the finest ticks that the system keeps

    bool operator==(const FileStamp& other) const
    {
        return size == other.size && modified == other.modified;
    }
};

/// The stamp of the file at an absolute path, or nothing where there is none.
std::optional<FileStamp> stampOf(const std::filesystem::path& path);

/// Opens `file` for reading at the absolute `path`, whatever the locale makes of names; false when
/// that fails.
bool openForReading(QFile& file, const std::filesystem::path& path,
                    QIODevice::OpenMode mode = QIODevice::ReadOnly);

} // namespace rvengine
