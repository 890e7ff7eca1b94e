// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "LocalFile.h"

#include <qt_windows.h>

namespace fs = std::filesystem;

namespace rvengine {

namespace {

std::uint64_t joined(DWORD high, DWORD low)
{
    return std::uint64_t{high} << 32 | low;
}

} // namespace

bool mayRead(const fs::path& path)
{
    QFile file;
    return openForReading(file, path);
}

// The standard library of GCC knows whole seconds only, the system knows 100 ns.
std::optional<FileStamp> stampOf(const fs::path& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return std::nullopt;
    return FileStamp{joined(data.nFileSizeHigh, data.nFileSizeLow),
                     static_cast<std::int64_t>(joined(data.ftLastWriteTime.dwHighDateTime,
                                                      data.ftLastWriteTime.dwLowDateTime))};
}

} // namespace rvengine
