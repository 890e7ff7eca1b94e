// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "timeline/LiveTimeline.h"

#include <rvkpcore/RvITrack.h>

#include <memory>

/// A live timeline with one track in question, the subject: it stands over the main line beside two
/// detections, and two main tracks lie there for it to be bound to.
class FieldScene
{
public:
    static constexpr std::uint64_t subjectId = 77;
    static constexpr std::uint64_t mainId = 900;
    static constexpr std::uint64_t otherMainId = 910;
    static constexpr std::uint64_t detectionId = 901;
    static constexpr std::uint64_t otherDetectionId = 911;

    FieldScene();

    /// From now on captures save strokes to another cache.
    void changeCache();

    qrvkp::RvKpTimeLine* timeline() const { return m_timeline.get(); }

    /// Puts the subject on the timeline, in place of the one that is there.
    void place(qrvkp::RvITrack* track);
    /// The subject as it stands on the timeline now; null when it is gone.
    Owned<qrvkp::RvITrack> subject() const;
    /// The record of the subject; null when it is gone or never described.
    std::unique_ptr<norvel::RvAttribute> capturedSubject() const;
    /// A new wrapper of a main track.
    qrvkp::RvITrack* mainTrack(std::uint64_t id) const;
    /// A detection of the timeline.
    Owned<qrvkp::RvDetectionTrack> detection(std::uint64_t id) const;

private:
    const ScopedCache m_cache;
    const LiveTimeline m_timeline;
};
