// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "OpenFiles.h"

#include <filesystem>
#include <system_error>

std::size_t openFilesBelow(const std::string& folder)
{
    std::size_t count = 0;
    for (const auto& descriptor : std::filesystem::directory_iterator("/proc/self/fd")) {
        // The descriptor of this very walk is gone when it is asked for after it.
        std::error_code gone;
        const auto target = std::filesystem::read_symlink(descriptor.path(), gone);
        if (!gone && target.string().rfind(folder, 0) == 0)
            ++count;
    }
    return count;
}
