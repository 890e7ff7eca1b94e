// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/SystemSource.h>

#include <norvel/widgets/systemstatus/ToolSystemSource.h>
#include <norvel/widgets/systemstatus/WindowsSystemSource_windows.h>

namespace norvel {

std::unique_ptr<SystemSource> SystemSource::choose(const CommandRunner& runCommand,
                                                   const QStringList& missingTools)
{
    // Windows has `wmic` on demand only, and `tasklist` always.
    if (missingTools.contains(QStringLiteral("wmic")))
        return std::make_unique<WindowsSystemSource>();
    return std::make_unique<ToolSystemSource>(runCommand);
}

} // namespace norvel
