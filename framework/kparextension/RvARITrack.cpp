// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/RvARITrack.h>

#include <kparextension/private/NativeARTrack.h>
#include <rvkpcore/private/CallRecorder.h>

namespace qkpar {

using qrvkp::calls::change;

RvARITrack::~RvARITrack() = default;

std::map<std::string, std::string> RvARITrack::getScriptParams() const
{
    return nativeAs<NativeARTrack>().scriptParams;
}

void RvARITrack::setScriptParam(const std::string& key, const std::string& value)
{
    auto& track = nativeAs<NativeARTrack>();
    change("RvARITrack::setScriptParam", track, key, value);
    track.scriptParams[key] = value;
}

std::string RvARITrack::getGlobalParamConfiguration() const
{
    return nativeAs<NativeARTrack>().globalParamConfiguration;
}

void RvARITrack::setGlobalParamConfiguration(const std::string& configuration)
{
    auto& track = nativeAs<NativeARTrack>();
    change("RvARITrack::setGlobalParamConfiguration", track, configuration);
    track.globalParamConfiguration = configuration;
}

} // namespace qkpar
