// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/SystemSource.h>

#include <norvel/widgets/systemstatus/ToolSystemSource.h>

#include <QLoggingCategory>

namespace norvel {

SystemSource::~SystemSource() = default;

std::unique_ptr<SystemSource> SystemSource::create(const CommandRunner& runCommand)
{
    const QStringList missing = ToolSystemSource::missingTools();
    if (!missing.isEmpty()) {
        const QLoggingCategory category("norvel.systemstatus");
        qCDebug(category).noquote()
            << "Not on the search path:" << missing.join(QStringLiteral(", "));
    }
    return choose(runCommand, missing);
}

} // namespace norvel
