// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "LocalFile.h"

#include <QString>

namespace fs = std::filesystem;

namespace rvengine {

namespace {

bool isUtf8(const std::string& text)
{
    return QString::fromStdString(text).toStdString() == text;
}

} // namespace

std::optional<fs::path> readableFile(const std::string& path)
{
    if (path.empty() || path.find('\0') != std::string::npos || !isUtf8(path))
        return std::nullopt;
    std::error_code error;
    const fs::path absolute = fs::absolute(fs::u8path(path), error);
    if (error || !fs::is_regular_file(absolute, error) || !mayRead(absolute))
        return std::nullopt;
    return absolute;
}

bool openForReading(QFile& file, const fs::path& path)
{
    file.setFileName(QString::fromStdString(path.u8string()));
    return file.open(QIODevice::ReadOnly);
}

} // namespace rvengine
