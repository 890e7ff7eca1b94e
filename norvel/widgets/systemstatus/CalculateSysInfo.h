// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>

#include <memory>

class QTimer;

namespace norvel {
class SystemSource;
}

/// Measures the load of the machine and the memory of the process once a second, and collects a
/// text about the hardware once.
///
/// Made in the thread of the user interface and then moved to a worker thread, in which `sample`
/// and `collectHardwareInfo` block for as long as the system takes to answer, up to 30 s for each
/// of the Windows tools. The ticks stay in the thread that made the object and are queued: those
/// that come while a measurement runs are served one after another. Errors are not reported; a
/// number that cannot be had is 0, a text is empty.
///
/// A worker thread whose interruption is requested measures no more: no further tool is started,
/// and nothing is emitted.
class CalculateSysInfo : public QObject
{
    Q_OBJECT

public:
    /// Measures this machine. Reads the installed memory at once: blocks the calling thread for as
    /// long as that takes, at most 30 s.
    CalculateSysInfo();
    /// Measures by another source, which is not null.
    explicit CalculateSysInfo(std::unique_ptr<norvel::SystemSource> source);
    ~CalculateSysInfo() override;

    /// Measures once and emits `updateCpuMemUsage`.
    void sample();
    /// Collects the texts about the hardware and emits `displayInfo`.
    void collectHardwareInfo();
    /// The standard output of a command line, which no shell looks at: blocks until the command has
    /// ended, at most 30 s. Empty if nothing came. Every tool is run by it, in any thread.
    static QString runCommand(const QString& commandLine);

    /// Ticks once a second, in the thread that made this object. No child, and never deleted by
    /// this object: whoever made this object deletes the timer after it, in that thread.
    QTimer* timer;
    /// The installed memory as it was read at the start, bytes; 0 if it could not be read.
    qint64 totalMemory;

signals:
    /// The load of the processors and the share of the installed memory that this process has, both
    /// in percent. The share counts whole installed memories: it is 0 until the process has them
    /// all.
    void updateCpuMemUsage(double cpu, double mem);
    /// The graphics adapters, and the processors with the memory, as the system prints them.
    void displayInfo(QString graphics, QString hardware);

private:
    const std::unique_ptr<norvel::SystemSource> m_source;
};
