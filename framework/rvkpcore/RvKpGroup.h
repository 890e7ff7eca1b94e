// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvITrack.h>

#include <memory>
#include <vector>

namespace qrvkp {

struct NativeGroup;

/// A group of tracks on the main line of a timeline: a clip and what lies over it.
///
/// A group starts where the one before it ends; its tracks start within it. Not thread-safe: groups
/// belong to the host's thread.
class RVKPCORE_EXPORT RvKpGroup : public RvRef
{
public:
    /// A new empty group of `duration` ms, with one reference.
    static RvKpGroup* create(long long duration);

    /// The id under which the call log names the group; no other object has it.
    std::uint64_t getGroupID() const;
    /// The handle of the native group: valid while the group lives.
    void* getContext() const;

    long long getDuration() const; ///< ms
    void setDuration(long long duration);

    /// Appends a track, which the group then holds itself. False and no change for a null track and
    /// for one that already stands in a group or on a timeline.
    bool addTrack(RvITrack* track);
    /// Takes a track out of the group. False when it is not in it.
    bool removeTrack(RvITrack* track);
    /// The tracks in order, each with one reference: the wrappers of their own kinds by which the
    /// group holds them, the same ones each time.
    std::vector<RvITrack*> getTracks() const;

protected:
    explicit RvKpGroup(long long duration);
    ~RvKpGroup() override;

private:
    std::unique_ptr<NativeGroup> m_native;
};

} // namespace qrvkp
