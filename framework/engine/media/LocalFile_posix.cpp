// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "LocalFile.h"

#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace rvengine {

std::optional<fs::path> absolutePath(const std::string& path)
{
    std::error_code error;
    const fs::path absolute = fs::absolute(fs::u8path(path), error);
    if (error)
        return std::nullopt;
    return absolute;
}

bool canBeNamed(const QString& name)
{
    return QFile::decodeName(QFile::encodeName(name)) == name;
}

bool isRegularFile(const fs::path& path)
{
    std::error_code error;
    return fs::is_regular_file(path, error);
}

bool mayRead(const fs::path& path)
{
    return ::faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) == 0;
}

// Qt would turn the name into bytes by the locale, which may have no letters for it.
bool openForReading(QFile& file, const fs::path& path, QIODevice::OpenMode mode)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    if (file.open(descriptor, mode, QFileDevice::AutoCloseHandle))
        return true;
    ::close(descriptor);
    return false;
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
