// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/base/Interrupt.h>
#include <engine/base/Notice.h>
#include <engine/scene/Scene.h>

#include "PlayClock.h"

#include <QThread>

#include <mutex>

namespace rvengine {

/// Plays the sound of a scene on the default device, in a thread of its own, and corrects a clock
/// by what was heard. Without a device, or without a QCoreApplication, it does nothing.
///
/// Called by one thread at a time, but for `setScene`, which any thread may call.
class SoundOutput
{
public:
    /// The clock must outlive the output.
    explicit SoundOutput(PlayClock& clock);
    ~SoundOutput();
    SoundOutput(const SoundOutput&) = delete;
    SoundOutput& operator=(const SoundOutput&) = delete;

    void setScene(ScenePointer scene);
    /// Plays from where the clock's run began, if the clock runs.
    void restart();
    void stop();

private:
    class Worker;

    PlayClock& m_clock;
    Interrupt m_interrupt; ///< of the readers
    std::mutex m_mutex;
    ScenePointer m_scene; ///< guarded by the mutex
    QThread m_thread;
    Worker* const m_worker; ///< once the thread has started, it belongs to it and ends with it
    Notice m_restart;
    Notice m_stop;
};

} // namespace rvengine
