// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <rvkpcore/RvIEffectTrack.h>

#include <QPainterPath>

namespace qrvkp {

/// How a matte is blended with what it cuts: framework-defined numbers. The embedded framework
/// keeps the number and always cuts.
enum RvMatteBlendMode : int {};
/// How the path of a matte is drawn: framework-defined numbers. The embedded framework keeps the
/// number and always fills the path.
enum RvMattePathType : int {};

/// A matte (type 105): cuts the track that it is bound to, nothing while that is away. Without a
/// binding it cuts the whole canvas, bound dynamically what lies below it.
///
/// Its shape is a path within a box. The middle of the box stands on the centre of the matte; what
/// is inside the path is seen. Until a path is set nothing is cut.
class RVKPCORE_EXPORT RvTrkMatteEffectTrack : public RvIEffectTrack
{
public:
    /// Another wrapper of a native matte track, with one reference; null for any other handle.
    static RvTrkMatteEffectTrack* create(void* context);
    /// A new matte whose shape is a path, with one reference.
    static RvTrkMatteEffectTrack* createPathMatteTrack(long long startPos, long long duration);

    /// Sets the shape: `path` in px of a box of `width` x `height`, origin at the top left, y down,
    /// each of them `scale` canvas px. Takes over the path object, which must be from `new`; null
    /// takes the shape away.
    void setMattePath(QPainterPath* path, float width, float height, float scale,
                      RvMattePathType type);
    /// A copy of the path; empty when there is none.
    QPainterPath getMattePath() const;
    RvMattePathType getMattePathType() const;

    /// Where the middle of the box is, canvas px, y up; the middle of the canvas at first.
    void setMatteCenter(float x, float y);
    float getMatteCenterX() const;
    float getMatteCenterY() const;

    /// How soft the edge is: the width over which it fades, in percent of half the shorter side of
    /// the box, 0 to 100.
    void setMatteEclosionPercent(float percent);
    float getMatteEclosionPercent() const;

    /// On (at first): nothing outside of the box is seen. Off: the border of the box goes on
    /// outwards without end, so that a path which fills the right half of its box shows everything
    /// to the right of the centre.
    void setEnableDrawPathSizeLimit(bool enable);
    bool getEnableDrawPathSizeLimit() const;

    void setMatteBlendMode(RvMatteBlendMode mode);
    RvMatteBlendMode getMatteBlendMode() const;

protected:
    using RvIEffectTrack::RvIEffectTrack;
    ~RvTrkMatteEffectTrack() override;

private:
    static RvITrack* wrap(std::shared_ptr<NativeTrack> native);
};

} // namespace qrvkp
