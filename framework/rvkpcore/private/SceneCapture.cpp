// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/SceneCapture.h>

#include <rvkpcore/private/NativeTrack.h>

#include <algorithm>
#include <limits>
#include <tuple>

namespace qrvkp {

namespace {

using rvengine::EffectTarget;
using rvengine::PlacedLayer;

constexpr long long endOfTime = std::numeric_limits<long long>::max();

/// A host may set times to anything: saturates instead of overflowing.
long long sum(long long a, long long b)
{
    if (b > 0 && a > endOfTime - b)
        return endOfTime;
    if (b < 0 && a < std::numeric_limits<long long>::min() - b)
        return std::numeric_limits<long long>::min();
    return a + b;
}

/// Says what an effect acts on; false for one that acts on nothing.
bool bind(PlacedLayer& placed, const TrackBinding& binding)
{
    switch (binding.actionRange()) {
    case RvActionRangeTrack:
        placed.target = EffectTarget::Layer;
        placed.boundKey = reinterpret_cast<std::uintptr_t>(binding.track().get());
        return true;
    case RvActionRangeDynamic:
        placed.target = EffectTarget::Below;
        return true;
    case RvActionRangeGlobal:
        return true;
    default:
        return false; // its track is away
    }
}

/// Adds what the track renders within `start` to `end`, its own time counted from `start`.
void place(std::vector<PlacedLayer>& layers, const RvITrack* track, long long start, long long end)
{
    NativeTrack* native = NativeTrack::of(track);
    auto layer = native->layer();
    if (!layer)
        return;
    PlacedLayer placed;
    placed.start = sum(start, layer->start);
    placed.end = std::min(end, sum(placed.start, layer->duration));
    const TrackBinding* binding = native->effectBinding();
    if (binding && !bind(placed, *binding))
        return;
    placed.layer = std::move(layer);
    layers.push_back(std::move(placed));
}

void captureMainLine(rvengine::Scene& scene, const RvKpTimeLine& timeline)
{
    long long start = 0;
    for (RvKpGroup* group : timeline.getGroups()) {
        const long long end = sum(start, std::max(group->getDuration(), 0LL));
        for (RvITrack* track : group->getTracks()) {
            place(scene.main, track, start, end);
            track->release();
        }
        group->release();
        start = end;
    }
}

void captureMixTracks(rvengine::Scene& scene, const RvKpTimeLine& timeline)
{
    std::vector<RvITrack*> tracks = timeline.getMixTracks();
    // By the id where the z-order is the same: a track that was removed comes back to its place.
    std::stable_sort(tracks.begin(), tracks.end(), [](const RvITrack* a, const RvITrack* b) {
        const NativeTrack* lower = NativeTrack::of(a);
        const NativeTrack* upper = NativeTrack::of(b);
        return std::tie(lower->zOrder, lower->id) < std::tie(upper->zOrder, upper->id);
    });
    for (RvITrack* track : tracks) {
        place(scene.mix, track, 0, endOfTime);
        track->release();
    }
}

} // namespace

rvengine::ScenePointer captureScene(const RvKpTimeLine& timeline, CanvasSize canvas)
{
    auto scene = std::make_shared<rvengine::Scene>();
    scene->canvas = QSizeF(static_cast<double>(canvas.width), static_cast<double>(canvas.height));
    scene->duration = timeline.getDuration();
    captureMainLine(*scene, timeline);
    captureMixTracks(*scene, timeline);
    return scene;
}

} // namespace qrvkp
