// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/SceneCapture.h>

#include <rvkpcore/private/NativeTrack.h>

#include <algorithm>
#include <limits>

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

void bind(PlacedLayer& placed, const TrackBinding& binding)
{
    if (const auto track = binding.track()) {
        placed.target = EffectTarget::Layer;
        placed.boundKey = reinterpret_cast<std::uintptr_t>(track.get());
    } else if (binding.actionRange() == RvActionRangeDynamic) {
        placed.target = EffectTarget::Below;
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
    if (const TrackBinding* binding = native->effectBinding())
        bind(placed, *binding);
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
    for (RvITrack* track : timeline.getMixTracks()) {
        place(scene.mix, track, 0, endOfTime);
        track->release();
    }
    std::stable_sort(scene.mix.begin(), scene.mix.end(),
                     [](const PlacedLayer& a, const PlacedLayer& b) {
                         return a.layer->zOrder < b.layer->zOrder;
                     });
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
