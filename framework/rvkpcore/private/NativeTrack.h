// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <engine/scene/Scene.h>
#include <rvkpcore/RvTrackType.h>
#include <rvkpcore/private/SceneChanges.h>
#include <rvkpcore/rvkpcore_export.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace qrvkp {

class NativeTimeline;
class RvITrack;
class TrackBinding;

/// Gives an id that no track and no group of the process has.
RVKPCORE_EXPORT std::uint64_t newObjectId();
/// Keeps `id`, which a host gave to a track, from being given to a new object.
RVKPCORE_EXPORT void reserveObjectId(std::uint64_t id);

/// What holds tracks: a group, or a timeline its mix tracks.
struct TrackHolder
{
    NativeTimeline* timeline = nullptr; ///< the timeline on which the held tracks stand, or null
};

/// The native track behind the wrappers: what a track is, independent of how many objects show it.
///
/// It lives as long as a wrapper, a group or a timeline holds it. Natives of further kinds derive
/// from it and hold their kind's values; a wrapper class trusts that a native with its track type
/// is of its native class.
struct RVKPCORE_EXPORT NativeTrack : std::enable_shared_from_this<NativeTrack>
{
    /// Makes a wrapper of the native's own class, with one reference.
    using Wrap = RvITrack* (*)(std::shared_ptr<NativeTrack>);

    NativeTrack(int trackType, Wrap wrapFunction);
    NativeTrack(const NativeTrack&) = delete;
    NativeTrack& operator=(const NativeTrack&) = delete;
    virtual ~NativeTrack();

    /// The native of a handle, or null when the handle is null or its track is not of `trackType`.
    static std::shared_ptr<NativeTrack> fromContext(void* context, int trackType);
    /// The native of a handle of any type, or null for a null handle.
    static std::shared_ptr<NativeTrack> fromContext(void* context);

    /// The native of a wrapper, or null for a null one.
    static NativeTrack* of(const RvITrack* track);

    /// Length on the timeline in ms: `duration` divided by the speed, or undivided when the speed
    /// is not positive and finite.
    long long durationOnTimeline() const;

    /// The track as it is rendered, described anew after a change; null when it draws and sounds
    /// nothing.
    std::shared_ptr<const rvengine::Layer> layer();
    /// Its values change: what was described is out of date, and the players have something new.
    void touch()
    {
        if (rendering)
            rendering->layer.reset();
        sceneChanged();
    }
    /// What the track acts on when it is an effect, or null.
    virtual const TrackBinding* effectBinding() const { return nullptr; }

    /// A group or a timeline takes the track, which stands nowhere; gives the wrapper by which that
    /// holds and lists it.
    RvITrack* enter(TrackHolder& newHolder)
    {
        holder = &newHolder;
        listed = wrap();
        return listed;
    }
    /// The track leaves the group or the timeline that held it.
    void leave()
    {
        listed = nullptr;
        place = nullptr;
        holder = nullptr;
    }
    /// The timeline on which the track stands, itself or in a group, or null.
    NativeTimeline* timeline() const { return holder ? holder->timeline : nullptr; }

    void setId(std::uint64_t newId);
    /// The id as it is from now on, also after the track is gone: for who remembers the track.
    std::shared_ptr<const std::uint64_t> sharedId();

    /// Whether it is a `NativeMediaTrack`.
    bool isMedia() const { return type == RvTrackTypeVideo || type == RvTrackTypeSprite; }

    /// A track can stand in one place only.
    bool isPlaced() const { return listed != nullptr; }

    RvITrack* wrap() { return wrapFunction(shared_from_this()); }

    /// What only a renderer asks for, or hosts that use it: apart, so that a walk over many tracks
    /// finds them close together.
    struct Rendering
    {
        std::map<long long, float> volumes;           ///< by ms from the start of the track
        std::shared_ptr<const rvengine::Layer> layer; ///< null when it is to be described
        std::shared_ptr<std::uint64_t> sharedId;      ///< null until somebody asked for it
    };
    Rendering& makeRendering()
    {
        if (!rendering)
            rendering = std::make_unique<Rendering>();
        return *rendering;
    }

    // First what a walk over many tracks looks at.
    std::uint64_t id = newObjectId();
    const int type;
    int zOrder = 0;
    /// The wrapper by which a group or a timeline holds and lists the track, or null.
    RvITrack* listed = nullptr;
    /// Where a timeline holds the track among its mix tracks, or null.
    const void* place = nullptr;
    const TrackHolder* holder = nullptr; ///< null while the track stands nowhere
    long long startPos = 0;
    long long duration = 0; ///< at speed 1
    float alpha = 1.0F;
    float speed = 1.0F;
    const Wrap wrapFunction;
    std::string source;
    std::string tag;
    std::unique_ptr<Rendering> rendering; ///< null until it is needed

protected:
    /// Fills in what the kind renders; false when it draws and sounds nothing. What all kinds have
    /// is there already.
    virtual bool describe(rvengine::Layer& layer) const;
};

/// A track that shows a picture: video and sprite.
struct RVKPCORE_EXPORT NativeMediaTrack : NativeTrack
{
    using NativeTrack::NativeTrack;
    ~NativeMediaTrack() override;

    float width = 0.0F;
    float height = 0.0F;
    float positionX = 0.0F;
    float positionY = 0.0F;
    float scale = 1.0F;
    float rotation = 0.0F;
    long long fileStartTime = 0; ///< video only

protected:
    bool describe(rvengine::Layer& layer) const override;
};

struct RVKPCORE_EXPORT NativeAudioTrack : NativeTrack
{
    using NativeTrack::NativeTrack;
    ~NativeAudioTrack() override;

    long long fileStartTime = 0;

protected:
    bool describe(rvengine::Layer& layer) const override;
};

/// What a detection or an effect acts on.
///
/// A bound track is not kept alive but remembered by its id: when it has left the timeline, a track
/// of that id which comes there is the bound one.
class RVKPCORE_EXPORT TrackBinding
{
public:
    /// Of the track `owner`, whose timeline counts.
    explicit TrackBinding(const NativeTrack& owner)
        : m_owner(owner)
    {
    }
    TrackBinding(const TrackBinding&) = delete;
    TrackBinding& operator=(const TrackBinding&) = delete;

    void unbind();
    void bind(NativeTrack& track, int bindType);
    void bindDynamic();

    int actionRange() const;
    /// The type given to `bind`; 0 when no track is bound.
    int bindType() const { return m_bindType; }
    /// The bound track: null when there is none, and while it is away from the owner's timeline. Of
    /// an owner that stands nowhere the track that was bound, while that lives.
    std::shared_ptr<NativeTrack> track() const;

private:
    const NativeTrack& m_owner;
    std::shared_ptr<const std::uint64_t> m_id;  ///< of the bound track; null when none is bound
    mutable std::weak_ptr<NativeTrack> m_track; ///< the track of that id that was found last
    int m_bindType = 0;
    bool m_dynamic = false;
};

struct RVKPCORE_EXPORT NativeDetectionTrack : NativeTrack
{
    using NativeTrack::NativeTrack;
    ~NativeDetectionTrack() override;

    int mode = 0;
    std::string modelPath;
    TrackBinding binding{*this};
};

struct RVKPCORE_EXPORT NativeEffectTrack : NativeTrack
{
    using NativeTrack::NativeTrack;
    ~NativeEffectTrack() override;

    const TrackBinding* effectBinding() const override { return &binding; }

    TrackBinding binding{*this};
    TrackBinding detection{*this};
};

/// A matte whose shape is a path.
struct RVKPCORE_EXPORT NativeMatteTrack : NativeEffectTrack
{
    using NativeEffectTrack::NativeEffectTrack;
    ~NativeMatteTrack() override;

    float centerX = 0.0F;
    float centerY = 0.0F;
    std::unique_ptr<const QPainterPath> path; ///< null cuts nothing
    float width = 0.0F;
    float height = 0.0F;
    float scale = 1.0F;
    float feather = 0.0F;
    bool limitedToBox = true;
    int pathType = 0;
    int blendMode = 0;

    /// The shape changes, not just its place.
    void touchShape()
    {
        m_shape.reset();
        touch();
    }

protected:
    bool describe(rvengine::Layer& layer) const override;

private:
    /// Shared with the layers: a matte that only moves keeps its shape, for which a renderer has
    /// made a mask. Null when it is to be made.
    mutable std::shared_ptr<const rvengine::MatteShape> m_shape;
};

} // namespace qrvkp
