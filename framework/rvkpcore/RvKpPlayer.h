// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvKpTimeLine.h>
#include <rvkpcore/rvkpcore_export.h>

#include <QObject>
#include <QString>

#include <memory>

namespace qrvkp {

/// The states of a player, the numbers of `RvKpPlayer::sigStateChanged`.
enum RvKpPlayerState : int {
    RvKpPlayerIdle = 0,
    RvKpPlayerPreparing = 1,
    RvKpPlayerPrepared = 2,
    RvKpPlayerPlaying = 4,
    RvKpPlayerPaused = 5,
    RvKpPlayerStopped = 6,
    RvKpPlayerCompleted = 7,
};

/// Plays a timeline. Belongs to its `RvKpApplication` and lives in that one's thread, where all
/// operations are called but those that say otherwise.
///
/// Playing needs the event loop of a `QCoreApplication`. Positions are ms on the timeline.
class RVKPCORE_EXPORT RvKpPlayer : public QObject
{
    Q_OBJECT

public:
    explicit RvKpPlayer(QObject* parent = nullptr);
    ~RvKpPlayer() override;

    /// The timeline with one more reference, or null. Thread-safe.
    RvKpTimeLine* getTimeLine() const;
    /// Gives the player a timeline, which it then holds itself, or takes it away with null; stops
    /// what was played before. Thread-safe in that `getTimeLine` may be called meanwhile.
    void setTimeLine(RvKpTimeLine* timeline);

    /// Gets ready to play from the current position, from the beginning when it was completed:
    /// preparing at once, prepared from the event loop. Does nothing without a timeline.
    void prepareAsync();
    /// Plays from the current position, from the beginning when it was completed. While preparing
    /// it takes effect once prepared; does nothing while idle.
    void start();
    /// Pauses a playing player.
    void pause();
    /// Stops and goes back to the beginning; the player is prepared again before it can start.
    void stop();
    /// Goes to a position, clamped to the timeline. `exact` false lets a player pick a nearby frame
    /// that is faster to show.
    void seekTo(long long position, bool exact);

    long long getCurrentPosition() const; ///< ms
    long long getDuration() const;        ///< ms; 0 without a timeline
    /// A value of `RvKpPlayerState`.
    int getState() const;
    bool isPlaying() const;
    bool isPaused() const;
    /// True while the timeline is saved to a file instead of played.
    bool getSaveMode() const;

    /// Between `lockPlayer` and `unlockPlayer` no frame is rendered, so that a half-changed
    /// timeline is never seen, not even by an event loop of the locking thread itself. Waits for a
    /// frame in work. Thread-safe; the locking thread may lock again and unlocks as often.
    void lockPlayer();
    void unlockPlayer();

signals:
    /// The state and a text that names it.
    void sigStateChanged(int state, const QString& text);
    /// The position, while playing and after a seek.
    void sigRenderTimeChanged(long long position);

private:
    struct Clock;

    void setState(RvKpPlayerState state);
    void play();
    void halt();
    void tick();

    std::unique_ptr<Clock> m_clock;
};

} // namespace qrvkp
