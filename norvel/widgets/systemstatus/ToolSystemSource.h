// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/widgets/systemstatus/SystemSource.h>
#include <norvel/widgets/systemstatus/ToolRunner.h>

namespace norvel {

/// What the Windows tools `wmic` and `tasklist` tell. Every number is a process that is started,
/// each text one as well.
class NORVEL_AUTOTEST_EXPORT ToolSystemSource : public SystemSource
{
public:
    explicit ToolSystemSource(const ToolRunner& runner = ToolRunner());

    qint64 installedMemory() override;
    double cpuLoad() override;
    qint64 processMemory() override;
    QString hardwareText() override;
    QString graphicsText() override;

private:
    ToolRunner m_runner;
};

} // namespace norvel
