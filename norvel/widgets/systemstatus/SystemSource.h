// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace norvel {

/// Where the numbers and texts of the system come from.
///
/// Made in one thread and used in another, never in two at a time. Every operation may block for as
/// long as the system takes to answer. Errors are not reported: a number that cannot be had is 0, a
/// text is empty.
class SystemSource
{
public:
    /// Runs a command line and returns its standard output; any thread may call it.
    using CommandRunner = std::function<QString(const QString& commandLine)>;

    SystemSource() = default;
    virtual ~SystemSource();
    SystemSource(const SystemSource&) = delete;
    SystemSource& operator=(const SystemSource&) = delete;

    /// The source of this machine: the Windows tools where they are, else what the system has
    /// itself. The tools are run by `runCommand`. Those that are missing are reported by one debug
    /// message.
    static std::unique_ptr<SystemSource> create(const CommandRunner& runCommand);

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

private:
    /// The source of this platform when these of the tools are missing.
    static std::unique_ptr<SystemSource> choose(const CommandRunner& runCommand,
                                                const QStringList& missingTools);
};

} // namespace norvel
