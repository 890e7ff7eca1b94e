// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/widgets/systemstatus/CpuTimes.h>
#include <norvel/widgets/systemstatus/SystemSource.h>

namespace norvel {

/// What Windows tells by its own functions, in the form in which `wmic` prints it. Starts no
/// process.
class WindowsSystemSource : public SystemSource
{
public:
    WindowsSystemSource();

    /// The memory that Windows can use: without what the hardware keeps for itself.
    qint64 installedMemory() override;
    /// The load since the last call; that since the source was made at the first one.
    double cpuLoad() override;
    /// The working set, which is what `tasklist` tells.
    qint64 processMemory() override;
    /// The table of the processors and that of the memory, which is told as one module.
    QString hardwareText() override;
    /// The adapters that are hardware.
    QString graphicsText() override;

private:
    CpuTimes m_lastTimes;
};

} // namespace norvel
