// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "LocalFile.h"

#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace rvengine {

bool mayRead(const fs::path& path)
{
    return ::faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) == 0;
}

std::optional<FileStamp> stampOf(const fs::path& path)
{
    std::error_code sizeError;
    std::error_code timeError;
    const FileStamp stamp{fs::file_size(path, sizeError),
                          fs::last_write_time(path, timeError).time_since_epoch().count()};
    if (sizeError || timeError)
        return std::nullopt;
    return stamp;
}

} // namespace rvengine
