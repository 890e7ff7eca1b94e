// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/NativeTrack.h>

#include <rvkpcore/RvITrack.h>
#include <rvkpcore/private/NativeTimeline.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <mutex>
#include <unordered_set>

namespace qrvkp {

namespace {

/// Below it the counter of the new ids jumps over what a host sets.
constexpr std::uint64_t lastJump = std::uint64_t{1} << 62U;
/// The counter gets nowhere near it: 2^62 objects beyond the last jump are never made.
constexpr std::uint64_t outOfReach = std::uint64_t{1} << 63U;

/// The ids of the process. A host may set any id, the largest of all too, which the counter must
/// not follow: what it sets beyond the last jump is remembered and left out one by one.
struct ObjectIds
{
    std::mutex mutex;
    std::uint64_t next = 1000;
    std::unordered_set<std::uint64_t> leftOut;
};

ObjectIds& objectIds()
{
    static ObjectIds instance;
    return instance;
}

} // namespace

std::uint64_t newObjectId()
{
    ObjectIds& ids = objectIds();
    const std::lock_guard lock(ids.mutex);
    while (!ids.leftOut.empty() && ids.leftOut.count(ids.next) != 0)
        ++ids.next;
    return ids.next++;
}

void reserveObjectId(std::uint64_t id)
{
    ObjectIds& ids = objectIds();
    const std::lock_guard lock(ids.mutex);
    if (id < ids.next || id >= outOfReach)
        return;
    if (id < lastJump)
        ids.next = id + 1;
    else
        ids.leftOut.insert(id);
}

NativeTrack::NativeTrack(int trackType, Wrap wrapper)
    : type(trackType)
    , wrapFunction(wrapper)
{
}
NativeTrack::~NativeTrack() = default;
NativeMediaTrack::~NativeMediaTrack() = default;
NativeAudioTrack::~NativeAudioTrack() = default;
NativeDetectionTrack::~NativeDetectionTrack() = default;
NativeEffectTrack::~NativeEffectTrack() = default;
NativeMatteTrack::~NativeMatteTrack() = default;

long long NativeTrack::durationOnTimeline() const
{
    if (speed == 1.0F || !std::isfinite(speed) || speed <= 0.0F)
        return duration;
    const double scaled = static_cast<double>(duration) / static_cast<double>(speed);
    // Beyond 2^63 a conversion would be undefined: a duration divided by nearly nothing.
    constexpr double limit = 9.2233720368547748e18;
    if (scaled >= limit)
        return std::numeric_limits<long long>::max();
    if (scaled <= -limit)
        return std::numeric_limits<long long>::min();
    return std::llround(scaled);
}

std::shared_ptr<const rvengine::Layer> NativeTrack::layer()
{
    Rendering& render = makeRendering();
    if (render.layer)
        return render.layer;
    auto layer = std::make_shared<rvengine::Layer>();
    layer->key = reinterpret_cast<std::uintptr_t>(this);
    layer->source = source;
    layer->start = startPos;
    layer->duration = durationOnTimeline();
    layer->speed = std::isfinite(speed) && speed > 0.0F ? static_cast<double>(speed) : 1.0;
    layer->zOrder = zOrder;
    layer->alpha = std::isnan(alpha) ? 0.0F : std::clamp(alpha, 0.0F, 1.0F);
    for (const auto& [time, volume] : render.volumes)
        layer->volume.push_back({time, std::isfinite(volume) ? std::max(volume, 0.0F) : 0.0F});
    if (describe(*layer))
        render.layer = std::move(layer);
    return render.layer;
}

bool NativeTrack::describe(rvengine::Layer&) const
{
    return false;
}

bool NativeMediaTrack::describe(rvengine::Layer& layer) const
{
    layer.kind =
        type == RvTrackTypeVideo ? rvengine::LayerKind::Video : rvengine::LayerKind::Picture;
    layer.fileStart = fileStartTime;
    const auto wide = [](float value) { return static_cast<double>(value); };
    layer.placement = {wide(width), wide(height), QPointF(wide(positionX), wide(positionY)),
                       wide(scale), wide(rotation)};
    return true;
}

bool NativeAudioTrack::describe(rvengine::Layer& layer) const
{
    layer.kind = rvengine::LayerKind::Sound;
    layer.fileStart = fileStartTime;
    return true;
}

bool NativeMatteTrack::describe(rvengine::Layer& layer) const
{
    if (!path)
        return false;
    if (!m_shape) {
        const auto wide = [](float value) { return static_cast<double>(value); };
        m_shape = std::make_shared<const rvengine::MatteShape>(rvengine::MatteShape{
            *path, QSizeF(wide(width), wide(height)), wide(scale), wide(feather), limitedToBox});
    }
    layer.kind = rvengine::LayerKind::Matte;
    layer.matte = m_shape;
    layer.matteCenter = QPointF(static_cast<double>(centerX), static_cast<double>(centerY));
    return true;
}

void NativeTrack::setId(std::uint64_t newId)
{
    reserveObjectId(newId);
    id = newId;
    if (rendering && rendering->sharedId)
        *rendering->sharedId = newId;
    if (NativeTimeline* standing = timeline())
        standing->forgetIds();
}

std::shared_ptr<const std::uint64_t> NativeTrack::sharedId()
{
    auto& shared = makeRendering().sharedId;
    if (!shared)
        shared = std::make_shared<std::uint64_t>(id);
    return shared;
}

NativeTrack* NativeTrack::of(const RvITrack* track)
{
    return track ? static_cast<NativeTrack*>(track->getContext()) : nullptr;
}

std::shared_ptr<NativeTrack> NativeTrack::fromContext(void* context)
{
    return context ? static_cast<NativeTrack*>(context)->shared_from_this() : nullptr;
}

std::shared_ptr<NativeTrack> NativeTrack::fromContext(void* context, int trackType)
{
    auto native = fromContext(context);
    return native && native->type == trackType ? native : nullptr;
}

void TrackBinding::unbind()
{
    m_id.reset();
    m_track.reset();
    m_bindType = 0;
    m_dynamic = false;
}

void TrackBinding::bind(NativeTrack& track, int bindType)
{
    m_id = track.sharedId();
    m_track = track.weak_from_this();
    m_bindType = bindType;
    m_dynamic = false;
}

void TrackBinding::bindDynamic()
{
    unbind();
    m_dynamic = true;
}

std::shared_ptr<NativeTrack> TrackBinding::track() const
{
    if (!m_id)
        return nullptr;
    auto last = m_track.lock();
    const NativeTimeline* timeline = m_owner.timeline();
    if (!timeline || (last && last->id == *m_id && last->timeline() == timeline))
        return last;
    auto found = timeline->trackWithId(*m_id);
    if (found)
        m_track = found;
    return found;
}

int TrackBinding::actionRange() const
{
    if (m_dynamic)
        return RvActionRangeDynamic;
    if (!m_id)
        return RvActionRangeGlobal;
    return track() ? RvActionRangeTrack : RvActionRangeAway;
}

} // namespace qrvkp
