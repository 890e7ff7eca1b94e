// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/RvARMakeupTrack.h>

#include <kparextension/private/ARCallText.h>
#include <kparextension/private/NativeARTrack.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qkpar {

using qrvkp::calls::change;

RvARMakeupTrack::~RvARMakeupTrack() = default;

qrvkp::RvITrack* RvARMakeupTrack::wrap(std::shared_ptr<qrvkp::NativeTrack> native)
{
    return new RvARMakeupTrack(std::move(native));
}

RvARMakeupTrack* RvARMakeupTrack::create(void* context)
{
    return qrvkp::wrapContext<RvARMakeupTrack>("RvARMakeupTrack::create", context,
                                               qrvkp::RvTrackTypeARMakeup, &wrap);
}

RvARMakeupTrack* RvARMakeupTrack::create(const std::string& source, long long startPos,
                                         long long duration)
{
    constexpr const char* name = "RvARMakeupTrack::create";
    const auto native =
        withPlace(qrvkp::makeNative<NativeARMakeupTrack>(name, qrvkp::RvTrackTypeARMakeup, &wrap),
                  source, startPos, duration);
    return qrvkp::publish<RvARMakeupTrack>(name, native, source, startPos, duration);
}

float RvARMakeupTrack::getSuitAlpha() const
{
    return nativeAs<NativeARMakeupTrack>().suitAlpha;
}

void RvARMakeupTrack::setSuitAlpha(float alpha)
{
    auto& makeup = nativeAs<NativeARMakeupTrack>();
    change("RvARMakeupTrack::setSuitAlpha", makeup, alpha);
    makeup.suitAlpha = alpha;
}

std::vector<std::string> RvARMakeupTrack::getAllARGroupOrder() const
{
    return nativeAs<NativeARMakeupTrack>().groupOrder;
}

void RvARMakeupTrack::setAllARGroupOrder(const std::vector<std::string>& order)
{
    auto& makeup = nativeAs<NativeARMakeupTrack>();
    change("RvARMakeupTrack::setAllARGroupOrder", makeup, order);
    makeup.groupOrder = order;
}

std::vector<RvARMakeupARGroupData> RvARMakeupTrack::getARGroupDatas() const
{
    return nativeAs<NativeARMakeupTrack>().groups;
}

void RvARMakeupTrack::setARGroupDatas(const std::vector<RvARMakeupARGroupData>& groups)
{
    auto& makeup = nativeAs<NativeARMakeupTrack>();
    change("RvARMakeupTrack::setARGroupDatas", makeup, groups);
    makeup.groups = groups;
}

std::vector<RvARFaceGroupData> RvARMakeupTrack::getARFaceGroupDatas() const
{
    return nativeAs<NativeARMakeupTrack>().faceGroups;
}

void RvARMakeupTrack::setARFaceGroupDatas(const std::vector<RvARFaceGroupData>& faceGroups)
{
    auto& makeup = nativeAs<NativeARMakeupTrack>();
    change("RvARMakeupTrack::setARFaceGroupDatas", makeup, faceGroups);
    makeup.faceGroups = faceGroups;
}

} // namespace qkpar
