// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/SystemSource.h>

#include <norvel/widgets/systemstatus/ProcSystemSource_linux.h>
#include <norvel/widgets/systemstatus/ToolSystemSource.h>

#include <QStandardPaths>

namespace norvel {

std::unique_ptr<SystemSource> SystemSource::create()
{
    // One tool alone would give numbers of two kinds, and a memory share of neither.
    const auto isThere = [](const char* tool) {
        return !QStandardPaths::findExecutable(QLatin1String(tool)).isEmpty();
    };
    if (isThere("wmic") && isThere("tasklist"))
        return std::make_unique<ToolSystemSource>();
    return std::make_unique<ProcSystemSource>();
}

} // namespace norvel
