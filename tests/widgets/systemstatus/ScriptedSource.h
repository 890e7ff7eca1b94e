// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/widgets/systemstatus/SystemSource.h>

#include <QSemaphore>
#include <QStringList>
#include <QThread>

#include <memory>
#include <mutex>

/// What a scripted source tells and what it was asked; shared between a test and the source, which
/// is the worker's. Any thread may use it.
class SourceScript
{
public:
    explicit SourceScript(qint64 memory = 0)
        : installedMemory(memory)
    {
    }

    const qint64 installedMemory;
    double cpuLoad = 0.0;
    qint64 processMemory = 0;
    /// The question that is answered only as often as the test releases it.
    QString heldQuestion;
    QSemaphore released;

    /// Notes a question; waits if it is held.
    void ask(const QString& question);
    /// What was asked, in order: "cpu", "memory", "hardware", "graphics".
    QStringList asked() const;
    /// The threads in which it was asked for anything but the installed memory.
    QList<QThread*> askedIn() const;

private:
    mutable std::mutex m_mutex;
    QStringList m_asked;
    QList<QThread*> m_askedIn;
};

/// A source that tells what a script says.
class ScriptedSource : public norvel::SystemSource
{
public:
    explicit ScriptedSource(std::shared_ptr<SourceScript> script);

    qint64 installedMemory() override;
    double cpuLoad() override;
    qint64 processMemory() override;
    QString hardwareText() override;
    QString graphicsText() override;

private:
    const std::shared_ptr<SourceScript> m_script;
};
