// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvDetectionTrack.h>
#include <rvkpcore/RvITrack.h>

namespace qrvkp {

/// A track that changes what other tracks show: a matte or an AR effect.
class RVKPCORE_EXPORT RvIEffectTrack : public RvITrack
{
public:
    /// Acts on `track` alone from now on, which is remembered by its id: while no track of that id
    /// stands on the timeline of this one, it acts on nothing. Takes over one reference of `track`:
    /// a caller that goes on using it retains it first. `bindType` is a framework-defined number.
    /// False and no change for a null track.
    bool bind(RvITrack* track, int bindType);
    /// Follows whatever lies below it.
    void bindDynamic();
    /// Ends every binding, that of a detection too: acts on the whole canvas.
    void unbind();

    /// Uses what `detection` finds, which is remembered by its id as a bound track is. The caller
    /// keeps its reference. False and no change for a null detection.
    bool bindDetect(RvDetectionTrack* detection);

    /// A value of `RvActionRange`.
    int getActionRange() const;
    /// The type given to `bind`; 0 when no track is bound.
    int getMediaBindType() const;
    /// The bound track with one reference; null when there is none, and while it is away.
    RvITrack* getBindTrack() const;
    /// The bound detection with one reference; null when there is none, and while it is away.
    RvDetectionTrack* getBindDetect() const;

protected:
    using RvITrack::RvITrack;
    ~RvIEffectTrack() override;
};

} // namespace qrvkp
