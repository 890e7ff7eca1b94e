// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/widgets/systemstatus/ProcText_linux.h>
#include <norvel/widgets/systemstatus/SystemSource.h>

namespace norvel {

/// What Linux tells by itself, in the files below "/proc" and "/sys". Starts no process.
class ProcSystemSource : public SystemSource
{
public:
    /// `root` is the folder in which "proc", "sys" and "usr" stand.
    explicit ProcSystemSource(const QString& root = QStringLiteral("/"));

    qint64 installedMemory() override;
    /// The load since the last call; that since the source was made at the first one.
    double cpuLoad() override;
    qint64 processMemory() override;
    QString hardwareText() override;
    /// The PCI devices of the class display, with their names where the database of them is
    /// installed.
    QString graphicsText() override;

private:
    QByteArray contentOf(const QString& file) const;
    QByteArray pciDatabase() const;

    QString m_root;
    CpuTimes m_lastTimes;
};

} // namespace norvel
