// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/RvIEffectTrack.h>

#include <rvkpcore/private/BindingCalls.h>
#include <rvkpcore/private/CallRecorder.h>
#include <rvkpcore/private/FaultPoint.h>

namespace qrvkp {

RvIEffectTrack::~RvIEffectTrack() = default;

bool RvIEffectTrack::bind(RvITrack* track, int bindType)
{
    auto& effect = nativeAs<NativeEffectTrack>();
    return bindTrack("RvIEffectTrack::bind", effect, effect.binding, track, bindType);
}

void RvIEffectTrack::bindDynamic()
{
    auto& effect = nativeAs<NativeEffectTrack>();
    calls::change("RvIEffectTrack::bindDynamic", effect);
    effect.binding.bindDynamic();
}

void RvIEffectTrack::unbind()
{
    auto& effect = nativeAs<NativeEffectTrack>();
    calls::change("RvIEffectTrack::unbind", effect);
    effect.binding.unbind();
    effect.detection.unbind();
}

bool RvIEffectTrack::bindDetect(RvDetectionTrack* detection)
{
    auto& effect = nativeAs<NativeEffectTrack>();
    const bool fails = shouldFail("RvIEffectTrack::bindDetect");
    if (!detection) {
        calls::change("RvIEffectTrack::bindDetect", effect, calls::Verbatim{"null"});
        return false;
    }
    calls::change("RvIEffectTrack::bindDetect", effect, detection->getTrackID());
    if (!fails)
        effect.detection.bind(*NativeTrack::of(detection), 0);
    return !fails;
}

int RvIEffectTrack::getActionRange() const
{
    return nativeAs<NativeEffectTrack>().binding.actionRange();
}

int RvIEffectTrack::getMediaBindType() const
{
    return nativeAs<NativeEffectTrack>().binding.bindType();
}

RvITrack* RvIEffectTrack::getBindTrack() const
{
    return wrapBoundTrack(nativeAs<NativeEffectTrack>().binding);
}

RvDetectionTrack* RvIEffectTrack::getBindDetect() const
{
    const auto detection = nativeAs<NativeEffectTrack>().detection.track();
    // A track of another kind may have come under the id.
    return detection && detection->type == RvTrackTypeDetection
               ? static_cast<RvDetectionTrack*>(detection->wrap())
               : nullptr;
}

} // namespace qrvkp
