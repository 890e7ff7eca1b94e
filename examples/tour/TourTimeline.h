// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "support/FrameworkRef.h"
#include "tour/TourMedia.h"

#include <norvel/timeline/RvTimeLineAttribute.h>

#include <rvkpcore/RvIMediaTrack.h>
#include <rvkpcore/RvKpApplication.h>
#include <rvkpcore/RvKpGroup.h>
#include <rvkpcore/RvKpTimeLine.h>

#include <cstdint>
#include <map>
#include <memory>

/// The tracks over the main line that edits speak of.
enum class MixTrack {
    OverlayPicture,
    OverlayVideo,
    Sound,
    Detection,
    Filter,
    Beauty,
    Makeup,
    Liquify,
    Layer
};

/// The live timeline of the tour, as a host has one: the player shows it, and edits find what they
/// change by its place or its name.
///
/// Clips are the tracks of the main line, counted from 0. Every clip stands in a group of its own,
/// because only the first track of a group is ever described. No wrapper of a track is kept from
/// one edit to the next: an undo may have made the track anew, under its old id.
class TourTimeline
{
public:
    /// Media and application must outlive the timeline.
    TourTimeline(qrvkp::RvKpApplication& application, const TourMedia& media);
    /// Takes the timeline away from the player.
    ~TourTimeline();
    TourTimeline(const TourTimeline&) = delete;
    TourTimeline& operator=(const TourTimeline&) = delete;

    /// Builds what the tour starts with and gives it to the player: at least three clips, every
    /// given file but the first picture and the first sound, which edits add, and a layer. False
    /// when the framework makes no track of one of the files.
    bool build();

    qrvkp::RvKpApplication& application() const { return m_application; }
    qrvkp::RvKpPlayer& player() const { return *m_application.getPlayer(); }
    qrvkp::RvKpTimeLine& timeline() const { return *m_timeline; }
    const TourMedia& media() const { return m_media; }

    /// Describes the timeline as it is now, with the configured canvas size.
    std::unique_ptr<norvel::RvTimeLineAttribute> capture() const;

    /// The number of clips.
    int clipCount() const;
    /// The group of a clip; null when there is none at that position.
    FrameworkRef<qrvkp::RvKpGroup> group(int position) const;
    /// A clip; null when there is none at that position.
    FrameworkRef<qrvkp::RvIMediaTrack> clip(int position) const;
    /// Puts a track on the main line, in a group of its own. False for a null track.
    bool insertClip(const FrameworkRef<qrvkp::RvIMediaTrack>& track, int position);

    /// Puts a track over the main line, to be known by `name`. False for a null track.
    bool addMixTrack(MixTrack name, qrvkp::RvITrack* track);
    /// The track last added as `name`; null when it does not stand on the timeline, or is not of
    /// this class.
    template <class Track>
    FrameworkRef<Track> mixTrack(MixTrack name) const
    {
        return referenceAs<Track>(findMixTrack(name));
    }
    /// Takes a track off the timeline. False when it does not stand there.
    bool removeMixTrack(MixTrack name);

    /// A new track of the whole of a video file; indices beyond the last file start again.
    FrameworkRef<qrvkp::RvIMediaTrack> newVideo(std::size_t index) const;
    /// A new track of a picture file, in the same way.
    FrameworkRef<qrvkp::RvIMediaTrack> newPicture(std::size_t index, long long duration) const;

private:
    bool buildMainLine();
    bool buildMixTracks();
    FrameworkRef<qrvkp::RvITrack> findMixTrack(MixTrack name) const;

    qrvkp::RvKpApplication& m_application;
    const TourMedia& m_media;
    FrameworkRef<qrvkp::RvKpTimeLine> m_timeline;
    std::map<MixTrack, std::uint64_t> m_mixTrackIds;
};
