// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvKpTimeLine.h>
#include <rvkpcore/rvkpcore_export.h>

#include <QImage>
#include <QObject>
#include <QSize>
#include <QSizeF>
#include <QString>

#include <memory>
#include <string>

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

/// How a timeline is saved to a file.
struct RvKpSaveSettings
{
    int width = 0;             ///< px; 0 is that of the canvas. Made even.
    int height = 0;            ///< px; 0 is that of the canvas. Made even.
    double frameRate = 30.0;   ///< pictures a second
    int videoBitRate = 0;      ///< bits a second; 0 leaves it to the quality of the encoder
    int audioBitRate = 192000; ///< bits a second
};

/// Plays a timeline, and saves it to a file. Belongs to its `RvKpApplication` and lives in that
/// one's thread, where all operations are called but those that say otherwise.
///
/// Playing needs the event loop of a `QCoreApplication`. Positions are ms on the timeline. What was
/// changed on the timeline is seen and heard as soon as the event loop runs, also while paused.
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
    /// preparing at once, prepared from the event loop. Does nothing without a timeline. If a seek
    /// of a stopped player is preparing it already, it ends prepared and not paused.
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
    ///
    /// A prepared or completed player is paused there, and `start` plays on from it. A stopped one
    /// is prepared first: preparing at once, prepared and paused from the event loop. In all other
    /// states a seek leaves the state as it is.
    void seekTo(long long position, bool exact);

    /// ms, never behind the end of the timeline.
    long long getCurrentPosition() const;
    long long getDuration() const; ///< ms; 0 without a timeline
    /// A value of `RvKpPlayerState`.
    int getState() const;
    bool isPlaying() const;
    bool isPaused() const;

    /// Begins to save the whole timeline, as it is now, to the file `path` (UTF-8), whose extension
    /// tells the format; pauses what is played. The timeline may be changed meanwhile. False when
    /// there is nothing to save, when a timeline is being saved already, or without an engine that
    /// can save; everything else that goes wrong is told by `sigSaveFailed`.
    bool startSave(const std::string& path, const RvKpSaveSettings& settings = {});
    /// Ends the saving that goes on; what was saved so far stays.
    void cancelSave();
    /// True while the timeline is saved to a file instead of played.
    bool getSaveMode() const;

    /// Between `lockPlayer` and `unlockPlayer` no frame is rendered, so that a half-changed
    /// timeline is never seen, not even by an event loop of the locking thread itself. Waits for a
    /// frame in work. What was edited and sought under the lock is seen with the first frame after
    /// it. Thread-safe; the locking thread may lock again and unlocks as often. Another thread than
    /// the player's edits the timeline under the lock only.
    void lockPlayer();
    void unlockPlayer();

signals:
    /// The state and a text that names it.
    void sigStateChanged(int state, const QString& text);
    /// The position: with a seek, with a new timeline, and with every new picture in any state but
    /// idle, so also after an edit that changed the length. Comes without a view, too.
    void sigRenderTimeChanged(long long position);
    /// A picture of the canvas was made, in the size that was set; null when there is nothing to
    /// show.
    void sigPictureRendered(const QImage& picture);

    /// How much was saved, 0 to 1.
    void sigSaveProgress(double share);
    /// The whole timeline was saved.
    void sigSaveFinished(const QString& path);
    void sigSaveCancelled(const QString& path);
    /// The timeline could not be saved; `reason` is a text for people.
    void sigSaveFailed(const QString& path, const QString& reason);

public:
    /// Sets the size in px of the pictures that are made. Empty, as it is at first, makes none: the
    /// view of the application sets it.
    void setPictureSize(const QSize& size);
    /// Sets the size of the canvas that is played and saved, canvas px; 1920 x 1080 at first. The
    /// application sets that of its configuration. Thread-safe.
    void setCanvasSize(const QSizeF& size);

private:
    struct Impl;

    void setState(RvKpPlayerState state);
    void prepare();
    void finishPreparing();
    void play();
    void halt();
    void moveTo(long long position);
    void publish();
    void takeNews();
    void tick(long long duration);
    void waitForUnlock();
    void goOn();
    void takeSaveNews();

    std::unique_ptr<Impl> m_impl;
};

} // namespace qrvkp
