// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvKpPlayer.h>

#include <engine/Exporter.h>
#include <engine/Playback.h>
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
struct RvKpPlayer::Session
{
    explicit Session(RvKpPlayer& player)
        : watch([this, &player] {
            outdated = true;
            player.publishLater();
        })
        , playback([&player] {
            QMetaObject::invokeMethod(
                &player, [&player] { player.takeNews(); }, Qt::QueuedConnection);
        })
    {
    }

    mutable std::mutex timelineMutex;
    RvKpTimeLine* timeline = nullptr;

    RvKpPlayerState state = RvKpPlayerIdle;
    bool startWhenPrepared = false;
    bool sought = false; ///< there was a seek since the last news
    /// Something has to wait until the player is unlocked.
    std::atomic<bool> heldUp{false};
    /// The timeline is not any more what is played.
    std::atomic<bool> outdated{false};

    SceneWatch watch;
    rvengine::Playback playback;
    std::unique_ptr<rvengine::Exporter> exporter;
};

RvKpPlayer::RvKpPlayer(QObject* parent)
    : QObject(parent)
    , m_session(std::make_unique<Session>(*this))
{
}

RvKpPlayer::~RvKpPlayer()
{
    m_session->watch.disarm();
    m_session->exporter.reset();
    if (m_session->timeline)
        m_session->timeline->release();
}

RvKpTimeLine* RvKpPlayer::getTimeLine() const
{
    const std::lock_guard lock(m_session->timelineMutex);
    if (m_session->timeline)
        m_session->timeline->retain();
    return m_session->timeline;
}

void RvKpPlayer::setTimeLine(RvKpTimeLine* timeline)
{
    calls::record("RvKpPlayer::setTimeLine", calls::Verbatim{timeline ? "timeline" : "null"});
    halt();
    if (timeline)
        timeline->retain();
    RvKpTimeLine* previous = timeline;
    {
        const std::lock_guard lock(m_session->timelineMutex);
        std::swap(previous, m_session->timeline);
    }
    if (previous)
        previous->release();
    setState(RvKpPlayerIdle);
    m_session->watch.disarm();
    m_session->outdated = false;
    m_session->playback.setScene(nullptr);
    emit sigPictureRendered(QImage());
}

void RvKpPlayer::prepareAsync()
{
    calls::record("RvKpPlayer::prepareAsync");
    if (!m_session->timeline || m_session->state == RvKpPlayerPreparing)
        return;
    moveTo(m_session->state == RvKpPlayerCompleted ? 0 : getCurrentPosition());
    m_session->playback.pause();
    m_session->startWhenPrepared = false;
    setState(RvKpPlayerPreparing);
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_session->state != RvKpPlayerPreparing)
                return;
            publish();
            setState(RvKpPlayerPrepared);
            if (m_session->startWhenPrepared)
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
    switch (m_session->state) {
    case RvKpPlayerPreparing:
        m_session->startWhenPrepared = true;
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
    m_session->playback.play();
    setState(RvKpPlayerPlaying);
}

void RvKpPlayer::pause()
{
    calls::record("RvKpPlayer::pause");
    if (!isPlaying())
        return;
    const long long position = getCurrentPosition();
    m_session->playback.pause();
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
    m_session->playback.pause();
    // There may have been a seek while nothing was played.
    moveTo(0);
    if (m_session->state != RvKpPlayerIdle)
        setState(RvKpPlayerStopped);
}

void RvKpPlayer::moveTo(long long position)
{
    m_session->playback.seek(position);
}

void RvKpPlayer::seekTo(long long position, bool exact)
{
    calls::record("RvKpPlayer::seekTo", position, exact);
    m_session->sought = true;
    moveTo(std::clamp(position, 0LL, getDuration()));
    emit sigRenderTimeChanged(getCurrentPosition());
}

long long RvKpPlayer::getCurrentPosition() const
{
    const long long position = m_session->playback.position();
    return isPlaying() ? std::min(position, getDuration()) : position;
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
    return m_session->state;
}

bool RvKpPlayer::isPlaying() const
{
    return m_session->state == RvKpPlayerPlaying;
}

bool RvKpPlayer::isPaused() const
{
    return m_session->state == RvKpPlayerPaused;
}

void RvKpPlayer::setPictureSize(const QSize& size)
{
    m_session->playback.setPictureSize(size);
}

bool RvKpPlayer::startSave(const std::string& path, const RvKpSaveSettings& settings)
{
    calls::record("RvKpPlayer::startSave", path);
    RvKpTimeLine* timeline = getTimeLine();
    if (!timeline)
        return false;
    m_session->playback.gate().close();
    const auto scene = captureScene(*timeline, currentCanvasSize());
    if (m_session->playback.gate().open())
        goOn();
    timeline->release();
    if (getSaveMode() || scene->duration <= 0)
        return false;
    if (isPlaying())
        pause();
    const rvengine::ExportSettings wanted{QSize(settings.width, settings.height),
                                          settings.frameRate, settings.videoBitRate,
                                          settings.audioBitRate};
    m_session->exporter = rvengine::startExport(scene, path, wanted, [this] {
        QMetaObject::invokeMethod(
            this, [this] { takeSaveNews(); }, Qt::QueuedConnection);
    });
    return m_session->exporter != nullptr;
}

void RvKpPlayer::cancelSave()
{
    calls::record("RvKpPlayer::cancelSave");
    if (m_session->exporter)
        m_session->exporter->cancel();
}

bool RvKpPlayer::getSaveMode() const
{
    return m_session->exporter != nullptr;
}

void RvKpPlayer::takeSaveNews()
{
    if (!m_session->exporter)
        return;
    const rvengine::ExportNews news = m_session->exporter->news();
    const QString path = QString::fromStdString(m_session->exporter->path());
    if (news.state == rvengine::ExportState::Running) {
        emit sigSaveProgress(news.share);
        return;
    }
    // Receivers may save again.
    m_session->exporter.reset();
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
    m_session->playback.gate().close();
}

void RvKpPlayer::unlockPlayer()
{
    calls::record("RvKpPlayer::unlockPlayer");
    // What was changed under the lock is seen with the first frame after it.
    if (m_session->outdated)
        m_session->playback.awaitScene();
    if (m_session->playback.gate().open())
        goOn();
}

void RvKpPlayer::waitForUnlock()
{
    m_session->heldUp = true;
    // It may have been unlocked just before that was known.
    if (!m_session->playback.gate().isClosed())
        goOn();
}

void RvKpPlayer::goOn()
{
    if (!m_session->heldUp.exchange(false))
        return;
    publishLater();
    QMetaObject::invokeMethod(
        this, [this] { takeNews(); }, Qt::QueuedConnection);
}

void RvKpPlayer::setState(RvKpPlayerState state)
{
    if (m_session->state == state)
        return;
    m_session->state = state;
    emit sigStateChanged(state, stateText(state));
}

void RvKpPlayer::publishLater()
{
    QMetaObject::invokeMethod(
        this, [this] { publish(); }, Qt::QueuedConnection);
}

void RvKpPlayer::publish()
{
    rvengine::RenderGate& gate = m_session->playback.gate();
    if (m_session->state == RvKpPlayerIdle)
        return;
    if (!gate.tryClose()) {
        waitForUnlock();
        return;
    }
    m_session->outdated = false;
    m_session->watch.arm();
    if (RvKpTimeLine* timeline = getTimeLine()) {
        m_session->playback.setScene(captureScene(*timeline, currentCanvasSize()));
        timeline->release();
    }
    if (gate.open())
        goOn();
}

void RvKpPlayer::takeNews()
{
    rvengine::RenderGate& gate = m_session->playback.gate();
    if (!gate.tryClose()) {
        waitForUnlock();
        return;
    }
    // Another thread may edit the timeline as soon as the gate is open.
    const long long duration = getDuration();
    if (gate.open())
        goOn();
    const QImage picture = m_session->playback.takeNews();
    if (m_session->state == RvKpPlayerIdle)
        return;
    if (!picture.isNull())
        emit sigPictureRendered(picture);
    if (isPlaying())
        tick(duration);
}

void RvKpPlayer::tick(long long duration)
{
    const long long position = std::min(m_session->playback.position(), duration);
    m_session->sought = false;
    emit sigRenderTimeChanged(position);
    if (position < duration || !isPlaying() || m_session->sought)
        return;
    m_session->playback.pause();
    moveTo(position);
    setState(RvKpPlayerCompleted);
}

} // namespace qrvkp
