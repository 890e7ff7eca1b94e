// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <kparextension/RvARLiquifyTrack.h>

#include <kparextension/private/ARCallText.h>
#include <kparextension/private/LiquifyFile.h>
#include <kparextension/private/NativeARTrack.h>
#include <rvkpcore/private/TrackCreation.h>

namespace qkpar {

using qrvkp::calls::change;
using qrvkp::calls::record;

RvARLiquifyTrack::~RvARLiquifyTrack() = default;

qrvkp::RvITrack* RvARLiquifyTrack::wrap(std::shared_ptr<qrvkp::NativeTrack> native)
{
    return new RvARLiquifyTrack(std::move(native));
}

RvARLiquifyTrack* RvARLiquifyTrack::create(void* context)
{
    return qrvkp::wrapContext<RvARLiquifyTrack>("RvARLiquifyTrack::create", context,
                                                qrvkp::RvTrackTypeARLiquify, &wrap);
}

RvARLiquifyTrack* RvARLiquifyTrack::create(const std::string& source, long long startPos,
                                           long long duration)
{
    constexpr const char* name = "RvARLiquifyTrack::create";
    const auto native =
        withPlace(qrvkp::makeNative<NativeARLiquifyTrack>(name, qrvkp::RvTrackTypeARLiquify, &wrap),
                  source, startPos, duration);
    return qrvkp::publish<RvARLiquifyTrack>(name, native, source, startPos, duration);
}

RvARLiquifyOperation RvARLiquifyTrack::getAppendOperation() const
{
    return nativeAs<NativeARLiquifyTrack>().last;
}

void RvARLiquifyTrack::appendToLiquifyOperation(const RvARLiquifyOperation& operation)
{
    auto& liquify = nativeAs<NativeARLiquifyTrack>();
    change("RvARLiquifyTrack::appendToLiquifyOperation", liquify, operation);
    liquify.append(operation);
}

void RvARLiquifyTrack::confirmCurrentLiquify()
{
    auto& liquify = nativeAs<NativeARLiquifyTrack>();
    change("RvARLiquifyTrack::confirmCurrentLiquify", liquify);
    liquify.confirm();
}

std::vector<RvARLiquifyOperation> RvARLiquifyTrack::getConfirmedOperations() const
{
    return nativeAs<NativeARLiquifyTrack>().confirmed;
}

bool RvARLiquifyTrack::saveLiquifyConfig(const std::string& folder) const
{
    const auto& liquify = nativeAs<NativeARLiquifyTrack>();
    record("RvARLiquifyTrack::saveLiquifyConfig", liquify.id, folder);
    if (qrvkp::shouldFail("RvARLiquifyTrack::saveLiquifyConfig"))
        return false;
    return saveStrokes(folder, liquify.id, {liquify.confirmed, liquify.last});
}

bool RvARLiquifyTrack::loadLiquifyConfig(const std::string& folder)
{
    auto& liquify = nativeAs<NativeARLiquifyTrack>();
    change("RvARLiquifyTrack::loadLiquifyConfig", liquify, folder);
    const bool fails = qrvkp::shouldFail("RvARLiquifyTrack::loadLiquifyConfig");
    auto strokes = fails ? std::nullopt : loadStrokes(folder, liquify.id);
    if (strokes)
        liquify.replace(std::move(strokes->confirmed), strokes->last);
    else
        liquify.noteFailedLoad();
    return strokes.has_value();
}

} // namespace qkpar
