// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "timeline/Owned.h"

#include <norvel/timeline/RvAttributeUtility.h>

#include <rvkpcore/RvCallLog.h>
#include <rvkpcore/RvDetectionTrack.h>
#include <rvkpcore/RvKpTimeLine.h>

#include <QTemporaryDir>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// What the tests of the bridge share: media files, a live timeline to fill, and the calls that the
// framework saw.

/// Real media files, made once for the program; paths in UTF-8.
struct MediaFiles
{
    std::string video;
    std::string otherVideo;
    std::string picture;
    std::string otherPicture;
    std::string sound;
    std::string otherSound;
};
const MediaFiles& mediaFiles();

/// A live timeline with helpers to put tracks on it.
class LiveTimeline
{
public:
    LiveTimeline();

    qrvkp::RvKpTimeLine* get() const { return m_timeline.get(); }

    /// Appends a group with these tracks, which the caller goes on holding; gives the group.
    Owned<qrvkp::RvKpGroup> addGroup(const std::vector<qrvkp::RvITrack*>& tracks) const;
    /// Appends a group of a new still picture with this id.
    void addPicture(std::uint64_t id) const;
    /// Adds a track, which the caller goes on holding, over the main line.
    void addMix(qrvkp::RvITrack* track) const;
    /// Adds a new detection with this id over the main line.
    void addDetection(std::uint64_t id) const;

    /// Describes the timeline, with a canvas of 1280 x 720.
    std::unique_ptr<norvel::RvTimeLineAttribute> capture() const;
    /// The record of the only mix track that is described; null when there is not exactly one.
    std::unique_ptr<norvel::RvAttribute> captureOnlyMix() const;

private:
    Owned<qrvkp::RvKpTimeLine> m_timeline;
};

/// Gives a track an id; the reference goes to the caller.
template <class Track>
Owned<Track> withId(Track* track, std::uint64_t id)
{
    if (track)
        track->setTrackID(id);
    return owned(track);
}

/// The calls of the framework's log. A picture stands there by its size alone.
std::vector<std::string> loggedCalls();

/// The framework calls that `action` makes, in order.
template <class Action>
std::vector<std::string> callsOf(Action&& action)
{
    qrvkp::RvCallLog::start();
    action();
    qrvkp::RvCallLog::stop();
    return loggedCalls();
}

/// The calls with the id of one track replaced by `it`, where it is an entry's first argument or
/// its result.
std::vector<std::string> callsAbout(std::uint64_t id, const std::vector<std::string>& calls);
/// The same for the track that the first call created.
std::vector<std::string> callsAboutCreated(const std::vector<std::string>& calls);

/// The calls one below the other: a comparison that fails then shows the lines that differ.
std::string lines(const std::vector<std::string>& calls);

/// Gives the undo cache a root of its own, and puts the process-wide folders back at its end.
class ScopedCache
{
public:
    ScopedCache();
    ~ScopedCache();
    ScopedCache(const ScopedCache&) = delete;
    ScopedCache& operator=(const ScopedCache&) = delete;

    QString root() const { return m_folder.path(); }
    /// The folders of the cache, in the order of their names.
    QStringList folders() const;

private:
    QTemporaryDir m_folder;
    const std::string m_root = norvel::RvAttributeUtility::_sCacheDir;
    const std::string m_current = norvel::RvAttributeUtility::_sCurrentCacheLiquefyDir;
};
