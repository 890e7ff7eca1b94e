// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "LocalFile.h"

#include "Utf8.h"

namespace fs = std::filesystem;

namespace rvengine {

bool isPath(const std::string& text)
{
    return !text.empty() && text.find('\0') == std::string::npos &&
           textOf(text).toStdString() == text;
}

std::optional<fs::path> readableFile(const std::string& path)
{
    if (!isPath(path))
        return std::nullopt;
    std::error_code error;
    const fs::path absolute = fs::absolute(fs::u8path(path), error);
    if (error || !fs::is_regular_file(absolute, error) || !mayRead(absolute))
        return std::nullopt;
    return absolute;
}

bool openForReading(QFile& file, const fs::path& path)
{
    file.setFileName(textOf(path.u8string()));
    return file.open(QIODevice::ReadOnly);
}

} // namespace rvengine
