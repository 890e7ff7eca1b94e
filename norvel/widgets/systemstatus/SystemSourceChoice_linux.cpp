// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/SystemSource.h>

#include <norvel/widgets/systemstatus/ProcSystemSource_linux.h>
#include <norvel/widgets/systemstatus/ToolSystemSource.h>

namespace norvel {

std::unique_ptr<SystemSource> SystemSource::choose(const CommandRunner& runCommand,
                                                   const QStringList& missingTools)
{
    // One tool alone would give numbers of two kinds, and a memory share of neither.
    if (missingTools.isEmpty())
        return std::make_unique<ToolSystemSource>(runCommand);
    return std::make_unique<ProcSystemSource>();
}

} // namespace norvel
