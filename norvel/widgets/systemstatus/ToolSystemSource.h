// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/widgets/systemstatus/SystemSource.h>

#include <QStringList>

namespace norvel {

/// What the Windows tools `wmic` and `tasklist` tell. Every number is a process that is started,
/// each text one as well.
class ToolSystemSource : public SystemSource
{
public:
    /// Runs every tool by `runCommand`, which is not empty.
    explicit ToolSystemSource(CommandRunner runCommand);

    /// The tools that are not on the search path.
    static QStringList missingTools();

    qint64 installedMemory() override;
    double cpuLoad() override;
    qint64 processMemory() override;
    QString hardwareText() override;
    QString graphicsText() override;

private:
    const CommandRunner m_runCommand;
};

} // namespace norvel
