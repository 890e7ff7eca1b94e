// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "Playback.h"

#include <engine/compose/Compositor.h>

#include "PlayClock.h"
#include "SoundOutput.h"

#include <QThread>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <utility>

namespace rvengine {

namespace {

using SteadyClock = std::chrono::steady_clock;
constexpr auto frameInterval = std::chrono::microseconds(33333);
/// While somebody looks for a place, and jumps before the right picture is there, a picture is
/// shown at least this often.
constexpr auto longestSearch = std::chrono::milliseconds(60);

} // namespace

class Playback::Engine
{
public:
    explicit Engine(std::function<void()> news)
        : m_news(std::move(news))
        , m_sound(m_clock)
        , m_thread(QThread::create([this] { run(); }))
    {
        m_thread->start();
    }

    ~Engine()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_ends = true;
        }
        m_interrupt.raise();
        m_wake.notify_all();
        m_thread->wait();
        // What the thread left comes before what is destroyed now. The thread sanitizer, to which
        // Qt's wait says nothing, learns it from the mutex.
        const std::lock_guard lock(m_mutex);
    }

    /// Changes what the thread sees, and has a frame rendered.
    template <class Change>
    void change(Change&& change)
    {
        {
            const std::lock_guard lock(m_mutex);
            change(*this);
            m_stale = true;
        }
        m_wake.notify_all();
    }

    RenderGate gate;

    ScenePointer m_scene;
    QSize m_pictureSize;
    bool m_awaitsScene = false;

    PlayClock& clock() { return m_clock; }
    SoundOutput& sound() { return m_sound; }

    /// Gives the previous scene in exchange, which is destroyed without the lock.
    void takeScene(ScenePointer& scene)
    {
        m_scene.swap(scene);
        m_awaitsScene = false;
        if (m_scene)
            return;
        ++m_timesTaken;
        m_untaken = QImage();
    }

    QImage takeNews()
    {
        const std::lock_guard lock(m_mutex);
        m_newsWait = false;
        return std::exchange(m_untaken, QImage());
    }

private:
    void run()
    {
        const auto isEnough = [this] {
            return m_stale && SteadyClock::now() - m_lastPicture > longestSearch;
        };
        Compositor compositor(makePictureSource(SteadyClock::now, isEnough, m_interrupt));
        auto due = SteadyClock::now();
        std::unique_lock lock(m_mutex);
        while (!m_ends) {
            if (!waitForFrame(lock, due))
                continue;
            m_stale = false;
            const ScenePointer scene = m_scene;
            const QSize size = m_pictureSize;
            const auto taken = m_timesTaken;
            lock.unlock();
            due = SteadyClock::now() + frameInterval;
            QImage picture;
            if (scene && !size.isEmpty()) {
                const long long time = shownTime(*scene);
                picture = compositor.compose(*scene, time, size);
                if (m_clock.isRunning())
                    compositor.prepare(*scene, time);
            }
            m_lastPicture = SteadyClock::now();
            gate.leave();
            lock.lock();
            tell(taken == m_timesTaken ? std::move(picture) : QImage());
        }
    }

    /// Waits until a frame is to be rendered and the gate lets it through.
    bool waitForFrame(std::unique_lock<std::mutex>& lock, SteadyClock::time_point due)
    {
        const auto wanted = [this, due] {
            return m_ends || m_stale || (m_clock.isRunning() && SteadyClock::now() >= due);
        };
        if (m_awaitsScene && !m_ends) {
            m_wake.wait(lock);
            return false;
        }
        if (!wanted()) {
            if (m_clock.isRunning())
                m_wake.wait_until(lock, due);
            else
                m_wake.wait(lock);
            return false;
        }
        if (m_ends)
            return false;
        if (gate.tryEnter())
            return true;
        // Whoever opens the gate wakes the thread; one who only waits for it opens it later.
        m_wake.wait_for(lock, std::chrono::milliseconds(5));
        return false;
    }

    long long shownTime(const Scene& scene) const
    {
        // The end shows the last picture and not the nothing behind it.
        return std::clamp(m_clock.position(), 0LL, std::max(scene.duration - 1, 0LL));
    }

    void tell(QImage picture)
    {
        if (!picture.isNull())
            m_untaken = std::move(picture);
        if (!std::exchange(m_newsWait, true))
            m_news();
    }

    const std::function<void()> m_news;
    PlayClock m_clock;
    SoundOutput m_sound;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_ends = false;
    std::atomic<bool> m_stale{false};      ///< what was rendered last is out of date
    Interrupt m_interrupt;                 ///< of the readers
    SteadyClock::time_point m_lastPicture; ///< when it was made, for the thread alone
    bool m_newsWait = false;               ///< news were told and not taken yet
    std::uint64_t m_timesTaken = 0;        ///< how often the scene was taken away
    QImage m_untaken;
    /// One of Qt's: what is drawn in it may make Qt start a timer for its fonts, which other
    /// threads have no use for.
    const std::unique_ptr<QThread> m_thread;
};

Playback::Playback(std::function<void()> news)
    : m_engine(std::make_unique<Engine>(std::move(news)))
{
}

Playback::~Playback() = default;

void Playback::setScene(ScenePointer scene)
{
    m_engine->sound().setScene(scene);
    m_engine->change([&](Engine& engine) { engine.takeScene(scene); });
}

void Playback::awaitScene()
{
    m_engine->change([](Engine& engine) { engine.m_awaitsScene = true; });
}

void Playback::setPictureSize(QSize size)
{
    m_engine->change([&](Engine& engine) { engine.m_pictureSize = size; });
}

void Playback::seek(long long position)
{
    m_engine->clock().set(position);
    m_engine->sound().restart();
    m_engine->change([](Engine&) {});
}

void Playback::play()
{
    m_engine->clock().start();
    m_engine->sound().restart();
    m_engine->change([](Engine&) {});
}

void Playback::pause()
{
    m_engine->clock().stop();
    m_engine->sound().stop();
}

bool Playback::isPlaying() const
{
    return m_engine->clock().isRunning();
}

long long Playback::position() const
{
    return m_engine->clock().position();
}

RenderGate& Playback::gate()
{
    return m_engine->gate;
}

QImage Playback::takeNews()
{
    return m_engine->takeNews();
}

} // namespace rvengine
