// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/global.h>

#include <QString>

#include <memory>

namespace norvel {

/// Where the numbers and texts of the system come from.
///
/// Made in one thread and used in another, never in two at a time. Every operation may block for as
/// long as the system takes to answer. Nothing is reported: a number that cannot be had is 0, a
/// text is empty.
class NORVEL_AUTOTEST_EXPORT SystemSource
{
public:
    SystemSource() = default;
    virtual ~SystemSource();
    SystemSource(const SystemSource&) = delete;
    SystemSource& operator=(const SystemSource&) = delete;

    /// The source of this machine: the Windows tools where they are, else what the system has
    /// itself.
    static std::unique_ptr<SystemSource> create();

    /// The installed memory, bytes.
    virtual qint64 installedMemory() = 0;
    /// The load of all processors together, percent.
    virtual double cpuLoad() = 0;
    /// The memory of this process that is in use, bytes.
    virtual qint64 processMemory() = 0;
    /// The processors and the memory, for people to read.
    virtual QString hardwareText() = 0;
    /// The graphics adapters, for people to read.
    virtual QString graphicsText() = 0;
};

} // namespace norvel
