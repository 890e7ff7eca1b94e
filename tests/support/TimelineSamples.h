// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <norvel/timeline/RvAttributeUtility.h>
#include <norvel/timeline/RvTimeLineAttribute.h>
#include <norvel/timeline/private/Reference.h>
#include <norvel/timeline/private/TrackTypes.h>

#include <rvkpcore/RvKpTimeLine.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// Live timelines, and records that describe them, for tests.
///
/// A record is made with `new` and belongs to the description it is put into, as everywhere.
class TimelineSamples
{
public:
    using Timeline = norvel::Reference<qrvkp::RvKpTimeLine>;
    using Group = norvel::Reference<qrvkp::RvKpGroup>;
    using Track = norvel::Reference<qrvkp::RvITrack>;
    using Record = std::unique_ptr<norvel::RvAttribute>;
    using Description = std::unique_ptr<norvel::RvTimeLineAttribute>;

    /// Small files, made when they are first asked for.
    static const std::string& picture();
    static const std::string& video();
    static const std::string& sound();

    /// A record of the class and with the source that belong to `recordType`, 1000 ms long.
    static norvel::RvAttribute* record(int recordType, std::uint64_t id);
    /// A copy of the record's own class.
    static norvel::RvAttribute* copyOf(const norvel::RvAttribute& record);
    /// A description with copies of the records; null entries stay null.
    static Description copyOf(const norvel::RvTimeLineAttribute& description);
    /// A description of pictures on the main line, with these ids.
    static Description pictures(const std::vector<std::uint64_t>& ids);

    /// A track of the framework class that belongs to `recordType`, also of the kinds that no
    /// reconciliation creates; an AR border for RecordTypeUnknown.
    static Track track(int recordType, std::uint64_t id);
    static Timeline timeline();
    /// A live timeline of what is described: for every main record a group with a track of its
    /// kind, for every mix record a track, of all kinds and under the ids of their records. A null
    /// main entry is a group without tracks.
    static Timeline live(const norvel::RvTimeLineAttribute& description);
    /// Puts a group with these tracks at the end.
    static Group appendGroup(qrvkp::RvKpTimeLine& timeline, const std::vector<Track>& tracks);
    /// The description that a capture gives, 1920 x 1080.
    static Description capture(qrvkp::RvKpTimeLine& timeline);

    /// The ids of the groups' first tracks in order, 0 for a group without tracks.
    static std::vector<std::uint64_t> mainIds(const qrvkp::RvKpTimeLine& timeline);
    static std::vector<std::uint64_t> mixIds(const qrvkp::RvKpTimeLine& timeline);

private:
    static const std::string& sourceOf(int recordType);
};

/// Keeps the leak checker from reporting what is allocated during its life: for what is leaked on
/// purpose.
class UnreportedLeaks
{
public:
    UnreportedLeaks();
    ~UnreportedLeaks();
    UnreportedLeaks(const UnreportedLeaks&) = delete;
    UnreportedLeaks& operator=(const UnreportedLeaks&) = delete;
};
