// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "TrackKinds.h"

#include "SampleMedia.h"

#include <kparextension/RvARAttribsTrack.h>
#include <kparextension/RvARBorderTrack.h>
#include <kparextension/RvARFrameTrack.h>
#include <kparextension/RvARLabelTrack.h>
#include <kparextension/RvARLiquifyTrack.h>
#include <kparextension/RvARMakeupTrack.h>
#include <rvkpcore/RvAudioTrack.h>
#include <rvkpcore/RvDetectionTrack.h>
#include <rvkpcore/RvKpTrack.h>
#include <rvkpcore/RvSpriteTrack.h>
#include <rvkpcore/RvTrkMatteEffectTrack.h>

#include <ostream>
#include <typeinfo>

using namespace qrvkp;

namespace {

template <class Track>
RvITrack* wrapAs(void* context)
{
    return Track::create(context);
}

template <class Track>
bool isA(RvITrack* track)
{
    return typeid(*track) == typeid(Track);
}

template <class Track>
TrackKind kindOf(const char* name, int type, const char* creation, RvITrack* (*make)())
{
    return {name, type, creation, make, &wrapAs<Track>, &isA<Track>};
}

template <class Track>
TrackKind arKindOf(const char* name, int type, const char* creation)
{
    return kindOf<Track>(name, type, creation,
                         []() -> RvITrack* { return Track::create("effect", 100, 2000); });
}

RvITrack* newDetection()
{
    RvDetectionTrack* track = RvDetectionTrack::create(3, "face.model");
    if (track) {
        track->setStartPos(100);
        track->setDuration(2000);
    }
    return track;
}

} // namespace

const std::vector<TrackKind>& trackKinds()
{
    using namespace qkpar;
    static const std::vector<TrackKind> kinds = {
        kindOf<RvITrack>("RvITrack", 6, "RvITrack::create",
                         []() -> RvITrack* { return RvITrack::create(100, 2000); }),
        kindOf<RvKpTrack>(
            "RvKpTrack", 2, "RvKpTrack::create",
            []() -> RvITrack* { return RvKpTrack::create(SampleMedia::video(), 100, 2000, 0); }),
        kindOf<RvSpriteTrack>(
            "RvSpriteTrack", 3, "RvSpriteTrack::create",
            []() -> RvITrack* { return RvSpriteTrack::create(SampleMedia::picture(), 100, 2000); }),
        kindOf<RvAudioTrack>(
            "RvAudioTrack", 4, "RvAudioTrack::create",
            []() -> RvITrack* { return RvAudioTrack::create(SampleMedia::sound(), 100, 2000, 0); }),
        kindOf<RvTrkMatteEffectTrack>(
            "RvTrkMatteEffectTrack", 105, "RvTrkMatteEffectTrack::createPathMatteTrack",
            []() -> RvITrack* { return RvTrkMatteEffectTrack::createPathMatteTrack(100, 2000); }),
        kindOf<RvDetectionTrack>("RvDetectionTrack", 400, "RvDetectionTrack::create",
                                 &newDetection),
        arKindOf<RvARFilterTrack>("RvARFilterTrack", 20001, "RvARFilterTrack::create"),
        arKindOf<RvARFrameTrack>("RvARFrameTrack", 20002, "RvARFrameTrack::create"),
        arKindOf<RvARLabelTrack>("RvARLabelTrack", 20003, "RvARLabelTrack::create"),
        arKindOf<RvARBeautyTrack>("RvARBeautyTrack", 20005, "RvARBeautyTrack::create"),
        arKindOf<RvARBorderTrack>("RvARBorderTrack", 20007, "RvARBorderTrack::create"),
        arKindOf<RvARAttribsTrack>("RvARAttribsTrack", 20008, "RvARAttribsTrack::create"),
        arKindOf<RvARMakeupTrack>("RvARMakeupTrack", 20009, "RvARMakeupTrack::create"),
        arKindOf<RvARLiquifyTrack>("RvARLiquifyTrack", 20017, "RvARLiquifyTrack::create"),
    };
    return kinds;
}

const TrackKind& trackKind(const std::string& name)
{
    for (const TrackKind& kind : trackKinds()) {
        if (kind.name == name)
            return kind;
    }
    throw std::invalid_argument("no track class " + name);
}

std::string kindName(const testing::TestParamInfo<TrackKind>& info)
{
    return info.param.name;
}

void PrintTo(const TrackKind& kind, std::ostream* stream)
{
    *stream << kind.name;
}

Reference<RvITrack> newTrack(long long startPos, long long duration)
{
    return adopt(RvITrack::create(startPos, duration));
}
