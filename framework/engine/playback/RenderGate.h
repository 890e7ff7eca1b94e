// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

namespace rvengine {

/// Keeps frames from being rendered while somebody holds it. Unlike a mutex it lets those who wait
/// for it in before the renderer's next frame, however busy the renderer is.
class RenderGate
{
public:
    /// Waits for a frame in work and for another holder; the thread that holds the gate may close
    /// it again and opens it as often.
    void close();
    /// True when the last hold was let go.
    bool open();
    /// Closes it unless it is closed, also by the same thread; does not wait for a frame in work.
    bool tryClose();
    /// True while anybody holds it.
    bool isClosed() const;

    /// The renderer's side: true when a frame may be rendered now, which keeps the gate open until
    /// `leave`.
    bool tryEnter();
    void leave();

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::thread::id m_holder;
    int m_depth = 0;   ///< how often the holder closed it
    int m_waiting = 0; ///< how many threads want to close it
    bool m_rendering = false;
};

} // namespace rvengine
