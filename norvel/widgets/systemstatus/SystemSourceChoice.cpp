// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/SystemSource.h>

#include <norvel/widgets/systemstatus/ToolSystemSource.h>

namespace norvel {

std::unique_ptr<SystemSource> SystemSource::choose(const CommandRunner& runCommand,
                                                   const QStringList&)
{
    return std::make_unique<ToolSystemSource>(runCommand);
}

} // namespace norvel
