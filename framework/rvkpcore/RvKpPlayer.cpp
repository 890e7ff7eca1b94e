// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvKpPlayer.h>

#include <engine/playback/Exporter.h>
#include <engine/base/Notice.h>
#include <engine/playback/Playback.h>
#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/SceneCapture.h>
#include <rvkpcore/private/SceneChanges.h>

#include <algorithm>
#include <atomic>
#include <mutex>

namespace qrvkp {

namespace {

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

/// What is played, and what plays it.
struct RvKpPlayer::Impl
{
    explicit Impl(RvKpPlayer& player)
        : edited(&player, &RvKpPlayer::publish)
        , rendered(&player, &RvKpPlayer::takeNews)
        , saved(&player, &RvKpPlayer::takeSaveNews)
        , watch([this] {
            outdated = true;
            edited.give();
        })
        , playback([this] { rendered.give(); })
    {
    }

    mutable std::mutex timelineMutex;
    RvKpTimeLine* timeline = nullptr;

    RvKpPlayerState state = RvKpPlayerIdle;
    bool startWhenPrepared = false;
    bool pauseWhenPrepared = false; ///< a seek of a stopped player began to prepare it
    bool sought = false;            ///< there was a seek since the last news
    /// Something has to wait until the player is unlocked.
    std::atomic<bool> heldUp{false};
    /// The timeline is not any more what is played.
    std::atomic<bool> outdated{false};
    /// Written by whatever thread edits under the lock.
    std::atomic<CanvasSize> canvas{CanvasSize()};

    rvengine::Notice edited;
    rvengine::Notice rendered;
    rvengine::Notice saved;
    SceneWatch watch;
    rvengine::Playback playback;
    std::unique_ptr<rvengine::Exporter> exporter;
};

RvKpPlayer::RvKpPlayer(QObject* parent)
    : QObject(parent)
    , m_impl(std::make_unique<Impl>(*this))
{
}

RvKpPlayer::~RvKpPlayer()
{
    m_impl->watch.disarm();
    m_impl->exporter.reset();
    if (m_impl->timeline)
        m_impl->timeline->release();
}

RvKpTimeLine* RvKpPlayer::getTimeLine() const
{
    const std::lock_guard lock(m_impl->timelineMutex);
    if (m_impl->timeline)
        m_impl->timeline->retain();
    return m_impl->timeline;
}

void RvKpPlayer::setTimeLine(RvKpTimeLine* timeline)
{
    calls::record("RvKpPlayer::setTimeLine", calls::Verbatim{timeline ? "timeline" : "null"});
    halt();
    if (timeline)
        timeline->retain();
    RvKpTimeLine* previous = timeline;
    {
        const std::lock_guard lock(m_impl->timelineMutex);
        std::swap(previous, m_impl->timeline);
    }
    if (previous)
        previous->release();
    setState(RvKpPlayerIdle);
    m_impl->watch.disarm();
    m_impl->outdated = false;
    m_impl->playback.setScene(nullptr);
    emit sigPictureRendered(QImage());
    emit sigRenderTimeChanged(getCurrentPosition());
}

void RvKpPlayer::prepareAsync()
{
    calls::record("RvKpPlayer::prepareAsync");
    m_impl->pauseWhenPrepared = false;
    prepare();
}

void RvKpPlayer::prepare()
{
    if (!m_impl->timeline || m_impl->state == RvKpPlayerPreparing)
        return;
    moveTo(m_impl->state == RvKpPlayerCompleted ? 0 : getCurrentPosition());
    m_impl->playback.pause();
    m_impl->startWhenPrepared = false;
    setState(RvKpPlayerPreparing);
    QMetaObject::invokeMethod(
        this, [this] { finishPreparing(); }, Qt::QueuedConnection);
}

void RvKpPlayer::finishPreparing()
{
    if (m_impl->state != RvKpPlayerPreparing)
        return;
    publish();
    setState(RvKpPlayerPrepared);
    if (m_impl->startWhenPrepared)
        play();
    else if (m_impl->pauseWhenPrepared && m_impl->state == RvKpPlayerPrepared)
        setState(RvKpPlayerPaused);
}

void RvKpPlayer::start()
{
    calls::record("RvKpPlayer::start");
    play();
}

void RvKpPlayer::play()
{
    switch (m_impl->state) {
    case RvKpPlayerPreparing:
        m_impl->startWhenPrepared = true;
        return;
    case RvKpPlayerCompleted:
        moveTo(0);
        break;
    case RvKpPlayerPrepared:
    case RvKpPlayerPaused:
        break;
    default:
        return;
    }
    m_impl->playback.play();
    setState(RvKpPlayerPlaying);
}

void RvKpPlayer::pause()
{
    calls::record("RvKpPlayer::pause");
    if (!isPlaying())
        return;
    const long long position = getCurrentPosition();
    m_impl->playback.pause();
    moveTo(position); // what is seen is then what the position says
    setState(RvKpPlayerPaused);
}

void RvKpPlayer::stop()
{
    calls::record("RvKpPlayer::stop");
    halt();
}

void RvKpPlayer::halt()
{
    m_impl->playback.pause();
    // There may have been a seek while nothing was played.
    moveTo(0);
    if (m_impl->state != RvKpPlayerIdle)
        setState(RvKpPlayerStopped);
}

void RvKpPlayer::moveTo(long long position)
{
    m_impl->playback.seek(position);
}

void RvKpPlayer::seekTo(long long position, bool exact)
{
    calls::record("RvKpPlayer::seekTo", position, exact);
    m_impl->sought = true;
    moveTo(std::clamp(position, 0LL, getDuration()));
    if (m_impl->state == RvKpPlayerPrepared || m_impl->state == RvKpPlayerCompleted) {
        setState(RvKpPlayerPaused);
    } else if (m_impl->state == RvKpPlayerStopped) {
        m_impl->pauseWhenPrepared = true;
        prepare();
    }
    emit sigRenderTimeChanged(getCurrentPosition());
}

long long RvKpPlayer::getCurrentPosition() const
{
    return std::min(m_impl->playback.position(), getDuration());
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
    return m_impl->state;
}

bool RvKpPlayer::isPlaying() const
{
    return m_impl->state == RvKpPlayerPlaying;
}

bool RvKpPlayer::isPaused() const
{
    return m_impl->state == RvKpPlayerPaused;
}

void RvKpPlayer::setPictureSize(const QSize& size)
{
    m_impl->playback.setPictureSize(size);
}

void RvKpPlayer::setCanvasSize(const QSizeF& size)
{
    m_impl->canvas = {static_cast<float>(size.width()), static_cast<float>(size.height())};
}

bool RvKpPlayer::startSave(const std::string& path, const RvKpSaveSettings& settings)
{
    calls::record("RvKpPlayer::startSave", path);
    RvKpTimeLine* timeline = getTimeLine();
    if (!timeline)
        return false;
    m_impl->playback.gate().close();
    const auto scene = captureScene(*timeline, m_impl->canvas);
    if (m_impl->playback.gate().open())
        goOn();
    timeline->release();
    if (getSaveMode() || scene->duration <= 0)
        return false;
    if (isPlaying())
        pause();
    const rvengine::ExportSettings wanted{QSize(settings.width, settings.height),
                                          settings.frameRate, settings.videoBitRate,
                                          settings.audioBitRate};
    m_impl->exporter = rvengine::startExport(scene, path, wanted, [this] { m_impl->saved.give(); });
    return m_impl->exporter != nullptr;
}

void RvKpPlayer::cancelSave()
{
    calls::record("RvKpPlayer::cancelSave");
    if (m_impl->exporter)
        m_impl->exporter->cancel();
}

bool RvKpPlayer::getSaveMode() const
{
    return m_impl->exporter != nullptr;
}

void RvKpPlayer::takeSaveNews()
{
    if (!m_impl->exporter)
        return;
    const rvengine::ExportNews news = m_impl->exporter->news();
    const QString path = QString::fromStdString(m_impl->exporter->path());
    if (news.state == rvengine::ExportState::Running) {
        emit sigSaveProgress(news.share);
        return;
    }
    // Receivers may save again.
    m_impl->exporter.reset();
    switch (news.state) {
    case rvengine::ExportState::Finished:
        emit sigSaveProgress(1.0);
        emit sigSaveFinished(path);
        break;
    case rvengine::ExportState::Cancelled:
        emit sigSaveCancelled(path);
        break;
    default:
        emit sigSaveFailed(path, news.error);
    }
}

void RvKpPlayer::lockPlayer()
{
    calls::record("RvKpPlayer::lockPlayer");
    m_impl->playback.gate().close();
}

void RvKpPlayer::unlockPlayer()
{
    calls::record("RvKpPlayer::unlockPlayer");
    // What was changed under the lock is seen with the first frame after it.
    if (m_impl->outdated)
        m_impl->playback.awaitScene();
    if (m_impl->playback.gate().open())
        goOn();
}

void RvKpPlayer::waitForUnlock()
{
    m_impl->heldUp = true;
    // It may have been unlocked just before that was known.
    if (!m_impl->playback.gate().isClosed())
        goOn();
}

void RvKpPlayer::goOn()
{
    if (!m_impl->heldUp.exchange(false))
        return;
    m_impl->edited.give();
    m_impl->rendered.give();
}

void RvKpPlayer::setState(RvKpPlayerState state)
{
    if (m_impl->state == state)
        return;
    m_impl->state = state;
    emit sigStateChanged(state, stateText(state));
}

void RvKpPlayer::publish()
{
    rvengine::RenderGate& gate = m_impl->playback.gate();
    if (m_impl->state == RvKpPlayerIdle)
        return;
    if (!gate.tryClose()) {
        waitForUnlock();
        return;
    }
    m_impl->outdated = false;
    m_impl->watch.arm();
    if (RvKpTimeLine* timeline = getTimeLine()) {
        m_impl->playback.setScene(captureScene(*timeline, m_impl->canvas));
        timeline->release();
    }
    if (gate.open())
        goOn();
}

void RvKpPlayer::takeNews()
{
    rvengine::RenderGate& gate = m_impl->playback.gate();
    if (!gate.tryClose()) {
        waitForUnlock();
        return;
    }
    // Another thread may edit the timeline as soon as the gate is open.
    const long long duration = getDuration();
    if (gate.open())
        goOn();
    const QImage picture = m_impl->playback.takeNews();
    if (m_impl->state == RvKpPlayerIdle)
        return;
    if (!picture.isNull())
        emit sigPictureRendered(picture);
    if (isPlaying())
        tick(duration);
    else if (m_impl->state != RvKpPlayerIdle)
        emit sigRenderTimeChanged(std::min(m_impl->playback.position(), duration));
}

void RvKpPlayer::tick(long long duration)
{
    const long long position = std::min(m_impl->playback.position(), duration);
    m_impl->sought = false;
    emit sigRenderTimeChanged(position);
    if (position < duration || !isPlaying() || m_impl->sought)
        return;
    m_impl->playback.pause();
    moveTo(position);
    setState(RvKpPlayerCompleted);
}

} // namespace qrvkp
