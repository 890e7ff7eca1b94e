// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/RvARFilterTrack.h>

#include <kparextension/private/NativeARTrack.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qkpar {

using qrvkp::calls::change;

RvARFilterTrack::~RvARFilterTrack() = default;

qrvkp::RvITrack* RvARFilterTrack::wrap(std::shared_ptr<qrvkp::NativeTrack> native)
{
    return new RvARFilterTrack(std::move(native));
}

RvARFilterTrack* RvARFilterTrack::create(void* context)
{
    return qrvkp::wrapContext<RvARFilterTrack>("RvARFilterTrack::create", context,
                                               qrvkp::RvTrackTypeARFilter, &wrap);
}

RvARFilterTrack* RvARFilterTrack::create(const std::string& source, long long startPos,
                                         long long duration)
{
    constexpr const char* name = "RvARFilterTrack::create";
    const auto native =
        withPlace(qrvkp::makeNative<NativeARFilterTrack>(name, qrvkp::RvTrackTypeARFilter, &wrap),
                  source, startPos, duration);
    return qrvkp::publish<RvARFilterTrack>(name, native, source, startPos, duration);
}

float RvARFilterTrack::getFilterAlpha() const
{
    return nativeAs<NativeARFilterTrack>().filterAlpha;
}

void RvARFilterTrack::setFilterAlpha(float alpha)
{
    auto& filter = nativeAs<NativeARFilterTrack>();
    change("RvARFilterTrack::setFilterAlpha", filter, alpha);
    filter.filterAlpha = alpha;
}

std::map<KpARKernelParamFlag, float> RvARFilterTrack::getFloatParams() const
{
    return nativeAs<NativeARFilterTrack>().floatParams;
}

void RvARFilterTrack::setFloatParam(KpARKernelParamFlag flag, float value)
{
    auto& filter = nativeAs<NativeARFilterTrack>();
    change("RvARFilterTrack::setFloatParam", filter, flag, value);
    filter.floatParams[flag] = value;
}

std::map<std::int64_t, std::map<KpARKernelParamFlag, float>>
RvARFilterTrack::getFloatParamsWithFaceID() const
{
    return nativeAs<NativeARFilterTrack>().faceFloatParams;
}

void RvARFilterTrack::setFloatParamByFaceId(KpARKernelParamFlag flag, float value,
                                            std::int64_t faceId)
{
    auto& filter = nativeAs<NativeARFilterTrack>();
    change("RvARFilterTrack::setFloatParamByFaceId", filter, flag, value, faceId);
    filter.faceFloatParams[faceId][flag] = value;
}

std::map<std::int64_t, std::string> RvARFilterTrack::getAllArFacePlists() const
{
    return nativeAs<NativeARFilterTrack>().facePlists;
}

bool RvARFilterTrack::addARFacePlist(const std::string& path, std::int64_t faceId)
{
    auto& filter = nativeAs<NativeARFilterTrack>();
    change("RvARFilterTrack::addARFacePlist", filter, path, faceId);
    if (qrvkp::shouldFail("RvARFilterTrack::addARFacePlist"))
        return false;
    filter.facePlists[faceId] = path;
    return true;
}

} // namespace qkpar
