// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvKpPlayer.h>

#include <rvkpcore/private/CallRecorder.h>

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <mutex>

namespace qrvkp {

namespace {

constexpr int tickInterval = 40;

QString stateText(RvKpPlayerState state)
{
    switch (state) {
    case RvKpPlayerIdle:
        return QStringLiteral("idle");
    case RvKpPlayerPreparing:
        return QStringLiteral("preparing");
    case RvKpPlayerPrepared:
        return QStringLiteral("prepared");
    case RvKpPlayerPlaying:
        return QStringLiteral("playing");
    case RvKpPlayerPaused:
        return QStringLiteral("paused");
    case RvKpPlayerStopped:
        return QStringLiteral("stopped");
    case RvKpPlayerCompleted:
        return QStringLiteral("completed");
    }
    return {};
}

} // namespace

/// The wall clock that playback follows, and what it plays.
struct RvKpPlayer::Clock
{
    mutable std::mutex timelineMutex;
    RvKpTimeLine* timeline = nullptr;
    std::recursive_mutex renderMutex;
    int lockDepth = 0; ///< how often `lockPlayer` holds the render mutex, which guards it

    RvKpPlayerState state = RvKpPlayerIdle;
    bool startWhenPrepared = false;
    bool sought = false;    ///< there was a seek since the last tick
    long long position = 0; ///< where the clock was when it was last started or set
    QElapsedTimer sinceStart;
    QTimer ticks;
};

RvKpPlayer::RvKpPlayer(QObject* parent)
    : QObject(parent)
    , m_clock(std::make_unique<Clock>())
{
    m_clock->ticks.setInterval(tickInterval);
    connect(&m_clock->ticks, &QTimer::timeout, this, &RvKpPlayer::tick);
}

RvKpPlayer::~RvKpPlayer()
{
    if (m_clock->timeline)
        m_clock->timeline->release();
}

RvKpTimeLine* RvKpPlayer::getTimeLine() const
{
    const std::lock_guard lock(m_clock->timelineMutex);
    if (m_clock->timeline)
        m_clock->timeline->retain();
    return m_clock->timeline;
}

void RvKpPlayer::setTimeLine(RvKpTimeLine* timeline)
{
    calls::record("RvKpPlayer::setTimeLine", calls::Verbatim{timeline ? "timeline" : "null"});
    halt();
    if (timeline)
        timeline->retain();
    RvKpTimeLine* previous = timeline;
    {
        const std::lock_guard lock(m_clock->timelineMutex);
        std::swap(previous, m_clock->timeline);
    }
    if (previous)
        previous->release();
    setState(RvKpPlayerIdle);
}

void RvKpPlayer::prepareAsync()
{
    calls::record("RvKpPlayer::prepareAsync");
    if (!m_clock->timeline || m_clock->state == RvKpPlayerPreparing)
        return;
    m_clock->position = m_clock->state == RvKpPlayerCompleted ? 0 : getCurrentPosition();
    m_clock->ticks.stop();
    m_clock->startWhenPrepared = false;
    setState(RvKpPlayerPreparing);
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_clock->state != RvKpPlayerPreparing)
                return;
            setState(RvKpPlayerPrepared);
            if (m_clock->startWhenPrepared)
                play();
        },
        Qt::QueuedConnection);
}

void RvKpPlayer::start()
{
    calls::record("RvKpPlayer::start");
    play();
}

void RvKpPlayer::play()
{
    switch (m_clock->state) {
    case RvKpPlayerPreparing:
        m_clock->startWhenPrepared = true;
        return;
    case RvKpPlayerCompleted:
        m_clock->position = 0;
        break;
    case RvKpPlayerPrepared:
    case RvKpPlayerPaused:
        break;
    default:
        return;
    }
    m_clock->sinceStart.start();
    m_clock->ticks.start();
    setState(RvKpPlayerPlaying);
}

void RvKpPlayer::pause()
{
    calls::record("RvKpPlayer::pause");
    if (!isPlaying())
        return;
    m_clock->position = getCurrentPosition();
    m_clock->ticks.stop();
    setState(RvKpPlayerPaused);
}

void RvKpPlayer::stop()
{
    calls::record("RvKpPlayer::stop");
    halt();
}

void RvKpPlayer::halt()
{
    // There may have been a seek while nothing was played.
    m_clock->position = 0;
    if (m_clock->state == RvKpPlayerIdle || m_clock->state == RvKpPlayerStopped)
        return;
    m_clock->ticks.stop();
    setState(RvKpPlayerStopped);
}

void RvKpPlayer::seekTo(long long position, bool exact)
{
    calls::record("RvKpPlayer::seekTo", position, exact);
    m_clock->sought = true;
    m_clock->position = std::clamp(position, 0LL, getDuration());
    m_clock->sinceStart.start();
    emit sigRenderTimeChanged(m_clock->position);
}

long long RvKpPlayer::getCurrentPosition() const
{
    if (!isPlaying())
        return m_clock->position;
    // The sum of both may be more than a duration can hold.
    const long long duration = getDuration();
    const long long elapsed = m_clock->sinceStart.elapsed();
    return elapsed < duration - m_clock->position ? m_clock->position + elapsed : duration;
}

long long RvKpPlayer::getDuration() const
{
    RvKpTimeLine* timeline = getTimeLine();
    if (!timeline)
        return 0;
    const long long duration = timeline->getDuration();
    timeline->release();
    return duration;
}

int RvKpPlayer::getState() const
{
    return m_clock->state;
}

bool RvKpPlayer::isPlaying() const
{
    return m_clock->state == RvKpPlayerPlaying;
}

bool RvKpPlayer::isPaused() const
{
    return m_clock->state == RvKpPlayerPaused;
}

bool RvKpPlayer::getSaveMode() const
{
    return false;
}

void RvKpPlayer::lockPlayer()
{
    calls::record("RvKpPlayer::lockPlayer");
    m_clock->renderMutex.lock();
    ++m_clock->lockDepth;
}

void RvKpPlayer::unlockPlayer()
{
    calls::record("RvKpPlayer::unlockPlayer");
    --m_clock->lockDepth;
    m_clock->renderMutex.unlock();
}

void RvKpPlayer::setState(RvKpPlayerState state)
{
    if (m_clock->state == state)
        return;
    m_clock->state = state;
    emit sigStateChanged(state, stateText(state));
}

void RvKpPlayer::tick()
{
    std::unique_lock frame(m_clock->renderMutex, std::try_to_lock);
    if (!frame || m_clock->lockDepth > 0)
        return;
    const long long position = getCurrentPosition();
    const bool atEnd = position >= getDuration();
    m_clock->sought = false;
    // Receivers may lock the player, and whoever waits for the lock may wait for a receiver.
    frame.unlock();
    emit sigRenderTimeChanged(position);
    if (atEnd && isPlaying() && !m_clock->sought) {
        m_clock->position = position;
        m_clock->ticks.stop();
        setState(RvKpPlayerCompleted);
    }
}

} // namespace qrvkp
