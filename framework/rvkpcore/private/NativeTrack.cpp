// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <rvkpcore/private/NativeTrack.h>

#include <rvkpcore/RvITrack.h>

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
    *this = TrackBinding();
}

void TrackBinding::bind(const std::shared_ptr<NativeTrack>& track, int bindType)
{
    m_track = track;
    m_detachments = track ? track->detachments : 0;
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
    auto native = m_track.lock();
    return native && native->detachments == m_detachments ? native : nullptr;
}

int TrackBinding::bindType() const
{
    return track() ? m_bindType : 0;
}

int TrackBinding::actionRange() const
{
    if (m_dynamic)
        return RvActionRangeDynamic;
    return track() ? RvActionRangeTrack : RvActionRangeGlobal;
}

} // namespace qrvkp
