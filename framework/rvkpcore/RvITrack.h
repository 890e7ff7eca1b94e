// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvRef.h>
#include <rvkpcore/RvTrackType.h>
#include <rvkpcore/rvkpcore_export.h>

#include <cstdint>
#include <memory>
#include <string>

namespace qrvkp {

struct NativeTrack;

/// A track of the timeline: a wrapper over a native track.
///
/// Two wrappers of one native track see each other's changes; the native track lives as long as a
/// wrapper, a group or a timeline holds it. Times are milliseconds, texts are UTF-8. Values are
/// kept as they are given; what makes no sense (an alpha of 3, a speed of 0) is for the renderer to
/// bear. Not thread-safe: tracks belong to the host's thread.
class RVKPCORE_EXPORT RvITrack : public RvRef
{
public:
    /// Another wrapper of a native track of any type, with one reference; null for a null handle.
    static RvITrack* create(void* context);
    /// A new generic track (type 6) that shows nothing, with one reference.
    static RvITrack* create(long long startPos, long long duration);

    /// The handle of the native track: valid while the native track lives.
    void* getContext() const;
    /// The kind of the native track, a value of `RvTrackType`.
    int getTrackType() const;

    /// The id of the track; a new track has one that no other has.
    std::uint64_t getTrackID() const;
    void setTrackID(std::uint64_t id);

    /// The file or resource the track was made from; empty for what needs none.
    std::string getTrackSource() const;
    /// A text that the host keeps with the track.
    std::string getTag() const;
    void setTag(const std::string& tag);

    /// The size of the content in px; 0 for a track that shows no picture.
    float getWidth() const;
    float getHeight() const;

    /// Start on the timeline, for a track of a group its start within the group.
    long long getStartPos() const;
    void setStartPos(long long startPos);

    /// Length on the timeline: the original duration divided by the speed, or undivided when the
    /// speed is not positive and finite.
    long long getDuration() const;
    /// Length at speed 1.
    long long getOriginDuration() const;
    /// Sets the length at speed 1.
    void setDuration(long long duration);

    /// Stacking order among the mix tracks: the higher one is on top.
    int getOriginZOrder() const;
    void setZOrder(int zOrder);

    /// Opacity, 0 transparent to 1 opaque.
    float getAlpha() const;
    void setAlpha(float alpha);

    /// Playback speed: 2 plays twice as fast and half as long.
    float getSpeed() const;
    void setSpeed(float speed);

    /// Sets the volume at `time`, ms from the start of the track: 0 silent, 1 as recorded. Between
    /// two such times the volume goes evenly from one to the other; before the first and after the
    /// last it stays.
    void setVolumeAtTime(float volume, long long time);
    /// The volume at `time`, ms from the start of the track; 1 where nothing was set.
    float getVolumeAtTime(long long time) const;
    /// Forgets all volumes that were set: 1 throughout.
    void clearVolumes();

protected:
    explicit RvITrack(std::shared_ptr<NativeTrack> native);
    ~RvITrack() override;

    NativeTrack& native() const { return *m_native; }
    /// The native track as the struct of the derived kind: a wrapper only holds natives of its own.
    template <class Native>
    Native& nativeAs() const
    {
        return static_cast<Native&>(*m_native);
    }

private:
    static RvITrack* wrap(std::shared_ptr<NativeTrack> native);

    std::shared_ptr<NativeTrack> m_native;
};

} // namespace qrvkp
