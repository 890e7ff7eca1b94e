// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/widgets/systemstatus/CpuTimes.h>

#include <QByteArray>
#include <QString>

namespace norvel {

/// Reads the files of Linux that tell of the system. What does not read as expected gives 0, or an
/// empty text.
class ProcText
{
public:
    /// The times since the start of the system in the kernel's ticks, from "/proc/stat". A
    /// processor that waits for a disk is not at work.
    static CpuTimes cpuTimes(const QByteArray& stat);

    /// The memory of the system in bytes, from "/proc/meminfo": without what the kernel itself took
    /// when it started.
    static qint64 installedMemory(const QByteArray& meminfo);
    /// The pages of the process that are in memory, from "/proc/self/statm".
    static qint64 residentPages(const QByteArray& statm);

    /// The processors by their sockets, from "/proc/cpuinfo": a line "Property=value" for each
    /// thing that is known, with the properties' names of `wmic`. The clock speed is that of the
    /// fastest core at the moment, in MHz.
    static QString processors(const QByteArray& cpuinfo);

    /// The names of a PCI device's vendor and of the device, as the database "pci.ids" has them;
    /// the numbers for what it does not know. Vendor and device as "/sys" tells them: "0x8086".
    static QString pciName(const QByteArray& database, const QByteArray& vendor,
                           const QByteArray& device);
};

} // namespace norvel
