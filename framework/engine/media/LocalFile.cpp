// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "LocalFile.h"

#include <engine/base/Utf8.h>

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
    const std::optional<fs::path> absolute = absolutePath(path);
    if (!absolute || !isRegularFile(*absolute) || !mayRead(*absolute))
        return std::nullopt;
    return absolute;
}

QString fileNameOf(const std::string& path)
{
    const std::optional<fs::path> absolute =
        isPath(path) ? absolutePath(path) : std::optional<fs::path>();
    return absolute ? textOf(absolute->u8string()) : QString();
}

} // namespace rvengine
